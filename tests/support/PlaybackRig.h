#pragma once

#include "player/PlaybackMonitor.h"
#include "player/PlaybackState.h"
#include "player/PrevSongs.h"
#include "player/Transport.h"
#include "playlist/PlaylistManager.h"
#include "playlist/SongSelection.h"
#include "support/FakePlayer.h"
#include "support/TestServices.h"

#include <QStringList>

// The playback core wired the way the main window wires it, on test doubles: a fake player,
// fixed clock and scripted random numbers. The timers are not started; tests tick by hand.
struct PlaybackRig {
    TestServices t;
    PlaylistManager playlists{t.services};
    FakePlayer player{t.status};
    PlaybackState state;
    PrevSongs history;
    SongSelection selection{t.services, playlists, player, state, history};
    Transport transport{playlists, player, state, history, selection};
    PlaybackMonitor monitor{playlists, player, state, selection, t.status, t.dialogs};
    QStringList startedNames;
    int historyChanges = 0;
    int indicatorChanges = 0;
    int shutdowns = 0;
    QString testText;

    PlaybackRig() {
        QObject::connect(&selection, &SongSelection::songStarted,
                         [this](const QString& name) { startedNames << name; });
        QObject::connect(&selection, &SongSelection::historyChanged, [this] { ++historyChanges; });
        QObject::connect(&selection, &SongSelection::indicatorsChanged, [this] { ++indicatorChanges; });
        QObject::connect(&transport, &Transport::indicatorsChanged, [this] { ++indicatorChanges; });
        QObject::connect(&monitor, &PlaybackMonitor::indicatorsChanged, [this] { ++indicatorChanges; });
        QObject::connect(&monitor, &PlaybackMonitor::shutdownRequested, [this] { ++shutdowns; });
        QObject::connect(&selection, &SongSelection::testTextChanged,
                         [this](const QString& s) { testText = s; });
    }

    // Lines "/m/<name>.mp3:<digit>" for each "name:digit" given (digit 5 when left out).
    static QStringList lines(const QStringList& songs) {
        QStringList out;
        for (const QString& s : songs)
            out << QStringLiteral("/m/") + s.section(QLatin1Char(':'), 0, 0) + QStringLiteral(".mp3:") +
                       (s.contains(QLatin1Char(':')) ? s.section(QLatin1Char(':'), 1) : QStringLiteral("5"));
        return out;
    }
    void setPlaylist(int n, const QStringList& songs) {
        playlists.paths(n) = songs.isEmpty() ? QStringList{QString()} : lines(songs);
        playlists.FuncDisplayPlaylist(true, n);
    }
    // The player runs for the given time, the monitor ticking every 750 ms as the timer would.
    void run(int ticks) {
        for (int i = 0; i < ticks; ++i) {
            player.advance(PlaybackMonitor::kTickMs);
            monitor.tmrTimeTick();
        }
    }
    QString statusText() const { return t.status.text(); }
};
