#pragma once

#include <QObject>
#include <QString>

class PlayerLink;
class PlaylistManager;
class PrevSongs;
class SongSelection;
struct PlaybackState;

// The transport commands of the main window and the tray menu, AUTOCUE, SHUFFLE, the volume
// slider's texts and the history menu. They only set the play mode and call the song selection;
// the player is reached only through the player link.
class Transport : public QObject {
    Q_OBJECT
public:
    Transport(PlaylistManager& playlists, PlayerLink& player, PlaybackState& state, PrevSongs& history,
              SongSelection& selection, QObject* parent = nullptr);

    // selectedRow: the active list's selected line, -1 = none.
    void Play(int selectedRow);
    void Pause();
    void Stop();
    void Next();
    // The tray's Previous: the song before the current one (history slot 2).
    void Previous();
    // MenuPrev(i), i = 1..20.
    void PlayPrevious(int slot);
    void AutoCueClick();
    void ShuffleClick();
    void UpdatePreviousMenu();
    void ResetPrevSongs();

    // "VOLUME: 78%" for slider value 200; the number carries the leading blank of the classic Str.
    static QString volumeText(int value);
    void VolumeMoved(int value);
    void VolumePressed();
    void VolumeReleased();

signals:
    void focusPlaylistRequested();
    void indicatorsChanged();
    // Part of the priority feature: refresh its display before a history entry is played.
    void priorityDisplayRefreshRequested();
    // MenuPrev(1..20): caption and visibility of each slot, index 0 = slot 1.
    void previousMenuChanged(const QStringList& captions, const QList<bool>& visible);
    // lblTrackName while the volume slider moves.
    void volumeCaption(const QString& text);
    // Released: the title label shows the song again.
    void volumeReleased();

private:
    PlaylistManager& m_playlists;
    PlayerLink& m_player;
    PlaybackState& m_state;
    PrevSongs& m_history;
    SongSelection& m_selection;
};
