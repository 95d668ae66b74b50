#include "support/MpvTestPlayer.h"

#include "player/MpvIpc.h"
#include "player/MpvLink.h"
#include "player/PlayerProcess.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QThread>
#include <QVariant>

#include <csignal>
#include <sys/types.h>

MpvTestPlayer::MpvTestPlayer() : m_oldConfigHome(qgetenv("XDG_CONFIG_HOME")) {
    QDir(m_dir.path()).mkpath(QStringLiteral("config/mpv"));
    QFile conf(m_dir.filePath(QStringLiteral("config/mpv/mpv.conf")));
    if (conf.open(QIODevice::WriteOnly))
        conf.write("ao=null\nlog-file=" + m_dir.filePath(QStringLiteral("mpv.log")).toLocal8Bit() + "\n");
    qputenv("XDG_CONFIG_HOME", m_dir.filePath(QStringLiteral("config")).toLocal8Bit());
}

MpvTestPlayer::~MpvTestPlayer() {
    killPlayer();
    if (m_oldConfigHome.isEmpty())
        qunsetenv("XDG_CONFIG_HOME");
    else
        qputenv("XDG_CONFIG_HOME", m_oldConfigHome);
}

QString MpvTestPlayer::mpvPath() {
    return QStandardPaths::findExecutable(QStringLiteral("mpv"));
}

QVariant MpvTestPlayer::property(const QString& name) const {
    MpvIpc ipc;
    if (!ipc.connectTo(socketPath(), 200))
        return QVariant();
    try {
        const MpvIpc::Reply r = ipc.request(QJsonArray{QStringLiteral("get_property"), name}, 1000);
        return r.ok ? r.data.toVariant() : QVariant();
    } catch (const MpvIpc::Unreachable&) {
        return QVariant();
    }
}

qint64 MpvTestPlayer::pid() const {
    return property(QStringLiteral("pid")).toLongLong();
}

bool MpvTestPlayer::alive(qint64 pid) {
    return pid > 0 && PlayerProcess::running(pid);
}

bool MpvTestPlayer::kill(qint64 pid) {
    if (pid <= 0)
        return false;
    ::kill(pid_t(pid), SIGKILL);
    const QDeadlineTimer deadline(3000);
    while (alive(pid) && !deadline.hasExpired())
        QThread::msleep(10);
    return !alive(pid);
}

void MpvTestPlayer::killPlayer() {
    kill(pid());
}
