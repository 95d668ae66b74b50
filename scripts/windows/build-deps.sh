#!/usr/bin/env bash
# Builds the libraries of the Windows program from Debian's own source packages with mingw-w64:
# Qt 6.4.2 (Core, Gui, Widgets, Network, Test; windows and offscreen platforms), TagLib and libsodium
# (static); zlib comes as libz-mingw-w64-dev. Everything goes to one cache folder, TAVO_WIN_DEPS
# (default ~/.cache/tavomp3-windows), which is reused as long as this script and the toolchain file are
# unchanged and rebuilt from scratch otherwise. Installs what it needs (Debian 12, as root or via sudo).
# The Qt build takes about a quarter of an hour on two cores; it runs at the lowest priority.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
deps=${TAVO_WIN_DEPS:-$HOME/.cache/tavomp3-windows}
jobs=${TAVO_WIN_JOBS:-2}
toolchain=$here/mingw-toolchain.cmake

packages=(
    g++-mingw-w64-x86-64-posix gcc-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64 libz-mingw-w64-dev
    wine64 wine nsis cmake ninja-build pkg-config ccache dpkg-dev autoconf automake libtool xz-utils
    qt6-base-dev qt6-base-dev-tools libutfcpp-dev
)

sudo_cmd=()
[[ $(id -u) -eq 0 ]] || sudo_cmd=(sudo)

install_packages() {
    local missing=() p
    for p in "${packages[@]}"; do
        dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
    done
    ((${#missing[@]})) || return 0
    export DEBIAN_FRONTEND=noninteractive
    "${sudo_cmd[@]}" apt-get update -q
    "${sudo_cmd[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}"
}

# apt-get source needs source entries; they are made from the machine's own binary entries, once.
ensure_deb_src() {
    if grep -qsE '^(deb-src[[:space:]]|Types:.*deb-src)' /etc/apt/sources.list /etc/apt/sources.list.d/*.list \
        /etc/apt/sources.list.d/*.sources; then
        return 0
    fi
    local f tmp
    tmp=$(mktemp)
    for f in /etc/apt/sources.list.d/*.sources; do
        [[ -f $f ]] || continue
        sed -E 's/^Types:.*/Types: deb-src/' "$f" >>"$tmp"
        echo >>"$tmp"
    done
    [[ -s $tmp ]] && "${sudo_cmd[@]}" install -m 644 "$tmp" /etc/apt/sources.list.d/tavomp3-deb-src.sources
    if [[ -f /etc/apt/sources.list ]] && grep -qE '^deb[[:space:]]' /etc/apt/sources.list; then
        grep -E '^deb[[:space:]]' /etc/apt/sources.list | sed -E 's/^deb[[:space:]]/deb-src /' >"$tmp"
        "${sudo_cmd[@]}" install -m 644 "$tmp" /etc/apt/sources.list.d/tavomp3-deb-src.list
    fi
    rm -f "$tmp"
    "${sudo_cmd[@]}" apt-get update -q
}

install_packages

stamp=$( (cat "$0" "$toolchain"; x86_64-w64-mingw32-g++-posix --version | head -1) | sha256sum | cut -c1-64)
mkdir -p "$(dirname "$deps")"
exec 9>"$deps.lock"
flock 9 # one build of the cache at a time; a second caller waits and then reuses it
if [[ -f $deps/stamp && $(cat "$deps/stamp") == "$stamp" ]]; then
    echo "Windows libraries: reusing $deps"
    exit 0
fi

ensure_deb_src
echo "Windows libraries: building into $deps (log: $deps.log)"
started=$(date +%s)
rm -rf "$deps"
mkdir -p "$deps/work"
cp "$toolchain" "$deps/mingw-toolchain.cmake"
export TAVO_WIN_DEPS=$deps
work=$deps/work
cd "$work"
# apt-get source writes as the calling user; _apt cannot read root's folders, which only costs a warning.
apt-get source --download-only qt6-base taglib libsodium >"$deps.log" 2>&1

step() {
    echo "== $1 ($(($(date +%s) - started)) s)"
    echo "== $1" >>"$deps.log"
}
run() {
    "$@" >>"$deps.log" 2>&1 || {
        tail -40 "$deps.log"
        echo "Windows libraries: failed: $*" >&2
        exit 1
    }
}

step "zlib: libz-mingw-w64-dev"
# TagLib takes zlib from the mingw sysroot (/usr/x86_64-w64-mingw32), which the toolchain searches.

step "libsodium"
run dpkg-source -x libsodium_*.dsc sodium
cd sodium
run autoreconf -fi
run ./configure --host=x86_64-w64-mingw32 --prefix="$deps" --disable-shared --enable-static \
    CC=x86_64-w64-mingw32-gcc-posix CFLAGS="-O2"
run nice -n 19 make -j"$jobs"
run make install
cd "$work"

step "TagLib"
run dpkg-source -x taglib_*.dsc taglib
run cmake -S taglib -B taglib-build -G Ninja -DCMAKE_TOOLCHAIN_FILE="$deps/mingw-toolchain.cmake" \
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$deps" -DBUILD_SHARED_LIBS=OFF \
    -DBUILD_TESTING=OFF -DBUILD_EXAMPLES=OFF -DBUILD_BINDINGS=OFF -DWITH_ZLIB=ON \
    -DCMAKE_CXX_FLAGS=-I/usr/include/utf8cpp # Debian's TagLib takes the header-only utfcpp from the system
run nice -n 19 cmake --build taglib-build -j"$jobs"
run cmake --install taglib-build

step "Qt (Core, Gui, Widgets, Network, Test)"
run dpkg-source -x qt6-base_*.dsc qt
mkdir qt-build
cd qt-build
# The Debian tarball lacks the tablet (wintab) headers; SQL, D-Bus, OpenGL, XML, Concurrent and
# printing are not used by the program. The build tools are Debian's Qt of the same version.
run ../qt/configure -prefix "$deps/qt" -release -shared -xplatform win32-g++ -qt-host-path /usr \
    -nomake examples -nomake tests -no-feature-tabletevent -no-feature-sql -no-dbus -no-opengl \
    -no-feature-concurrent -no-feature-xml -no-feature-printsupport -no-feature-androiddeployqt \
    -no-feature-windeployqt -no-icu -no-zstd -no-openssl -qt-zlib -qt-pcre -qt-libpng -qt-libjpeg \
    -qt-freetype -qt-harfbuzz -qt-doubleconversion -- -G Ninja \
    -DCMAKE_TOOLCHAIN_FILE="$deps/mingw-toolchain.cmake" \
    -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake -DQT_USE_CCACHE=ON
run nice -n 19 cmake --build . --parallel "$jobs"
run cmake --install .

cd "$deps"
rm -rf "$work"
echo "$stamp" >"$deps/stamp"
echo "Windows libraries: done in $(($(date +%s) - started)) s"
