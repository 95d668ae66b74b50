#pragma once

#include "power/PowerOff.h"

#include <QString>

// The real power-off. When TAVOMP3_POWEROFF_COMMAND is set, that shell command runs instead (users
// can make it suspend, scripts can make it harmless). Otherwise: ExitWindowsEx on Windows,
// logind's PowerOff over the system D-Bus elsewhere.
class SystemPowerOff : public PowerOff {
public:
    static constexpr const char* kCommandVariable = "TAVOMP3_POWEROFF_COMMAND";

    void ShutdownWindows(qint32 mode) override;

    // Starts `command` through the shell, detached; true when it could be started.
    static bool runCommand(const QString& command);
#ifndef Q_OS_WIN
    // Asks logind to power off; interactive=false so no password prompt can block the
    // unattended sleep mode.
    static bool callLogind();
#endif
};
