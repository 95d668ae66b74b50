#include "power/WindowsShutdown.h"

#ifdef Q_OS_WIN
#include "power/ShutdownModule.h"

#include <windows.h>

namespace WindowsShutdown {

namespace {
ShutdownModule::WindowsVersion queryVersion() {
    OSVERSIONINFOA info{};
    info.dwOSVersionInfoSize = 148;
    GetVersionExA(&info);
    return {info.dwPlatformId, info.dwMajorVersion};
}
} // namespace

void EnableShutdownPrivilege() {
    HANDLE token = nullptr;
    OpenProcessToken(GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY, &token);
    TOKEN_PRIVILEGES privileges{};
    LookupPrivilegeValueA("", "SeShutdownPrivilege", &privileges.Privileges[0].Luid);
    privileges.PrivilegeCount = 1;
    privileges.Privileges[0].Attributes = SE_PRIVILEGE_ENABLED;
    TOKEN_PRIVILEGES previous{};
    DWORD returned = 0;
    AdjustTokenPrivileges(token, FALSE, &privileges, 16, &previous, &returned);
    CloseHandle(token);
}

void KillShellProcess() {
    HWND shell = FindWindowA("progman", "program manager");
    DWORD processId = 0;
    GetWindowThreadProcessId(shell, &processId);
    HANDLE process = OpenProcess(PROCESS_TERMINATE, FALSE, processId);
    if (process)
        TerminateProcess(process, 1);
    CloseHandle(process);
}

void ShutdownWindows(qint32 mode) {
    const ShutdownModule::ShutdownPlan plan = ShutdownModule::planShutdown(queryVersion(), mode);
    if (plan.enablePrivilege)
        EnableShutdownPrivilege();
    if (plan.killShell)
        KillShellProcess();
    ExitWindowsEx(plan.flags, 0xFFFFFFFF);
}

} // namespace WindowsShutdown
#endif
