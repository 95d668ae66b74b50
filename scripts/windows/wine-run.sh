#!/usr/bin/env bash
# Runs a program of the Windows build under Wine, as CMake's CROSSCOMPILING_EMULATOR does for the tests:
# the Qt and mingw DLLs on the program path, Wine's own messages off, and a Wine prefix of our own
# (default: TAVO_WIN_DEPS/wineprefix, made on first use) whose null graphics driver needs no X server.
set -euo pipefail
deps=${TAVO_WIN_DEPS:-$HOME/.cache/tavomp3-windows}
export WINEPREFIX=${WINEPREFIX:-$deps/wineprefix}
export WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES=${WINEDLLOVERRIDES:-mscoree,mshtml=} # no Mono or Gecko installer prompts
# Wine keeps the QT_* variables of Linux away from Windows programs; the same names with WINE in front
# reach them without it. Qt writes messages and test results to the debugger when it sees no console
# (ours is a pipe) unless told otherwise.
export QT_FORCE_STDERR_LOGGING=1
for name in $(compgen -e); do
    if [[ $name == QT_* ]]; then
        export "WINE$name=${!name}"
    fi
done

if [[ ! -f $WINEPREFIX/.tavo-ready ]]; then
    mkdir -p "$(dirname "$WINEPREFIX")"
    (
        flock 9
        if [[ ! -f $WINEPREFIX/.tavo-ready ]]; then
            wineboot -i >/dev/null 2>&1
            wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f >/dev/null 2>&1
            wineserver -w
            touch "$WINEPREFIX/.tavo-ready"
        fi
    ) 9>"$WINEPREFIX.lock"
fi

windows_path() { printf 'Z:%s' "${1//\//\\}"; }
dirs=("$deps/qt/bin" /usr/lib/gcc/x86_64-w64-mingw32/12-posix /usr/x86_64-w64-mingw32/lib)
WINEPATH=
for d in "${dirs[@]}"; do
    WINEPATH+="${WINEPATH:+;}$(windows_path "$d")"
done
export WINEPATH
exec wine "$@"
