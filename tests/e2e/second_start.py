"""A second start of the real program: it hands "play" to the running one, which comes to the front from the
notification area and plays, and ends itself; the same without a session bus, through the local socket in the
private runtime folder.
With TAVOMP3_E2E_SHOT set, a screenshot of the screen after the second start is written to that path."""
import os
import subprocess
import sys

from desktop import MAIN_TITLE, PROGRAM, by_design_name, player_property, run, screenshot, the_app, wait_for, window

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
    r.expect(r.program.poll() is None, "the first program ended")


def without_a_bus(r):
    r.start(DBUS_SESSION_BUS_ADDRESS=NO_BUS)
    wait_for("the local socket", lambda: os.path.exists(os.path.join(r.runtime, "TavoMP3Player.instance")), 30)
    wait_for("the player", lambda: os.path.exists(os.path.join(r.runtime, "tavomp3-mpv.sock")), 30)
    r.expect(second_start(r.env(DBUS_SESSION_BUS_ADDRESS=NO_BUS), "play"),
             "without a bus the second start did not hand over")
    wait_for("the song the word 'play' started", lambda: player_property(r.runtime, "idle-active") is False)
    r.expect(r.program.poll() is None, "without a bus the first program ended")


if __name__ == "__main__":
    results = []
    for case in (over_the_bus, without_a_bus):
        print("==", case.__name__)
        results.append(run(case))
    sys.exit(max(results))
