#include "player/PlayerProcess.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#ifdef Q_OS_UNIX
#include <csignal>
#include <unistd.h>
#endif

namespace PlayerProcess {

qint64 startDetached(const QString& program, const QStringList& arguments) {
    qint64 pid = 0;
    QProcess player;
    player.setProgram(program);
    player.setArguments(arguments);
    // The player outlives this program; it must not hold on to our terminal or pipes.
    player.setStandardInputFile(QProcess::nullDevice());
    player.setStandardOutputFile(QProcess::nullDevice());
    player.setStandardErrorFile(QProcess::nullDevice());
    return player.startDetached(&pid) ? pid : 0;
}

bool running(qint64 pid) {
#ifdef Q_OS_UNIX
    if (pid <= 0)
        return true;
    if (::kill(pid_t(pid), 0) != 0)
        return false;
    // An exited process that nobody reaped yet is a zombie: gone all the same.
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!stat.open(QIODevice::ReadOnly))
        return true;
    const QByteArray line = stat.readAll();
    const qsizetype close = line.lastIndexOf(')');
    if (close < 0 || line.mid(close + 2, 1) != "Z")
        return true;
    // The first thread is a zombie as soon as it has ended; the process holds its files (the
    // player's end of the socket) until its last thread has ended too.
    return QDir(QStringLiteral("/proc/%1/task").arg(pid))
               .entryList(QDir::Dirs | QDir::NoDotAndDotDot)
               .size() > 1;
#else
    Q_UNUSED(pid);
    return true;
#endif
}

void terminate(qint64 pid) {
#ifdef Q_OS_UNIX
    if (pid > 0)
        ::kill(pid_t(pid), SIGTERM);
#else
    Q_UNUSED(pid);
#endif
}

qint64 ownUid() {
#ifdef Q_OS_UNIX
    return qint64(::geteuid());
#else
    return -1;
#endif
}

} // namespace PlayerProcess
