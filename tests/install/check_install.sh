#!/usr/bin/env bash
# Installs the build into a throw-away prefix and builds the .deb, checks both with the desktop's
# validators and the package tools, and starts the installed and the unpacked program under Xvfb.
# Usage: check_install.sh <build folder>. Exit code 77 = skipped (a tool is missing).
set -uo pipefail
build=$1
here=$(cd "$(dirname "$0")" && pwd)
e2e="$here/../e2e/run_atspi.sh"
for tool in desktop-file-validate appstreamcli cpack dpkg-deb dpkg-shlibdeps; do
    if ! command -v "$tool" >/dev/null; then
        echo "SKIP: $tool is not installed (scripts/deps.sh installs it)"
        exit 77
    fi
done
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }
id=example.tavomp3.player

prefix="$work/prefix"
cmake --install "$build" --prefix "$prefix" >/dev/null || fail "cmake --install"
for f in bin/TavoMP3Player bin/TavoMP3Update share/applications/$id.desktop share/metainfo/$id.metainfo.xml \
         share/tavomp3player/Button129x22.bmp share/tavomp3player/Button129x22over.bmp \
         share/tavomp3player/Button86x22.bmp share/tavomp3player/Button86x22over.bmp \
         share/icons/hicolor/48x48/apps/$id.png share/icons/hicolor/256x256/apps/$id.png; do
    [[ -f "$prefix/$f" ]] || fail "not installed: $f"
done
desktop-file-validate "$prefix/share/applications/$id.desktop" || fail "desktop-file-validate"
appstreamcli validate --no-net "$prefix/share/metainfo/$id.metainfo.xml" || fail "appstreamcli validate"
bash "$e2e" "$prefix/bin/TavoMP3Player" installed_start.py
rc=$?
[[ $rc -eq 0 || $rc -eq 77 ]] || fail "the installed program"

# The package: what it holds, what it needs, and the program it unpacks to.
(cd "$work" && cpack -G DEB -B "$work/deb" --config "$build/CPackConfig.cmake" >/dev/null) || fail "cpack -G DEB"
deb=$(ls "$work"/deb/tavomp3player_*.deb 2>/dev/null | head -1)
if [[ -z "$deb" ]]; then
    fail "no .deb built"
else
    depends=$(dpkg-deb -f "$deb" Depends)
    echo "Depends: $depends"
    for needed in mpv qt6-qpa-plugins libqt6widgets6 libqt6dbus6 libtag1v5; do
        [[ "$depends" == *"$needed"* ]] || fail "the package does not depend on $needed"
    done
    contents=$(dpkg-deb -c "$deb")
    for f in ./usr/bin/TavoMP3Player ./usr/bin/TavoMP3Update ./usr/share/applications/$id.desktop \
             ./usr/share/tavomp3player/Button86x22.bmp ./usr/share/icons/hicolor/48x48/apps/$id.png; do
        grep -q " $f\$" <<<"$contents" || fail "not in the package: $f"
    done
    dpkg -x "$deb" "$work/unpacked"
    bash "$e2e" "$work/unpacked/usr/bin/TavoMP3Player" installed_start.py
    rc=$?
    [[ $rc -eq 0 || $rc -eq 77 ]] || fail "the unpacked program"
fi
echo "$failures failed"
exit $((failures > 0))
