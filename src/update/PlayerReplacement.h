#pragma once

#include <QString>
#include <functional>

class Dialogs;
class SettingsStore;

// What the separate updater program does after the player closed: when the "Update" section asks
// for it, swap the player file for the downloaded one and start the player again. The download is
// checked once more against the signed version list beside the player; anything that is not the
// complete, signed file is refused and the old player keeps working. A new player that does not
// keep running is replaced by the old one again.
class PlayerReplacement {
public:
    enum class Outcome { NothingToDo, Replaced, Refused, Restored };

    PlayerReplacement(SettingsStore& settings, Dialogs& dialogs, QString publicKey);

    Outcome run();

    // How long to wait for the running player to end.
    int waitForPlayerMs = 30000;
    // How long the new player must keep running to count as started.
    int confirmStartMs = 3000;
    // Whether a program file is still running; replaced in tests.
    std::function<bool(const QString& program)> isRunning;

    // Whether a process runs from this file (Linux: /proc/<pid>/exe).
    static bool programIsRunning(const QString& program);
    // Whether the process is alive and no zombie; true where that cannot be told.
    static bool processAlive(qint64 pid);

    static QString failureText(const QString& reason);

private:
    Outcome refuseAndRestart(const QString& player, const QString& reason);
    // The process id of the started program, 0 when it could not be started.
    static qint64 start(const QString& program);
    bool keepsRunning(qint64 pid) const;

    SettingsStore& m_settings;
    Dialogs& m_dialogs;
    QString m_publicKey;
};
