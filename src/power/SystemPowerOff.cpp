#include "power/SystemPowerOff.h"

#include "power/WindowsShutdown.h"

#include <QProcess>

#ifndef Q_OS_WIN
#include <QDBusConnection>
#include <QDBusMessage>
#endif

void SystemPowerOff::ShutdownWindows(qint32 mode) {
    const QString command = qEnvironmentVariable(kCommandVariable);
    if (!command.isEmpty()) {
        runCommand(command);
        return;
    }
#ifdef Q_OS_WIN
    WindowsShutdown::ShutdownWindows(mode);
#else
    Q_UNUSED(mode);
    callLogind();
#endif
}

bool SystemPowerOff::runCommand(const QString& command) {
#ifdef Q_OS_WIN
    return QProcess::startDetached(QStringLiteral("cmd.exe"), {QStringLiteral("/c"), command});
#else
    return QProcess::startDetached(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), command});
#endif
}

#ifndef Q_OS_WIN
bool SystemPowerOff::callLogind() {
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
        QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("PowerOff"));
    call << false;
    // Not waited for: the answer, if any, would arrive while the session is ending.
    return QDBusConnection::systemBus().send(call);
}
#endif
