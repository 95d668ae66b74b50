"""The notification area on a real X desktop. A panel that starts after the program (login starts both
at once) still gets the icon; without any panel, "start" must leave the window reachable; with one,
"start" keeps the window hidden and only the icon is left."""
import shutil
import subprocess
import sys
import tempfile

from atspi_main_window import prepare, report, start, stop, wait_for

MAIN_TITLE = "Tavo MP3 Player!"


def main_window_state():
    out = subprocess.run(["xwininfo", "-name", MAIN_TITLE], capture_output=True, text=True).stdout
    for line in out.splitlines():
        if "Map State:" in line:
            return line.split(":", 1)[1].strip()
    return None


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


def main():
    if not shutil.which("trayer") or not shutil.which("xwininfo"):
        print("SKIP: trayer and xwininfo are needed (scripts/deps.sh installs them)")
        return 77
    folder = tempfile.mkdtemp(prefix="tavo-tray-")
    config, _ = prepare(folder)
    failures = []
    tray = None
    program, runtime = start(folder, config, words=["start"])
    try:
        state = wait_for("the main window", lambda: main_window_state() == "IsViewable" and "IsViewable")
        print("without a panel, after start:", state)
        tray = subprocess.Popen(["trayer", "--edge", "top", "--align", "right", "--widthtype", "request",
                                 "--height", "24"])
        wait_for("the icon in the panel that started later", icon_in_panel)
        print("icon embedded in the later panel")
        stop(program, runtime)

        program, runtime = start(folder, config, words=["start"])
        wait_for("the icon of the second start", icon_in_panel)
        state = main_window_state()
        print("with a panel, after start:", state)
        if state == "IsViewable":
            failures.append("start shows the window although the icon is in the panel")
    except AssertionError as e:
        failures.append(str(e))
    finally:
        stop(program, runtime)
        if tray is not None:
            tray.terminate()
    return report(failures)


if __name__ == "__main__":
    sys.exit(main())
