#pragma once

#include "playback/PlaybackMonitor.h"
#include "playback/PlaybackState.h"
#include "playback/PrevSongs.h"
#include "playback/SongQueue.h"
#include "playback/SongSelection.h"
#include "playback/Transport.h"

#include <QObject>

class PlayerLink;
class PlaylistManager;
struct Services;

// Everything that follows a song while it plays: the playback state, the history of the last 20
// songs, the song selection, the transport commands, the monitor and the volume. Commands come in
// from the window, the tray menu and the desktop's player controls; what they should show goes out
// as signals. Nothing here knows a widget.
class PlaybackController : public QObject {
    Q_OBJECT
public:
    PlaybackController(Services& services, PlaylistManager& playlists, PlayerLink& player,
                       QObject* parent = nullptr);

    PlaybackState& state() { return m_state; }
    const PlaybackState& state() const { return m_state; }
    PrevSongs& history() { return m_history; }
    SongSelection& selection() { return m_selection; }
    Transport& transport() { return m_transport; }
    PlaybackMonitor& monitor() { return m_monitor; }
    SongQueue& queue() { return m_queue; }
    PlayerLink& player() { return m_player; }

    // The volume 0..255.
    quint8 volume() const { return m_volume; }
    // The stored volume at start: shown (volumeRestored), but told neither to the player, which
    // hears it when the volume next moves, nor to the desktop.
    void restoreVolume(quint8 volume);
    void pressVolume();
    // The slider moves: its caption in the title label, the player, the desktop (volumeChanged).
    void moveVolume(int value);
    void releaseVolume();
    // The desktop's volume: as if the slider had been dragged there and let go.
    void setVolumeFromDesktop(int value);

    // Play with the selected line of the active list (-1 when none is selected).
    void playSelected();
    void pause();
    void stop();
    void next();
    // The tray's Previous: the song before the current one.
    void previous();
    // MenuPrev(slot), slot 1..20.
    void playHistory(int slot);
    void toggleShuffle();
    void setShuffle(bool on);
    void toggleAutoCue();
    // The position slider: jump to a second of the song; the monitor is held while the knob is.
    void jumpTo(qint32 seconds);
    void holdPosition(bool held);
    void clearShownTitle() { m_monitor.clearShownName(); }
    // A line of the second playlist clicked or entered.
    void playFromList2(int row);
    // Space in the second playlist: 20 s ahead when more than 25 s are left.
    void skipAhead();
    // The option pair PL: true = playlist 1 drives Play, Next and the pick.
    void setMainListActive(bool on);
    void setShutdownOnList2End(bool on);
    void setPlayMode(quint8 mode);
    // Nothing is to follow the playing song (the sleep mode ended): a queued file goes.
    void dropQueue() { m_queue.drop(); }

signals:
    void indicatorsChanged();
    void songStarted(const QString& name);
    void labelText(PlaybackMonitor::Label label, const QString& text);
    // The position slider's value operation: "SliderMax" or "SliderValue".
    void sliderValue(const QString& name, int value);
    // MenuPrev(1..20): caption and visibility of each slot, index 0 = slot 1.
    void previousMenuChanged(const QStringList& captions, const QList<bool>& visible);
    void volumeChanged(int volume);
    void volumeRestored(int volume);
    // After each tick of the monitor's timer, once the tick has done its work.
    void polled();
    void dockRequested();
    void shutdownRequested();
    void focusPlaylistRequested();
    // The debug label FTest: the dice of the last pick.
    void testText(const QString& text);
    // Before a history entry plays, the priority display forgets its mark.
    void priorityDisplayRefreshRequested();

private:
    // A list changed: the queued song is checked once the change is complete.
    void listChanged();

    PlaylistManager& m_playlists;
    PlayerLink& m_player;
    PlaybackState m_state;
    PrevSongs m_history;
    SongSelection m_selection;
    SongQueue m_queue;
    Transport m_transport;
    PlaybackMonitor m_monitor;
    quint8 m_volume = 200;
    bool m_listRefreshDue = false;
};
