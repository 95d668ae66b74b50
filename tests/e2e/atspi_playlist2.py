"""The second playlist with the real program and the real mpv: a row of the main list is dragged into
"Playliste 2" with the mouse, the shutdown box is ticked over the accessibility bus (which switches shuffle
off), and the list is played to its end. The power-off command is a script that appends to a marker file; the machine stays on,
and the marker shows that the end of the list asked for the power-off once.
With TAVOMP3_E2E_SHOT set, a screenshot of the screen after the drag is written to that path."""
import os
import shutil
import subprocess
import sys
import time

from desktop import (MAIN_TITLE, by_design_name, player_property, press, rows, run, screenshot, the_app,
                     wait_for, window)


def centre(node):
    box = node.queryComponent().getExtents(0)  # screen coordinates
    return box.x + box.width // 2, box.y + box.height // 2


def xdotool(*args):
    subprocess.run(["xdotool"] + [str(a) for a in args], check=True)


def drag(start, end):
    xdotool("mousemove", *start)
    xdotool("mousedown", 1)
    # Qt starts a drag only after the pointer has moved past the drag distance, in several steps.
    for i in range(1, 13):
        xdotool("mousemove", start[0] + (end[0] - start[0]) * i // 12, start[1] + (end[1] - start[1]) * i // 12)
        time.sleep(0.05)
    time.sleep(0.3)
    xdotool("mouseup", 1)


def test(r):
    marker = os.path.join(r.folder, "powered-off")
    r.start(TAVOMP3_POWEROFF_COMMAND="echo off >> '%s'" % marker)
    app = the_app()
    main_window = wait_for("the main window", lambda: window(app, MAIN_TITLE))
    status = wait_for("FStatus", lambda: by_design_name(main_window, "FStatus"))
    wait_for("the second playlist's load text", lambda: "Playliste 2 aus Datei" in status.name)

    press(by_design_name(main_window, "BPlaylist2"))
    second = wait_for("the window Playliste 2", lambda: window(app, "Playliste 2"))
    list2 = wait_for("its list", lambda: by_design_name(second, "FPlaylist"))
    wait_for("its two rows", lambda: len(rows(list2)) == 2)
    list1 = by_design_name(main_window, "FPlaylist")

    # Drag "3. Drittes Lied" below the two rows of the second playlist: it is appended.
    source = wait_for("the third row", lambda: next(
        (list1.getChildAtIndex(i) for i in range(list1.childCount)
         if list1.getChildAtIndex(i).name == "3. Drittes Lied"), None))
    box = list2.queryComponent().getExtents(0)
    drag(centre(source), (box.x + 40, box.y + box.height - 20))
    expected = ["1. Erstes Lied", "2. Zweites Lied", "3. Drittes Lied"]
    wait_for("the dropped row", lambda: rows(list2) == expected, timeout=10)
    status2 = by_design_name(second, "FStatus")
    r.expect("effect: 1" in status2.name, "drop status reads %r" % status2.name)
    screenshot()

    # Tick the shutdown box, start the first row with a click and let Play run the list out.
    press(by_design_name(second, "ShutdownOnPL2End"))
    xdotool("mousemove", *centre(list2.getChildAtIndex(0)))
    xdotool("click", 1)
    press(by_design_name(main_window, "BPlay"))
    wait_for("the power-off marker", lambda: os.path.exists(marker), timeout=30)
    time.sleep(2.5)  # more monitor ticks: the end of the list asks for the power-off once
    with open(marker) as f:
        requests = f.read().count("off")
    r.expect(requests == 1, "the power-off was requested %d times" % requests)
    played = [os.path.basename(e["filename"]) for e in player_property(r.runtime, "playlist")]
    r.expect(played[-3:] == ["Erstes Lied.mp3", "Zweites Lied.mp3", "Drittes Lied.mp3"], "player given %r" % played)


if __name__ == "__main__":
    if not shutil.which("xdotool"):
        print("SKIP: xdotool is not installed (scripts/deps.sh installs it)")
        sys.exit(77)
    # Songs of about one second; shuffle is on, and the ticked box must switch it off to play the list out.
    sys.exit(run(test, frames=40, second_list=True, position=False, more="ShuffleStatus=True\n"))
