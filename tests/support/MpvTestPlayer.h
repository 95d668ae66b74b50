#pragma once

#include <QString>
#include <QTemporaryDir>

// Everything a test needs to run the real mpv without sound and without touching the user's
// player: a config folder with ao=null (set as XDG_CONFIG_HOME for the players started from now
// on), a private socket path, and a way to learn and end the player's process.
class MpvTestPlayer {
public:
    MpvTestPlayer();
    ~MpvTestPlayer();

    static QString mpvPath(); // empty when mpv is not installed
    bool isValid() const { return m_dir.isValid(); }
    QString socketPath() const { return m_dir.filePath(QStringLiteral("mpv.sock")); }
    QString filePath(const QString& name) const { return m_dir.filePath(name); }

    // The pid of the mpv answering on the socket, 0 if none answers.
    qint64 pid() const;
    // Reads a property through a connection of its own; invalid when the player does not answer.
    QVariant property(const QString& name) const;
    // SIGKILL, then waits until the process is gone.
    static bool kill(qint64 pid);
    static bool alive(qint64 pid);
    // Ends whatever player answers on the socket.
    void killPlayer();

private:
    QTemporaryDir m_dir;
    QByteArray m_oldConfigHome;
};
