#pragma once

#include <QtGlobal>

// How the session is ended. The decisions (which exit flags, whether to enable the shutdown
// privilege, whether to kill the shell) are plain functions so they are tested on every
// platform; only WindowsShutdown.cpp makes the Windows calls.
namespace ShutdownModule {

enum ExitFlag : quint32 {
    EWX_SHUTDOWN = 1,
    EWX_FORCE = 4,
    EWX_POWEROFF = 8,
    EWX_FORCEIFHUNG = 16,
};

// What the Windows version record says about the system.
struct WindowsVersion {
    quint32 platformId = 2; // 1 = Windows 9x family, 2 = NT family
    quint32 majorVersion = 5;
};

bool IsWinNT(const WindowsVersion& v);
bool IsWin2000OrLater(const WindowsVersion& v);

struct ShutdownPlan {
    bool enablePrivilege = false;
    quint32 flags = 0;
    bool killShell = false;
};

// mode: 0 plain, 1 forced, 2 forced only for hung programs.
ShutdownPlan planShutdown(const WindowsVersion& v, qint32 mode);

} // namespace ShutdownModule
