"""Starts TavoMP3Player on a private accessibility bus and uses it like a desktop script would:
find controls by their design names, read texts and list rows, press buttons and menu entries."""
import os
import shutil
import socket
import subprocess
import sys
import tempfile
import time

import pyatspi

PROGRAM = sys.argv[1]


def write_silent_mp3(path, frames=120):
    # MPEG-1 Layer III, 128 kbps, 44.1 kHz: 417-byte frames with zeroed bodies play as silence.
    frame = bytes([0xFF, 0xFB, 0x90, 0x04]) + bytes(413)
    with open(path, "wb") as f:
        f.write(frame * frames)


def prepare(folder):
    config = os.path.join(folder, "config")
    os.makedirs(os.path.join(config, "TavoMP3Player"))
    os.makedirs(os.path.join(config, "mpv"))
    with open(os.path.join(config, "mpv", "mpv.conf"), "w") as f:
        f.write("ao=null\n")
    music = os.path.join(folder, "Musik", "Album")
    os.makedirs(music)
    songs = []
    for name in ("Erstes Lied", "Zweites Lied", "Drittes Lied"):
        path = os.path.join(music, name + ".mp3")
        write_silent_mp3(path)
        songs.append(path)
    playlist = os.path.join(folder, "liste.txt")
    # Written with LF line ends: saving from the program must rewrite it with CR LF.
    with open(playlist, "w", newline="\n") as f:
        f.write("".join(s + ":5\n" for s in songs))
    mpv = shutil.which("mpv") or "/usr/bin/mpv"
    with open(os.path.join(config, "TavoMP3Player", "TavoMP3Player.ini"), "w") as f:
        f.write("[Settings]\nPlaylistFile=%s\nWinampPath=%s\nUserMP3Directory=%s\nCurrentPlaylistPosition=1\n"
                % (playlist, mpv, os.path.join(folder, "Musik")))
    return config, playlist


def wait_for(what, probe, timeout=20.0):
    deadline = time.time() + timeout
    while time.time() < deadline:
        try:
            found = probe()
        except Exception:  # the tree changes under us while the program starts
            found = None
        if found:
            return found
        time.sleep(0.2)
    raise AssertionError("timed out waiting for " + what)


def find_app():
    desktop = pyatspi.Registry.getDesktop(0)
    for i in range(desktop.childCount):
        app = desktop.getChildAtIndex(i)
        if app is not None and app.name == "TavoMP3Player":
            return app
    return None


def walk(node, depth=0):
    if node is None or depth > 40:
        return
    yield node
    for i in range(node.childCount):
        yield from walk(node.getChildAtIndex(i), depth + 1)


def by_design_name(app, name):
    for node in walk(app):
        if node.description == name:
            return node
    return None


def press(node):
    action = node.queryAction()
    for i in range(action.nActions):
        if action.getName(i) in ("Press", "press", "click", "Toggle", "toggle"):
            action.doAction(i)
            return
    action.doAction(0)


def quit_player(socket_path):
    # Terminated, the program does not close its player (it outlives the program by design).
    try:
        with socket.socket(socket.AF_UNIX) as s:
            s.connect(socket_path)
            s.sendall(b'{"command":["quit"]}\n')
            time.sleep(0.2)
    except OSError:
        pass


def stop(program, runtime):
    program.terminate()
    try:
        program.wait(10)
    except subprocess.TimeoutExpired:
        program.kill()
    quit_player(os.path.join(runtime, "tavomp3-mpv.sock"))


def program_env(folder, config, **extra_env):
    """The environment of the program: the accessibility bus with design names switched on and a private
    runtime folder, where the player it starts listens on its socket."""
    runtime = os.path.join(folder, "runtime")
    os.makedirs(runtime, mode=0o700, exist_ok=True)
    env = dict(os.environ, XDG_CONFIG_HOME=config, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", XDG_RUNTIME_DIR=runtime,
               TAVOMP3_AUTOMATION_IDS="1", TAVOMP3_POWEROFF_COMMAND="true", QT_QPA_PLATFORM="xcb")
    env.update(extra_env)
    return env


def start(folder, config, words=(), **extra_env):
    """Starts the program with its command-line words. Returns the process and its runtime folder."""
    env = program_env(folder, config, **extra_env)
    return subprocess.Popen([PROGRAM, *words], env=env), env["XDG_RUNTIME_DIR"]


def window(app, title):
    for i in range(app.childCount):
        w = app.getChildAtIndex(i)
        if w is not None and w.name == title:
            return w
    return None


def report(failures):
    for f in failures:
        print("FAIL:", f)
    return 1 if failures else 0


def main():
    folder = tempfile.mkdtemp(prefix="tavo-atspi-")
    config, playlist = prepare(folder)
    program, runtime = start(folder, config)
    failures = []
    try:
        app = wait_for("the program on the accessibility bus", find_app)
        status = wait_for("FStatus", lambda: by_design_name(app, "FStatus"))
        text = wait_for("the load status", lambda: status.name if "Songs" in status.name else None)
        print("FStatus:", text)
        if "3 Songs" not in text:
            failures.append("FStatus reads %r" % text)

        plist = by_design_name(app, "FPlaylist")
        rows = [plist.getChildAtIndex(i).name for i in range(plist.childCount)]
        rows = [r for r in rows if r]
        print("FPlaylist rows:", rows)
        if rows[:3] != ["1. Erstes Lied", "2. Zweites Lied", "3. Drittes Lied"]:
            failures.append("rows read %r" % rows)

        # Play pressed through the bus: the player plays and the display says so.
        press(by_design_name(app, "BPlay"))
        monitor = by_design_name(app, "FTest2")
        wait_for("the player playing", lambda: monitor.name == "Winamp Status = 1 / Playmode = 1")
        # Our own controls: the position slider is a slider with the song's range, the diagram an image
        # with words, and menu entries carry their design names.
        slider = by_design_name(app, "TavoSlider1")
        if slider.getRoleName() != "slider" or slider.name != "Songposition":
            failures.append("slider reads %r / %r" % (slider.getRoleName(), slider.name))
        value = slider.queryValue()
        wait_for("the song length on the slider", lambda: value.maximumValue >= 1)
        diagram = by_design_name(app, "TavoxMiniDiagram1")
        if diagram.getRoleName() not in ("image", "graphic"):
            failures.append("diagram role %r" % diagram.getRoleName())
        if by_design_name(app, "MenuDateiSavePlaylist") is None:
            failures.append("no menu entry described MenuDateiSavePlaylist")
        dump = ["%s %r %r" % (n.getRoleName(), n.name, n.description) for n in walk(app)
                if n.description in ("BPlay", "TavoSlider1", "TavoxMiniDiagram1", "sldVol", "PL(1)", "FPrio(5)")]
        print("\n".join(dump))
        if len(dump) != 6:
            failures.append("described controls found: %d of 6" % len(dump))
        press(by_design_name(app, "BStop"))
        wait_for("the player stopped", lambda: monitor.name == "Winamp Status = 0 / Playmode = 0")

        # A check box pressed through the bus arms the sleep countdown.
        press(by_design_name(app, "FSleepmode"))
        sleep_label = by_design_name(app, "LSleepmode")
        wait_for("the sleep countdown", lambda: sleep_label.name == "Herunterfahren in 20 min")

        # A menu entry pressed through the bus: Datei > Playliste speichern... rewrites the file.
        save = wait_for("the save menu entry", lambda: next(
            (n for n in walk(app) if n.name == "Playliste speichern..." and n.getRoleName() == "menu item"), None))
        press(save)
        wait_for("the playlist saved with CR LF", lambda: b"\r\n" in open(playlist, "rb").read())

        # BCreateList walks the music folder of the settings into playlist 1.
        press(by_design_name(app, "BCreateList"))
        built = wait_for("the build summary", lambda: status.name if "Einträge: 3" in status.name else None)
        print("FStatus:", built)
        rows = [r for r in (plist.getChildAtIndex(i).name for i in range(plist.childCount)) if r]
        if rows[:3] != ["1. Drittes Lied", "2. Erstes Lied", "3. Zweites Lied"]:
            failures.append("built rows read %r" % rows)
    except AssertionError as e:
        failures.append(str(e))
    finally:
        stop(program, runtime)
    return report(failures)


if __name__ == "__main__":
    sys.exit(main())
