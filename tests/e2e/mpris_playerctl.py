"""The desktop's player controls (MPRIS2) with the real program, the real mpv and the real playerctl: every
command, the song changing by itself (seen by `playerctl --follow`, so the program announced it), volume and
shuffle reaching the program's own settings, Raise from the notification area, Quit, and a clear refusal
while no player runs."""
import os
import shutil
import subprocess
import sys
import threading

from desktop import MAIN_TITLE, find_app, player_property, quit_player, run, wait_for, window

PLAYER = "TavoMP3Player"


def call(method):
    """A method of the program's MPRIS2 object, called with dbus-send."""
    subprocess.run(["dbus-send", "--session", "--print-reply", "--dest=org.mpris.MediaPlayer2." + PLAYER,
                    "/org/mpris/MediaPlayer2", method], check=True, capture_output=True, timeout=30)


def window_showing():
    app = find_app()
    return app is not None and window(app, MAIN_TITLE, showing=True) is not None


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
                             "{{status}} {{xesam:title}} {{mpris:length}}"], stdout=subprocess.PIPE, text=True)
    threading.Thread(target=lambda: lines.extend(iter(proc.stdout.readline, "")), daemon=True).start()
    return proc, lines


def test(r):
    def expect(what, got, wanted):
        print("%s: %r" % (what, got))
        r.expect(got == wanted, "%s: %r, expected %r" % (what, got, wanted))

    # Started into the notification area: the controls work without the window.
    r.start("start")
    wait_for("the player controls on the session bus", lambda: value("status") == "Stopped", timeout=30)
    expect("trackid before any song", meta("mpris:trackid"), "/org/mpris/MediaPlayer2/TrackList/NoTrack")
    watcher, announced = follow()
    try:
        # Play from a stop starts the marked line (the saved position), priority 0 or not. While the
        # program still starts its player, Play is refused (without a player) and does nothing.
        wait_for("play accepted", lambda: playerctl("play")[0] == 0)
        wait_for("the second song playing", lambda: value("status") == "Playing" and title() == "Zweites Lied")
        expect("trackid", meta("mpris:trackid"), "/example/tavomp3/player/track/1_1")
        expect("url", meta("xesam:url"), "file://" + r.folder + "/Musik/Album/Zweites%20Lied.mp3")
        # The length to the microsecond, from the song's 120 frames of 1152 samples at 44.1 kHz.
        wait_for("the length in microseconds", lambda: meta("mpris:length") == "3134694")

        # The song ends and the program goes on by itself: the desktop is told.
        wait_for("the next song by itself", lambda: title() == "Drittes Lied", timeout=10)
        # Title and length in the same announcement: no line of the new song without its length.
        wait_for("the announcement of it", lambda: "Playing Drittes Lied 3134694\n" in announced, timeout=5)
        expect("lines of the new song", [l for l in announced if "Drittes" in l], ["Playing Drittes Lied 3134694\n"])

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

        # A player that died is started again by the next Play, at the program's volume.
        quit_player(r.runtime)
        wait_for("the player gone", lambda: value("status") == "Stopped" and meta("mpris:trackid").endswith("NoTrack"))
        expect("play after the player died", playerctl("play")[0], 0)
        wait_for("playing in a new player", lambda: value("status") == "Playing")
        expect("the new player's volume", round(player_property(r.runtime, "volume"), 1), 50.2)

        # Without a player that can be started the command is refused with a reason, and the program goes on.
        os.remove(os.path.join(r.folder, "player", "mpv"))
        quit_player(r.runtime)
        refusal = wait_for("the refusal without a player", lambda: (
            lambda answer: answer[2] if answer[0] != 0 else None)(playerctl("play")))
        r.expect("es läuft kein Player" in refusal, "refusal reads %r" % refusal)

        # Raise brings the window back from the notification area.
        r.expect(not window_showing(), "the window shows although started with 'start'")
        call("org.mpris.MediaPlayer2.Raise")
        wait_for("the window raised", window_showing)

        # Quit closes the program as "Beenden" does: the settings keep the slider and the flag.
        call("org.mpris.MediaPlayer2.Quit")
        r.program.wait(20)
        settings = open(os.path.join(r.config, "TavoMP3Player", "TavoMP3Player.ini"), encoding="utf-8").read()
        for line in ("Volume=128", "ShuffleStatus=True"):
            r.expect(line in settings, "settings lack %r" % line)
    finally:
        watcher.terminate()


if __name__ == "__main__":
    for tool in ("playerctl", "stdbuf"):
        if not shutil.which(tool):
            print("SKIP: %s is not installed (scripts/deps.sh installs it)" % tool)
            sys.exit(77)
    # The weighted pick draws from all entries but the last and never takes priority 0: with shuffle on,
    # "Erstes Lied" is the only song Next can choose. The songs last about three seconds.
    sys.exit(run(test, priorities=(5, 0, 5), own_player=True))
