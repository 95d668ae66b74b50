"""The notification area on a real X desktop. A panel that starts after the program (login starts both
at once) still gets the icon; without any panel, "start" must leave the window reachable; with one,
"start" keeps the window hidden and only the icon is left. The first start finds the desktop's media-control
bus name held by another program: it says so and runs on, and the other program keeps the name."""
import shutil
import subprocess
import sys

from gi.repository import Gio, GLib

from desktop import MAIN_TITLE, run, the_app, wait_for, walk

BUS_NAME = "org.mpris.MediaPlayer2.TavoMP3Player"


def main_window_state():
    out = subprocess.run(["xwininfo", "-name", MAIN_TITLE], capture_output=True, text=True).stdout
    return next((line.split(":", 1)[1].strip() for line in out.splitlines() if "Map State:" in line), None)


def icon_in_panel():
    """True when a window of the program sits inside the tray host's panel window."""
    panel_indent = None
    for line in subprocess.run(["xwininfo", "-root", "-tree"], capture_output=True, text=True).stdout.splitlines():
        indent = len(line) - len(line.lstrip())
        if '("panel" "trayer")' in line:
            panel_indent = indent
        elif panel_indent is not None:
            if indent <= panel_indent:
                panel_indent = None
            elif '("TavoMP3Player" "TavoMP3Player")' in line:
                return True
    return False


def test(r):
    bus = Gio.bus_get_sync(Gio.BusType.SESSION, None)

    def ask(method, signature, args):
        return bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method,
                             GLib.Variant(signature, args), None, Gio.DBusCallFlags.NONE, -1, None).unpack()[0]

    try:
        if ask("RequestName", "(su)", (BUS_NAME, 4)) != 1:
            r.failures.append("could not take the bus name for the test")
            return
        r.start("start")
        wait_for("the main window without a panel", lambda: main_window_state() == "IsViewable")
        app = the_app(30)
        wait_for("the message about the name", lambda: next(
            (n for n in walk(app) if "gehört schon einem anderen Programm" in (n.name or "")), None), 30)
        r.expect(ask("GetNameOwner", "(s)", (BUS_NAME,)) == bus.get_unique_name(), "the bus name was taken")
        r.expect(r.program.poll() is None, "the program ended although only the name was taken")
        ask("ReleaseName", "(s)", (BUS_NAME,))
        with_a_panel(r)
    finally:
        bus.close_sync(None)


def with_a_panel(r):
    tray = subprocess.Popen(["trayer", "--edge", "top", "--align", "right", "--widthtype", "request",
                             "--height", "24"])
    try:
        wait_for("the icon in the panel that started later", icon_in_panel)
        r.stop()
        r.start("start")
        wait_for("the icon of the second start", icon_in_panel)
        r.expect(main_window_state() != "IsViewable", "start shows the window although the icon is in the panel")
    finally:
        tray.terminate()


if __name__ == "__main__":
    if not shutil.which("trayer") or not shutil.which("xwininfo"):
        print("SKIP: trayer and xwininfo are needed (scripts/deps.sh installs them)")
        sys.exit(77)
    sys.exit(run(test))
