"""Dumps the accessibility tree of the main window, the settings window and Playliste 2 as a screen
reader sees it, and fails for any control a user can operate that has no name or, with design names
switched on, no design name."""
import sys
import tempfile

from atspi_main_window import by_design_name, find_app, prepare, press, report, start, stop, wait_for, walk, window

# Roles of things a user operates; labels, panels and fillers are read, not operated.
OPERABLE = {"push button", "check box", "radio button", "slider", "text", "list", "combo box", "page tab",
            "menu item", "check menu item", "spin button", "table", "tree table"}


def dump(win, failures):
    print("== %s" % win.name)
    for node in walk(win):
        role = node.getRoleName()
        if role == "list item" or role == "table cell":
            continue  # rows are named by their text
        parent = node.parent
        if parent is not None and parent.getRoleName() == "combo box":
            continue  # the drop-down list of a combo box belongs to Qt
        print("%-14s %-40r %r" % (role, node.name, node.description))
        if role in OPERABLE:
            if not node.name.strip():
                failures.append("%s: %s %r has no name" % (win.name, role, node.description))
            if not node.description and role not in ("menu item", "page tab"):
                failures.append("%s: %s %r has no design name" % (win.name, role, node.name))


def main():
    folder = tempfile.mkdtemp(prefix="tavo-tree-")
    config, _ = prepare(folder)
    program, runtime = start(folder, config)
    failures = []
    try:
        app = wait_for("the program on the accessibility bus", find_app)
        main_window = wait_for("the main window", lambda: window(app, "Tavo MP3 Player!"))
        wait_for("the loaded list", lambda: "Songs" in by_design_name(main_window, "FStatus").name)
        press(by_design_name(main_window, "BPlaylist2"))
        second = wait_for("Playliste 2", lambda: window(app, "Playliste 2"))
        settings_entry = wait_for("the settings menu entry", lambda: by_design_name(main_window, "MenuEinstellungen"))
        press(settings_entry)
        settings = wait_for("the settings window", lambda: next(
            (app.getChildAtIndex(i) for i in range(app.childCount)
             if app.getChildAtIndex(i).description == "TavoMP3Settings"), None))
        for win in (main_window, settings, second):
            dump(win, failures)
    except AssertionError as e:
        failures.append(str(e))
    finally:
        stop(program, runtime)
    return report(failures)


if __name__ == "__main__":
    sys.exit(main())
