#include "desktop/MprisPlayerAdaptor.h"

#include "base/ErrorReport.h"
#include "base/Services.h"
#include "base/StatusLine.h"
#include "desktop/MprisRootAdaptor.h"
#include "playback/PlaybackController.h"
#include "player/PlayerLink.h"
#include "playlist/PlaylistLine.h"
#include "playlist/PlaylistManager.h"
#include "reports/Mp3Info.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDir>
#include <QFileInfo>
#include <QPointer>
#include <QThreadPool>
#include <QUrl>
#include <cmath>

const QString MprisPlayerAdaptor::kObjectPath = QStringLiteral("/org/mpris/MediaPlayer2");

namespace {
const QString kNoTrack = QStringLiteral("/org/mpris/MediaPlayer2/TrackList/NoTrack");
const QString kMetadata = QStringLiteral("Metadata");
const QString kLength = QStringLiteral("mpris:length");
constexpr qint64 kLengthWaitMs = 3000;
} // namespace

MprisPlayerAdaptor::MprisPlayerAdaptor(QObject* exported, PlaybackController& playback,
                                       PlaylistManager& playlists, Services& services,
                                       const QDBusConnection& bus)
    : QDBusAbstractAdaptor(exported), m_playback(playback), m_playlists(playlists), m_services(services),
      m_bus(bus) {
    send = [this](const QDBusMessage& message) { m_bus.send(message); };
    m_announced = current();
    // After the monitor's own tick handler: a song it started is already in the state.
    connect(&playback, &PlaybackController::polled, this, &MprisPlayerAdaptor::announceChanges);
    connect(&playback, &PlaybackController::volumeChanged, this, &MprisPlayerAdaptor::announceChanges);
    connect(&playback, &PlaybackController::indicatorsChanged, this, &MprisPlayerAdaptor::announceChanges);
    connect(&playback, &PlaybackController::songStarted, this, &MprisPlayerAdaptor::announceChanges);
}

QObject* MprisPlayerAdaptor::publish(QObject* parent, PlaybackController& playback,
                                     PlaylistManager& playlists, Services& services, WindowRequests& window,
                                     const QDBusConnection& bus) {
    auto* exported = new QObject(parent);
    new MprisRootAdaptor(exported, window);
    new MprisPlayerAdaptor(exported, playback, playlists, services, bus);
    QDBusConnection(bus).registerObject(kObjectPath, exported, QDBusConnection::ExportAdaptors);
    return exported;
}

QDBusObjectPath MprisPlayerAdaptor::trackId(int playlist, qint32 index) {
    if (playlist < 1 || index < 0)
        return QDBusObjectPath(kNoTrack);
    return QDBusObjectPath(QStringLiteral("/example/tavomp3/player/track/%1_%2").arg(playlist).arg(index));
}

int MprisPlayerAdaptor::playerStatus() const {
    if (!m_playback.player().isRunning())
        return 0;
    try {
        return m_playback.player().WinampGetInfo(PlayerLink::InfoStatus).toInt();
    } catch (const std::exception&) {
        return 0;
    }
}

QString MprisPlayerAdaptor::playbackStatus() const {
    switch (playerStatus()) {
    case 1:
        return QStringLiteral("Playing");
    case 3:
        return QStringLiteral("Paused");
    default:
        return QStringLiteral("Stopped");
    }
}

QVariantMap MprisPlayerAdaptor::metadata() const {
    const PlaybackState& state = m_playback.state();
    const qint32 index = state.CurrentSongList == 1 ? state.PlaylistPosition : state.Playlist2Position;
    QVariantMap m;
    // No player, no track: what it played last is not playing any more.
    if (state.CurrentSongFile.isEmpty() || !m_playback.player().isRunning()) {
        m.insert(QStringLiteral("mpris:trackid"), QVariant::fromValue(QDBusObjectPath(kNoTrack)));
        return m;
    }
    const QString& file = state.CurrentSongFile;
    m.insert(QStringLiteral("mpris:trackid"), QVariant::fromValue(trackId(state.CurrentSongList, index)));
    // The name the lists show; the file's own name where that rule finds none.
    QString title;
    try {
        title = PlaylistLine::FuncGetSongName(file + QStringLiteral(":5"), m_services.pathStyle);
    } catch (const std::exception&) {
    }
    if (title.isEmpty() || PlaylistLine::isErrorName(title))
        title = QFileInfo(file).completeBaseName();
    m.insert(QStringLiteral("xesam:title"), title);
    m.insert(QStringLiteral("xesam:url"),
             QUrl::fromLocalFile(QDir::fromNativeSeparators(file)).toString(QUrl::FullyEncoded));
    qint64 microseconds = m_lengths.value(file, -1);
    if (microseconds == 0) {
        try {
            microseconds = m_playback.player().lengthMicroseconds();
        } catch (const std::exception&) {
        }
    }
    if (microseconds > 0)
        m.insert(kLength, qlonglong(microseconds));
    return m;
}

void MprisPlayerAdaptor::measure(const QString& file) {
    if (file.isEmpty() || m_lengths.contains(file) || m_measuring == file)
        return;
    m_measuring = file;
    QPointer<MprisPlayerAdaptor> self(this);
    QThreadPool::globalInstance()->start([self, file] {
        bool opened = false;
        const Mp3ScanResult scan = Mp3Info::scanFile(file, opened);
        const qint64 microseconds = scan.frames > 0 ? qint64(std::llround(scan.seconds * 1e6)) : 0;
        QMetaObject::invokeMethod(
            qApp,
            [self, file, microseconds] {
                if (!self)
                    return;
                if (self->m_lengths.size() > 100) // only songs of the last moments are asked for
                    self->m_lengths.clear();
                self->m_lengths.insert(file, microseconds);
                if (self->m_measuring == file)
                    self->m_measuring.clear();
                self->announceChanges();
            },
            Qt::QueuedConnection);
    });
}

double MprisPlayerAdaptor::volume() const {
    return m_playback.volume() / 255.0;
}

void MprisPlayerAdaptor::setVolume(double volume) {
    if (std::isnan(volume))
        return;
    const int value = int(std::lround(qBound(0.0, volume, 1.0) * 255.0));
    // As if the slider had been dragged there and let go: the player hears it, the title comes back.
    run(
        "Volume", QDBusMessage(), [this, value] { m_playback.setVolumeFromDesktop(value); }, false);
}

qlonglong MprisPlayerAdaptor::position() const {
    if (!m_playback.player().isRunning())
        return 0;
    try {
        return qMax<qlonglong>(0, m_playback.player().WinampGetInfo(PlayerLink::InfoPosition).toLongLong()) *
               1000;
    } catch (const std::exception&) {
        return 0;
    }
}

bool MprisPlayerAdaptor::shuffle() const {
    return m_playback.state().ShuffleStatus;
}

void MprisPlayerAdaptor::setShuffle(bool on) {
    run(
        "Shuffle", QDBusMessage(), [this, on] { m_playback.setShuffle(on); }, false);
}

void MprisPlayerAdaptor::Next(const QDBusMessage& call) {
    run("Next", call, [this] { m_playback.next(); });
}

void MprisPlayerAdaptor::Previous(const QDBusMessage& call) {
    run("Previous", call, [this] { m_playback.previous(); });
}

void MprisPlayerAdaptor::Stop(const QDBusMessage& call) {
    run("Stop", call, [this] { m_playback.stop(); });
}

// The player's pause is a toggle: Pause only pauses a playing song, Play only resumes a paused one.
// From a stop, Play starts the marked line of the active list as the Play button does.
void MprisPlayerAdaptor::Pause(const QDBusMessage& call) {
    run("Pause", call, [this] {
        if (playerStatus() == 1)
            m_playback.pause();
    });
}

void MprisPlayerAdaptor::PlayPause(const QDBusMessage& call) {
    run("PlayPause", call, [this] {
        if (playerStatus() != 0)
            m_playback.pause();
        else
            m_playback.playSelected();
    });
}

void MprisPlayerAdaptor::Play(const QDBusMessage& call) {
    run("Play", call, [this] {
        const int status = playerStatus();
        if (status == 3)
            m_playback.pause();
        else if (status == 0)
            m_playback.playSelected();
    });
}

void MprisPlayerAdaptor::OpenUri(const QString& uri, const QDBusMessage& call) {
    refuse(QStringLiteral("Mediensteuerung: \"") + uri +
               QStringLiteral("\" wird nicht geöffnet - bitte Lieder über eine Playliste abspielen."),
           call);
}

void MprisPlayerAdaptor::run(const char* command, const QDBusMessage& call, std::function<void()> body,
                             bool needsPlayer) {
    if (needsPlayer && !m_playback.player().canPlay()) {
        refuse(QStringLiteral("Mediensteuerung: \"") + QLatin1String(command) +
                   QStringLiteral("\" nicht ausgeführt - es läuft kein Player. Bitte den Player-Pfad in den "
                                  "Einstellungen prüfen oder das Programm neu starten."),
               call);
        return;
    }
    const QString place = QStringLiteral("MPRIS ") + QLatin1String(command);
    QMetaObject::invokeMethod(
        this,
        [this, place, body] {
            ErrorReport::guard(m_services.dialogs, place, [&body](int& line) {
                line = 1;
                body();
            });
            announceChanges();
        },
        Qt::QueuedConnection);
}

void MprisPlayerAdaptor::refuse(const QString& text, const QDBusMessage& call) {
    m_services.status.setText(text);
    if (call.type() != QDBusMessage::MethodCallMessage)
        return;
    call.setDelayedReply(true);
    m_bus.send(call.createErrorReply(QDBusError::Failed, text));
}

QVariantMap MprisPlayerAdaptor::current() const {
    return {{QStringLiteral("PlaybackStatus"), playbackStatus()},
            {QStringLiteral("Metadata"), metadata()},
            {QStringLiteral("Volume"), volume()},
            {QStringLiteral("Shuffle"), shuffle()}};
}

void MprisPlayerAdaptor::announceChanges() {
    if (m_playback.player().isRunning())
        measure(m_playback.state().CurrentSongFile);
    QVariantMap now = current();
    const QVariantMap track = now.value(kMetadata).toMap();
    const QVariant trackId = track.value(QStringLiteral("mpris:trackid"));
    if (trackId != m_announced.value(kMetadata).toMap().value(QStringLiteral("mpris:trackid")) &&
        !track.contains(kLength) && trackId.value<QDBusObjectPath>().path() != kNoTrack) {
        if (!m_newTrackSince.isValid())
            m_newTrackSince.start();
        if (m_newTrackSince.elapsed() < kLengthWaitMs)
            now.insert(kMetadata, m_announced.value(kMetadata)); // not yet: the rest goes out now
    } else {
        m_newTrackSince.invalidate();
    }
    QVariantMap changed;
    for (auto it = now.cbegin(); it != now.cend(); ++it)
        if (m_announced.value(it.key()) != it.value())
            changed.insert(it.key(), it.value());
    if (changed.isEmpty())
        return;
    m_announced = now;
    QDBusMessage signal = QDBusMessage::createSignal(
        kObjectPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("PropertiesChanged"));
    signal << QStringLiteral("org.mpris.MediaPlayer2.Player") << changed << QStringList();
    send(signal);
}
