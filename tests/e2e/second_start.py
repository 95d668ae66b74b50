"""A second start of the real program: it hands "play" to the running one, which comes to the front from the
notification area and plays, and ends itself; the same without a session bus, through the local socket in the
private runtime folder; and a start while another program holds the bus name, which is said and left alone.
With TAVOMP3_E2E_SHOT set, a screenshot of the screen after the second start is written to that path."""
import os
import subprocess
import sys

import pyatspi
from gi.repository import Gio, GLib

from desktop import MAIN_TITLE, PROGRAM, by_design_name, player_property, run, screenshot, the_app, wait_for, walk, window

BUS_NAME = "org.mpris.MediaPlayer2.TavoMP3Player"
NO_BUS = "unix:path=/nonexistent/tavo-no-bus"


def second_start(env, *words):
    """Runs a second program; it must hand over and end by itself."""
    r = subprocess.run([PROGRAM, *words], env=env, capture_output=True, text=True, timeout=30)
    print("second start:", r.returncode, r.stderr.strip().splitlines()[-1:] if r.stderr else "")
    return r.returncode == 0 and "läuft schon" in r.stderr


def over_the_bus(r):
    r.start("start")
    app = the_app()
    status = wait_for("FStatus", lambda: by_design_name(app, "FStatus"))
    wait_for("the playlist loaded", lambda: "Songs" in status.name)
    r.expect(not window(app, MAIN_TITLE, showing=True), "the window shows although started with 'start'")
    r.expect(second_start(r.env(), "play"), "the second start did not hand over")
    wait_for("the window in front", lambda: window(app, MAIN_TITLE, showing=True))
    monitor = by_design_name(app, "FTest2")
    wait_for("the song the word 'play' started", lambda: monitor.name == "Winamp Status = 1 / Playmode = 1")
    screenshot()
    apps = pyatspi.Registry.getDesktop(0)
    count = sum(1 for i in range(apps.childCount) if getattr(apps.getChildAtIndex(i), "name", None) == "TavoMP3Player")
    r.expect(count == 1, "%d programs on the accessibility bus" % count)
    r.expect(r.program.poll() is None, "the first program ended")


def without_a_bus(r):
    r.start(DBUS_SESSION_BUS_ADDRESS=NO_BUS)
    wait_for("the local socket", lambda: os.path.exists(os.path.join(r.runtime, "TavoMP3Player.instance")), 30)
    wait_for("the player", lambda: os.path.exists(os.path.join(r.runtime, "tavomp3-mpv.sock")), 30)
    r.expect(second_start(r.env(DBUS_SESSION_BUS_ADDRESS=NO_BUS), "play"),
             "without a bus the second start did not hand over")
    wait_for("the song the word 'play' started", lambda: player_property(r.runtime, "idle-active") is False)
    r.expect(r.program.poll() is None, "without a bus the first program ended")


def name_held_by_another(r):
    bus = Gio.bus_get_sync(Gio.BusType.SESSION, None)

    def ask(method, signature, args):
        return bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method,
                             GLib.Variant(signature, args), None, Gio.DBusCallFlags.NONE, -1, None).unpack()[0]

    try:
        if ask("RequestName", "(su)", (BUS_NAME, 4)) != 1:
            r.failures.append("could not take the bus name for the test")
            return
        r.start()
        app = the_app(30)
        box = wait_for("the message about the name", lambda: next(
            (n for n in walk(app) if "gehört schon einem anderen Programm" in (n.name or "")), None), 30)
        print("message:", box.name)
        r.expect(ask("GetNameOwner", "(s)", (BUS_NAME,)) == bus.get_unique_name(), "the bus name was taken")
        r.expect(r.program.poll() is None, "the program ended although only the name was taken")
    finally:
        r.stop()
        bus.close_sync(None)


if __name__ == "__main__":
    results = []
    for case in (over_the_bus, without_a_bus, name_held_by_another):
        print("==", case.__name__)
        results.append(run(case))
    sys.exit(max(results))
