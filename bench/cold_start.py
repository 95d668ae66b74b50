#!/usr/bin/env python3
"""Start to visible main window, with the player already running ("warm") and with the program starting
mpv itself ("cold"). Runs under an X server (bench/cold_start.sh starts one with xvfb-run); the window is
seen through X's MapNotify events, so nothing inside the program is measured or changed.

Usage: cold_start.py <TavoMP3Player> [runs]   Prints every run, the medians and the cold/warm ratios.
TAVO_BENCH_LIST=<playlist file> starts with that list instead of 20 songs (bench_big_lists writes lists
of 100 000 to 300 000 songs for it)."""
import ctypes
import ctypes.util
import json
import os
import shutil
import socket
import statistics
import subprocess
import sys
import tempfile
import time

TITLE = b"Tavo MP3 Player!"


class XMapEvent(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("event", ctypes.c_ulong), ("window", ctypes.c_ulong),
                ("override_redirect", ctypes.c_int)]


class XEvent(ctypes.Union):
    _fields_ = [("type", ctypes.c_int), ("xmap", XMapEvent), ("pad", ctypes.c_long * 24)]


MAP_NOTIFY = 19
SUBSTRUCTURE_NOTIFY_MASK = 1 << 19


class MapWatch:
    """Reports when a top-level window with the program's title is mapped."""

    def __init__(self):
        self.x = ctypes.CDLL(ctypes.util.find_library("X11"))
        self.x.XOpenDisplay.restype = ctypes.c_void_p
        self.x.XDefaultRootWindow.argtypes = [ctypes.c_void_p]
        self.x.XDefaultRootWindow.restype = ctypes.c_ulong
        self.x.XSelectInput.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_long]
        self.x.XPending.argtypes = [ctypes.c_void_p]
        self.x.XNextEvent.argtypes = [ctypes.c_void_p, ctypes.POINTER(XEvent)]
        self.x.XFetchName.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.POINTER(ctypes.c_char_p)]
        self.x.XConnectionNumber.argtypes = [ctypes.c_void_p]
        self.display = self.x.XOpenDisplay(None)
        if not self.display:
            raise SystemExit("no X display: run bench/cold_start.sh")
        self.x.XSelectInput(self.display, self.x.XDefaultRootWindow(self.display), SUBSTRUCTURE_NOTIFY_MASK)
        self.x.XFlush(self.display)
        self.fd = self.x.XConnectionNumber(self.display)

    def wait(self, timeout):
        import select
        end = time.monotonic() + timeout
        event = XEvent()
        while time.monotonic() < end:
            while self.x.XPending(self.display):
                self.x.XNextEvent(self.display, ctypes.byref(event))
                if event.type == MAP_NOTIFY:
                    now = time.monotonic()
                    name = ctypes.c_char_p()
                    if self.x.XFetchName(self.display, event.xmap.window, ctypes.byref(name)) and \
                            name.value == TITLE:
                        return now
            select.select([self.fd], [], [], 0.01)
        raise SystemExit("the main window did not appear")


def write_silent_mp3(path, frames=40):
    with open(path, "wb") as f:
        f.write((b"\xff\xfb\x90\x04" + bytes(413)) * frames)


def ask(socket_path, *command):
    with socket.socket(socket.AF_UNIX) as s:
        s.settimeout(2)
        s.connect(socket_path)
        s.sendall(json.dumps({"command": list(command), "request_id": 1}).encode() + b"\n")
        data = b""
        while True:
            data += s.recv(65536)
            for line in data.split(b"\n"):
                if b'"request_id":1' in line:
                    return json.loads(line).get("data")


def player_answers(socket_path):
    try:
        return ask(socket_path, "get_property", "idle-active") is not None
    except OSError:
        return False


def wait_until(probe, timeout=10):
    end = time.monotonic() + timeout
    while time.monotonic() < end:
        if probe():
            return
        time.sleep(0.005)
    raise SystemExit("timed out")


def players_of(socket_path):
    """The mpv processes started for this run's socket, by the program or by this script."""
    pids = []
    for entry in os.listdir("/proc"):
        try:
            with open("/proc/%s/cmdline" % entry, "rb") as f:
                words = f.read().split(b"\0")
        except (OSError, ValueError):
            continue
        if entry.isdigit() and ("--input-ipc-server=" + socket_path).encode() in words:
            pids.append(int(entry))
    return pids


def quit_player(socket_path):
    try:
        pid = ask(socket_path, "get_property", "pid")
        ask(socket_path, "quit")
        wait_until(lambda: not os.path.exists("/proc/%d" % pid) or open("/proc/%d/stat" % pid).read().split(")")[1].split()[0] == "Z")
    except OSError:
        pass
    # A player the program started just before it was ended may not listen yet: it would be left behind.
    left = players_of(socket_path)
    for pid in left:
        try:
            os.kill(pid, 15)
        except OSError:
            pass
    wait_until(lambda: not [pid for pid in left if pid in players_of(socket_path)])


def main():
    program = os.path.abspath(sys.argv[1])
    runs = int(sys.argv[2]) if len(sys.argv) > 2 else 11
    mpv = shutil.which("mpv") or "/usr/bin/mpv"
    folder = tempfile.mkdtemp(prefix="tavo-coldstart-")
    config = os.path.join(folder, "config")
    runtime = os.path.join(folder, "runtime")
    music = os.path.join(folder, "Musik")
    for d in (os.path.join(config, "TavoMP3Player"), os.path.join(config, "mpv"), music):
        os.makedirs(d)
    os.makedirs(runtime, mode=0o700)
    with open(os.path.join(config, "mpv", "mpv.conf"), "w") as f:
        f.write("ao=null\n")
    playlist = os.path.join(folder, "liste.txt")
    with open(playlist, "w") as f:
        for i in range(20):
            song = os.path.join(music, "Lied %02d.mp3" % i)
            write_silent_mp3(song)
            f.write(song + ":5\r\n")
    playlist = os.environ.get("TAVO_BENCH_LIST") or playlist
    ini = os.path.join(config, "TavoMP3Player", "TavoMP3Player.ini")
    settings = "[Settings]\nPlaylistFile=%s\nWinampPath=%s\nUserMP3Directory=%s\n" % (playlist, mpv, music)
    sock = os.path.join(runtime, "tavomp3-mpv.sock")
    env = dict(os.environ, XDG_CONFIG_HOME=config, XDG_RUNTIME_DIR=runtime, QT_QPA_PLATFORM="xcb",
               XDG_CACHE_HOME=os.path.join(folder, "cache"),
               TAVOMP3_POWEROFF_COMMAND="true", TAVOMP3_UPDATE_HOST="127.0.0.1:9")
    watch = MapWatch()
    times = {"warm": [], "cold": []}
    for run in range(runs):
        for kind in ("warm", "cold"):
            with open(ini, "w") as f:  # the program writes its settings back at close
                f.write(settings)
            quit_player(sock)
            if kind == "warm":
                player = subprocess.Popen([mpv, "--idle=yes", "--no-video", "--no-terminal", "--gapless-audio=no",
                                           "--input-ipc-server=" + sock], env=env,
                                          stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
                wait_until(lambda: player_answers(sock))
            time.sleep(0.3)  # both kinds start on a settled machine (the last program and player have gone)
            started = time.monotonic()
            program_process = subprocess.Popen([program], env=env, stdout=subprocess.DEVNULL,
                                               stderr=subprocess.DEVNULL)
            shown = watch.wait(30)
            times[kind].append((shown - started) * 1000)
            program_process.terminate()
            program_process.wait()
            quit_player(sock)
            print("run %2d %s: %6.0f ms" % (run + 1, kind, times[kind][-1]), flush=True)
    warm, cold = times["warm"], times["cold"]
    # Each cold start against the typical warm one: pairing single runs would compare two noises.
    ratios = [c / statistics.median(warm) for c in cold]
    # The same figure for the warm starts themselves: how far the machine alone scatters single runs.
    noise = max(w / statistics.median(warm) for w in warm)
    print("median warm %.0f ms, median cold %.0f ms; cold / median warm: median %.2f, worst %.2f (goal <= 1.5); "
          "worst warm / median warm %.2f"
          % (statistics.median(warm), statistics.median(cold), statistics.median(ratios), max(ratios), noise))
    shutil.rmtree(folder, ignore_errors=True)


if __name__ == "__main__":
    main()
