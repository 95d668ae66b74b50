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
import threading

from desktop import named, press, run, the_app, wait_for

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


def test(r):
    program_dir, downloads = os.path.join(r.folder, "program"), os.path.join(r.folder, "www", "TavoMP3", "Downloads")
    os.makedirs(program_dir)
    os.makedirs(downloads)
    r.path, updater = os.path.join(program_dir, "TavoMP3Player"), os.path.join(program_dir, "TavoMP3Update")
    shutil.copy2(PLAYER, r.path)
    shutil.copy2(UPDATER, updater)
    served = {}
    for name, source in (("TavoMP3Player", PLAYER), ("TavoMP3Update", UPDATER)):
        served[name] = content(source) + MARK  # bytes after the ELF image leave the program working
        with open(os.path.join(downloads, name), "wb") as f:
            f.write(served[name])
    key = os.path.join(r.folder, "release-key.pem")
    public_key = subprocess.run(["bash", SIGN, "keygen", key], check=True, capture_output=True,
                                text=True).stdout.strip()
    with open(os.path.join(downloads, "Versions.txt"), "wb") as f:
        f.write(subprocess.run(["bash", SIGN, "sign", key, "99.0", "99"] +
                               [os.path.join(downloads, n) for n in served], check=True, capture_output=True).stdout)
    handler = functools.partial(http.server.SimpleHTTPRequestHandler, directory=os.path.join(r.folder, "www"))
    handler.log_message = lambda *args: None
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), handler)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    try:
        r.start(TAVOMP3_UPDATE_HOST="127.0.0.1:%d" % server.server_address[1], TAVOMP3_UPDATE_PUBLIC_KEY=public_key)
        app = the_app()
        press(wait_for("the Update menu entry", lambda: named(app, "Update", "menu item")))
        press(wait_for("the Start button", lambda: named(app, "Start", "push button")))
        r.program.wait(60)  # the player closes itself after both downloads
        wait_for("the new player file", lambda: content(r.path) == served["TavoMP3Player"], timeout=60)
        r.expect(content(updater) == served["TavoMP3Update"], "the updater was not replaced by the signed download")
        r.expect(os.access(r.path, os.X_OK), "the new player lost its execute permission")
        print("restarted player:", wait_for("the new player running", lambda: running_from(r.path), timeout=30))
        # The updater watches the new player for a few seconds before it drops the old one.
        wait_for("the updater to finish", lambda: not running_from(updater), timeout=30)
        r.expect(content(r.path) == served["TavoMP3Player"] and not os.path.exists(r.path + ".old"),
                 "the updater did not keep the new player")
        ini = content(os.path.join(r.config, "TavoMP3Player", "TavoMP3Player.ini")).decode()
        r.expect("PlayerToUpdate=0" in ini, "PlayerToUpdate not reset: " + ini)
    finally:
        for pid in running_from(r.path):
            os.kill(pid, 15)
        server.shutdown()


if __name__ == "__main__":
    sys.exit(run(test))
