"""Starts TavoMP3Player on a private accessibility bus and uses it like a desktop script would: find controls by
their design names, read texts and list rows, press buttons and menu entries. Then dumps the main window, the
settings window and Playliste 2 as a screen reader sees them and fails for any control a user can operate that
has no name or, with design names switched on, no design name; our own controls must show the role, name and
action a screen reader expects."""
import sys

import pyatspi

from desktop import MAIN_TITLE, by_design_name, named, press, rows, run, the_app, wait_for, walk, window


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


def check_custom(r, win):
    found = {n.description: n for n in walk(win) if n.description in CUSTOM}
    for design, (roles, name, action) in CUSTOM.items():
        node = found.get(design)
        if node is None:
            r.failures.append("%s not in the tree" % design)
            continue
        role = node.getRoleName()
        r.expect(role in roles, "%s has role %r" % (design, role))
        r.expect(name is None or node.name == name, "%s is named %r" % (design, node.name))
        r.expect(node.getState().contains(pyatspi.STATE_FOCUSABLE) or role in ("image", "graphic"),
                 "%s cannot take the keyboard focus" % design)
        if action is not None:
            actions = node.queryAction()
            names = [actions.getName(i).lower() for i in range(actions.nActions)]
            r.expect(action.lower() in names, "%s offers %r, not %r" % (design, names, action))
        if design == "sldVol":
            value = node.queryValue()
            r.expect((value.minimumValue, value.maximumValue) == (0, 255) and 0 <= value.currentValue <= 255,
                     "%s range %r..%r" % (design, value.minimumValue, value.maximumValue))


def dump(r, win):
    print("== %s" % win.name)
    for node in walk(win):
        role = node.getRoleName()
        if role == "list item" or role == "table cell":
            continue  # rows are named by their text
        if node.parent is not None and node.parent.getRoleName() == "combo box":
            continue  # the drop-down list of a combo box belongs to Qt
        print("%-14s %-40r %r" % (role, node.name, node.description))
        if role in OPERABLE:
            r.expect(node.name.strip(), "%s: %s %r has no name" % (win.name, role, node.description))
            r.expect(node.description or role in ("menu item", "page tab"),
                     "%s: %s %r has no design name" % (win.name, role, node.name))


def test(r):
    r.start()
    app = the_app()
    status = wait_for("FStatus", lambda: by_design_name(app, "FStatus"))
    text = wait_for("the load status", lambda: status.name if "Songs" in status.name else None)
    r.expect("3 Songs" in text, "FStatus reads %r" % text)
    plist = by_design_name(app, "FPlaylist")
    r.expect(rows(plist)[:3] == ["1. Erstes Lied", "2. Zweites Lied", "3. Drittes Lied"], "rows %r" % rows(plist))

    # Play pressed through the bus: the player plays and the display says so.
    press(by_design_name(app, "BPlay"))
    monitor = by_design_name(app, "FTest2")
    wait_for("the player playing", lambda: monitor.name == "Winamp Status = 1 / Playmode = 1")
    slider = by_design_name(app, "TavoSlider1").queryValue()
    wait_for("the song length on the position slider", lambda: slider.maximumValue >= 1)
    # Menu entries carry their design names.
    r.expect(by_design_name(app, "MenuDateiSavePlaylist") is not None, "no menu entry MenuDateiSavePlaylist")
    press(by_design_name(app, "BStop"))
    wait_for("the player stopped", lambda: monitor.name == "Winamp Status = 0 / Playmode = 0")

    # A check box pressed through the bus arms the sleep countdown.
    press(by_design_name(app, "FSleepmode"))
    sleep_label = by_design_name(app, "LSleepmode")
    wait_for("the sleep countdown", lambda: sleep_label.name == "Herunterfahren in 20 min")

    # A menu entry pressed through the bus: Datei > Playliste speichern... rewrites the file.
    press(wait_for("the save menu entry", lambda: named(app, "Playliste speichern...", "menu item")))
    wait_for("the playlist saved with CR LF", lambda: b"\r\n" in open(r.playlist, "rb").read())

    # BCreateList walks the music folder of the settings into playlist 1.
    press(by_design_name(app, "BCreateList"))
    print("FStatus:", wait_for("the build summary", lambda: status.name if "Einträge: 3" in status.name else None))
    r.expect(rows(plist)[:3] == ["1. Drittes Lied", "2. Erstes Lied", "3. Zweites Lied"],
             "built rows read %r" % rows(plist))

    main_window = window(app, MAIN_TITLE)
    press(by_design_name(main_window, "BPlaylist2"))
    second = wait_for("Playliste 2", lambda: window(app, "Playliste 2"))
    press(wait_for("the settings menu entry", lambda: by_design_name(main_window, "MenuEinstellungen")))
    settings = wait_for("the settings window", lambda: next(
        (app.getChildAtIndex(i) for i in range(app.childCount)
         if app.getChildAtIndex(i).description == "TavoMP3Settings"), None))
    for win in (main_window, settings, second):
        dump(r, win)
    check_custom(r, main_window)


if __name__ == "__main__":
    sys.exit(run(test))
