"""Dumps the accessibility tree of the main window, the settings window and Playliste 2 as a screen
reader sees it, and fails for any control a user can operate that has no name or, with design names
switched on, no design name; our own controls must show the role, name and action a screen reader
expects."""
import sys
import tempfile

import pyatspi

from atspi_main_window import by_design_name, find_app, prepare, press, report, start, stop, wait_for, walk, window

# Roles of things a user operates; labels, panels and fillers are read, not operated.
OPERABLE = {"push button", "check box", "radio button", "slider", "text", "list", "combo box", "page tab",
            "menu item", "check menu item", "spin button", "table", "tree table"}


# Our own controls as a screen reader must see them: design name -> (roles, name, an action it offers).
CUSTOM = {
    "BPlay": ({"push button"}, "Play", "Press"),
    "BPlaylist2": ({"push button"}, None, "Press"),
    "TavoSlider1": ({"slider"}, "Songposition", None),
    "sldVol": ({"slider"}, "Lautstärke", None),
    "TavoxMiniDiagram1": ({"image", "graphic"}, "Bitrate-Verteilung", None),
    "FPlaylist": ({"list", "table"}, "Playliste 1", None),
}


def check_custom(win, failures):
    found = {n.description: n for n in walk(win) if n.description in CUSTOM}
    for design, (roles, name, action) in CUSTOM.items():
        node = found.get(design)
        if node is None:
            failures.append("%s not in the tree" % design)
            continue
        role = node.getRoleName()
        if role not in roles:
            failures.append("%s has role %r" % (design, role))
        if name is not None and node.name != name:
            failures.append("%s is named %r" % (design, node.name))
        if not node.getState().contains(pyatspi.STATE_FOCUSABLE) and role != "image" and role != "graphic":
            failures.append("%s cannot take the keyboard focus" % design)
        if action is not None:
            actions = node.queryAction()
            names = [actions.getName(i) for i in range(actions.nActions)]
            if action.lower() not in [n.lower() for n in names]:
                failures.append("%s offers %r, not %r" % (design, names, action))
        if design == "sldVol":
            value = node.queryValue()
            if (value.minimumValue, value.maximumValue) != (0, 255) or not 0 <= value.currentValue <= 255:
                failures.append("%s range %r..%r" % (design, value.minimumValue, value.maximumValue))


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
        check_custom(main_window, failures)
    except AssertionError as e:
        failures.append(str(e))
    finally:
        stop(program, runtime)
    return report(failures)


if __name__ == "__main__":
    sys.exit(main())
