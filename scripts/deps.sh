#!/usr/bin/env bash
# Installs what building, running and testing need on Debian 12. Safe to run again: apt only
# installs what is missing. Runs as root, or through sudo when not root.
set -euo pipefail
packages=(
    cmake ninja-build g++ ccache pkg-config
    qt6-base-dev qt6-translations-l10n
    libbenchmark-dev libtag1-dev libsodium-dev libxxhash-dev openssl
    mpv lame clang-14 libclang-rt-14-dev
    xvfb xauth imagemagick xdotool trayer x11-utils
    dbus dbus-x11 at-spi2-core python3-pyatspi gir1.2-atspi-2.0 python3-gi
    playerctl desktop-file-utils appstream dpkg-dev file
    pulseaudio pulseaudio-utils sox
)
missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if ((${#missing[@]})); then
    sudo_cmd=()
    [[ $(id -u) -eq 0 ]] || sudo_cmd=(sudo)
    export DEBIAN_FRONTEND=noninteractive
    "${sudo_cmd[@]}" apt-get update -q
    "${sudo_cmd[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}"
fi
