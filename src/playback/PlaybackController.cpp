#include "playback/PlaybackController.h"

#include "base/Services.h"
#include "player/PlayerLink.h"
#include "playlist/PlaylistManager.h"

PlaybackController::PlaybackController(Services& services, PlaylistManager& playlists, PlayerLink& player,
                                       QObject* parent)
    : QObject(parent), m_playlists(playlists), m_player(player),
      m_selection(services, playlists, player, m_state, m_history),
      m_queue(playlists, player, m_state, m_selection, services.clock),
      m_transport(playlists, player, m_state, m_history, m_selection),
      m_monitor(playlists, player, m_state, m_selection, services.status, services.dialogs) {
    connect(&m_transport, &Transport::indicatorsChanged, this, &PlaybackController::indicatorsChanged);
    connect(&m_selection, &SongSelection::indicatorsChanged, this, &PlaybackController::indicatorsChanged);
    connect(&m_monitor, &PlaybackMonitor::indicatorsChanged, this, &PlaybackController::indicatorsChanged);
    connect(&m_selection, &SongSelection::historyChanged, &m_transport, &Transport::UpdatePreviousMenu);
    connect(&m_selection, &SongSelection::testTextChanged, this, &PlaybackController::testText);
    connect(&m_selection, &SongSelection::songStarted, this, &PlaybackController::songStarted);
    connect(&m_transport, &Transport::previousMenuChanged, this, &PlaybackController::previousMenuChanged);
    connect(&m_transport, &Transport::focusPlaylistRequested, this,
            &PlaybackController::focusPlaylistRequested);
    connect(&m_transport, &Transport::priorityDisplayRefreshRequested, this,
            &PlaybackController::priorityDisplayRefreshRequested);
    connect(&m_transport, &Transport::volumeCaption, this,
            [this](const QString& text) { m_monitor.setText(PlaybackMonitor::TrackName, text); });
    connect(&m_monitor, &PlaybackMonitor::textChanged, this, &PlaybackController::labelText);
    connect(&m_monitor, &PlaybackMonitor::sliderValue, this, &PlaybackController::sliderValue);
    // After the slider has its value: the length the monitor has just read belongs to the current
    // song once that has played a moment (right after a start it may still be the last song's); an
    // M3U save writes it into the song's "#EXTINF" line.
    connect(&m_monitor, &PlaybackMonitor::sliderValue, this, [this](const QString& name, int seconds) {
        if (name == QLatin1String("SliderValue") && seconds >= 1 && !m_state.CurrentSongFile.isEmpty() &&
            m_monitor.songLength() > 0)
            m_playlists.SongSeconds.insert(m_state.CurrentSongFile, m_monitor.songLength());
    });
    connect(&m_monitor, &PlaybackMonitor::dockRequested, this, &PlaybackController::dockRequested);
    connect(&m_monitor, &PlaybackMonitor::shutdownRequested, this, &PlaybackController::shutdownRequested);
    // After the monitor's own tick handler, which was connected first: a song it started is in the state.
    connect(&m_monitor.tmrTime, &QTimer::timeout, this, &PlaybackController::polled);
    // Opening a playlist invalidates the history.
    connect(&playlists, &PlaylistManager::historyResetRequested, &m_transport, &Transport::ResetPrevSongs);

    // Gapless playback: once a song started (after the window, the tray and the desktop heard of it),
    // what follows is decided and queued; the player joins it, and the next tick makes the change.
    m_monitor.setQueue(&m_queue);
    connect(&player, &PlayerLink::queuedFileStarted, &m_monitor, &PlaybackMonitor::songJoined);
    connect(&m_selection, &SongSelection::songStarted, this, [this] {
        m_queue.invalidate();
        m_queue.refresh();
    });
    // A priority edited: the queued song may be the one.
    connect(&playlists, &PlaylistManager::linesEdited, this, [this] { m_queue.refresh(); });
    // Entries deleted, dropped, built, updated or loaded: once the change is complete.
    for (int n : {1, 2}) {
        QAbstractItemModel* list = &playlists.list(n);
        connect(list, &QAbstractItemModel::modelReset, this, &PlaybackController::listChanged);
        connect(list, &QAbstractItemModel::layoutChanged, this, &PlaybackController::listChanged);
        connect(list, &QAbstractItemModel::rowsInserted, this, &PlaybackController::listChanged);
        connect(list, &QAbstractItemModel::rowsRemoved, this, &PlaybackController::listChanged);
    }
    m_monitor.tmrTime.start();
}

void PlaybackController::listChanged() {
    if (m_listRefreshDue)
        return;
    m_listRefreshDue = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_listRefreshDue = false;
            m_queue.refresh(true);
        },
        Qt::QueuedConnection);
}

void PlaybackController::setPlayMode(quint8 mode) {
    m_state.PlayMode = mode;
    m_queue.refresh();
}

void PlaybackController::restoreVolume(quint8 volume) {
    m_volume = volume;
    emit volumeRestored(volume);
}

void PlaybackController::pressVolume() {
    m_transport.VolumePressed();
}

void PlaybackController::moveVolume(int value) {
    m_volume = quint8(qBound(0, value, 255));
    m_transport.VolumeMoved(value);
    emit volumeChanged(m_volume);
}

void PlaybackController::releaseVolume() {
    m_transport.VolumeReleased();
    m_monitor.VolumeReleased();
}

void PlaybackController::setVolumeFromDesktop(int value) {
    moveVolume(value);
    releaseVolume();
}

void PlaybackController::playSelected() {
    m_transport.Play(m_playlists.list(m_state.mainPlaylistActive ? 1 : 2).currentRow());
}

void PlaybackController::pause() {
    m_transport.Pause();
}

void PlaybackController::stop() {
    m_transport.Stop();
    m_queue.refresh();
}

void PlaybackController::next() {
    m_transport.Next();
}

void PlaybackController::previous() {
    m_transport.Previous();
}

void PlaybackController::playHistory(int slot) {
    m_transport.PlayPrevious(slot);
}

void PlaybackController::toggleShuffle() {
    m_transport.ShuffleClick();
    m_queue.refresh();
}

void PlaybackController::setShuffle(bool on) {
    if (m_state.ShuffleStatus != on)
        toggleShuffle();
}

void PlaybackController::toggleAutoCue() {
    m_transport.AutoCueClick();
    m_queue.refresh();
}

void PlaybackController::jumpTo(qint32 seconds) {
    m_player.WinampJumpToTime(seconds, 0);
}

void PlaybackController::holdPosition(bool held) {
    held ? m_monitor.tmrTime.stop() : m_monitor.tmrTime.start();
}

void PlaybackController::playFromList2(int row) {
    m_selection.PlaySong(row, 2);
}

void PlaybackController::skipAhead() {
    // The position slider's maximum and value: what the monitor gave it on its last tick.
    const qint32 value = m_monitor.lastPosition();
    if (m_monitor.songLength() - value > 25)
        m_player.WinampJumpToTime(value + 20, 0);
}

void PlaybackController::setShutdownOnList2End(bool on) {
    m_state.shutdownOnPL2End = on;
    m_queue.refresh();
}

void PlaybackController::setMainListActive(bool on) {
    m_state.mainPlaylistActive = on;
    m_queue.refresh();
}
