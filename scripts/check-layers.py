#!/usr/bin/env python3
"""Checks that the folders of src/ include each other in one direction only.

    python3 scripts/check-layers.py        # prints every include that goes the wrong way; exit 1 if any

Order, top to bottom: app -> desktop -> program -> playback -> playlist/player/power/reports/update
-> mp3 -> appearance -> base. Folders on one level do not include each other. ui/ (controls and the
settings window) sits under app/: it may include the folders from the playlist level down, and no folder
but app/, updater/ and the */widgets folders may include it. A <folder>/widgets folder may include ui/,
its own folder and what that folder may include. updater/ is a program of its own on top of update/.
"""
import os
import re
import sys

LEVELS = [["app", "updater"], ["desktop"], ["program"], ["playback"],
          ["playlist", "player", "power", "reports", "update"], ["mp3"], ["appearance"], ["base"]]
RANK = {name: i for i, level in enumerate(LEVELS) for name in level}
UI_RANK = RANK["playlist"] - 0.5  # below playback, above the playlist level
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"/]+)/(widgets/)?')


def allowed(source, target):
    if source == target:
        return True
    if source.endswith("/widgets"):
        own = source[: -len("/widgets")]
        return target in ("ui", own) or allowed(own, target)
    if target == "ui" or target.endswith("/widgets"):
        return source in ("app", "updater")
    rank = UI_RANK if source == "ui" else RANK.get(source)
    return rank is not None and target in RANK and RANK[target] > rank


def main(root="src"):
    wrong = []
    for folder, _, files in os.walk(root):
        parts = os.path.relpath(folder, root).split(os.sep)
        if parts[0] == ".":
            continue
        source = parts[0] + ("/widgets" if len(parts) > 1 and parts[1] == "widgets" else "")
        for name in sorted(files):
            if not name.endswith((".h", ".cpp")):
                continue
            path = os.path.join(folder, name)
            for number, line in enumerate(open(path, errors="replace"), 1):
                m = INCLUDE.match(line)
                if m and os.path.isdir(os.path.join(root, m.group(1))):
                    target = m.group(1) + ("/widgets" if m.group(2) else "")
                    if not allowed(source, target):
                        wrong.append("%s:%d: %s includes %s" % (path, number, source, target))
    print("\n".join(wrong) if wrong else "Folders include each other in one direction only.")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
