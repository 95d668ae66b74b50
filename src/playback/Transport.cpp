#include "playback/Transport.h"

#include "base/Checked.h"
#include "playback/PlaybackState.h"
#include "player/PlayerLink.h"
#include "playback/PrevSongs.h"
#include "playlist/PlaylistManager.h"
#include "playback/SongSelection.h"

#include <cmath>

Transport::Transport(PlaylistManager& playlists, PlayerLink& player, PlaybackState& state, PrevSongs& history,
                     SongSelection& selection, QObject* parent)
    : QObject(parent), m_playlists(playlists), m_player(player), m_state(state), m_history(history),
      m_selection(selection) {
}

void Transport::Play(int selectedRow) {
    const int n = m_state.mainPlaylistActive ? 1 : 2;
    if (m_playlists.list(n).count() == 0)
        return;
    m_selection.PlaySong(selectedRow, qint16(n));
    m_state.PlayMode = m_state.AutoCue ? 0 : 1;
    emit focusPlaylistRequested();
}

void Transport::Pause() {
    m_player.WinampCommand(PlayerLink::PauseCommand);
    emit focusPlaylistRequested();
}

void Transport::Stop() {
    m_state.PlayMode = 0;
    m_player.WinampCommand(PlayerLink::StopCommand);
    emit focusPlaylistRequested();
}

void Transport::Next() {
    // Only the main list is looked at, whichever playlist is active.
    if (m_playlists.list(1).count() == 0)
        return;
    if (!m_state.ShuffleStatus) {
        // No end-of-list check here: the selection reports a position past the end.
        if (m_state.mainPlaylistActive)
            m_selection.PlaySong(Checked::toInt32(qint64(m_state.PlaylistPosition) + 1), 1);
        else
            m_selection.PlaySong(Checked::toInt32(qint64(m_state.Playlist2Position) + 1), 2);
    } else {
        m_selection.FuncPickRandomSong();
    }
    m_state.PlayMode = 1; // also under AUTOCUE
    emit focusPlaylistRequested();
}

void Transport::Previous() {
    emit priorityDisplayRefreshRequested();
    m_selection.PlaySong(m_history.slot(2), 1);
}

void Transport::PlayPrevious(int slot) {
    const qint32 index = m_history.slot(slot);
    if (index > m_playlists.PlaylistPaths.size() - 1)
        return;
    emit priorityDisplayRefreshRequested();
    m_selection.PlaySong(index, 1);
}

void Transport::AutoCueClick() {
    if (m_state.AutoCue) {
        m_state.AutoCue = false;
        if (m_state.WinampStatus == 1 || m_state.WinampStatus == 3)
            m_state.PlayMode = 1;
    } else {
        // The current song plays to its end, then playback stops.
        m_state.AutoCue = true;
        m_state.PlayMode = 0;
    }
    emit indicatorsChanged();
}

void Transport::ShuffleClick() {
    m_state.ShuffleStatus = !m_state.ShuffleStatus;
    emit indicatorsChanged();
}

void Transport::UpdatePreviousMenu() {
    QStringList captions;
    QList<bool> visible;
    for (const PrevSongs::MenuEntry& e : m_history.menuEntries(m_playlists.PlaylistNames)) {
        captions << e.caption;
        visible << e.visible;
    }
    emit previousMenuChanged(captions, visible);
}

void Transport::ResetPrevSongs() {
    m_history.ResetPrevSongs();
    UpdatePreviousMenu();
}

QString Transport::volumeText(int value) {
    const int percent = int(std::floor(value / 2.55));
    // Str() puts a blank before non-negative numbers.
    return QStringLiteral("VOLUME:") + (percent >= 0 ? QStringLiteral(" ") : QString()) +
           QString::number(percent) + QStringLiteral("%");
}

void Transport::VolumePressed() {
    m_state.volumeDrag = true;
}

void Transport::VolumeMoved(int value) {
    emit volumeCaption(volumeText(value));
    m_player.WinampSetVolume(Checked::toByte(value));
}

void Transport::VolumeReleased() {
    m_state.volumeDrag = false;
    emit volumeReleased();
    emit focusPlaylistRequested();
}
