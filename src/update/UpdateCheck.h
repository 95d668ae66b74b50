#pragma once

#include "update/DownloadProgress.h"
#include "update/ReleaseList.h"
#include "update/SocketDownload.h"
#include "update/UpdateConfig.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <optional>

struct Services;

// What the update window does: fetch the version list, compare versions, download a newer
// player and updater, and hand over to the updater. Nothing downloaded replaces anything before
// it has been checked against the signed version list; a refusal ends the chain with a German
// reason in the log. The window shows FLog and the progress and forwards its buttons here.
class UpdateCheck : public QObject {
    Q_OBJECT
public:
    enum State : qint16 {
        Idle = 0,
        ByHand = 1,
        PlayerCurrent = 2,
        PlayerDownload = 3,
        UpdaterDownload = 4,
        UpdaterAfterPlayer = 5,
        Automatic = 11,
    };

    UpdateCheck(Services& services, UpdateConfig config, QObject* parent = nullptr);

    const UpdateConfig& config() const { return m_config; }
    SocketDownload& download() { return m_download; }
    DownloadProgress& ProgressBar() { return m_progress; }

    qint16 UpdateState = Idle;
    QStringList VersionLines;
    QString NewPlayerVersion;
    QString NewUpdateVersion;

    const QString& FLog() const { return m_log; }

    // "&Start": a check by hand.
    void BStartClick();
    // The main window's timed check: the window stays hidden and asks before updating.
    void AutomaticCheck();
    // "&Abbrechen" and closing the window: the download and its time-out end here.
    void Cancel();

    void CheckVersionPlayer();
    void CheckVersionUpdate();

    // Text after the last occurrence of Text2 in Text1 (case-insensitive). When Text2 does not
    // occur, the result starts one character before where a value after Text2 would stand.
    static QString StrRight(const QString& Text1, const QString& Text2);
    // Numeric form of a version text; kept for compatibility, the check compares texts.
    static double getVersionDbl(const QString& strVersion);
    // The version list's lines, CR LF or LF ended; more than 256 lines is an overflow.
    static QStringList readVersionLines(const QString& fileName);

    static QString crLf() { return QStringLiteral("\r\n"); }

signals:
    void logChanged(const QString& text);
    // The automatic check found a new version and the user wants it: show the window.
    void showWindowRequested();
    // A version list was compared: the main window's check timer is switched off.
    void versionListCompared();
    // Both downloads are done and the hand-over is recorded: the main window closes.
    void unloadMainWindowRequested();

private:
    // An update whose updater does not arrive installs nothing: the player fetched for it goes too,
    // instead of lying in the program folder.
    void dropFetchedPlayer();
    void appendLog(const QString& text);
    void startCheck(State state);
    void onDownloadClosed();
    void onTimedOut();
    bool acceptVersionList();
    bool acceptFile(const QString& name, bool program);
    // Empty when `name` can be fetched and installed; otherwise why not.
    QString whyNotDownload(const QString& name) const;
    void refuse(const QString& why);
    void startDownload(const QString& address, const QString& destination, bool withProgress,
                       qint64 sizeLimit);
    void install();

    Services& m_services;
    UpdateConfig m_config;
    SocketDownload m_download;
    DownloadProgress m_progress;
    QString m_log;
    QString m_listFile;
    QString m_fetching; // the server's name of the file being downloaded
    std::optional<ReleaseList> m_release;
};
