#!/usr/bin/env bash
# Builds the program (Release) and starts it. Without a display it runs under Xvfb.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
bash "$root/scripts/deps.sh"
cmake -S "$root" -B "$root/build-release" -G Ninja -DCMAKE_BUILD_TYPE=Release -DTAVO_BUILD_TESTS=OFF
cmake --build "$root/build-release" --target TavoMP3Player TavoMP3Update -j"$(nproc)"
if [[ -z "${DISPLAY:-}" && -z "${WAYLAND_DISPLAY:-}" ]]; then
    exec xvfb-run -a "$root/build-release/TavoMP3Player" "$@"
fi
exec "$root/build-release/TavoMP3Player" "$@"
