#include "update/PlayerReplacement.h"

#include "base/Dialogs.h"
#include "base/SettingsStore.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QThread>
#include <filesystem>
#include <system_error>

namespace {
const QString kUpdate = QStringLiteral("Update");

std::filesystem::path fsPath(const QString& p) {
    return std::filesystem::path(p.toStdU16String());
}
} // namespace

PlayerReplacement::PlayerReplacement(SettingsStore& settings, Dialogs& dialogs)
    : m_settings(settings), m_dialogs(dialogs) {
    startProgram = [](const QString& program) {
        return QProcess::startDetached(program, {}, QFileInfo(program).absolutePath());
    };
    isRunning = &PlayerReplacement::programIsRunning;
}

bool PlayerReplacement::looksLikeProgram(const QByteArray& head) {
#ifdef Q_OS_WIN
    return head.startsWith("MZ");
#else
    return head.startsWith("\x7f"
                           "ELF") ||
           head.startsWith("#!");
#endif
}

bool PlayerReplacement::programIsRunning(const QString& program) {
#ifdef Q_OS_LINUX
    const QString wanted = QFileInfo(program).canonicalFilePath();
    if (wanted.isEmpty())
        return false;
    const QDir proc(QStringLiteral("/proc"));
    for (const QString& pid : proc.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (pid.isEmpty() || !pid.at(0).isDigit())
            continue;
        const QString exe = QFileInfo(proc.filePath(pid + QStringLiteral("/exe"))).symLinkTarget();
        if (exe == wanted)
            return true;
    }
    return false;
#else
    Q_UNUSED(program);
    return false; // elsewhere the replacement itself fails while the file is in use, and is retried
#endif
}

QString PlayerReplacement::failureText(const QString& reason) {
    return QStringLiteral("Die neue Version konnte nicht eingespielt werden: ") + reason +
           QStringLiteral("\r\nDie bisherige Version bleibt erhalten.");
}

bool PlayerReplacement::refuse(const QString& reason) {
    m_dialogs.message(failureText(reason), QStringLiteral("TavoMP3 Update"), Dialogs::Buttons::Ok,
                      Dialogs::Icon::Critical);
    return false;
}

PlayerReplacement::Outcome PlayerReplacement::run() {
    if (m_settings.GetSetting(kUpdate, QStringLiteral("PlayerToUpdate"), QStringLiteral("0")) !=
        QLatin1String("1"))
        return Outcome::NothingToDo;
    const QString player = m_settings.GetSetting(kUpdate, QStringLiteral("PlayerPath"), QString());
    const QString updated = m_settings.GetSetting(kUpdate, QStringLiteral("PlayerPathUpdated"), QString());

    // The player starts us while it closes: give it time to be gone before its file is touched.
    QDeadlineTimer deadline(waitForPlayerMs);
    while (isRunning(player) && !deadline.hasExpired())
        QThread::msleep(100);

    auto refuseAndRestart = [&](const QString& reason) {
        refuse(reason);
        if (QFileInfo::exists(player))
            startProgram(player);
        return Outcome::Refused;
    };

    if (player.isEmpty() || updated.isEmpty())
        return refuseAndRestart(QStringLiteral("Pfade fehlen in den Einstellungen."));
    QFile download(updated);
    if (!download.open(QIODevice::ReadOnly))
        return refuseAndRestart(QStringLiteral("\"") + updated + QStringLiteral("\" nicht gefunden."));
    const QByteArray head = download.read(4);
    const qint64 size = download.size();
    download.close();
    if (size == 0)
        return refuseAndRestart(QStringLiteral("\"") + updated + QStringLiteral("\" ist leer."));
    if (!looksLikeProgram(head))
        return refuseAndRestart(QStringLiteral("\"") + updated + QStringLiteral("\" ist kein Programm."));

    // The new file takes the old one's permissions (the execute bits above all) before it takes its
    // place; the rename replaces the old file in one step, so there is never a half-written player.
    const QFileDevice::Permissions keep = QFileInfo::exists(player)
                                              ? QFile::permissions(player)
                                              : QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                                    QFileDevice::ExeOwner | QFileDevice::ReadUser |
                                                    QFileDevice::WriteUser | QFileDevice::ExeUser |
                                                    QFileDevice::ReadGroup | QFileDevice::ExeGroup |
                                                    QFileDevice::ReadOther | QFileDevice::ExeOther;
    QFile::setPermissions(updated,
                          keep | QFileDevice::ExeOwner | QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    std::error_code error;
    for (int attempt = 0;; ++attempt) {
        std::filesystem::rename(fsPath(updated), fsPath(player), error);
        if (!error || attempt >= 20)
            break;
        QThread::msleep(250); // a file still in use (Windows) is retried for a few seconds
    }
    if (error)
        return refuseAndRestart(QString::fromLocal8Bit(error.message()));

    m_settings.SaveSetting(kUpdate, QStringLiteral("PlayerToUpdate"), QStringLiteral("0"));
    if (!startProgram(player))
        m_dialogs.message(QStringLiteral("Die neue Version wurde eingespielt, aber \"") + player +
                              QStringLiteral("\" konnte nicht gestartet werden."),
                          QStringLiteral("TavoMP3 Update"), Dialogs::Buttons::Ok, Dialogs::Icon::Critical);
    return Outcome::Replaced;
}
