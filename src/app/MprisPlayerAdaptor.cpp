#include "app/MprisPlayerAdaptor.h"

#include "app/MprisRootAdaptor.h"
#include "app/TavoMP3PlayerMain.h"
#include "base/ErrorReport.h"
#include "base/StatusLine.h"
#include "player/PlaybackMonitor.h"
#include "player/PlayerLink.h"
#include "player/Transport.h"
#include "playlist/PlaylistLine.h"
#include "playlist/SongSelection.h"

#include <QDBusMessage>
#include <QDir>
#include <QFileInfo>
#include <QSlider>
#include <QUrl>
#include <cmath>

const QString MprisPlayerAdaptor::kObjectPath = QStringLiteral("/org/mpris/MediaPlayer2");

namespace {
const QString kNoTrack = QStringLiteral("/org/mpris/MediaPlayer2/TrackList/NoTrack");
} // namespace

MprisPlayerAdaptor::MprisPlayerAdaptor(QObject* exported, TavoMP3PlayerMain& window,
                                       std::function<bool()> playerRunning, const QDBusConnection& bus)
    : QDBusAbstractAdaptor(exported), m_window(window), m_playerRunning(std::move(playerRunning)),
      m_bus(bus) {
    m_announced = current();
    // After the monitor's own tick handler: a song it started is already in the state.
    connect(&window.playback().tmrTime, &QTimer::timeout, this, &MprisPlayerAdaptor::announceChanges);
    connect(window.sldVol, &QSlider::valueChanged, this, &MprisPlayerAdaptor::announceChanges);
    connect(&window.transport(), &Transport::indicatorsChanged, this, &MprisPlayerAdaptor::announceChanges);
    connect(&window.songSelection(), &SongSelection::indicatorsChanged, this,
            &MprisPlayerAdaptor::announceChanges);
    connect(&window.songSelection(), &SongSelection::songStarted, this, &MprisPlayerAdaptor::announceChanges);
    connect(&window.playback(), &PlaybackMonitor::indicatorsChanged, this,
            &MprisPlayerAdaptor::announceChanges);
}

QObject* MprisPlayerAdaptor::publish(TavoMP3PlayerMain& window, std::function<bool()> playerRunning,
                                     const QDBusConnection& bus) {
    auto* exported = new QObject(&window);
    new MprisRootAdaptor(exported, window);
    new MprisPlayerAdaptor(exported, window, std::move(playerRunning), bus);
    QDBusConnection(bus).registerObject(kObjectPath, exported, QDBusConnection::ExportAdaptors);
    return exported;
}

QDBusObjectPath MprisPlayerAdaptor::trackId(int playlist, qint32 index) {
    if (playlist < 1 || index < 0)
        return QDBusObjectPath(kNoTrack);
    return QDBusObjectPath(QStringLiteral("/example/tavomp3/player/track/%1_%2").arg(playlist).arg(index));
}

int MprisPlayerAdaptor::playerStatus() const {
    if (!m_playerRunning())
        return 0;
    try {
        return m_window.player().WinampGetInfo(PlayerLink::InfoStatus).toInt();
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
    const PlaybackState& state = m_window;
    const qint32 index = state.CurrentSongList == 1 ? state.PlaylistPosition : state.Playlist2Position;
    QVariantMap m;
    if (state.CurrentSongFile.isEmpty()) {
        m.insert(QStringLiteral("mpris:trackid"), QVariant::fromValue(QDBusObjectPath(kNoTrack)));
        return m;
    }
    const QString& file = state.CurrentSongFile;
    m.insert(QStringLiteral("mpris:trackid"), QVariant::fromValue(trackId(state.CurrentSongList, index)));
    // The name the lists show; the file's own name where that rule finds none.
    QString title;
    try {
        title = PlaylistLine::FuncGetSongName(file + QStringLiteral(":5"), m_window.services().pathStyle);
    } catch (const std::exception&) {
    }
    if (title.isEmpty() || PlaylistLine::isErrorName(title))
        title = QFileInfo(file).completeBaseName();
    m.insert(QStringLiteral("xesam:title"), title);
    m.insert(QStringLiteral("xesam:url"),
             QUrl::fromLocalFile(QDir::fromNativeSeparators(file)).toString(QUrl::FullyEncoded));
    if (const qint32 seconds = m_window.playlists().SongSeconds.value(file, 0); seconds > 0)
        m.insert(QStringLiteral("mpris:length"), qlonglong(seconds) * 1000000);
    return m;
}

double MprisPlayerAdaptor::volume() const {
    return m_window.sldVol->value() / 255.0;
}

void MprisPlayerAdaptor::setVolume(double volume) {
    if (std::isnan(volume))
        return;
    const int value = int(std::lround(qBound(0.0, volume, 1.0) * 255.0));
    // As if the slider had been dragged there and let go: the player hears it, the title comes back.
    run(
        "Volume", QDBusMessage(),
        [this, value] {
            m_window.sldVol->setValue(value);
            m_window.transport().VolumeReleased();
            m_window.playback().VolumeReleased();
        },
        false);
}

qlonglong MprisPlayerAdaptor::position() const {
    if (!m_playerRunning())
        return 0;
    try {
        return qMax<qlonglong>(0, m_window.player().WinampGetInfo(PlayerLink::InfoPosition).toLongLong()) *
               1000;
    } catch (const std::exception&) {
        return 0;
    }
}

bool MprisPlayerAdaptor::shuffle() const {
    return m_window.ShuffleStatus;
}

void MprisPlayerAdaptor::setShuffle(bool on) {
    run(
        "Shuffle", QDBusMessage(),
        [this, on] {
            if (m_window.ShuffleStatus != on)
                m_window.transport().ShuffleClick();
        },
        false);
}

void MprisPlayerAdaptor::Next(const QDBusMessage& call) {
    run("Next", call, [this] { m_window.transport().Next(); });
}

void MprisPlayerAdaptor::Previous(const QDBusMessage& call) {
    run("Previous", call, [this] { m_window.transport().Previous(); });
}

void MprisPlayerAdaptor::Stop(const QDBusMessage& call) {
    run("Stop", call, [this] { m_window.transport().Stop(); });
}

// The player's pause is a toggle: Pause only pauses a playing song, Play only resumes a paused one.
// From a stop, Play starts the marked line of the active list as the Play button does.
void MprisPlayerAdaptor::Pause(const QDBusMessage& call) {
    run("Pause", call, [this] {
        if (playerStatus() == 1)
            m_window.transport().Pause();
    });
}

void MprisPlayerAdaptor::PlayPause(const QDBusMessage& call) {
    run("PlayPause", call, [this] {
        if (playerStatus() != 0)
            m_window.transport().Pause();
        else
            m_window.transport().Play(
                m_window.playlists().list(m_window.mainPlaylistActive ? 1 : 2).currentRow());
    });
}

void MprisPlayerAdaptor::Play(const QDBusMessage& call) {
    run("Play", call, [this] {
        const int status = playerStatus();
        if (status == 3)
            m_window.transport().Pause();
        else if (status == 0)
            m_window.transport().Play(
                m_window.playlists().list(m_window.mainPlaylistActive ? 1 : 2).currentRow());
    });
}

void MprisPlayerAdaptor::OpenUri(const QString& uri, const QDBusMessage& call) {
    refuse(QStringLiteral("Mediensteuerung: \"") + uri +
               QStringLiteral("\" wird nicht geöffnet - bitte Lieder über eine Playliste abspielen."),
           call);
}

void MprisPlayerAdaptor::run(const char* command, const QDBusMessage& call, std::function<void()> body,
                             bool needsPlayer) {
    if (needsPlayer && !m_playerRunning()) {
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
            ErrorReport::guard(m_window.services().dialogs, place, [&body](int& line) {
                line = 1;
                body();
            });
            announceChanges();
        },
        Qt::QueuedConnection);
}

void MprisPlayerAdaptor::refuse(const QString& text, const QDBusMessage& call) {
    m_window.services().status.setText(text);
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
    const QVariantMap now = current();
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
    m_bus.send(signal);
}
