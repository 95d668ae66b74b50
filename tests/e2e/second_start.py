"""A second start of the real program: it hands "play" to the running one, which comes to the front from the
notification area and plays, and ends itself; the same without a session bus, through the local socket in the
private runtime folder; and a start while another program holds the bus name, which is said and left alone.
With TAVOMP3_E2E_SHOT set, a screenshot of the screen after the second start is written to that path."""
import json
import os
import socket
import subprocess
import sys
import tempfile

import pyatspi
from gi.repository import Gio, GLib

import atspi_main_window as desktop
from atspi_main_window import by_design_name, find_app, prepare, program_env, report, start, stop, wait_for

BUS_NAME = "org.mpris.MediaPlayer2.TavoMP3Player"
NO_BUS = "unix:path=/nonexistent/tavo-no-bus"


def second_start(env, *words):
    """Runs a second program; it must hand over and end by itself."""
    r = subprocess.run([desktop.PROGRAM, *words], env=env, capture_output=True, text=True, timeout=30)
    print("second start:", r.returncode, r.stderr.strip().splitlines()[-1:] if r.stderr else "")
    return r.returncode == 0 and "läuft schon" in r.stderr


def main_window_showing(app):
    for i in range(app.childCount):
        w = app.getChildAtIndex(i)
        if w is not None and w.name == "Tavo MP3 Player!" and w.getState().contains(pyatspi.STATE_SHOWING):
            return w
    return None


def player_playing(runtime):
    """Asks the player over its socket whether a song plays."""
    with socket.socket(socket.AF_UNIX) as s:
        s.settimeout(2)
        s.connect(os.path.join(runtime, "tavomp3-mpv.sock"))
        s.sendall(b'{"command":["get_property","idle-active"]}\n')
        reply = b""
        while b'"error"' not in reply:
            reply += s.recv(4096)
    for line in reply.splitlines():
        answer = json.loads(line)
        if "error" in answer:
            return answer.get("data") is False
    return False


def over_the_bus(folder, config, failures):
    program, runtime = start(folder, config, words=["start"])
    try:
        app = wait_for("the program on the accessibility bus", find_app)
        status = wait_for("FStatus", lambda: by_design_name(app, "FStatus"))
        wait_for("the playlist loaded", lambda: "Songs" in status.name)
        if main_window_showing(app):
            failures.append("the window shows although started with 'start'")
        if not second_start(program_env(folder, config), "play"):
            failures.append("the second start did not hand over")
        wait_for("the window in front", lambda: main_window_showing(app))
        monitor = by_design_name(app, "FTest2")
        wait_for("the song the word 'play' started", lambda: monitor.name == "Winamp Status = 1 / Playmode = 1")
        shot = os.environ.get("TAVOMP3_E2E_SHOT")
        if shot:
            subprocess.run(["import", "-window", "root", shot], check=False)
        desktop_apps = pyatspi.Registry.getDesktop(0)
        count = sum(1 for i in range(desktop_apps.childCount)
                    if getattr(desktop_apps.getChildAtIndex(i), "name", None) == "TavoMP3Player")
        if count != 1:
            failures.append("%d programs on the accessibility bus" % count)
        if program.poll() is not None:
            failures.append("the first program ended")
    finally:
        stop(program, runtime)


def without_a_bus(folder, config, failures):
    env = program_env(folder, config, DBUS_SESSION_BUS_ADDRESS=NO_BUS)
    program = subprocess.Popen([desktop.PROGRAM], env=env)
    runtime = env["XDG_RUNTIME_DIR"]
    try:
        wait_for("the local socket", lambda: os.path.exists(os.path.join(runtime, "TavoMP3Player.instance")), 30)
        wait_for("the player", lambda: os.path.exists(os.path.join(runtime, "tavomp3-mpv.sock")), 30)
        if not second_start(env, "play"):
            failures.append("without a bus the second start did not hand over")
        wait_for("the song the word 'play' started", lambda: player_playing(runtime))
        if program.poll() is not None:
            failures.append("without a bus the first program ended")
    finally:
        stop(program, runtime)


def name_held_by_another(folder, config, failures):
    bus = Gio.bus_get_sync(Gio.BusType.SESSION, None)
    reply = bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
                          GLib.Variant("(su)", (BUS_NAME, 4)), None, Gio.DBusCallFlags.NONE, -1, None)
    if reply.unpack()[0] != 1:
        failures.append("could not take the bus name for the test")
        return
    program, runtime = start(folder, config)
    try:
        app = wait_for("the program on the accessibility bus", find_app, 30)
        box = wait_for("the message about the name", lambda: next(
            (n for n in desktop.walk(app) if "gehört schon einem anderen Programm" in (n.name or "")), None), 30)
        print("message:", box.name)
        owner = bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                              "GetNameOwner", GLib.Variant("(s)", (BUS_NAME,)), None, Gio.DBusCallFlags.NONE, -1,
                              None).unpack()[0]
        if owner != bus.get_unique_name():
            failures.append("the bus name was taken from its owner")
        if program.poll() is not None:
            failures.append("the program ended although only the name was taken")
    finally:
        stop(program, runtime)
        bus.close_sync(None)


def main():
    failures = []
    for case in (over_the_bus, without_a_bus, name_held_by_another):
        folder = tempfile.mkdtemp(prefix="tavo-second-")
        config, _ = prepare(folder)
        print("==", case.__name__)
        try:
            case(folder, config, failures)
        except (AssertionError, OSError, subprocess.SubprocessError) as e:
            failures.append("%s: %s" % (case.__name__, e))
    return report(failures)


if __name__ == "__main__":
    sys.exit(main())
