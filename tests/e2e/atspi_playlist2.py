"""The second playlist with the real program and the real mpv: a row of the main list is dragged into
"Playliste 2" with the mouse, the shutdown box is ticked over the accessibility bus, and the list is
played to its end. The power-off command is a script that appends to a marker file; the machine stays on,
and the marker shows that the end of the list asked for the power-off once.
With TAVOMP3_E2E_SHOT set, a screenshot of the screen after the drag is written to that path."""
import json
import os
import shutil
import socket
import subprocess
import sys
import tempfile
import time

from atspi_main_window import (by_design_name, find_app, press, report, start, stop, wait_for, window,
                               write_silent_mp3)


def prepare(folder):
    config = os.path.join(folder, "config")
    os.makedirs(os.path.join(config, "TavoMP3Player"))
    os.makedirs(os.path.join(config, "mpv"))
    with open(os.path.join(config, "mpv", "mpv.conf"), "w") as f:
        f.write("ao=null\n")
    music = os.path.join(folder, "Musik")
    os.makedirs(music)
    songs = []
    for name in ("Erstes Lied", "Zweites Lied", "Drittes Lied"):
        path = os.path.join(music, name + ".mp3")
        write_silent_mp3(path, frames=40)  # about one second each
        songs.append(path)
    one = os.path.join(folder, "liste1.txt")
    two = os.path.join(folder, "liste2.txt")
    with open(one, "w") as f:
        f.write("".join(s + ":5\r\n" for s in songs))
    with open(two, "w") as f:
        f.write("".join(s + ":5\r\n" for s in songs[:2]))
    mpv = shutil.which("mpv") or "/usr/bin/mpv"
    with open(os.path.join(config, "TavoMP3Player", "TavoMP3Player.ini"), "w") as f:
        f.write("[Settings]\nPlaylistFile=%s\nPlaylistFile2=%s\nWinampPath=%s\nUserMP3Directory=%s\n"
                % (one, two, mpv, music))
    return config


def centre(node):
    box = node.queryComponent().getExtents(0)  # screen coordinates
    return box.x + box.width // 2, box.y + box.height // 2


def xdotool(*args):
    subprocess.run(["xdotool"] + [str(a) for a in args], check=True)


def drag(start, end):
    xdotool("mousemove", *start)
    xdotool("mousedown", 1)
    # Qt starts a drag only after the pointer has moved past the drag distance, in several steps.
    steps = 12
    for i in range(1, steps + 1):
        x = start[0] + (end[0] - start[0]) * i // steps
        y = start[1] + (end[1] - start[1]) * i // steps
        xdotool("mousemove", x, y)
        time.sleep(0.05)
    time.sleep(0.3)
    xdotool("mouseup", 1)


def rows(listbox):
    return [r for r in (listbox.getChildAtIndex(i).name for i in range(listbox.childCount)) if r]


def player_playlist(socket_path):
    with socket.socket(socket.AF_UNIX) as s:
        s.connect(socket_path)
        s.sendall(b'{"command":["get_property","playlist"],"request_id":7}\n')
        data = b""
        while True:
            data += s.recv(65536)
            for line in data.split(b"\n"):
                if b'"request_id":7' in line:
                    return [os.path.basename(e["filename"]) for e in json.loads(line)["data"]]


def main():
    if not shutil.which("xdotool"):
        print("SKIP: xdotool is not installed (scripts/deps.sh installs it)")
        return 77
    folder = tempfile.mkdtemp(prefix="tavo-pl2-")
    config = prepare(folder)
    marker = os.path.join(folder, "powered-off")
    program, runtime = start(folder, config, TAVOMP3_POWEROFF_COMMAND="echo off >> '%s'" % marker)
    failures = []
    try:
        app = wait_for("the program on the accessibility bus", find_app)
        main_window = wait_for("the main window", lambda: window(app, "Tavo MP3 Player!"))
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
        print("Playliste 2 FStatus:", status2.name)
        if "effect: 1" not in status2.name:
            failures.append("drop status reads %r" % status2.name)
        shot = os.environ.get("TAVOMP3_E2E_SHOT")
        if shot:
            subprocess.run(["import", "-window", "root", shot], check=False)

        # Tick the shutdown box, start the first row with a click and let Play run the list out.
        press(by_design_name(second, "ShutdownOnPL2End"))
        first = list2.getChildAtIndex(0)
        xdotool("mousemove", *centre(first))
        xdotool("click", 1)
        press(by_design_name(main_window, "BPlay"))
        wait_for("the power-off marker", lambda: os.path.exists(marker), timeout=30)
        time.sleep(2.5)  # more monitor ticks: the end of the list asks for the power-off once
        with open(marker) as f:
            requests = f.read().count("off")
        if requests != 1:
            failures.append("the power-off was requested %d times" % requests)
        played = player_playlist(os.path.join(runtime, "tavomp3-mpv.sock"))
        print("player list:", played)
        if played[-3:] != ["Erstes Lied.mp3", "Zweites Lied.mp3", "Drittes Lied.mp3"]:
            failures.append("the player was given %r" % played)
    except (AssertionError, OSError) as e:
        failures.append(str(e))
    finally:
        stop(program, runtime)
    return report(failures)


if __name__ == "__main__":
    sys.exit(main())
