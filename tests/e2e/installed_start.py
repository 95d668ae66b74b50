"""An installed copy of the program (argv[1], under <prefix>/bin) starts, loads its playlist and finds its
skin bitmaps in <prefix>/share/tavomp3player. With TAVOMP3_E2E_SHOT set, a screenshot goes to that path."""
import os
import subprocess
import sys
import tempfile
import time

from atspi_main_window import by_design_name, find_app, prepare, report, start, stop, wait_for


def main():
    folder = tempfile.mkdtemp(prefix="tavo-installed-")
    config, _ = prepare(folder)
    program, runtime = start(folder, config)
    failures = []
    try:
        app = wait_for("the installed program on the accessibility bus", find_app, 30)
        status = wait_for("FStatus", lambda: by_design_name(app, "FStatus"))
        wait_for("the playlist loaded", lambda: "3 Songs" in status.name or "Button Bild" in status.name)
        time.sleep(1)  # the skins are set up right after the load text
        print("FStatus:", status.name)
        if "Button Bild" in status.name:
            failures.append("skin bitmaps not found: %r" % status.name)
        shot = os.environ.get("TAVOMP3_E2E_SHOT")
        if shot:
            subprocess.run(["import", "-window", "root", shot], check=False)
    except (AssertionError, OSError) as e:
        failures.append(str(e))
    finally:
        stop(program, runtime)
    return report(failures)


if __name__ == "__main__":
    sys.exit(main())
