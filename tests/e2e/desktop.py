"""What the desktop tests share: a folder of silent songs with a playlist and settings, the program started
on the accessibility bus with design names switched on, finding and pressing its controls, and the report."""
import json
import os
import shutil
import socket
import subprocess
import sys
import tempfile
import time

import pyatspi

PROGRAM = sys.argv[1]
MAIN_TITLE = "Tavo MP3 Player!"
SONGS = ("Erstes Lied", "Zweites Lied", "Drittes Lied")


def write(path, text):
    with open(path, "w", newline="") as f:
        f.write(text)


def prepare(folder, priorities=(5, 5, 5), frames=120, second_list=False, position=True, more="", own_player=False):
    """Musik/Album with the three songs, liste.txt naming them with LF line ends (saving rewrites them with
    CR LF), optionally liste2.txt with the first two, the settings (and more lines of them), and mpv without
    sound; with own_player the player path is a link in the folder (player/mpv) that a test can take away."""
    config = os.path.join(folder, "config")
    os.makedirs(os.path.join(config, "TavoMP3Player"))
    os.makedirs(os.path.join(config, "mpv"))
    write(os.path.join(config, "mpv", "mpv.conf"), "ao=null\n")
    music = os.path.join(folder, "Musik", "Album")
    os.makedirs(music)
    lines = []
    for name, priority in zip(SONGS, priorities):
        # MPEG-1 Layer III, 128 kbps, 44.1 kHz: 417-byte frames with zeroed bodies play as silence.
        with open(os.path.join(music, name + ".mp3"), "wb") as f:
            f.write((bytes([0xFF, 0xFB, 0x90, 0x04]) + bytes(413)) * frames)
        lines.append("%s:%d\n" % (os.path.join(music, name + ".mp3"), priority))
    playlist = os.path.join(folder, "liste.txt")
    write(playlist, "".join(lines))
    player = shutil.which("mpv") or "/usr/bin/mpv"
    if own_player:
        os.makedirs(os.path.join(folder, "player"))
        os.symlink(player, os.path.join(folder, "player", "mpv"))
        player = os.path.join(folder, "player", "mpv")
    settings = "[Settings]\nPlaylistFile=%s\nWinampPath=%s\nUserMP3Directory=%s\n" % (
        playlist, player, os.path.dirname(music))
    if second_list:
        write(os.path.join(folder, "liste2.txt"), "".join(lines[:2]))
        settings += "PlaylistFile2=%s\n" % os.path.join(folder, "liste2.txt")
    if position:
        settings += "CurrentPlaylistPosition=1\n"
    write(os.path.join(config, "TavoMP3Player", "TavoMP3Player.ini"), settings + more)
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
    return next((a for a in (desktop.getChildAtIndex(i) for i in range(desktop.childCount))
                 if a is not None and a.name == "TavoMP3Player"), None)


def the_app(timeout=20.0):
    return wait_for("the program on the accessibility bus", find_app, timeout)


def walk(node, depth=0):
    if node is None or depth > 40:
        return
    yield node
    for i in range(node.childCount):
        yield from walk(node.getChildAtIndex(i), depth + 1)


def by_design_name(app, name):
    return next((n for n in walk(app) if n.description == name), None)


def named(app, name, role):
    return next((n for n in walk(app) if n.name == name and n.getRoleName() == role), None)


def window(app, title, showing=False):
    for w in (app.getChildAtIndex(i) for i in range(app.childCount)):
        if w is not None and w.name == title and (not showing or w.getState().contains(pyatspi.STATE_SHOWING)):
            return w
    return None


def rows(listbox):
    return [r for r in (listbox.getChildAtIndex(i).name for i in range(listbox.childCount)) if r]


def press(node):
    action = node.queryAction()
    names = [action.getName(i) for i in range(action.nActions)]
    pressing = [i for i, n in enumerate(names) if n in ("Press", "press", "click", "Toggle", "toggle")]
    action.doAction(pressing[0] if pressing else 0)


def screenshot():
    if os.environ.get("TAVOMP3_E2E_SHOT"):
        subprocess.run(["import", "-window", "root", os.environ["TAVOMP3_E2E_SHOT"]], check=False)


def player_socket(runtime):
    return os.path.join(runtime, "tavomp3-mpv.sock")


def player_property(runtime, name):
    """Asks the player the program started for a property over its socket."""
    with socket.socket(socket.AF_UNIX) as s:
        s.settimeout(5)
        s.connect(player_socket(runtime))
        s.sendall(json.dumps({"command": ["get_property", name], "request_id": 7}).encode() + b"\n")
        pending = b""
        while True:
            received = s.recv(65536)
            if not received:
                raise OSError("the player closed its socket")
            *lines, pending = (pending + received).split(b"\n")
            for answer in map(json.loads, lines):
                if answer.get("request_id") == 7:
                    return answer.get("data")


def quit_player(runtime):
    # Terminated, the program does not close its player (it outlives the program by design).
    try:
        with socket.socket(socket.AF_UNIX) as s:
            s.connect(player_socket(runtime))
            s.sendall(b'{"command":["quit"]}\n')
            time.sleep(0.2)
    except OSError:
        pass


class Run:
    """A folder prepared for the program, the program started in it, and the failures found."""

    def __init__(self, **setup):
        self.folder = tempfile.mkdtemp(prefix="tavo-e2e-")
        self.config, self.playlist = prepare(self.folder, **setup)
        self.program = None
        self.path = PROGRAM
        self.failures = []

    def env(self, **extra):
        """The accessibility bus with design names, a private runtime folder for the player's socket, and a private
        cache folder for what the program remembers of songs."""
        self.runtime = os.path.join(self.folder, "runtime")
        os.makedirs(self.runtime, mode=0o700, exist_ok=True)
        env = dict(os.environ, XDG_CONFIG_HOME=self.config, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
                   XDG_RUNTIME_DIR=self.runtime, XDG_CACHE_HOME=os.path.join(self.folder, "cache"),
                   TAVOMP3_AUTOMATION_IDS="1", TAVOMP3_POWEROFF_COMMAND="true",
                   QT_QPA_PLATFORM="xcb")
        return {**env, **extra}

    def start(self, *words, **extra):
        self.program = subprocess.Popen([self.path, *words], env=self.env(**extra))

    def stop(self):
        if self.program is not None:
            self.program.terminate()
            try:
                self.program.wait(10)
            except subprocess.TimeoutExpired:
                self.program.kill()
            quit_player(self.runtime)
            self.program = None

    def expect(self, ok, what):
        if not ok:
            self.failures.append(what)


def run(test, **setup):
    """Runs test(run) in a prepared folder; the program it started ends, and every failure is printed."""
    r = Run(**setup)
    try:
        test(r)
    except (AssertionError, OSError, subprocess.SubprocessError) as e:
        r.failures.append(str(e))
    finally:
        r.stop()
    print("".join("FAIL: %s\n" % f for f in r.failures), end="")
    return 1 if r.failures else 0
