"""Songs join without a gap: what the program really plays, recorded in real time.

A 440 Hz tone is cut into songs (sox, lame). A private PulseAudio server plays into a null sink whose monitor
parec records; the program and its mpv play the songs in order, then in shuffle; as the reference, mpv plays
the same files from its own gapless playlist in the same run. Any silence of 1 ms or more inside the
recorded tone is a gap. Usage: gapless_tone.py <TavoMP3Player>"""
import json
import os
import shutil
import signal
import socket
import struct
import subprocess
import sys
import tempfile
import time

PROGRAM = sys.argv[1]
RATE = 44100
SONGS = 5
SECONDS = 1.5
THRESHOLD = 300  # the tone's amplitude is about 32 000; silence stays near 0


def gaps(raw):
    """Runs of silence of 1 ms or more between the first and the last sound, in milliseconds."""
    left = struct.unpack("<%dh" % (len(raw) // 2), raw[: len(raw) // 2 * 2])[0::2]
    loud = [i for i, x in enumerate(left) if abs(x) > THRESHOLD]
    if not loud:
        return None
    found, run = [], 0
    for x in left[loud[0]: loud[-1] + 1]:
        if abs(x) > THRESHOLD:
            if run >= RATE // 1000:
                found.append(run * 1000.0 / RATE)
            run = 0
        else:
            run += 1
    return found


class Sound:
    """The private sound server and a recorder on its null sink."""

    def __init__(self, folder):
        self.env = dict(os.environ, XDG_RUNTIME_DIR=os.path.join(folder, "runtime"), HOME=folder)
        os.makedirs(self.env["XDG_RUNTIME_DIR"], mode=0o700)
        subprocess.run(["pulseaudio", "--daemonize=yes", "--exit-idle-time=-1", "-n",
                        "--load=module-null-sink sink_name=nul", "--load=module-native-protocol-unix"],
                       env=self.env, check=True, stderr=subprocess.DEVNULL)
        self.folder = folder

    def record(self, name):
        path = os.path.join(self.folder, name + ".raw")
        self.recorder = subprocess.Popen(["parec", "-d", "nul.monitor", "--format=s16le", "--rate=%d" % RATE,
                                          "--channels=2", "--raw"], env=self.env, stdout=open(path, "wb"))
        return path

    def stop(self, path):
        self.recorder.terminate()
        self.recorder.wait()
        return gaps(open(path, "rb").read())

    def close(self):
        subprocess.run(["pulseaudio", "--kill"], env=self.env, stderr=subprocess.DEVNULL)


def make_songs(folder):
    tone = os.path.join(folder, "tone.wav")
    subprocess.run(["sox", "-n", "-r", str(RATE), "-c", "2", tone, "synth", str(SONGS * SECONDS), "sine", "440"],
                   check=True)
    songs = []
    for i in range(SONGS):
        part = os.path.join(folder, "Teil %d.wav" % (i + 1))
        subprocess.run(["sox", tone, part, "trim", str(i * SECONDS), str(SECONDS)], check=True)
        songs.append(part[:-4] + ".mp3")
        subprocess.run(["lame", "--quiet", "-b", "128", part, songs[-1]], check=True)
    return songs


def quit_player(socket_path):
    try:
        with socket.socket(socket.AF_UNIX) as s:
            s.connect(socket_path)
            s.sendall(b'{"command":["quit"]}\n')
            time.sleep(0.3)
    except OSError:
        pass


def reference(sound, songs):
    path = sound.record("mpv")
    subprocess.run(["mpv", "--no-video", "--no-terminal", "--ao=pulse", "--gapless-audio=weak", *songs],
                   env=sound.env, check=True, timeout=60)
    time.sleep(0.3)
    return sound.stop(path)


def program(sound, songs, shuffle):
    folder = tempfile.mkdtemp(dir=sound.folder)
    config = os.path.join(folder, "config")
    os.makedirs(os.path.join(config, "TavoMP3Player"))
    os.makedirs(os.path.join(config, "mpv"))
    with open(os.path.join(config, "mpv", "mpv.conf"), "w") as f:
        f.write("ao=pulse\n")
    playlist = os.path.join(folder, "liste.txt")
    with open(playlist, "w") as f:
        f.write("".join("%s:5\r\n" % s for s in songs))
    with open(os.path.join(config, "TavoMP3Player", "TavoMP3Player.ini"), "w") as f:
        # Position -1: play mode starts with the entry after it, the first.
        f.write("[Settings]\nPlaylistFile=%s\nWinampPath=%s\nUserMP3Directory=%s\nCurrentPlaylistPosition=-1\n"
                "ShuffleStatus=%s\n" % (playlist, shutil.which("mpv"), folder, "True" if shuffle else "False"))
    env = dict(sound.env, XDG_CONFIG_HOME=config, XDG_CACHE_HOME=os.path.join(folder, "cache"),
               QT_QPA_PLATFORM="offscreen")
    path = sound.record("shuffle" if shuffle else "order")
    proc = subprocess.Popen([PROGRAM, "play"], env=env, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    # In order the list plays through once; in shuffle as many songs as the list has.
    time.sleep(3 + SONGS * SECONDS)
    proc.send_signal(signal.SIGTERM)
    proc.wait(10)
    quit_player(os.path.join(sound.env["XDG_RUNTIME_DIR"], "tavomp3-mpv.sock"))
    time.sleep(0.3)
    return sound.stop(path)


def main():
    for tool in ("pulseaudio", "parec", "sox", "lame", "mpv"):
        if not shutil.which(tool):
            print("SKIP: %s is not installed (scripts/deps.sh installs it)" % tool)
            return 77
    folder = tempfile.mkdtemp(prefix="tavo-gapless-")
    sound = Sound(folder)
    failures = []
    try:
        songs = make_songs(folder)
        results = {"mpv's own list": reference(sound, songs), "program, in order": program(sound, songs, False),
                   "program, shuffle": program(sound, songs, True)}
        for what, found in results.items():
            if found is None:
                failures.append("%s: no sound recorded" % what)
                continue
            print("%s: %d gaps of 1 ms or more%s" % (what, len(found),
                  (", longest %.1f ms" % max(found)) if found else ""))
            if found:
                failures.append("%s: gaps of %s ms" % (what, ", ".join("%.1f" % g for g in found)))
    finally:
        sound.close()
        shutil.rmtree(folder, ignore_errors=True)
    print("".join("FAIL: %s\n" % f for f in failures), end="")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
