#!/usr/bin/env bash
# Builds everything (Debug, tests and benchmarks) and runs every test. Needs no display: the
# widget tests run on Qt's offscreen platform.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
bash "$root/scripts/deps.sh"
cmake -S "$root" -B "$root/build" -G Ninja -DCMAKE_BUILD_TYPE=Debug
cmake --build "$root/build" -j"$(nproc)"
cd "$root/build"
ctest --output-on-failure -j"$(nproc)"
