#include "update/PlayerReplacement.h"

#include "base/Dialogs.h"
#include "base/SettingsStore.h"
#include "update/ReleaseList.h"
#include "update/UpdateConfig.h"

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
const QString kTitle = QStringLiteral("TavoMP3 Update");

std::error_code renameFile(const QString& from, const QString& to) {
    std::error_code error;
    for (int attempt = 0;; ++attempt) {
        std::filesystem::rename(std::filesystem::path(from.toStdU16String()),
                                std::filesystem::path(to.toStdU16String()), error);
        if (!error || attempt >= 20)
            return error;
        QThread::msleep(250); // a file still in use (Windows) is retried for a few seconds
    }
}
} // namespace

PlayerReplacement::PlayerReplacement(SettingsStore& settings, Dialogs& dialogs, QString publicKey)
    : m_settings(settings), m_dialogs(dialogs), m_publicKey(std::move(publicKey)) {
    isRunning = &PlayerReplacement::programIsRunning;
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

bool PlayerReplacement::processAlive(qint64 pid) {
#ifdef Q_OS_LINUX
    QFile stat(QStringLiteral("/proc/") + QString::number(pid) + QStringLiteral("/stat"));
    if (!stat.open(QIODevice::ReadOnly))
        return false;
    // "<pid> (<name>) <state> ...": a dead child nobody has reaped yet shows as Z.
    const QByteArray line = stat.readAll();
    const qsizetype paren = line.lastIndexOf(')');
    const char state = paren >= 0 && paren + 2 < line.size() ? line.at(paren + 2) : 'X';
    return state != 'Z' && state != 'X';
#else
    Q_UNUSED(pid);
    return true;
#endif
}

QString PlayerReplacement::failureText(const QString& reason) {
    return QStringLiteral("Die neue Version konnte nicht eingespielt werden: ") + reason +
           QStringLiteral("\r\nDie bisherige Version bleibt erhalten.");
}

qint64 PlayerReplacement::start(const QString& program) {
    qint64 pid = 0;
    if (!QProcess::startDetached(program, {}, QFileInfo(program).absolutePath(), &pid))
        return 0;
    return pid;
}

bool PlayerReplacement::keepsRunning(qint64 pid) const {
    if (pid <= 0)
        return false;
    QDeadlineTimer deadline(confirmStartMs);
    while (!deadline.hasExpired()) {
        if (!processAlive(pid))
            return false;
        QThread::msleep(50);
    }
    return processAlive(pid);
}

PlayerReplacement::Outcome PlayerReplacement::refuseAndRestart(const QString& player, const QString& reason) {
    m_dialogs.message(failureText(reason), kTitle, Dialogs::Buttons::Ok, Dialogs::Icon::Critical);
    if (QFileInfo::exists(player))
        start(player);
    return Outcome::Refused;
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

    if (player.isEmpty() || updated.isEmpty())
        return refuseAndRestart(player, QStringLiteral("Pfade fehlen in den Einstellungen."));
    const QString folder = QFileInfo(player).absolutePath();
    if (!UpdateConfig::folderWritable(folder))
        return refuseAndRestart(player, QStringLiteral("Das Programmverzeichnis \"") +
                                            QDir::toNativeSeparators(folder) +
                                            QStringLiteral("\" ist für Sie nicht beschreibbar. Bitte "
                                                           "aktualisieren Sie das Programm auf demselben "
                                                           "Weg, auf dem es installiert wurde."));
    // The list the player accepted lies beside it; the file must still be the one it signs.
    QString why;
    const auto list = ReleaseList::read(folder + QStringLiteral("/TavoMP3Versions.txt"), m_publicKey, why);
    if (!list || !list->verifyFile(UpdateConfig::playerFileName(), updated, m_publicKey, why))
        return refuseAndRestart(player, why);

    // The new file takes the old one's permissions (the execute bits above all). The old file is
    // kept until the new one has started; each move is one rename, never a half-written player.
    const bool hadPlayer = QFileInfo::exists(player);
    const QString backup = player + QStringLiteral(".old");
    const QFileDevice::Permissions keep = hadPlayer ? QFile::permissions(player)
                                                    : QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                                          QFileDevice::ExeOwner | QFileDevice::ReadUser |
                                                          QFileDevice::WriteUser | QFileDevice::ExeUser |
                                                          QFileDevice::ReadGroup | QFileDevice::ExeGroup |
                                                          QFileDevice::ReadOther | QFileDevice::ExeOther;
    QFile::setPermissions(updated,
                          keep | QFileDevice::ExeOwner | QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    if (hadPlayer) {
        if (const std::error_code error = renameFile(player, backup))
            return refuseAndRestart(player, QString::fromLocal8Bit(error.message()));
    }
    if (const std::error_code error = renameFile(updated, player)) {
        if (hadPlayer)
            renameFile(backup, player);
        return refuseAndRestart(player, QString::fromLocal8Bit(error.message()));
    }
    m_settings.SaveSetting(kUpdate, QStringLiteral("PlayerToUpdate"), QStringLiteral("0"));

    if (keepsRunning(start(player))) {
        QFile::remove(backup);
        return Outcome::Replaced;
    }
    const bool restored = hadPlayer && !renameFile(backup, player);
    if (!restored) {
        m_dialogs.message(QStringLiteral("Die neue Version wurde eingespielt, aber \"") + player +
                              QStringLiteral("\" ließ sich nicht starten."),
                          kTitle, Dialogs::Buttons::Ok, Dialogs::Icon::Critical);
        return Outcome::Refused;
    }
    m_dialogs.message(QStringLiteral("Die neue Version ließ sich nicht starten. Die bisherige Version wurde "
                                     "wiederhergestellt und wieder gestartet."),
                      kTitle, Dialogs::Buttons::Ok, Dialogs::Icon::Critical);
    start(player);
    return Outcome::Restored;
}
