#pragma once

#include "player/MpvIpc.h"
#include "player/PlayerLink.h"
#include "player/WinampTitle.h"

class Dialogs;

// The player link on Linux: mpv, remote-controlled over its JSON IPC socket. The Winamp vocabulary of
// the interface is translated here: the player's list is mpv's playlist, Play starts the entry the
// last "jump to the end" chose, status 0/1/3 is worked out from idle, position, end-of-file and pause.
//
// A player that dies is reported once in the status line; from then on every message goes nowhere and
// every query answers 0 (stopped), as for a closed player window, until StartWinamp is called again.
class MpvLink : public PlayerLink {
    Q_OBJECT
public:
    MpvLink(StatusLine& status, Dialogs& dialogs, const QString& socketPath = defaultSocketPath(),
            QObject* parent = nullptr);

    // $XDG_RUNTIME_DIR/tavomp3-mpv.sock, else /tmp/tavomp3-mpv-<uid>.sock.
    static QString defaultSocketPath();
    static QStringList playerArguments(const QString& socketPath);

    const QString& socketPath() const { return m_socketPath; }
    bool isConnected() const { return m_connected; }
    // How long StartWinamp waits for a started player to answer.
    int startWaitMs = 5000;

    void StartWinamp(const QString& path) override;
    qint32 WinampSetVolume(quint8 volume) override;
    qint32 WinampJumpToTime(qint32 seconds, qint32 milliseconds) override;
    void WinampPlayFile(const QString& path) override;
    void WinampCommand(qint32 commandId) override;
    QVariant WinampGetInfo(quint8 code) override;

    // mpv's volume for the player's 0..255 scale.
    static double mpvVolume(quint8 volume);
    // "mpv 0.35.1" -> 0x0035, in the shape of the classic version number (0x2095 for 2.95).
    static qint32 versionNumber(const QString& mpvVersion);
    // Whether a process still runs (an exited one that was not reaped yet does not); true if unknown.
    static bool processRunning(qint64 pid);

private:
    struct State {
        bool idle = true;
        qint64 pos = -1;
        bool eof = false;
        bool paused = false;
        qint32 status() const;
    };

    bool connectOnce(int waitMs);
    State queryState();
    QJsonValue property(const QString& name);
    qint32 answer(quint8 code);
    QString title();
    // The link lost its player: report once, then behave like a closed window.
    void lose(const MpvIpc::Unreachable& why);

    Dialogs& m_dialogs;
    QString m_socketPath;
    MpvIpc m_ipc;
    bool m_connected = false;
    // The entry Play starts; -1 = the one mpv stands on (or the first).
    qint64 m_cursor = -1;
    WinampTitle m_title;
};
