#pragma once

#include "player/MpvIpc.h"
#include "player/PlayerLink.h"
#include "player/WinampTitle.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QHash>
#include <QTimer>
#include <optional>

class Dialogs;

// The player link on Linux: mpv, remote-controlled over its JSON IPC socket. The Winamp vocabulary of
// the interface is translated here: the player's list is mpv's playlist, Play starts the entry the
// last "jump to the end" chose, status 0/1/3 is worked out from idle, end-of-file and pause.
//
// What the monitor asks every tick (status, position, length, bit and sample rate) is kept from the
// events and property changes mpv sends on its own, so a tick never waits for the player. A player
// that stops answering (a hung or stopped process) keeps its link: commands wait in the socket and
// are carried out when it goes on, and the last known state stands meanwhile. A player that dies is
// reported once in the status line; from then on every message goes nowhere and every query answers
// 0 (stopped), as for a closed player window, until StartWinamp is called again or the next song
// needs a player (ensurePlayer): mpv has no window a user could open again, so its death is a fault
// that only the program can mend.
class MpvLink : public PlayerLink {
    Q_OBJECT
public:
    MpvLink(StatusLine& status, Dialogs& dialogs, const QString& socketPath = defaultSocketPath(),
            QObject* parent = nullptr);

    // tavomp3-mpv.sock in a folder only this user can enter (SocketFolder); empty when there is none.
    static QString defaultSocketPath();
    static QStringList playerArguments(const QString& socketPath, quint8 volume = 255);

    const QString& socketPath() const { return m_socketPath; }
    bool isConnected() const { return m_connected; }
    // Connected, but a request went unanswered and the player has said nothing since.
    bool isStalled() const { return m_stalled; }
    // How long StartWinamp waits for a started player to answer.
    int startWaitMs = 5000;

    void StartWinamp(const QString& path) override;
    qint32 WinampSetVolume(quint8 volume) override;
    qint32 WinampJumpToTime(qint32 seconds, qint32 milliseconds) override;
    void WinampPlayFile(const QString& path) override;
    void WinampCommand(qint32 commandId) override;
    QVariant WinampGetInfo(quint8 code) override;
    bool ensurePlayer() override;
    bool canPlay() const override;
    bool isRunning() const override { return m_connected; }
    void setStartVolume(quint8 volume) override { m_volume = volume; }
    qint64 lengthMicroseconds() override;
    bool canQueue() const override { return m_connected; }
    bool queueNext(const QString& file) override;
    void clearQueue() override;

    // mpv's volume for the player's 0..255 scale.
    static double mpvVolume(quint8 volume);
    // "mpv 0.35.1" -> 0x0035, in the shape of the classic version number (0x2095 for 2.95).
    static qint32 versionNumber(const QString& mpvVersion);

private:
    // What mpv last said about itself.
    struct State {
        bool idle = true;
        bool paused = false;
        bool eof = false;
        // A Play was sent and mpv has not begun that file yet: it counts as playing meanwhile, and
        // the end of the file it replaces does not read as a stop.
        bool awaitingStart = false;
        // Observed display figures by property name; an unavailable one is missing or null.
        QHash<QString, QJsonValue> values;
    };

    bool connectOnce(int waitMs);
    qint32 status();
    QJsonValue value(const QString& name) const { return m_state.values.value(name); }
    // One property by a round trip; nothing while the player does not answer.
    std::optional<QJsonValue> ask(const QString& name);
    // A command whose answer only tells whether it worked; posted while the player does not answer.
    bool command(const QJsonArray& command);
    qint32 answer(quint8 code);
    QString title();
    void playerEvent(const QJsonObject& event);
    void playerReplied(qint64 id, bool ok);
    void playerHeard();
    // A player this link started: one attempt to connect to it; true once connected. Reports and
    // gives up when it does not answer in time or its process has ended.
    bool pollStartedPlayer();
    // Whatever has to reach the player waits until a player this link started answers.
    void awaitStartedPlayer();
    // A player this link started may still be starting up: wait for its "idle" event, bounded.
    void awaitStartUp();
    // A request went unanswered: keep the link and wait for the player to go on.
    void stall();
    // The link lost its player: report once, then behave like a closed window.
    void lose(const MpvIpc::Unreachable& why);
    // A failure of the connection: the player died (lose) or hangs (stall).
    void fail(const MpvIpc::Unreachable& why);

    Dialogs& m_dialogs;
    QString m_socketPath;
    // The player program of the last StartWinamp, started again when its player died.
    QString m_playerPath;
    // The volume a player started by this link begins with: the program's, not mpv's 100 %.
    quint8 m_volume = 255;
    MpvIpc m_ipc;
    bool m_connected = false;
    bool m_stalled = false;
    // The status text of the current stall, taken back when the player answers again.
    QString m_stallText;
    State m_state;
    qint32 m_version = 0;
    // The player's process, for a quit it cannot read (see CloseCommand).
    qint64 m_playerPid = 0;
    // Entries in mpv's list: asked when it matters, counted on while the player does not answer.
    qint64 m_listCount = 0;
    // The entry Play starts; -1 = the one mpv stands on (or the first).
    qint64 m_cursor = -1;
    // The entry of mpv's list that holds the queued file, behind the playing one; -1 = none. mpv goes
    // on to it by itself, and joins the two files without a gap (gapless audio).
    qint64 m_queued = -1;
    // The request of the last Play and when mpv confirmed it.
    qint64 m_playRequest = 0;
    QElapsedTimer m_playConfirmed;
    // A player this link started and is connecting to in the background; 0 = none.
    qint64 m_startingPid = 0;
    QDeadlineTimer m_startDeadline;
    QTimer m_startPoll;
    // Until when a started player may still be starting up; expired (or never set) when it is not.
    QDeadlineTimer m_startUp;
    WinampTitle m_title;
};
