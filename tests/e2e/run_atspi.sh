#!/usr/bin/env bash
# Drives the real program through the accessibility bus, as a screen reader or a desktop script
# would. Exit code 77 = skipped (CTest SKIP_RETURN_CODE) when the desktop packages are missing.
set -uo pipefail
program=$1
# Optional: another script of this folder, and further arguments for it.
script=${2:-atspi_main_window.py}
shift $(( $# > 1 ? 2 : 1 ))
here=$(cd "$(dirname "$0")" && pwd)
for tool in dbus-run-session xvfb-run /usr/bin/python3; do
    if ! command -v "$tool" >/dev/null; then
        echo "SKIP: $tool is not installed (scripts/deps.sh installs it)"
        exit 77
    fi
done
if ! /usr/bin/python3 -c 'import pyatspi' 2>/dev/null; then
    echo "SKIP: python3-pyatspi is not installed (scripts/deps.sh installs it)"
    exit 77
fi
exec dbus-run-session -- xvfb-run -a -s "-screen 0 1280x1024x24" /usr/bin/python3 "$here/$script" "$program" "$@"
