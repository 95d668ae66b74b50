#include "update/UpdateCheck.h"

#include "base/AppGlobals.h"
#include "base/Checked.h"
#include "base/Clock.h"
#include "base/Dialogs.h"
#include "base/ErrorReport.h"
#include "base/RuntimeError.h"
#include "base/Services.h"
#include "base/SettingsStore.h"

#include <QFile>

namespace {

const QString& lineAt(const QStringList& lines, int oneBased) {
    if (oneBased < 1 || oneBased > lines.size())
        throw RuntimeError::subscriptOutOfRange();
    return lines.at(oneBased - 1);
}

QString quoted(const QString& text) {
    return QStringLiteral("\"") + text + QStringLiteral("\"");
}

} // namespace

UpdateCheck::UpdateCheck(Services& services, UpdateConfig config, QObject* parent)
    : QObject(parent), m_services(services), m_config(std::move(config)), m_download(services.dialogs) {
    connect(&m_download, &SocketDownload::downloadClosed, this, &UpdateCheck::onDownloadClosed);
    connect(&m_download, &SocketDownload::timedOut, this, &UpdateCheck::onTimedOut);
}

void UpdateCheck::appendLog(const QString& text) {
    m_log += text;
    emit logChanged(m_log);
}

void UpdateCheck::dropFetchedPlayer() {
    if (UpdateState == UpdaterAfterPlayer)
        QFile::remove(m_config.newPlayerFile());
}

void UpdateCheck::refuse(const QString& why) {
    appendLog(why + crLf() + crLf() + QStringLiteral("Automatisches Update abgebrochen!") + crLf());
}

void UpdateCheck::startDownload(const QString& address, const QString& destination, bool withProgress,
                                qint64 sizeLimit) {
    m_download.CloseDownload();
    m_fetching = address.mid(address.lastIndexOf(QLatin1Char('/')) + 1);
    m_download.sizeLimit = sizeLimit;
    m_download.DownloadFile(address, destination, withProgress ? &m_progress : nullptr);
}

void UpdateCheck::startCheck(State state) {
    UpdateState = state;
    m_release.reset();
    m_listFile = m_config.localVersionList();
    startDownload(m_config.versionListAddress(), m_listFile, false, ReleaseList::MaxBytes);
}

void UpdateCheck::BStartClick() {
    ErrorReport::guard(m_services.dialogs, QStringLiteral("BStart_Click"), [this](int& line) {
        line = 1;
        m_log.clear();
        appendLog(QStringLiteral("Überprüfe Player Version (aktuelle Version ") + m_config.playerVersion +
                  QStringLiteral(") ...") + crLf());
        line = 2;
        startCheck(ByHand);
    });
}

void UpdateCheck::AutomaticCheck() {
    ErrorReport::guard(m_services.dialogs, QStringLiteral("AutomaticUpdateCheck"), [this](int& line) {
        line = 1;
        startCheck(Automatic);
    });
}

void UpdateCheck::Cancel() {
    ErrorReport::guard(m_services.dialogs, QStringLiteral("BCancel_Click"), [this](int& line) {
        line = 1;
        // The time-out goes with the download: a cancelled attempt must not report later.
        m_download.Cancel();
        dropFetchedPlayer();
        UpdateState = Idle;
    });
}

void UpdateCheck::onTimedOut() {
    dropFetchedPlayer();
    appendLog(QStringLiteral("Zeitüberschreitung beim Warten auf Antwort...") + crLf() + crLf() +
              QStringLiteral("Automatisches Update abgebrochen!"));
}

void UpdateCheck::onDownloadClosed() {
    // A broken or missing download must not take the program down: the failure is reported in
    // the program's usual message and the chain stops there.
    ErrorReport::guard(m_services.dialogs, QStringLiteral("Winsock1_Close"), [this](int& line) {
        line = 1;
        if (!m_download.failure().isEmpty()) {
            dropFetchedPlayer();
            refuse(quoted(m_fetching) + QStringLiteral(" wurde nicht angenommen: ") + m_download.failure());
            return;
        }
        switch (UpdateState) {
        case ByHand:
        case Automatic:
            line = 2;
            if (acceptVersionList())
                CheckVersionPlayer();
            break;
        case PlayerCurrent:
        case PlayerDownload:
            line = 3;
            if (UpdateState == PlayerCurrent || acceptFile(UpdateConfig::playerFileName(), false))
                CheckVersionUpdate();
            break;
        case UpdaterDownload:
            line = 4;
            if (acceptFile(UpdateConfig::updaterFileName(), true))
                appendLog(QStringLiteral("Update-Programm wurde aktualisiert.") + crLf() + crLf() +
                          QStringLiteral("Automatisches Update erfolgreich abgeschlossen.") + crLf());
            break;
        case UpdaterAfterPlayer:
            line = 5;
            if (acceptFile(UpdateConfig::updaterFileName(), true))
                install();
            else
                dropFetchedPlayer();
            break;
        default:
            break;
        }
    });
}

bool UpdateCheck::acceptVersionList() {
    QString why;
    m_release = ReleaseList::read(m_download.partFile(), m_config.publicKey, why);
    if (!m_release) {
        m_download.discard();
        refuse(why + QStringLiteral(" Es gibt kein Update."));
        return false;
    }
    const QString error = m_download.commit();
    if (!error.isEmpty())
        refuse(error);
    return error.isEmpty();
}

bool UpdateCheck::acceptFile(const QString& name, bool program) {
    QString why;
    if (!m_release.value().verifyFile(name, m_download.partFile(), m_config.publicKey, why)) {
        m_download.discard();
        refuse(quoted(name) + QStringLiteral(" wurde nicht angenommen: ") + why);
        return false;
    }
    if (program) {
        // The updater must stay a program the player can start; a new one keeps the old one's rights.
        const QString& target = m_download.destination();
        const QFileDevice::Permissions runnable = QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                                  QFileDevice::ExeOwner | QFileDevice::ReadUser |
                                                  QFileDevice::WriteUser | QFileDevice::ExeUser;
        QFile::setPermissions(
            m_download.partFile(),
            (QFile::exists(target) ? QFile::permissions(target) : QFileDevice::Permissions()) | runnable);
    }
    const QString error = m_download.commit();
    if (!error.isEmpty())
        refuse(error);
    return error.isEmpty();
}

QString UpdateCheck::whyNotDownload(const QString& name) const {
    if (!UpdateConfig::folderWritable(m_config.programFolder))
        return QStringLiteral("Das Programmverzeichnis ") + quoted(m_config.programFolder) +
               QStringLiteral(" ist für Sie nicht beschreibbar, etwa weil das Programm über die "
                              "Paketverwaltung installiert wurde. Die neue Version wird nicht "
                              "eingespielt; bitte aktualisieren Sie das Programm auf demselben Weg, "
                              "auf dem es installiert wurde.");
    if (!m_release.value().names(name))
        return QStringLiteral("Die Versionsliste nennt für ") + name +
               QStringLiteral(" keine Größe und keine Signatur.");
    return QString();
}

QStringList UpdateCheck::readVersionLines(const QString& fileName) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        throw RuntimeError(RuntimeError::FileNotFound, QStringLiteral("Datei nicht gefunden"));
    QStringList lines;
    const QByteArray all = file.readAll();
    qsizetype from = 0;
    while (from < all.size()) {
        qsizetype lf = all.indexOf('\n', from);
        const qsizetype end = lf < 0 ? all.size() : lf;
        QByteArray line = all.mid(from, end - from);
        if (line.endsWith('\r'))
            line.chop(1);
        Checked::toByte(lines.size()); // the line counter is one byte wide
        lines << QString::fromLatin1(line);
        from = end + 1;
    }
    return lines;
}

void UpdateCheck::CheckVersionPlayer() {
    VersionLines = readVersionLines(m_listFile);
    NewPlayerVersion = StrRight(lineAt(VersionLines, 1), QStringLiteral("TavoMP3Player: "));
    NewUpdateVersion = StrRight(lineAt(VersionLines, 2), QStringLiteral("TavoMP3Update: "));

    const QString& current = m_config.playerVersion;
    // Versions are compared as texts, code unit by code unit: 1.10 is older than 1.9.
    const int order = QString::compare(current, NewPlayerVersion, Qt::CaseSensitive);
    QString status;
    if (order > 0) {
        status = QStringLiteral("Ihre Player Version ist neuer(!) als die neuste Version (") +
                 NewPlayerVersion + QStringLiteral(") !");
        appendLog(status + crLf());
    } else if (order == 0) {
        status = QStringLiteral("Aktuellste Version des Players bereits vorhanden.");
        appendLog(status + crLf());
        UpdateState = PlayerCurrent;
        CheckVersionUpdate();
    } else if (UpdateState == Automatic) {
        const Dialogs::Answer answer = m_services.dialogs.message(
            QStringLiteral("Es ist eine neue Version (") + NewPlayerVersion +
                QStringLiteral(") von TavoMP3 Player verfügbar!") + crLf() + crLf() +
                QStringLiteral("Möchten Sie den Updatevorgang starten?"),
            QStringLiteral("Neue Version"), Dialogs::Buttons::YesNoCancel, Dialogs::Icon::Question);
        if (answer == Dialogs::Answer::Yes)
            emit showWindowRequested();
    } else if (const QString why = whyNotDownload(UpdateConfig::playerFileName()); !why.isEmpty()) {
        status = QStringLiteral("Neue Player Version (") + NewPlayerVersion + QStringLiteral(") verfügbar");
        appendLog(status + crLf());
        refuse(why);
    } else {
        status = QStringLiteral("Neue Player Version (") + NewPlayerVersion + QStringLiteral(") verfügbar");
        appendLog(status + QStringLiteral(" - Starte Download ...") + crLf());
        UpdateState = PlayerDownload;
        startDownload(m_config.playerAddress(), m_config.newPlayerFile(), true,
                      m_release.value().files.value(UpdateConfig::playerFileName()).size);
    }

    SettingsStore& s = m_services.settings;
    s.SaveSetting(QStringLiteral("Settings"), QStringLiteral("LastUpdateCheck"),
                  m_services.clock.now().toString(QStringLiteral("dd.MM.yyyy hh:mm:ss")));
    s.SaveSetting(QStringLiteral("Settings"), QStringLiteral("LastUpdateCheckStatus"), status);
    emit versionListCompared();
}

void UpdateCheck::CheckVersionUpdate() {
    const QString& current = m_config.updaterVersion;
    appendLog(QStringLiteral("Überprüfe Update-Programm Version (aktuelle Version ") + current +
              QStringLiteral(") ...") + crLf());
    const int order = QString::compare(current, NewUpdateVersion, Qt::CaseSensitive);
    if (order > 0) {
        appendLog(QStringLiteral("Ihre Update Version ist neuer(!) als die neuste Version (") +
                  NewUpdateVersion + QStringLiteral(") !") + crLf());
    } else if (order == 0) {
        // A player downloaded before stays in its .tmp file and is not installed.
        appendLog(QStringLiteral("Aktuellste Version des Update-Programms bereits vorhanden.") + crLf());
    } else if (const QString why = whyNotDownload(UpdateConfig::updaterFileName()); !why.isEmpty()) {
        appendLog(QStringLiteral("Neue Update-Programm Version (") + NewUpdateVersion +
                  QStringLiteral(") verfügbar") + crLf());
        if (UpdateState == PlayerDownload)
            QFile::remove(m_config.newPlayerFile());
        refuse(why);
    } else {
        appendLog(QStringLiteral("Neue Update-Programm Version (") + NewUpdateVersion +
                  QStringLiteral(") verfügbar - Starte Download ...") + crLf());
        if (UpdateState == PlayerCurrent)
            UpdateState = UpdaterDownload;
        else if (UpdateState == PlayerDownload)
            UpdateState = UpdaterAfterPlayer;
        // Fetched into a part file and renamed over the updater only once it is checked.
        startDownload(m_config.updaterAddress(), m_config.updaterPath, true,
                      m_release.value().files.value(UpdateConfig::updaterFileName()).size);
    }
}

void UpdateCheck::install() {
    appendLog(QStringLiteral("Neue Version erfolgreich heruntergeladen.") + crLf() + crLf() +
              QStringLiteral("Einspielen der neuen Version und Neustart des Players ...") + crLf());
    SettingsStore& s = m_services.settings;
    const QString section = QStringLiteral("Update");
    s.SaveSetting(section, QStringLiteral("PlayerPath"), m_config.ownPath());
    s.SaveSetting(section, QStringLiteral("PlayerPathUpdated"), m_config.newPlayerFile());
    s.SaveSetting(section, QStringLiteral("PlayerToUpdate"), QStringLiteral("1"));
    AppGlobals::StartUpdaterOnExit = true;
    emit unloadMainWindowRequested();
}

QString UpdateCheck::StrRight(const QString& Text1, const QString& Text2) {
    if (Text2.isEmpty())
        return Text1.right(1);
    qsizetype last = -1;
    qsizetype from = 0;
    for (;;) {
        const qsizetype hit = Text1.indexOf(Text2, from, Qt::CaseInsensitive);
        if (hit < 0)
            break;
        last = hit;
        from = hit + 1;
    }
    // With no hit the start is taken from position 0, one character short of the value.
    const qsizetype start = last < 0 ? Text2.size() - 1 : last + Text2.size();
    return Text1.mid(start);
}

double UpdateCheck::getVersionDbl(const QString& strVersion) {
    qsizetype p = strVersion.indexOf(QLatin1Char('.'));
    if (p < 0)
        p = strVersion.indexOf(QLatin1Char(','));
    if (p < 0)
        return 0;
    return Checked::toNumber(strVersion.left(p + 1) + QLatin1Char(',') + strVersion.mid(p));
}
