#!/usr/bin/env bash
# Start to visible main window, cold (the program starts mpv) against warm (mpv already runs), on a
# private X server. Usage: bench/cold_start.sh build/TavoMP3Player [runs]
set -euo pipefail
exec xvfb-run -a -s "-screen 0 1280x1024x24" /usr/bin/python3 "$(dirname "$0")/cold_start.py" "$@"
