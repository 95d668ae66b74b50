#pragma once

#include "player/MpvLink.h"
#include "player/PlaybackMonitor.h"
#include "player/PlaybackState.h"
#include "player/PrevSongs.h"
#include "player/Transport.h"
#include "playlist/PlaylistManager.h"
#include "playlist/SongSelection.h"
#include "support/TestServices.h"

#include <QStringList>

// The playback core wired the way the main window wires it, on the real mpv link. The monitor's
// timer is not started; tests and benchmarks start it (or tick by hand).
struct MpvPlaybackRig {
    TestServices t;
    MpvLink link;
    PlaylistManager playlists{t.services};
    PlaybackState state;
    PrevSongs history;
    SongSelection selection{t.services, playlists, link, state, history};
    Transport transport{playlists, link, state, history, selection};
    PlaybackMonitor monitor{playlists, link, state, selection, t.status, t.dialogs};

    explicit MpvPlaybackRig(const QString& socketPath) : link(t.status, t.dialogs, socketPath) {}

    // The main playlist holds these files, priority 5.
    void setPlaylist(const QStringList& files) {
        QStringList lines;
        for (const QString& f : files)
            lines << f + QStringLiteral(":5");
        playlists.paths(1) = lines;
        playlists.FuncDisplayPlaylist(true, 1);
    }
    QString statusText() const { return t.status.text(); }
};
