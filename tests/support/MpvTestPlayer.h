#pragma once

#include "player/MpvIpc.h"
#include "player/PlayerProcess.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QThread>
#include <QVariant>

#include <csignal>

// Everything a test needs to run the real mpv without sound and without touching the user's
// player: a config folder with ao=null (set as XDG_CONFIG_HOME for the players started from now
// on), a private socket path, and a way to learn and end the player's process.
class MpvTestPlayer {
public:
    MpvTestPlayer() : m_oldConfigHome(qgetenv("XDG_CONFIG_HOME")) {
        QDir(m_dir.path()).mkpath(QStringLiteral("config/mpv"));
        QFile conf(m_dir.filePath(QStringLiteral("config/mpv/mpv.conf")));
        if (conf.open(QIODevice::WriteOnly))
            conf.write("ao=null\nlog-file=" + QFile::encodeName(filePath(QStringLiteral("mpv.log"))) + "\n");
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_dir.filePath(QStringLiteral("config"))));
    }
    ~MpvTestPlayer() {
        kill(pid());
        if (m_oldConfigHome.isEmpty())
            qunsetenv("XDG_CONFIG_HOME");
        else
            qputenv("XDG_CONFIG_HOME", m_oldConfigHome);
    }

    static QString mpvPath() { return QStandardPaths::findExecutable(QStringLiteral("mpv")); } // empty: none
    QString socketPath() const { return m_dir.filePath(QStringLiteral("mpv.sock")); }
    QString filePath(const QString& name) const { return m_dir.filePath(name); }

    // Reads a property through a connection of its own; invalid when the player does not answer.
    QVariant property(const QString& name) const {
        MpvIpc ipc;
        try {
            if (!ipc.connectTo(socketPath(), 200))
                return QVariant();
            const MpvIpc::Reply r = ipc.request(QJsonArray{QStringLiteral("get_property"), name}, 1000);
            return r.ok ? r.data.toVariant() : QVariant();
        } catch (const MpvIpc::Unreachable&) {
            return QVariant();
        }
    }
    // The pid of the mpv answering on the socket, 0 if none answers.
    qint64 pid() const { return property(QStringLiteral("pid")).toLongLong(); }
    static bool alive(qint64 pid) { return pid > 0 && PlayerProcess::running(pid); }
    // SIGKILL, then waits until the process is gone.
    static bool kill(qint64 pid) {
        if (pid <= 0)
            return false;
        ::kill(pid_t(pid), SIGKILL);
        const QDeadlineTimer deadline(3000);
        while (alive(pid) && !deadline.hasExpired())
            QThread::msleep(10);
        return !alive(pid);
    }

private:
    QTemporaryDir m_dir;
    QByteArray m_oldConfigHome;
};
