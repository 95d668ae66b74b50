"""An installed copy of the program (argv[1], under <prefix>/bin) starts, loads its playlist and finds its
skin bitmaps in <prefix>/share/tavomp3player. With TAVOMP3_E2E_SHOT set, a screenshot goes to that path."""
import sys
import time

from desktop import by_design_name, run, screenshot, the_app, wait_for


def test(r):
    r.start()
    app = the_app(30)
    status = wait_for("FStatus", lambda: by_design_name(app, "FStatus"))
    wait_for("the playlist loaded", lambda: "3 Songs" in status.name or "Button Bild" in status.name)
    time.sleep(1)  # the skins are set up right after the load text
    print("FStatus:", status.name)
    r.expect("Button Bild" not in status.name, "skin bitmaps not found: %r" % status.name)
    screenshot()


if __name__ == "__main__":
    sys.exit(run(test))
