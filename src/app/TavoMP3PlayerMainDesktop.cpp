// What the desktop asks of the running program: a later start of it, the player controls' Raise.
#include "app/TavoMP3PlayerMain.h"
#include "playback/PlaybackMonitor.h"

void TavoMP3PlayerMain::activateFromDesktop(bool show, bool play) {
    handle(QStringLiteral("Activate"), [this, show, play](int& line) {
        line = 1;
        if (show)
            restoreWindow(true);
        line = 2;
        // As at start-up: play mode on when there is a list and the settings are complete; the
        // monitor then starts the next song unless one is playing.
        if (play && m_playlists.list(1).count() > 0 && !SettingsIncomplete)
            PlayMode = 1;
    });
}

void TavoMP3PlayerMain::rememberSongLengths() {
    // The length the monitor has just read belongs to the current song once that has played a
    // moment; right after a start it may still be the last song's.
    connect(m_monitor, &PlaybackMonitor::sliderValue, this, [this](const QString& name, int seconds) {
        if (name == QLatin1String("SliderValue") && seconds >= 1 && !CurrentSongFile.isEmpty() &&
            m_monitor->songLength() > 0)
            m_playlists.SongSeconds.insert(CurrentSongFile, m_monitor->songLength());
    });
}
