"""Songs reorganised while the program was closed keep their priorities. The program loads a list with the
priorities 1, 2, 3, 4, 0 and learns its songs; it is closed; a folder is renamed, a file renamed in place,
one moved and renamed, and one deleted while another song of its name appears elsewhere. Started again,
"Playliste aktualisieren" finds the four moved songs at their new paths with their priorities and says so in
the status line, and the saved list holds them."""
import os
import sys

from desktop import by_design_name, named, press, rows, run, the_app, wait_for


def song(path, frames, body=0):
    """Silent MPEG-1 Layer III frames: the number of frames (and a body byte) makes each song's audio its own."""
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as f:
        f.write(b"ID3\x03\x00\x00\x00\x00\x00\x20" + bytes(32))
        f.write((bytes([0xFF, 0xFB, 0x90, 0x04, body]) + bytes(412)) * frames)


def test(r):
    music = os.path.join(r.folder, "Musik")
    before = [("Album/Erstes Lied.mp3", 1), ("Album/Zweites Lied.mp3", 2), ("Andere/Drittes Lied.mp3", 3),
              ("Andere/Viertes Lied.mp3", 4), ("Andere/Fünftes Lied.mp3", 0)]
    for i, (name, _) in enumerate(before):
        song(os.path.join(music, name), 40 + i)
    os.remove(os.path.join(music, "Album", "Drittes Lied.mp3"))  # prepare()'s third song is not in this list
    with open(r.playlist, "w", newline="") as f:
        f.write("".join("%s:%d\r\n" % (os.path.join(music, name), p) for name, p in before))
    cache = os.path.join(r.folder, "cache", "TavoMP3Player", "SongIdentities.txt")

    r.start()
    app = the_app()
    status = wait_for("FStatus", lambda: by_design_name(app, "FStatus"))
    wait_for("the list loaded", lambda: "5 Songs" in status.name)
    wait_for("the songs remembered", lambda: os.path.exists(cache) and len(open(cache, "rb").readlines()) == 6)
    r.stop()

    os.rename(os.path.join(music, "Album"), os.path.join(music, "Album (1999)"))
    os.rename(os.path.join(music, "Andere", "Drittes Lied.mp3"), os.path.join(music, "Andere", "Drittes Lied (live).mp3"))
    os.makedirs(os.path.join(music, "Neu"))
    os.rename(os.path.join(music, "Andere", "Viertes Lied.mp3"), os.path.join(music, "Neu", "4.mp3"))
    os.remove(os.path.join(music, "Andere", "Fünftes Lied.mp3"))
    song(os.path.join(music, "Neu", "Fünftes Lied.mp3"), 40 + 4, body=1)  # same length, other audio

    r.start()
    app = the_app()
    status = wait_for("FStatus", lambda: by_design_name(app, "FStatus"))
    wait_for("the list loaded again", lambda: "5 Songs" in status.name)
    press(by_design_name(app, "BUpdateList"))
    text = wait_for("the update", lambda: status.name if "Liste vorher" in status.name else None)
    r.expect(text.endswith("Liste neu: 4  Liste vorher: 4   Verschoben: 4"), "FStatus reads %r" % text)
    plist = by_design_name(app, "FPlaylist")
    r.expect(rows(plist) == ["1. Erstes Lied", "2. Zweites Lied", "3. Drittes Lied (live)", "4. 4", "5. Fünftes Lied"],
             "rows %r" % rows(plist))
    press(wait_for("the save menu entry", lambda: named(app, "Playliste speichern...", "menu item")))
    after = [("Album (1999)/Erstes Lied.mp3", 1), ("Album (1999)/Zweites Lied.mp3", 2),
             ("Andere/Drittes Lied (live).mp3", 3), ("Neu/4.mp3", 4), ("Neu/Fünftes Lied.mp3", 5)]
    saved = "".join("%s:%d\r\n" % (os.path.join(music, name), p) for name, p in after)
    wait_for("the list saved", lambda: open(r.playlist, encoding="utf-8", newline="").read() == saved)


if __name__ == "__main__":
    sys.exit(run(test))
