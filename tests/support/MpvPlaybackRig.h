#pragma once

#include "player/MpvLink.h"
#include "support/PlaybackRig.h"

// The playback core on the real mpv link, talking to the player on the given socket.
struct MpvPlaybackRig : PlaybackCore<MpvLink> {
    MpvLink& link = player;

    explicit MpvPlaybackRig(const QString& socketPath) : PlaybackCore(socketPath) {}
    // The main playlist holds these files, priority 5.
    void setPlaylist(const QStringList& files) {
        QStringList lines;
        for (const QString& f : files)
            lines << f + QStringLiteral(":5");
        setLines(1, lines);
    }
};
