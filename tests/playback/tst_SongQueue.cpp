// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "support/CoreRig.h"

#include <QFileInfo>
#include <QtTest>

using namespace Qt::StringLiterals;

// Gapless playback on the program core and a player that joins queued files: what is queued after each
// action that changes what should come next, the song change when the player goes on, and the shuffle.
class tst_SongQueue : public QObject {
    Q_OBJECT

    struct Rig : CoreRig {
        PlaybackController& playback = core.playback();
        PlaylistManager& playlists = core.playlists();
        int changes = 0;

        explicit Rig(bool queueing = true) {
            player.queueing = queueing;
            set(1, "a b c d e");
            set(2, "x y z");
            QObject::connect(&playback, &PlaybackController::songStarted, [this] { ++changes; });
        }
        // "name" or "name:priority" for each entry.
        void set(int n, const QString& names) {
            QStringList lines;
            for (const QString& name : names.split(' '))
                lines << "/m/" + name.section(':', 0, 0) +
                             ".mp3:" + (name.contains(':') ? name.section(':', 1) : "5");
            playlists.paths(n) = lines;
            playlists.FuncDisplayPlaylist(true, n);
            QCoreApplication::processEvents(); // the queue looks at a changed list once it is complete
        }
        // The song ends; the player goes on by itself where it holds a queued file.
        void songEnds() {
            player.finishSong();
            QCoreApplication::processEvents();
            playback.monitor().tmrTimeTick();
        }
        QString queued() const { return QFileInfo(player.queued).completeBaseName(); }
    };

private slots:
    // Started at "c": "d" is queued. Each action that changes what should come next replaces the queued
    // file or takes it back, before it plays.
    void whatChangesTheNextSongChangesTheQueue_data() {
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("queued"); // "" = nothing queued
        QTest::newRow("nothing") << ""
                                 << "d";
        QTest::newRow("Next") << "next"
                              << "e";
        QTest::newRow("Previous") << "next previous"
                                  << "d";
        QTest::newRow("double click") << "play 0"
                                      << "b";
        QTest::newRow("history menu") << "next history 2"
                                      << "d";
        QTest::newRow("Stop") << "stop"
                              << "";
        QTest::newRow("AUTOCUE on") << "autocue"
                                    << "";
        QTest::newRow("AUTOCUE off again") << "autocue autocue"
                                           << "d";
        QTest::newRow("shuffle on: the pick") << "shuffle"
                                              << "b";
        QTest::newRow("shuffle off again") << "shuffle shuffle"
                                           << "d";
        QTest::newRow("priority of the picked song") << "shuffle priority 1 1"
                                                     << "a";
        QTest::newRow("priority of another song") << "shuffle priority 0 0"
                                                  << "b";
        QTest::newRow("the queued song deleted") << "delete 3"
                                                 << "e";
        QTest::newRow("another list loaded") << "load"
                                             << "q4";
        QTest::newRow("playlist 2 active") << "list2"
                                           << "y";
        QTest::newRow("shutdown box ticked: in order") << "shuffle shutdown"
                                                       << "d";
        QTest::newRow("sleep mode's end") << "sleep"
                                          << "";
        QTest::newRow("the last song of the list") << "play 4"
                                                   << "";
        QTest::newRow("the last song of playlist 2") << "list2 play2 2"
                                                     << "";
    }
    void whatChangesTheNextSongChangesTheQueue() {
        QFETCH(QString, action);
        QFETCH(QString, queued);
        Rig r;
        // The weighted pick draws index (value x 4) and dice: "b" wins, "a" wins, "c" wins.
        r.t.random.values = {0.3, 0.0, 0.1, 0.0, 0.6, 0.0};
        r.playback.transport().Play(2);
        r.playback.monitor().tmrTimeTick(); // the player plays
        QCOMPARE(r.queued(), "d");
        const QStringList words = action.split(' ', Qt::SkipEmptyParts);
        for (qsizetype i = 0; i < words.size(); ++i) {
            const QString& w = words.at(i);
            if (w == "next")
                r.playback.next();
            else if (w == "previous")
                r.playback.previous();
            else if (w == "play")
                r.playback.transport().Play(words.at(++i).toInt());
            else if (w == "play2")
                r.playback.playFromList2(words.at(++i).toInt());
            else if (w == "history")
                r.playback.playHistory(words.at(++i).toInt());
            else if (w == "stop")
                r.playback.stop();
            else if (w == "autocue")
                r.playback.toggleAutoCue();
            else if (w == "shuffle")
                r.playback.toggleShuffle();
            else if (w == "list2")
                r.playback.setMainListActive(false);
            else if (w == "shutdown")
                r.playback.setShutdownOnList2End(true);
            else if (w == "sleep") {
                r.core.sleepMode().FSleepmodeClick(true, "1 min");
                r.core.sleepMode().TimerSleepmodeTimer();
            } else if (w == "priority" || w == "delete") {
                r.playlists.list(1).selectOnly(words.at(++i).toInt());
                if (w == "delete")
                    r.core.editor().DeleteSelectedSongs(1);
                else
                    r.core.editor().FPrioClick(words.at(++i).toInt());
                QCoreApplication::processEvents();
            } else if (w == "load") {
                r.set(1, "q1 q2 q3 q4 q5");
            }
        }
        QCOMPARE(r.queued(), queued);
    }

    // The player goes on to the queued song by itself: the program makes the song change then, once,
    // and queues the one after; at the end of the list nothing follows and play mode stops as ever.
    void theJoinIsTheSongChange() {
        Rig r;
        r.playback.transport().Play(3);
        r.songEnds();
        QCOMPARE(r.playback.state().PlaylistPosition, 4);
        QCOMPARE(r.playback.state().CurrentSongFile, "/m/e.mp3");
        QCOMPARE(r.playback.history().slot(1), 4);
        QCOMPARE(r.changes, 2);
        QCOMPARE(r.player.playedFiles(), QStringList{"/m/d.mp3"}); // e came from the queue
        QCOMPARE(r.queued(), "");
        r.songEnds();
        QCOMPARE(r.t.status.text(), "Playlistende erreicht - Playmodus gestoppt.");
        QCOMPARE(int(r.playback.state().PlayMode), 0);
        QCOMPARE(r.changes, 2);
    }

    // Drawn while the song before plays, the shuffle picks the same songs from the same random numbers
    // as drawn at each song's end: the priorities' chances are untouched.
    void pickingAheadKeepsTheShuffle() {
        QStringList played[2];
        for (bool queueing : {false, true}) {
            Rig r(queueing);
            r.set(1, "a:5 b:4 c:3 d:2 e:1 f:0 g:5");
            r.playback.toggleShuffle();
            r.playback.transport().Play(0);
            for (int song = 0; song < 60; ++song) {
                played[queueing] << r.playback.state().CurrentSongFile;
                r.songEnds();
            }
        }
        QCOMPARE(played[1], played[0]);
        QVERIFY(!played[0].contains("/m/f.mp3")); // priority 0 is never drawn
    }
};

QTEST_GUILESS_MAIN(tst_SongQueue)
#include "tst_SongQueue.moc"
