#!/usr/bin/env bash
# Builds the Windows program, its updater and the tests with mingw-w64 and runs the tests under Wine.
# Installs what it needs (Debian 12). The first run builds the Windows libraries from Debian's sources
# (scripts/windows/build-deps.sh, about 20-25 min on two cores); later runs reuse them and take minutes.
# Build folder: build-win (TAVO_WIN_BUILD overrides it).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${TAVO_WIN_BUILD:-$root/build-win}
export TAVO_WIN_DEPS=${TAVO_WIN_DEPS:-$HOME/.cache/tavomp3-windows}
# Heavy phases wait for other builds on a shared machine.
lock=${TAVO_HEAVY_LOCK:-/tmp/tavo-heavy.lock}

bash "$root/scripts/windows/build-deps.sh"
# Qt's German texts for the installer; the locale data the link test makes its Japanese code page from;
# the xxHash header, compiled into the program.
missing=()
for p in qt6-translations-l10n locales libxxhash-dev; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if ((${#missing[@]})); then
    sudo_cmd=()
    [[ $(id -u) -eq 0 ]] || sudo_cmd=(sudo)
    DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}"
fi

cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_TOOLCHAIN_FILE="$root/scripts/windows/mingw-toolchain.cmake" \
    -DCMAKE_CROSSCOMPILING_EMULATOR="$root/scripts/windows/wine-run.sh"
flock "$lock" cmake --build "$build" -j"$(nproc)"

# One Wine server for the whole run instead of one per test program; ended with the run.
export WINEPREFIX=${WINEPREFIX:-$TAVO_WIN_DEPS/wineprefix}
bash "$root/scripts/windows/wine-run.sh" cmd /c exit 0
wineserver -p 2>/dev/null || true # already running for this prefix: kept
trap 'wineserver -k 2>/dev/null || true' EXIT
cd "$build"
flock "$lock" ctest --output-on-failure -j"$(nproc)"
