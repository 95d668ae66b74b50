#include "player/MpvLink.h"

#include "base/Dialogs.h"
#include "base/RuntimeError.h"
#include "player/WinampMessages.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QProcess>
#include <QRegularExpression>
#include <QTimer>
#include <cmath>

#ifdef Q_OS_UNIX
#include <csignal>
#include <unistd.h>
#endif

namespace {

// Number of the player-link failures in the status line: a device I/O error in the classic numbering.
constexpr int kPlayerIoError = 57;
constexpr int kIdleEventWaitMs = 600;
// The window title the classic player shows, rebuilt from mpv's state so that one parser serves both.
const QString kTitleSuffix = QStringLiteral(" - Winamp");
const QString kPausedSuffix = QStringLiteral(" [Paused]");

QJsonArray cmd(std::initializer_list<QJsonValue> parts) {
    return QJsonArray(parts);
}

QJsonArray getProperty(const QString& name) {
    return cmd({QStringLiteral("get_property"), name});
}

// Lets timers and clicks run while the link waits for the player.
void keepInterfaceAlive(int ms) {
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace

bool MpvLink::processRunning(qint64 pid) {
#ifdef Q_OS_UNIX
    if (pid <= 0)
        return true;
    if (::kill(pid_t(pid), 0) != 0)
        return false;
    // An exited child that nobody reaped yet is a zombie: gone all the same.
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!stat.open(QIODevice::ReadOnly))
        return true;
    const QByteArray line = stat.readAll();
    const qsizetype close = line.lastIndexOf(')');
    return close < 0 || line.mid(close + 2, 1) != "Z";
#else
    Q_UNUSED(pid);
    return true;
#endif
}

MpvLink::MpvLink(StatusLine& status, Dialogs& dialogs, const QString& socketPath, QObject* parent)
    : PlayerLink(status, parent), m_dialogs(dialogs), m_socketPath(socketPath) {
}

QString MpvLink::defaultSocketPath() {
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!runtime.isEmpty() && QFileInfo(runtime).isDir())
        return QDir(runtime).filePath(QStringLiteral("tavomp3-mpv.sock"));
#ifdef Q_OS_UNIX
    const QString uid = QString::number(::getuid());
#else
    const QString uid = QStringLiteral("0");
#endif
    return QStringLiteral("/tmp/tavomp3-mpv-%1.sock").arg(uid);
}

QStringList MpvLink::playerArguments(const QString& socketPath) {
    return {QStringLiteral("--idle=yes"), QStringLiteral("--no-video"), QStringLiteral("--no-terminal"),
            QStringLiteral("--gapless-audio=no"), QStringLiteral("--input-ipc-server=") + socketPath};
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

qint32 MpvLink::State::status() const {
    if (idle || pos < 0 || eof)
        return 0;
    return paused ? 3 : 1;
}

bool MpvLink::connectOnce(int waitMs) {
    if (!m_ipc.connectTo(m_socketPath, waitMs))
        return false;
    try {
        // A live mpv answers; a socket file left behind by a dead one refuses or stays silent.
        return m_ipc.request(getProperty(QStringLiteral("mpv-version")), 1000).ok;
    } catch (const MpvIpc::Unreachable&) {
        m_ipc.disconnect();
        return false;
    }
}

void MpvLink::lose(const MpvIpc::Unreachable& why) {
    m_ipc.disconnect();
    if (!m_connected)
        return;
    m_connected = false;
    ReportWinampError(why.failure == MpvIpc::Failure::Lost
                          ? QStringLiteral("Die Verbindung zum Player ist abgerissen")
                          : QStringLiteral("Der Player antwortet nicht"),
                      kPlayerIoError);
}

void MpvLink::StartWinamp(const QString& path) {
    try {
        m_connected = connectOnce(300);
        if (m_connected)
            return;
        const bool exists = path.isEmpty() || QFileInfo::exists(path);
        if (exists && !path.isEmpty()) {
            qint64 pid = 0;
            QProcess player;
            player.setProgram(path);
            player.setArguments(playerArguments(m_socketPath));
            // The player outlives this program; it must not hold on to our terminal or pipes.
            player.setStandardInputFile(QProcess::nullDevice());
            player.setStandardOutputFile(QProcess::nullDevice());
            player.setStandardErrorFile(QProcess::nullDevice());
            if (!player.startDetached(&pid))
                throw RuntimeError(RuntimeError::FileNotFound, QStringLiteral("Datei nicht gefunden"));
            // The classic wait ran until its 16-bit attempt counter overflowed; this one is bounded by
            // time and ends early when the started program is gone, with the same report.
            const QDeadlineTimer deadline(startWaitMs);
            while (!(m_connected = connectOnce(50))) {
                if (deadline.hasExpired() || !processRunning(pid))
                    throw RuntimeError::overflow();
                keepInterfaceAlive(25);
            }
            // mpv answers before it has finished starting up, and a list handed over in that moment
            // is played from its first entry when start-up ends. Start-up ends with the "idle" event;
            // a player that got there before the connection was made does not send it again.
            m_ipc.waitForEvent(QStringLiteral("idle"), kIdleEventWaitMs);
            m_cursor = -1;
        } else if (!exists) {
            m_dialogs.message(
                QStringLiteral("The winamp path provided is incorrect.  Please specify a correct path"));
        }
    } catch (const RuntimeError& e) {
        ReportWinampError(e.description(), e.number());
    }
}

MpvLink::State MpvLink::queryState() {
    const QList<MpvIpc::Reply> r = m_ipc.requests(
        {getProperty(QStringLiteral("idle-active")), getProperty(QStringLiteral("playlist-pos")),
         getProperty(QStringLiteral("eof-reached")), getProperty(QStringLiteral("pause"))});
    State s;
    s.idle = !r[0].ok || r[0].data.toBool(true);
    s.pos = r[1].ok ? r[1].data.toInteger(-1) : -1;
    s.eof = r[2].ok && r[2].data.toBool(false);
    s.paused = r[3].ok && r[3].data.toBool(false);
    return s;
}

QJsonValue MpvLink::property(const QString& name) {
    const MpvIpc::Reply r = m_ipc.request(getProperty(name));
    return r.ok ? r.data : QJsonValue();
}

qint32 MpvLink::WinampSetVolume(quint8 volume) {
    if (!m_connected)
        return 0;
    try {
        m_ipc.request(cmd({QStringLiteral("set_property"), QStringLiteral("volume"), mpvVolume(volume)}));
    } catch (const MpvIpc::Unreachable& why) {
        lose(why);
    }
    return 0;
}

qint32 MpvLink::WinampJumpToTime(qint32 seconds, qint32 milliseconds) {
    const qint64 ms = WinampMessages::jumpToTime(seconds, milliseconds).wParam;
    if (!m_connected)
        return 0;
    try {
        if (queryState().status() == 0)
            return -1;
        const QJsonValue duration = property(QStringLiteral("duration"));
        if (duration.isDouble() && double(ms) > duration.toDouble() * 1000.0)
            return 1;
        m_ipc.request(cmd({QStringLiteral("seek"), double(ms) / 1000.0, QStringLiteral("absolute")}));
    } catch (const MpvIpc::Unreachable& why) {
        lose(why);
    }
    return 0;
}

void MpvLink::WinampPlayFile(const QString& path) {
    QString file = path;
    if (file.endsWith(QLatin1Char('/')) || file.endsWith(QDir::separator()))
        file.chop(1);
    if (!m_connected)
        return;
    try {
        m_ipc.post(cmd({QStringLiteral("loadfile"), file, QStringLiteral("append")}));
    } catch (const MpvIpc::Unreachable& why) {
        lose(why);
    }
}

void MpvLink::WinampCommand(qint32 commandId) {
    if (!m_connected)
        return;
    try {
        switch (commandId) {
        case CloseCommand:
            m_ipc.post(cmd({QStringLiteral("quit")}));
            m_ipc.disconnect();
            m_connected = false; // closed on purpose: nothing to report
            break;
        case PlayCommand: {
            const qint64 count = property(QStringLiteral("playlist-count")).toInteger(0);
            qint64 entry = m_cursor;
            if (entry < 0)
                entry = qMax<qint64>(0, property(QStringLiteral("playlist-pos")).toInteger(-1));
            // mpv keeps a pause over to the next file; the player's Play always plays.
            m_ipc.post(cmd({QStringLiteral("set_property"), QStringLiteral("pause"), false}));
            // Out of range mpv would answer success and stop instead.
            if (entry < count)
                m_ipc.post(cmd({QStringLiteral("playlist-play-index"), entry}));
            break;
        }
        case PauseCommand:
            if (queryState().status() != 0)
                m_ipc.post(cmd({QStringLiteral("cycle"), QStringLiteral("pause")}));
            break;
        case StopCommand:
            m_ipc.post(cmd({QStringLiteral("stop"), QStringLiteral("keep-playlist")}));
            break;
        case JumpToLastCommand:
            // Only chooses the entry: the Play that always follows starts it, so it is loaded once.
            m_cursor = property(QStringLiteral("playlist-count")).toInteger(0) - 1;
            break;
        default:
            break;
        }
    } catch (const MpvIpc::Unreachable& why) {
        lose(why);
    }
}

QString MpvLink::title() {
    const State s = queryState();
    if (s.status() == 0)
        return QStringLiteral("mpv");
    QString t = QString::number(s.pos + 1) + QStringLiteral(". ") +
                property(QStringLiteral("media-title")).toString() + kTitleSuffix;
    if (s.paused)
        t += kPausedSuffix;
    return t;
}

qint32 MpvLink::answer(quint8 code) {
    switch (code) {
    case InfoVersion:
        return versionNumber(property(QStringLiteral("mpv-version")).toString());
    case InfoClearList:
        m_cursor = -1;
        return m_ipc.request(cmd({QStringLiteral("playlist-clear")})).ok ? 1 : 0;
    case InfoStatus:
        return queryState().status();
    case InfoLength: {
        if (queryState().status() == 0)
            return -1;
        const QJsonValue d = property(QStringLiteral("duration"));
        return d.isDouble() ? qint32(std::floor(d.toDouble())) : -1;
    }
    case InfoPosition: {
        if (queryState().status() == 0)
            return -1;
        const QJsonValue t = property(QStringLiteral("time-pos"));
        // mpv can report a slightly negative position right after a start.
        return t.isDouble() ? qint32(std::llround(qMax(0.0, t.toDouble()) * 1000.0)) : 0;
    }
    case InfoWritePlaylist:
    case InfoListPos:
        return qint32(property(QStringLiteral("playlist-pos")).toInteger(-1));
    case InfoListLength:
        return qint32(property(QStringLiteral("playlist-count")).toInteger(0));
    case InfoSampleRate:
        return qint32(property(QStringLiteral("audio-params/samplerate")).toInteger(0) / 1000);
    case InfoBitrate: {
        QJsonValue b = property(QStringLiteral("audio-bitrate"));
        // Not known for the first moments of a song; the container's figure is ready at once.
        if (!b.isDouble())
            b = property(QStringLiteral("track-list/0/demux-bitrate"));
        return b.isDouble() ? qint32(std::llround(b.toDouble() / 1000.0)) : 0;
    }
    case InfoCode12:
        return qint32(property(QStringLiteral("audio-params/channel-count")).toInteger(0));
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
        queryState(); // the status query every call sends first; its answer is not used
        if (sendsNothing)
            return QVariant();
        if (code == InfoTitle)
            return m_title.parse(title());
        return answer(code);
    } catch (const MpvIpc::Unreachable& why) {
        lose(why);
        return sendsNothing ? QVariant() : QVariant(qint32(0));
    } catch (const RuntimeError& e) {
        ReportWinampError(e.description(), e.number());
        return QVariant();
    }
}
