# Cross-compiling for 64-bit Windows with Debian's mingw-w64 (posix threads: std::thread and Qt need them).
# The libraries built by scripts/windows/build-deps.sh live in TAVO_WIN_DEPS (default
# ~/.cache/tavomp3-windows); Qt under qt/, TagLib and libsodium directly under it.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(TAVO_MINGW x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${TAVO_MINGW}-gcc-posix)
set(CMAKE_CXX_COMPILER ${TAVO_MINGW}-g++-posix)
set(CMAKE_RC_COMPILER ${TAVO_MINGW}-windres)

if(NOT TAVO_WIN_DEPS)
    if(DEFINED ENV{TAVO_WIN_DEPS} AND NOT "$ENV{TAVO_WIN_DEPS}" STREQUAL "")
        set(TAVO_WIN_DEPS "$ENV{TAVO_WIN_DEPS}")
    else()
        set(TAVO_WIN_DEPS "$ENV{HOME}/.cache/tavomp3-windows")
    endif()
endif()
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TAVO_WIN_DEPS)

# Only Windows libraries are ever found: the mingw sysroot and the dependency cache. Paths below a
# root are searched as they are, so the cache's own prefixes need no re-rooting.
set(CMAKE_FIND_ROOT_PATH /usr/${TAVO_MINGW} ${TAVO_WIN_DEPS})
list(APPEND CMAKE_PREFIX_PATH ${TAVO_WIN_DEPS}/qt ${TAVO_WIN_DEPS})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# pkg-config sees the cache's .pc files and nothing of the build machine.
set(ENV{PKG_CONFIG_LIBDIR} "${TAVO_WIN_DEPS}/lib/pkgconfig")
set(ENV{PKG_CONFIG_PATH} "")

# Qt's build tools (moc, rcc, uic) run on the build machine: Debian's Qt of the same version.
set(QT_HOST_PATH /usr)
set(QT_HOST_PATH_CMAKE_DIR /usr/lib/x86_64-linux-gnu/cmake)
