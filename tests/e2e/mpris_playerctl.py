"""The desktop's player controls (MPRIS2) with the real program, the real mpv and the real playerctl: every
command, the song changing by itself (seen by `playerctl --follow`, so the program announced it), volume and
shuffle reaching the program's own settings, Raise from the notification area, Quit, and a clear refusal
while no player runs."""
import os
import shutil
import subprocess
import sys
import tempfile
import threading
import time

import pyatspi

from atspi_main_window import find_app, quit_player, report, start, stop, wait_for, write_silent_mp3

PLAYER = "TavoMP3Player"


def prepare(folder):
    config = os.path.join(folder, "config")
    os.makedirs(os.path.join(config, "TavoMP3Player"))
    os.makedirs(os.path.join(config, "mpv"))
    with open(os.path.join(config, "mpv", "mpv.conf"), "w") as f:
        f.write("ao=null\n")
    music = os.path.join(folder, "Musik")
    os.makedirs(music)
    lines = []
    # The weighted pick draws from all entries but the last and never takes priority 0: with shuffle on,
    # "Erstes Lied" is the only song Next can choose.
    for name, priority in (("Erstes Lied", 5), ("Zweites Lied", 0), ("Drittes Lied", 5)):
        path = os.path.join(music, name + ".mp3")
        write_silent_mp3(path, frames=120)  # about three seconds
        lines.append("%s:%d\r\n" % (path, priority))
    playlist = os.path.join(folder, "liste.txt")
    with open(playlist, "w", newline="") as f:
        f.write("".join(lines))
    mpv = shutil.which("mpv") or "/usr/bin/mpv"
    ini = os.path.join(config, "TavoMP3Player", "TavoMP3Player.ini")
    with open(ini, "w") as f:
        f.write("[Settings]\nPlaylistFile=%s\nWinampPath=%s\nUserMP3Directory=%s\nCurrentPlaylistPosition=1\n"
                % (playlist, mpv, music))
    return config, ini


def call(method):
    """A method of the program's MPRIS2 object, called with dbus-send."""
    subprocess.run(["dbus-send", "--session", "--print-reply", "--dest=org.mpris.MediaPlayer2." + PLAYER,
                    "/org/mpris/MediaPlayer2", method], check=True, capture_output=True, timeout=30)


def window_showing():
    app = find_app()
    return app is not None and any(
        w is not None and w.name == "Tavo MP3 Player!" and w.getState().contains(pyatspi.STATE_SHOWING)
        for w in (app.getChildAtIndex(i) for i in range(app.childCount)))


def playerctl(*args):
    r = subprocess.run(["playerctl", "-p", PLAYER, *args], capture_output=True, text=True, timeout=30)
    return r.returncode, r.stdout.strip(), r.stderr.strip()


def value(*args):
    return playerctl(*args)[1]


def meta(key):
    # Object paths come in quotes.
    return value("metadata", "--format", "{{%s}}" % key).strip("'")


def title():
    return meta("xesam:title")


def follow():
    """playerctl --follow in the background: the lines it prints when the program announces a change."""
    lines = []
    proc = subprocess.Popen(["stdbuf", "-oL", "playerctl", "-p", PLAYER, "--follow", "metadata", "--format",
                             "{{status}} {{xesam:title}}"], stdout=subprocess.PIPE, text=True)
    threading.Thread(target=lambda: lines.extend(iter(proc.stdout.readline, "")), daemon=True).start()
    return proc, lines


def main():
    for tool in ("playerctl", "stdbuf"):
        if not shutil.which(tool):
            print("SKIP: %s is not installed (scripts/deps.sh installs it)" % tool)
            return 77
    folder = tempfile.mkdtemp(prefix="tavo-mpris-")
    config, ini = prepare(folder)
    # Started into the notification area: the controls work without the window.
    program, runtime = start(folder, config, words=["start"])
    watcher = None
    failures = []

    def expect(what, got, wanted):
        print("%s: %r" % (what, got))
        if got != wanted:
            failures.append("%s: %r, expected %r" % (what, got, wanted))

    try:
        wait_for("the player controls on the session bus", lambda: value("status") == "Stopped", timeout=30)
        expect("trackid before any song", meta("mpris:trackid"),
               "/org/mpris/MediaPlayer2/TrackList/NoTrack")
        watcher, announced = follow()

        # Play from a stop starts the marked line (the saved position), priority 0 or not. While the
        # program still starts its player, Play is refused (without a player) and does nothing.
        wait_for("play accepted", lambda: playerctl("play")[0] == 0)
        wait_for("the second song playing", lambda: value("status") == "Playing" and title() == "Zweites Lied")
        expect("trackid", meta("mpris:trackid"), "/example/tavomp3/player/track/1_1")
        expect("url", meta("xesam:url"), "file://" + folder + "/Musik/Zweites%20Lied.mp3")
        wait_for("the length in microseconds", lambda: meta("mpris:length") == "3000000")

        # The song ends and the program goes on by itself: the desktop is told.
        wait_for("the next song by itself", lambda: title() == "Drittes Lied", timeout=10)
        wait_for("the announcement of it", lambda: "Playing Drittes Lied\n" in announced, timeout=5)

        # Shuffle is the program's own flag; Next then honours the priorities.
        expect("shuffle on", playerctl("shuffle", "On")[0], 0)
        wait_for("shuffle reported", lambda: value("shuffle") == "On")
        expect("next", playerctl("next")[0], 0)
        wait_for("the weighted pick", lambda: title() == "Erstes Lied")
        # Previous is the history's song before the current one.
        expect("previous", playerctl("previous")[0], 0)
        wait_for("the song before", lambda: meta("mpris:trackid") == "/example/tavomp3/player/track/1_2")

        expect("volume", playerctl("volume", "0.5")[0], 0)
        wait_for("the volume slider", lambda: value("volume") == "0.501961")
        for command, status in (("pause", "Paused"), ("play", "Playing"), ("play-pause", "Paused"),
                                ("play-pause", "Playing"), ("stop", "Stopped")):
            playerctl(command)
            wait_for("%s -> %s" % (command, status), lambda: value("status") == status)

        # Without a player the command is refused with a reason, and the program goes on.
        quit_player(os.path.join(runtime, "tavomp3-mpv.sock"))
        refusal = wait_for("the refusal without a player", lambda: (
            lambda r: r[2] if r[0] != 0 else None)(playerctl("play")))
        print("without a player:", refusal)
        if "es läuft kein Player" not in refusal:
            failures.append("refusal reads %r" % refusal)

        # Raise brings the window back from the notification area.
        if window_showing():
            failures.append("the window shows although started with 'start'")
        call("org.mpris.MediaPlayer2.Raise")
        wait_for("the window raised", window_showing)

        # Quit closes the program as "Beenden" does: the settings keep the slider and the flag.
        call("org.mpris.MediaPlayer2.Quit")
        program.wait(20)
        settings = open(ini, encoding="utf-8").read()
        for line in ("Volume=128", "ShuffleStatus=True"):
            if line not in settings:
                failures.append("settings lack %r" % line)
        print("announced:", "".join(announced).replace("\n", " | "))
    except (AssertionError, OSError, subprocess.SubprocessError) as e:
        failures.append(str(e))
    finally:
        if watcher:
            watcher.terminate()
        stop(program, runtime)
    return report(failures)


if __name__ == "__main__":
    sys.exit(main())
