#include "power/ShutdownModule.h"

namespace ShutdownModule {

bool IsWinNT(const WindowsVersion& v) {
    return v.platformId == 2;
}

bool IsWin2000OrLater(const WindowsVersion& v) {
    return v.platformId == 2 && v.majorVersion > 4;
}

ShutdownPlan planShutdown(const WindowsVersion& v, qint32 mode) {
    ShutdownPlan plan;
    plan.enablePrivilege = IsWinNT(v);

    quint32 marker = 0;
    if (!IsWinNT(v) && !IsWin2000OrLater(v)) {
        plan.flags = EWX_SHUTDOWN;
        marker = 1;
    } else {
        plan.flags = EWX_SHUTDOWN | EWX_POWEROFF;
        marker = 8;
    }

    // Systems before Windows 2000 know no "force if hung", so that request degrades to forcing all.
    if (!IsWin2000OrLater(v) && mode == 2) {
        mode = 1;
        plan.flags += EWX_FORCE;
    } else if (mode == 1) {
        plan.flags += EWX_FORCE;
    } else if (mode == 2) {
        plan.flags += EWX_FORCEIFHUNG;
    }

    // The marker is only ever 1 or 8, so the shell is never killed. The guard stays as it always
    // was: this dormant path is part of how the program has behaved for years.
    plan.killShell = !IsWinNT(v) && marker == 4 && mode == 1;
    return plan;
}

} // namespace ShutdownModule
