#!/usr/bin/env bash
# The Windows installer end to end under Wine, in a Wine prefix of its own that is thrown away after:
# cpack -G NSIS, a silent install (/S) into a folder of the test's choosing, the installed files and the
# Start-menu entry, the installed program started without the build's DLL path against the stand-in
# player (which it must start and then poll), a second start handed over to it, and the silent
# uninstall.
set -euo pipefail
build=$(cd "$1" && pwd)
here=$(cd "$(dirname "$0")" && pwd)
export TAVO_WIN_DEPS=${TAVO_WIN_DEPS:-$HOME/.cache/tavomp3-windows}
work=$(mktemp -d "$build/installer-check.XXXXXX")
export WINEPREFIX=$work/prefix WINEDEBUG=-all
cleanup() {
    wineserver -k 2>/dev/null || true
    rm -rf "$work"
}
trap cleanup EXIT
fail() {
    echo "installer: $*" >&2
    exit 1
}

(cd "$build" && cpack -G NSIS -B "$work/package" >"$work/cpack.log") || {
    cat "$work/cpack.log"
    fail "cpack failed"
}
installer=$(ls "$work"/package/TavoMP3Player-*-win64.exe)

bash "$here/../../scripts/windows/wine-run.sh" cmd /c exit 0 # makes the prefix
target=$WINEPREFIX/drive_c/TavoMP3Test
wine "$installer" /S '/D=C:\TavoMP3Test'
for f in TavoMP3Player.exe TavoMP3Update.exe Uninstall.exe Button129x22.bmp Button86x22over.bmp Qt6Core.dll \
    Qt6Widgets.dll libstdc++-6.dll libwinpthread-1.dll platforms/qwindows.dll styles/qwindowsvistastyle.dll translations/qtbase_de.qm; do
    [[ -f $target/$f ]] || fail "$f was not installed"
done
menu="$WINEPREFIX/drive_c/ProgramData/Microsoft/Windows/Start Menu/Programs/Tavo MP3 Player/Tavo MP3 Player.lnk"
[[ -f $menu ]] || fail "no Start-menu entry"

# A configured installation whose player is the stand-in: the program must start it and poll it.
cp "$build/FakeWinamp.exe" "$WINEPREFIX/drive_c/FakeWinamp.exe"
mkdir -p "$WINEPREFIX/drive_c/Musik"
key='HKCU\Software\VB and VBA Program Settings\TavoMP3Player\Settings'
wine reg add "$key" /v WinampPath /d 'C:\FakeWinamp.exe' /f >/dev/null 2>&1
wine reg add "$key" /v UserMP3Directory /d 'C:\Musik' /f >/dev/null 2>&1
record=$work/record.txt
env -u WINEPATH TAVO_FAKE_WINAMP_RECORD="Z:${record//\//\\}" wine 'C:\TavoMP3Test\TavoMP3Player.exe' \
    >"$work/program.log" 2>&1 &
polls=0
for _ in $(seq 60); do
    polls=$(grep -c '^ipc 104 ' "$record" 2>/dev/null || true)
    ((polls >= 5)) && break
    sleep 0.5
done
((polls >= 5)) || fail "the installed program did not start and poll the player (status queries: $polls)"
# A second start hands its words over to the running program (the user's named pipe) and ends.
timeout 60 wine 'C:\TavoMP3Test\TavoMP3Player.exe' play >"$work/second.log" 2>&1 ||
    fail "a second start did not end: $(cat "$work/second.log")"
grep -q "läuft schon" "$work/second.log" || fail "a second start was not handed over: $(cat "$work/second.log")"
wineserver -k
wineserver -w

wine "$target/Uninstall.exe" /S
for _ in $(seq 40); do
    [[ -e $target/TavoMP3Player.exe ]] || break
    sleep 0.5
done
[[ ! -e $target/TavoMP3Player.exe ]] || fail "the uninstaller left the program behind"
[[ ! -e $menu ]] || fail "the uninstaller left the Start-menu entry behind"
echo "installer: installed, started against the stand-in player ($polls status queries), second start" \
    "handed over, uninstalled"
