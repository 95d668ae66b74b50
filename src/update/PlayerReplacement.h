#pragma once

#include <QByteArray>
#include <QString>
#include <functional>

class Dialogs;
class SettingsStore;

// What the separate updater program does after the player closed: when the "Update" section asks
// for it, swap the player file for the downloaded one and start the player again. A download that
// is empty or no program of this platform is refused, and the old player keeps working.
class PlayerReplacement {
public:
    enum class Outcome { NothingToDo, Replaced, Refused };

    PlayerReplacement(SettingsStore& settings, Dialogs& dialogs);

    Outcome run();

    // How long to wait for the running player to end.
    int waitForPlayerMs = 30000;
    // Starts a program; replaced in tests.
    std::function<bool(const QString& program)> startProgram;
    // Whether a program file is still running; replaced in tests.
    std::function<bool(const QString& program)> isRunning;

    // The first bytes of a program of this platform: ELF or a "#!" script on Unix, "MZ" on Windows.
    static bool looksLikeProgram(const QByteArray& head);
    // Whether a process runs from this file (Linux: /proc/<pid>/exe).
    static bool programIsRunning(const QString& program);

    static QString failureText(const QString& reason);

private:
    bool refuse(const QString& reason);

    SettingsStore& m_settings;
    Dialogs& m_dialogs;
};
