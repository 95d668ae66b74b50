#include "player/MpvLink.h"

#include "base/Dialogs.h"
#include "base/RuntimeError.h"
#include "base/StatusLine.h"
#include "player/PlayerProcess.h"
#include "player/SocketFolder.h"
#include "player/WinampMessages.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QRegularExpression>
#include <QTimer>
#include <cmath>

namespace {

// Number of the player-link failures in the status line: a device I/O error in the classic numbering.
constexpr int kPlayerIoError = 57;
constexpr int kIdleEventWaitMs = 600;
constexpr int kQuitWaitMs = 500;
// A confirmed Play whose file never begins (mpv's list changed under us) stops counting as playing.
constexpr int kStartGraceMs = 2000;
// The window title the classic player shows, rebuilt from mpv's state so that one parser serves both.
const QString kTitleSuffix = QStringLiteral(" - Winamp");
const QString kPausedSuffix = QStringLiteral(" [Paused]");
// Kept up to date by mpv's property-change events.
const char* const kObserved[] = {"idle-active",   "pause",
                                 "eof-reached",   "time-pos",
                                 "duration",      "audio-params/samplerate",
                                 "audio-bitrate", "track-list/0/demux-bitrate",
                                 "media-title",   "playlist-pos"};

QJsonArray cmd(std::initializer_list<QJsonValue> parts) {
    return QJsonArray(parts);
}

QJsonArray getProperty(const QString& name) {
    return cmd({QStringLiteral("get_property"), name});
}

// Lets timers and clicks run while the link waits for the player. Not an event loop of its own:
// after the application was told to quit (the close sequence), such a loop returns at once.
void keepInterfaceAlive(int ms) {
    QTimer wake;
    wake.setSingleShot(true);
    wake.setTimerType(Qt::PreciseTimer);
    wake.start(ms);
    while (wake.isActive())
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

} // namespace

MpvLink::MpvLink(StatusLine& status, Dialogs& dialogs, const QString& socketPath, QObject* parent)
    : PlayerLink(status, parent), m_dialogs(dialogs), m_socketPath(socketPath) {
    connect(&m_ipc, &MpvIpc::eventArrived, this, &MpvLink::playerEvent);
    connect(&m_ipc, &MpvIpc::replied, this, &MpvLink::playerReplied);
    connect(&m_ipc, &MpvIpc::heard, this, &MpvLink::playerHeard);
    connect(&m_ipc, &MpvIpc::lost, this, [this] { lose(MpvIpc::Unreachable{MpvIpc::Failure::Lost}); });
    m_startPoll.setInterval(10);
    connect(&m_startPoll, &QTimer::timeout, this, [this] { pollStartedPlayer(); });
}

QString MpvLink::defaultSocketPath() {
    const QString folder = SocketFolder::choose();
    return folder.isEmpty() ? QString() : QDir(folder).filePath(QStringLiteral("tavomp3-mpv.sock"));
}

QStringList MpvLink::playerArguments(const QString& socketPath, quint8 volume) {
    return {QStringLiteral("--idle=yes"), QStringLiteral("--no-video"), QStringLiteral("--no-terminal"),
            // The next file is handed over while the current one plays: mpv joins them without a gap
            // (and reopens its output only where the two differ in format).
            QStringLiteral("--gapless-audio=weak"),
            QStringLiteral("--volume=") + QString::number(mpvVolume(volume), 'f', 3),
            QStringLiteral("--input-ipc-server=") + socketPath};
}

double MpvLink::mpvVolume(quint8 volume) {
    return volume * 100.0 / 255.0;
}

qint32 MpvLink::versionNumber(const QString& mpvVersion) {
    static const QRegularExpression re(QStringLiteral("(\\d+)\\.(\\d+)"));
    const QRegularExpressionMatch m = re.match(mpvVersion);
    if (!m.hasMatch())
        return 0;
    const int major = m.captured(1).toInt() % 10;
    const int minor = m.captured(2).toInt() % 100;
    return (major << 12) | ((minor / 10) << 4) | (minor % 10);
}

qint32 MpvLink::status() {
    if (m_state.awaitingStart && m_playConfirmed.isValid() && m_playConfirmed.elapsed() > kStartGraceMs)
        m_state.awaitingStart = false;
    if (m_state.awaitingStart)
        return 1; // a file that loads already counts as playing
    if (m_state.idle || m_state.eof)
        return 0;
    return m_state.paused ? 3 : 1;
}

void MpvLink::playerEvent(const QJsonObject& event) {
    try {
        const QString name = event.value(QStringLiteral("event")).toString();
        bool ended = false;
        if (name == QLatin1String("property-change")) {
            const QString property = event.value(QStringLiteral("name")).toString();
            const QJsonValue data = event.value(QStringLiteral("data"));
            if (property == QLatin1String("idle-active")) {
                m_state.idle = data.toBool(true);
            } else if (property == QLatin1String("pause")) {
                m_state.paused = data.toBool(false);
            } else if (property == QLatin1String("eof-reached")) {
                m_state.eof = data.toBool(false);
                ended = m_state.eof; // a player told to keep the file open stops here
            } else if ((data.isNull() || data.isUndefined()) &&
                       property == QLatin1String("audio-params/samplerate")) {
                // Gone while the output drains at a file's end (gapless audio); the display keeps the
                // last rate until the next file has one.
            } else {
                m_state.values.insert(property, data);
                if (property == QLatin1String("playlist-pos") && m_queued >= 0 &&
                    data.toInteger(-1) == m_queued) {
                    m_queued = -1;
                    emit queuedFileStarted();
                }
            }
        } else if (name == QLatin1String("start-file")) {
            m_state.awaitingStart = false;
            m_state.idle = false;
            m_state.eof = false;
            // The figures of the last file do not belong to this one.
            m_state.values.remove(QStringLiteral("time-pos"));
            m_state.values.remove(QStringLiteral("duration"));
            m_state.values.remove(QStringLiteral("audio-bitrate"));
        } else if (name == QLatin1String("idle")) {
            m_state.idle = true;
            m_startUp = QDeadlineTimer(); // start-up is over
            ended = true;
        } else if (name == QLatin1String("end-file")) {
            ended = true;
        }
        if (ended)
            emit playbackEnded();
    } catch (const std::exception& e) {
        ReportWinampError(QString::fromLocal8Bit(e.what()), kPlayerIoError);
    }
}

void MpvLink::playerReplied(qint64 id, bool ok) {
    if (id != m_playRequest)
        return;
    if (ok)
        m_playConfirmed.start();
    else
        m_state.awaitingStart = false;
}

void MpvLink::playerHeard() {
    if (!m_stalled)
        return;
    m_stalled = false;
    // The player answers again: its stall is over, and so is the report of it.
    if (m_status.text() == m_stallText)
        m_status.setText(QString());
}

bool MpvLink::connectOnce(int waitMs) {
    if (!m_ipc.connectTo(m_socketPath, waitMs))
        return false;
    // Song paths go only to a player of this user.
    const qint64 peer = m_ipc.peerUid();
    if (peer >= 0 && peer != PlayerProcess::ownUid()) {
        m_ipc.disconnect();
        throw RuntimeError(RuntimeError::PermissionDenied,
                           QStringLiteral("Player nicht verbunden: ") +
                               QDir::toNativeSeparators(m_socketPath) +
                               QStringLiteral(" gehört einem anderen Benutzer"));
    }
    m_state = State();
    m_queued = -1;
    m_stalled = false;
    m_startUp = QDeadlineTimer();
    m_playerPid = m_ipc.peerPid();
    QList<QJsonArray> commands{
        getProperty(QStringLiteral("mpv-version")), getProperty(QStringLiteral("idle-active")),
        getProperty(QStringLiteral("pause")), getProperty(QStringLiteral("playlist-count"))};
    qint64 id = 1;
    for (const char* property : kObserved)
        commands << cmd({QStringLiteral("observe_property"), id++, QLatin1String(property)});
    try {
        // A live mpv answers; a socket file left behind by a dead one refuses or stays silent.
        const QList<MpvIpc::Reply> r = m_ipc.requests(commands, 1000);
        if (!r[0].ok) {
            m_ipc.disconnect();
            return false;
        }
        m_version = versionNumber(r[0].data.toString());
        m_state.idle = !r[1].ok || r[1].data.toBool(true);
        m_state.paused = r[2].ok && r[2].data.toBool(false);
        m_listCount = r[3].data.toInteger(0);
        return true;
    } catch (const MpvIpc::Unreachable&) {
        m_ipc.disconnect();
        return false;
    }
}

bool MpvLink::pollStartedPlayer() {
    if (!m_startingPid)
        return m_connected;
    try {
        m_connected = connectOnce(20);
        if (m_connected) {
            // mpv answers before it has finished starting up, and a list handed over in that moment
            // is played from its first entry when start-up ends, which it tells with its one "idle"
            // event. Its state cannot tell (idle-active is true during start-up as well), and the
            // event is not sent again to a link that connected after it, so nothing waits here: the
            // first file handed over waits for it, within the bound, if it has not come by then.
            // A player that already plays has started up.
            m_startUp = m_state.idle ? QDeadlineTimer(kIdleEventWaitMs) : QDeadlineTimer();
            m_cursor = -1;
        } else if (m_startDeadline.hasExpired() || !PlayerProcess::running(m_startingPid)) {
            // The classic wait ran until its 16-bit attempt counter overflowed; this one is bounded by
            // time and ends early when the started program is gone, with the same report.
            throw RuntimeError::overflow();
        } else {
            return false;
        }
    } catch (const RuntimeError& e) {
        if (e.number() == RuntimeError::PermissionDenied)
            m_status.setText(e.description() + QLatin1Char('.'));
        else
            ReportWinampError(e.description(), e.number());
    }
    m_startingPid = 0;
    m_startPoll.stop();
    return m_connected;
}

void MpvLink::awaitStartedPlayer() {
    while (m_startingPid && !pollStartedPlayer())
        keepInterfaceAlive(10);
}

void MpvLink::awaitStartUp() {
    while (m_startUp.remainingTime() > 0 && m_connected)
        keepInterfaceAlive(5); // mpv's events arrive meanwhile
    m_startUp = QDeadlineTimer();
}

void MpvLink::stall() {
    if (m_stalled)
        return;
    m_stalled = true;
    ReportWinampError(QStringLiteral("Der Player antwortet nicht"), kPlayerIoError);
    m_stallText = m_status.text();
}

void MpvLink::lose(const MpvIpc::Unreachable& why) {
    const bool wasConnected = m_connected;
    m_connected = false;
    m_stalled = false;
    m_ipc.disconnect();
    if (!wasConnected)
        return;
    ReportWinampError(why.failure == MpvIpc::Failure::Lost
                          ? QStringLiteral("Die Verbindung zum Player ist abgerissen")
                          : QStringLiteral("Der Player antwortet nicht"),
                      kPlayerIoError);
}

void MpvLink::fail(const MpvIpc::Unreachable& why) {
    if (why.failure == MpvIpc::Failure::Timeout && m_ipc.isConnected())
        stall();
    else
        lose(why);
}

std::optional<QJsonValue> MpvLink::ask(const QString& name) {
    if (m_stalled)
        return std::nullopt;
    try {
        const MpvIpc::Reply r = m_ipc.request(getProperty(name));
        return r.ok ? r.data : QJsonValue();
    } catch (const MpvIpc::Unreachable& why) {
        if (why.failure != MpvIpc::Failure::Timeout)
            throw;
        stall();
        return std::nullopt;
    }
}

bool MpvLink::command(const QJsonArray& command) {
    if (m_stalled) {
        m_ipc.post(command); // carried out when the player goes on
        return true;
    }
    try {
        return m_ipc.request(command).ok;
    } catch (const MpvIpc::Unreachable& why) {
        if (why.failure != MpvIpc::Failure::Timeout)
            throw;
        stall();
        return true;
    }
}

void MpvLink::StartWinamp(const QString& path) {
    try {
        m_connected = false;
        m_startingPid = 0;
        m_startPoll.stop();
        if (m_socketPath.isEmpty()) {
            // No folder of ours to put the socket in: no player, and the user is told why.
            QString refusal;
            SocketFolder::choose(&refusal);
            m_status.setText(refusal);
            return;
        }
        m_connected = connectOnce(300);
        if (m_connected)
            return;
        const bool exists = path.isEmpty() || QFileInfo::exists(path);
        if (exists && !path.isEmpty()) {
            m_playerPath = path;
            const qint64 pid = PlayerProcess::startDetached(path, playerArguments(m_socketPath, m_volume));
            if (!pid)
                throw RuntimeError(RuntimeError::FileNotFound, QStringLiteral("Datei nicht gefunden"));
            // mpv opens its socket a few hundred milliseconds after it was started. The load goes on
            // meanwhile (the window appears as fast as with a running player) and the link connects
            // in the background; whatever has to reach the player waits for it (awaitStartedPlayer).
            // Until then the player counts as not there yet, as the classic window that was not found.
            m_startingPid = pid;
            m_startDeadline = QDeadlineTimer(startWaitMs);
            m_startPoll.start();
        } else if (!exists) {
            m_dialogs.message(
                QStringLiteral("The winamp path provided is incorrect.  Please specify a correct path"));
        }
    } catch (const RuntimeError& e) {
        if (e.number() == RuntimeError::PermissionDenied)
            m_status.setText(e.description() + QLatin1Char('.'));
        else
            ReportWinampError(e.description(), e.number());
    }
}

qint32 MpvLink::WinampSetVolume(quint8 volume) {
    m_volume = volume;
    awaitStartedPlayer();
    if (!m_connected)
        return 0;
    try {
        command(cmd({QStringLiteral("set_property"), QStringLiteral("volume"), mpvVolume(volume)}));
    } catch (const MpvIpc::Unreachable& why) {
        fail(why);
    }
    return 0;
}

qint32 MpvLink::WinampJumpToTime(qint32 seconds, qint32 milliseconds) {
    const qint64 ms = WinampMessages::jumpToTime(seconds, milliseconds).wParam;
    awaitStartedPlayer();
    if (!m_connected)
        return 0;
    try {
        m_ipc.poll();
        if (status() == 0)
            return -1;
        const QJsonValue duration = value(QStringLiteral("duration"));
        if (duration.isDouble() && double(ms) > duration.toDouble() * 1000.0)
            return 1;
        m_ipc.post(cmd({QStringLiteral("seek"), double(ms) / 1000.0, QStringLiteral("absolute")}));
    } catch (const MpvIpc::Unreachable& why) {
        fail(why);
    }
    return 0;
}

void MpvLink::WinampPlayFile(const QString& path) {
    QString file = path;
    if (file.endsWith(QLatin1Char('/')) || file.endsWith(QDir::separator()))
        file.chop(1);
    awaitStartedPlayer();
    if (!m_connected)
        return;
    try {
        awaitStartUp();
        m_ipc.post(cmd({QStringLiteral("loadfile"), file, QStringLiteral("append")}));
        ++m_listCount;
    } catch (const MpvIpc::Unreachable& why) {
        fail(why);
    }
}

bool MpvLink::queueNext(const QString& file) {
    if (!m_connected)
        return false;
    try {
        clearQueue();
        m_ipc.post(cmd({QStringLiteral("loadfile"), file, QStringLiteral("append")}));
        m_queued = m_listCount++;
        return true;
    } catch (const MpvIpc::Unreachable& why) {
        fail(why);
        return false;
    }
}

void MpvLink::clearQueue() {
    if (m_queued < 0 || !m_connected)
        return;
    try {
        m_ipc.post(cmd({QStringLiteral("playlist-remove"), m_queued}));
        --m_listCount;
    } catch (const MpvIpc::Unreachable& why) {
        fail(why);
    }
    m_queued = -1;
}

void MpvLink::WinampCommand(qint32 commandId) {
    awaitStartedPlayer();
    if (!m_connected)
        return;
    try {
        m_ipc.poll();
        switch (commandId) {
        case CloseCommand:
            m_connected = false; // closed on purpose: nothing to report
            m_ipc.post(cmd({QStringLiteral("quit")}));
            // A player that hangs would read the quit only after it failed to write to a closed
            // connection, and then never: it gets the polite signal instead, which waits for it.
            if (!m_ipc.waitUntil([this] { return !m_ipc.isConnected(); }, kQuitWaitMs))
                PlayerProcess::terminate(m_playerPid);
            m_ipc.disconnect();
            break;
        case PlayCommand: {
            awaitStartUp();
            qint64 entry = m_cursor;
            if (entry < 0)
                entry = qMax<qint64>(0, value(QStringLiteral("playlist-pos")).toInteger(-1));
            // mpv keeps a pause over to the next file; the player's Play always plays.
            m_ipc.post(cmd({QStringLiteral("set_property"), QStringLiteral("pause"), false}));
            // Out of range mpv would answer success and stop instead.
            if (entry < m_listCount) {
                m_playRequest = m_ipc.post(cmd({QStringLiteral("playlist-play-index"), entry}));
                m_playConfirmed.invalidate();
                m_state.awaitingStart = true;
                m_state.paused = false;
            }
            break;
        }
        case PauseCommand:
            if (status() != 0)
                m_ipc.post(cmd({QStringLiteral("cycle"), QStringLiteral("pause")}));
            break;
        case StopCommand:
            m_ipc.post(cmd({QStringLiteral("stop"), QStringLiteral("keep-playlist")}));
            // Stopped from now on, also for a player that carries it out only when it answers again.
            m_state.awaitingStart = false;
            m_state.idle = true;
            break;
        case JumpToLastCommand:
            // Only chooses the entry: the Play that always follows starts it, so it is loaded once.
            // The count comes back after every file handed over before; without an answer the
            // entries handed over are counted on.
            if (const std::optional<QJsonValue> count = ask(QStringLiteral("playlist-count")))
                m_listCount = count->toInteger(0);
            m_cursor = m_listCount - 1;
            break;
        default:
            break;
        }
    } catch (const MpvIpc::Unreachable& why) {
        fail(why);
    }
}

bool MpvLink::canPlay() const {
    return m_connected || m_startingPid ||
           (!m_playerPath.isEmpty() && !m_socketPath.isEmpty() && QFileInfo::exists(m_playerPath));
}

bool MpvLink::ensurePlayer() {
    awaitStartedPlayer();
    if (m_connected)
        return true;
    if (m_playerPath.isEmpty() || m_socketPath.isEmpty() || !QFileInfo::exists(m_playerPath))
        return false;
    StartWinamp(m_playerPath); // the same socket and peer checks as at start-up
    awaitStartedPlayer();
    return m_connected;
}

qint64 MpvLink::lengthMicroseconds() {
    if (!m_connected || status() == 0)
        return 0;
    try {
        m_ipc.poll();
    } catch (const MpvIpc::Unreachable& why) {
        fail(why);
        return 0;
    }
    const QJsonValue d = value(QStringLiteral("duration"));
    return d.isDouble() && d.toDouble() > 0 ? qint64(std::llround(d.toDouble() * 1e6)) : 0;
}

QString MpvLink::title() {
    if (status() == 0)
        return QStringLiteral("mpv");
    QString t = QString::number(value(QStringLiteral("playlist-pos")).toInteger(-1) + 1) +
                QStringLiteral(". ") + value(QStringLiteral("media-title")).toString() + kTitleSuffix;
    if (m_state.paused)
        t += kPausedSuffix;
    return t;
}

qint32 MpvLink::answer(quint8 code) {
    switch (code) {
    case InfoVersion:
        return m_version;
    case InfoClearList:
        m_cursor = -1;
        m_queued = -1;
        if (!command(cmd({QStringLiteral("playlist-clear")})))
            return 0;
        m_listCount = status() == 0 ? 0 : 1; // the playing entry stays
        return 1;
    case InfoStatus:
        return status();
    case InfoLength: {
        if (status() == 0)
            return -1;
        const QJsonValue d = value(QStringLiteral("duration"));
        return d.isDouble() ? qint32(std::floor(d.toDouble())) : -1;
    }
    case InfoPosition: {
        if (status() == 0)
            return -1;
        const QJsonValue t = value(QStringLiteral("time-pos"));
        // mpv can report a slightly negative position right after a start.
        return t.isDouble() ? qint32(std::llround(qMax(0.0, t.toDouble()) * 1000.0)) : 0;
    }
    case InfoWritePlaylist:
    case InfoListPos:
        return qint32(ask(QStringLiteral("playlist-pos"))
                          .value_or(value(QStringLiteral("playlist-pos")))
                          .toInteger(-1));
    case InfoListLength:
        return qint32(ask(QStringLiteral("playlist-count")).value_or(QJsonValue(m_listCount)).toInteger(0));
    case InfoSampleRate:
        return qint32(value(QStringLiteral("audio-params/samplerate")).toInteger(0) / 1000);
    case InfoBitrate: {
        QJsonValue b = value(QStringLiteral("audio-bitrate"));
        // Not known for the first moments of a song; the container's figure is ready at once.
        if (!b.isDouble())
            b = value(QStringLiteral("track-list/0/demux-bitrate"));
        return b.isDouble() ? qint32(std::llround(b.toDouble() / 1000.0)) : 0;
    }
    case InfoCode12:
        return qint32(ask(QStringLiteral("audio-params/channel-count")).value_or(QJsonValue()).toInteger(0));
    default:
        return 0;
    }
}

QVariant MpvLink::WinampGetInfo(quint8 code) {
    const bool sendsNothing = code == 5 || code == 7 || code > InfoTitle;
    try {
        if (!m_connected) {
            // Like messages to a closed window: numbers answer 0, the title reads as empty.
            if (code == InfoTitle)
                return m_title.parse(QString());
            return sendsNothing ? QVariant() : QVariant(qint32(0));
        }
        // The status query every call makes first: here it only takes in what mpv has sent on its
        // own, which is where the status is kept, so it costs no round trip.
        m_ipc.poll();
        if (sendsNothing)
            return QVariant();
        if (code == InfoTitle)
            return m_title.parse(title());
        return answer(code);
    } catch (const MpvIpc::Unreachable& why) {
        fail(why);
        if (!m_connected && code == InfoTitle)
            return m_title.parse(QString());
        return sendsNothing ? QVariant() : QVariant(qint32(0));
    } catch (const RuntimeError& e) {
        ReportWinampError(e.description(), e.number());
        return QVariant();
    }
}
