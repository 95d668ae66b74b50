#pragma once

#include "playback/PlaybackController.h"
#include "playlist/PlaylistManager.h"
#include "support/FakePlayer.h"
#include "support/TestServices.h"

#include <QRegularExpression>
#include <QStringList>

// The playback controller on the fixed clock and scripted random numbers of the test services, with
// the signals the window listens to counted. Its parts are reachable under short names. The monitor's
// timer runs, but nothing here runs the event loop: tests tick by hand.
template <class Player> struct PlaybackCore {
    TestServices t;
    Player player;
    PlaylistManager playlists{t.services};
    PlaybackController playback{t.services, playlists, player};
    PlaybackState& state = playback.state();
    PrevSongs& history = playback.history();
    SongSelection& selection = playback.selection();
    Transport& transport = playback.transport();
    PlaybackMonitor& monitor = playback.monitor();
    int historyChanges = 0;
    int indicatorChanges = 0;
    QString testText;

    PlaybackCore() : player(t.status) { count(); }
    explicit PlaybackCore(const QString& socketPath) : player(t.status, t.dialogs, socketPath) { count(); }

    void setLines(int n, const QStringList& lines) {
        playlists.paths(n) = lines.isEmpty() ? QStringList{QString()} : lines;
        playlists.FuncDisplayPlaylist(true, n);
    }
    // Playlist n holds these files, priority 5.
    void setFiles(int n, QStringList files) {
        setLines(n, files.replaceInStrings(QRegularExpression(QStringLiteral("$")), QStringLiteral(":5")));
    }
    QString statusText() const { return t.status.text(); }

private:
    void count() {
        QObject::connect(&selection, &SongSelection::historyChanged, [this] { ++historyChanges; });
        QObject::connect(&playback, &PlaybackController::testText,
                         [this](const QString& s) { testText = s; });
        QObject::connect(&playback, &PlaybackController::indicatorsChanged, [this] { ++indicatorChanges; });
    }
};

// On the fake player.
struct PlaybackRig : PlaybackCore<FakePlayer> {
    // Lines "/m/<name>.mp3:<digit>" for each "name:digit" given (digit 5 when left out).
    static QStringList lines(const QStringList& songs) {
        QStringList out;
        for (const QString& s : songs)
            out << QStringLiteral("/m/") + s.section(u':', 0, 0) + QStringLiteral(".mp3:") +
                       (s.contains(u':') ? s.section(u':', 1) : QStringLiteral("5"));
        return out;
    }
    void setPlaylist(int n, const QStringList& songs) { setLines(n, lines(songs)); }
    // The player runs for the given time, the monitor ticking every 750 ms as the timer would.
    void run(int ticks) {
        for (int i = 0; i < ticks; ++i) {
            player.advance(PlaybackMonitor::kTickMs);
            monitor.tmrTimeTick();
        }
    }
};
