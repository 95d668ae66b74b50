"""The whole self-update with the real programs: the player, started from a temporary program folder,
is told over the accessibility bus to open "Update" and press "Start". A local HTTP server on 127.0.0.1
offers a newer player and updater, signed with a key made for this run by scripts/sign-release.sh. The
player downloads and checks both, closes, the new updater swaps the program file and starts the new player."""
import functools
import http.server
import os
import shutil
import subprocess
import sys
import tempfile
import threading

from desktop import named, press, report, the_app, wait_for

PLAYER, UPDATER = sys.argv[1], sys.argv[2]
MARK = b"\0new build for the update test\0"
SIGN = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "scripts", "sign-release.sh")


def running_from(path):
    pids = []
    for pid in filter(str.isdigit, os.listdir("/proc")):
        try:
            if os.readlink("/proc/%s/exe" % pid) == path:
                pids.append(int(pid))
        except OSError:
            pass
    return pids


def content(path):
    with open(path, "rb") as f:
        return f.read()


def main():
    folder = tempfile.mkdtemp(prefix="tavo-update-")
    program_dir = os.path.join(folder, "program")
    downloads = os.path.join(folder, "www", "TavoMP3", "Downloads")
    config = os.path.join(folder, "config")
    for d in (program_dir, downloads, os.path.join(config, "TavoMP3Player")):
        os.makedirs(d)
    player, updater = os.path.join(program_dir, "TavoMP3Player"), os.path.join(program_dir, "TavoMP3Update")
    shutil.copy2(PLAYER, player)
    shutil.copy2(UPDATER, updater)
    served = {}
    for name, source in (("TavoMP3Player", PLAYER), ("TavoMP3Update", UPDATER)):
        served[name] = content(source) + MARK  # bytes after the ELF image leave the program working
        with open(os.path.join(downloads, name), "wb") as f:
            f.write(served[name])
    key = os.path.join(folder, "release-key.pem")
    public_key = subprocess.run(["bash", SIGN, "keygen", key], check=True, capture_output=True,
                                text=True).stdout.strip()
    with open(os.path.join(downloads, "Versions.txt"), "wb") as f:
        f.write(subprocess.run(["bash", SIGN, "sign", key, "99.0", "99"] +
                               [os.path.join(downloads, n) for n in served], check=True, capture_output=True).stdout)
    handler = functools.partial(http.server.SimpleHTTPRequestHandler, directory=os.path.join(folder, "www"))
    handler.log_message = lambda *args: None
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), handler)
    threading.Thread(target=server.serve_forever, daemon=True).start()

    env = dict(os.environ, XDG_CONFIG_HOME=config, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
               TAVOMP3_UPDATE_HOST="127.0.0.1:%d" % server.server_address[1], TAVOMP3_UPDATE_PUBLIC_KEY=public_key,
               TAVOMP3_POWEROFF_COMMAND="true", QT_QPA_PLATFORM="xcb")
    program = subprocess.Popen([player], env=env)
    failures = []
    try:
        app = the_app()
        press(wait_for("the Update menu entry", lambda: named(app, "Update", "menu item")))
        press(wait_for("the Start button", lambda: named(app, "Start", "push button")))
        program.wait(60)  # the player closes itself after both downloads
        wait_for("the new player file", lambda: content(player) == served["TavoMP3Player"], timeout=60)
        if content(updater) != served["TavoMP3Update"]:
            failures.append("the updater was not replaced by the signed download")
        if not os.access(player, os.X_OK):
            failures.append("the new player lost its execute permission")
        print("restarted player:", wait_for("the new player running", lambda: running_from(player), timeout=30))
        # The updater watches the new player for a few seconds before it drops the old one.
        wait_for("the updater to finish", lambda: not running_from(updater), timeout=30)
        if content(player) != served["TavoMP3Player"] or os.path.exists(player + ".old"):
            failures.append("the updater did not keep the new player")
        ini = content(os.path.join(config, "TavoMP3Player", "TavoMP3Player.ini")).decode()
        if "PlayerToUpdate=0" not in ini:
            failures.append("PlayerToUpdate not reset: " + ini)
    except (AssertionError, subprocess.TimeoutExpired) as e:
        failures.append(str(e))
    finally:
        if program.poll() is None:
            program.kill()
        for pid in running_from(player):
            os.kill(pid, 15)
        server.shutdown()
        shutil.rmtree(folder, ignore_errors=True)
    return report(failures)


if __name__ == "__main__":
    sys.exit(main())
