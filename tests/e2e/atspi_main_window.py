"""Starts TavoMP3Player on a private accessibility bus and uses it like a desktop script would:
find controls by their design names, read texts and list rows, press buttons and menu entries."""
import sys

from desktop import by_design_name, named, press, rows, run, the_app, wait_for


def test(r):
    r.start()
    app = the_app()
    status = wait_for("FStatus", lambda: by_design_name(app, "FStatus"))
    text = wait_for("the load status", lambda: status.name if "Songs" in status.name else None)
    print("FStatus:", text)
    r.expect("3 Songs" in text, "FStatus reads %r" % text)
    plist = by_design_name(app, "FPlaylist")
    print("FPlaylist rows:", rows(plist))
    r.expect(rows(plist)[:3] == ["1. Erstes Lied", "2. Zweites Lied", "3. Drittes Lied"], "rows %r" % rows(plist))

    # Play pressed through the bus: the player plays and the display says so.
    press(by_design_name(app, "BPlay"))
    monitor = by_design_name(app, "FTest2")
    wait_for("the player playing", lambda: monitor.name == "Winamp Status = 1 / Playmode = 1")
    slider = by_design_name(app, "TavoSlider1").queryValue()
    wait_for("the song length on the position slider", lambda: slider.maximumValue >= 1)
    # Menu entries carry their design names (atspi_tree checks the roles of our own controls).
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


if __name__ == "__main__":
    sys.exit(run(test))
