#pragma once

#include <QString>
#include <QtGlobal>

// The playback fields of the main window, shared by song selection, transport and the monitor.
struct PlaybackState {
    // 1 = start the next song when the player stops, 0 = off.
    quint8 PlayMode = 0;
    // The player's last status answer: 0 stopped, 1 playing, 3 paused.
    quint8 WinampStatus = 0;
    // Next and the monitor use the weighted random pick; saved as ShuffleStatus.
    bool ShuffleStatus = false;
    // Play plays only the chosen song, then playback stops. Not saved.
    bool AutoCue = false;
    // Entries last started from playlist 1 and playlist 2.
    qint32 PlaylistPosition = 0;
    qint32 Playlist2Position = 0;
    // Display name of the song last started.
    QString CurrentSongName;
    // File of the song last started and its playlist (1 or 2; 0 = none yet), for the desktop's
    // player controls.
    QString CurrentSongFile;
    qint16 CurrentSongList = 0;
    // The player's answer to info code 0 right after a start.
    qint16 PlayerStatus = 0;
    // The option pair PL: element 1 selected = playlist 1 drives Play, Next and the pick.
    bool mainPlaylistActive = true;
    // The second playlist window's "PC herunterfahren bei Playlist Ende" box.
    bool shutdownOnPL2End = false;
    // True while the volume slider is dragged: the title scroll pauses.
    bool volumeDrag = false;
};
