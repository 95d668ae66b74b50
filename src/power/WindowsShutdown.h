#pragma once

#include <QtGlobal>

#ifdef Q_OS_WIN
// The Windows calls behind a shutdown: privilege, optional shell kill, ExitWindowsEx. Nothing is
// checked or reported; a refused shutdown simply leaves the program running.
namespace WindowsShutdown {
void ShutdownWindows(qint32 mode);
void EnableShutdownPrivilege();
void KillShellProcess();
} // namespace WindowsShutdown
#endif
