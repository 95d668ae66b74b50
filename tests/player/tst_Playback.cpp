#include "support/PlaybackRig.h"

#include <QtTest>

using namespace Qt::StringLiterals;

// Play, Pause, Stop, Next, AUTOCUE, the volume texts and the previous-songs history; the 750 ms
// monitor: continuous play, pause, the display labels and the title scroll. The end of the second
// playlist, a failing tick and the name coming back after the volume drag are tested through the
// main window.
class tst_Playback : public QObject {
    Q_OBJECT

    static QStringList abc() { return {u"a"_s, u"b"_s, u"c"_s}; }

    static QStringList songs(int count) {
        QStringList s;
        for (int i = 0; i < count; ++i)
            s << u"s%1"_s.arg(i);
        return s;
    }

private slots:
    void play_data() {
        QTest::addColumn<QStringList>("songs");
        QTest::addColumn<int>("selected");
        QTest::addColumn<bool>("autoCue");
        QTest::addColumn<QStringList>("played");
        QTest::addColumn<int>("playMode");
        QTest::newRow("selected line") << abc() << 2 << false << QStringList{u"/m/c.mp3"_s} << 1;
        QTest::newRow("autocue plays one song only") << abc() << 0 << true << QStringList{u"/m/a.mp3"_s} << 0;
        QTest::newRow("nothing selected hands on -1") << abc() << -1 << false << QStringList{} << 1;
        QTest::newRow("empty list does nothing") << QStringList{} << -1 << false << QStringList{} << 7;
    }
    void play() {
        QFETCH(QStringList, songs);
        QFETCH(int, selected);
        QFETCH(bool, autoCue);
        QFETCH(QStringList, played);
        QFETCH(int, playMode);
        PlaybackRig r;
        r.setPlaylist(1, songs);
        r.state.AutoCue = autoCue;
        r.state.PlayMode = 7; // marks "untouched"
        int focus = 0;
        connect(&r.transport, &Transport::focusPlaylistRequested, [&] { ++focus; });
        r.transport.Play(selected);
        QCOMPARE(r.player.playedFiles(), played);
        QCOMPARE(int(r.state.PlayMode), playMode);
        QCOMPARE(focus, playMode == 7 ? 0 : 1);
        if (selected == -1 && !songs.isEmpty())
            QVERIFY(r.statusText().endsWith(u"Songposition = -1"_s));
    }

    void next_data() {
        QTest::addColumn<int>("position");
        QTest::addColumn<bool>("shuffle");
        QTest::addColumn<QStringList>("played");
        QTest::addColumn<QString>("status");
        QTest::newRow("middle") << 0 << false << QStringList{u"/m/b.mp3"_s} << QString();
        QTest::newRow("at the end no check")
            << 2 << false << QStringList{}
            << u"Sub Playsong: Lied nicht vorhanden oder Listenende erreicht! Songposition = 3"_s;
        QTest::newRow("shuffle draws") << 2 << true << QStringList{u"/m/b.mp3"_s} << u"    Zeit: 0"_s;
    }
    void next() {
        QFETCH(int, position);
        QFETCH(bool, shuffle);
        QFETCH(QStringList, played);
        QFETCH(QString, status);
        PlaybackRig r;
        r.setPlaylist(1, abc());
        r.state.PlaylistPosition = position;
        r.state.AutoCue = true;
        r.state.ShuffleStatus = shuffle;
        r.t.random.values = {0.7, 0.0};
        r.transport.Next();
        QCOMPARE(r.player.playedFiles(), played);
        QCOMPARE(r.statusText(), status);
        QCOMPARE(r.state.PlayMode, quint8(1)); // Next switches play mode on, even under AUTOCUE

        PlaybackRig empty;
        empty.setPlaylist(1, {});
        empty.transport.Next();
        QVERIFY(empty.player.calls.isEmpty());
        QCOMPARE(empty.state.PlayMode, quint8(0));
        QCOMPARE(empty.t.random.draws, 0);
    }

    void autoCue_data() {
        QTest::addColumn<bool>("on");
        QTest::addColumn<int>("winampStatus");
        QTest::addColumn<int>("playModeBefore");
        QTest::addColumn<int>("playModeAfter");
        QTest::newRow("on -> off while playing") << true << 1 << 0 << 1;
        QTest::newRow("on -> off while paused") << true << 3 << 0 << 1;
        QTest::newRow("on -> off while stopped") << true << 0 << 0 << 0;
        QTest::newRow("off -> on stops after the song") << false << 1 << 1 << 0;
    }
    void autoCue() {
        QFETCH(bool, on);
        QFETCH(int, winampStatus);
        QFETCH(int, playModeBefore);
        QFETCH(int, playModeAfter);
        PlaybackRig r;
        r.state.AutoCue = on;
        r.state.WinampStatus = quint8(winampStatus);
        r.state.PlayMode = quint8(playModeBefore);
        r.transport.AutoCueClick();
        QCOMPARE(r.state.AutoCue, !on);
        QCOMPARE(int(r.state.PlayMode), playModeAfter);
        QCOMPARE(r.indicatorChanges, 1);
    }

    void volumeCaption() {
        PlaybackRig r;
        QString caption;
        connect(&r.transport, &Transport::volumeCaption, [&](const QString& s) { caption = s; });
        r.transport.VolumePressed();
        QVERIFY(r.state.volumeDrag);
        for (auto [value, text] :
             {std::pair{255, u"VOLUME: 100%"_s}, {2, u"VOLUME: 0%"_s}, {128, u"VOLUME: 50%"_s}}) {
            r.transport.VolumeMoved(value);
            QCOMPARE(caption, text);
            QCOMPARE(r.player.volume, value);
        }
        r.transport.VolumeReleased();
        QVERIFY(!r.state.volumeDrag);
    }

    // No immediate repeats; the menu shows the newest first, "..." for an entry past the list, and
    // hides the slots after the first empty one; the 21st song pushes the oldest out.
    void historyAndItsMenu() {
        PlaybackRig r;
        r.setPlaylist(1, abc());
        QStringList captions;
        QList<bool> visible;
        connect(&r.transport, &Transport::previousMenuChanged,
                [&](const QStringList& c, const QList<bool>& v) {
                    captions = c;
                    visible = v;
                });
        r.transport.UpdatePreviousMenu();
        QCOMPARE(captions, QStringList(20, u"..."_s));
        QCOMPARE(visible.count(true), 1);
        for (int song : {1, 1, 7, 2, 1})
            r.selection.PlaySong(song, 1);
        QCOMPARE(r.historyChanges, 3); // the repeat and the song past the list are not recorded
        r.history.AddToPrevSongs(7);
        r.history.AddToPrevSongs(1);
        r.transport.UpdatePreviousMenu();
        QCOMPARE(captions.mid(0, 6),
                 (QStringList{u"1. b"_s, u"2. ..."_s, u"3. b"_s, u"4. c"_s, u"5. b"_s, u"..."_s}));
        QCOMPARE(visible.mid(0, 6), (QList<bool>{true, true, true, true, true, false}));
        r.transport.ResetPrevSongs();
        QCOMPARE(captions, QStringList(20, u"..."_s));
        QCOMPARE(r.history.slot(1), 0);

        PrevSongs h;
        for (int i = 1; i <= 21; ++i)
            QVERIFY(h.AddToPrevSongs(i));
        QCOMPARE(h.slot(1), 21);
        QCOMPARE(h.slot(20), 2);
    }

    void historyEntriesPlay_data() {
        QTest::addColumn<QList<int>>("history"); // oldest first
        QTest::addColumn<int>("slot");
        QTest::addColumn<QStringList>("played");
        QTest::newRow("slot 2") << QList<int>{2, 1} << 2 << QStringList{u"/m/c.mp3"_s};
        QTest::newRow("beyond the list") << QList<int>{9} << 1 << QStringList{};
        QTest::newRow("empty slot 1 plays entry 0") << QList<int>{} << 1 << QStringList{u"/m/a.mp3"_s};
        // The tray's Previous: the song before the one playing now.
        QTest::newRow("tray previous") << QList<int>{0, 2} << 0 << QStringList{u"/m/a.mp3"_s};
    }
    void historyEntriesPlay() {
        QFETCH(QList<int>, history);
        QFETCH(int, slot);
        QFETCH(QStringList, played);
        PlaybackRig r;
        r.setPlaylist(1, abc());
        for (int i : history)
            r.history.AddToPrevSongs(i);
        int refreshes = 0;
        connect(&r.transport, &Transport::priorityDisplayRefreshRequested, [&] { ++refreshes; });
        if (slot == 0)
            r.transport.Previous();
        else
            r.transport.PlayPrevious(slot);
        QCOMPARE(r.player.playedFiles(), played);
        QCOMPARE(refreshes, played.isEmpty() ? 0 : 1);
    }

    void formatTime_data() {
        QTest::addColumn<int>("seconds");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("after");
        QTest::newRow("67") << 67 << u"1:07"_s << 67;
        QTest::newRow("3725 has no hours") << 3725 << u"62:05"_s << 3725;
        QTest::newRow("negative is set to 0") << -5 << u"0:00"_s << 0;
        QTest::newRow("largest") << 32767 << u"546:07"_s << 32767;
    }
    void formatTime() {
        QFETCH(int, seconds);
        QFETCH(QString, text);
        QFETCH(int, after);
        qint16 s = qint16(seconds);
        QCOMPARE(PlaybackMonitor::FormatTime(s), text);
        QCOMPARE(int(s), after);
    }

    // What the ticks do after Play: the played files, and where play mode and the status line end up.
    void ticksAfterPlay_data() {
        QTest::addColumn<QString>("how");
        QTest::addColumn<QStringList>("played");
        QTest::addColumn<int>("playMode");
        QTest::addColumn<QString>("status");
        const QString end = u"Playlistende erreicht - Playmodus gestoppt."_s;
        QTest::newRow("autocue plays one song")
            << u"autocue"_s << QStringList{u"/m/s1.mp3"_s} << 0 << QString();
        QTest::newRow("user stop in the player: next song")
            << u"userStop"_s << QStringList{u"/m/s1.mp3"_s, u"/m/s2.mp3"_s} << 1 << QString();
        QTest::newRow("pause holds the song") << u"pause"_s << QStringList{u"/m/s1.mp3"_s} << 1 << QString();
        // A closed player answers 0 (stopped) to everything: one song per tick to the end of the list.
        QTest::newRow("closed player runs through")
            << u"closed"_s << QStringList{u"/m/s1.mp3"_s, u"/m/s2.mp3"_s, u"/m/s3.mp3"_s} << 0 << end;
    }
    void ticksAfterPlay() {
        QFETCH(QString, how);
        QFETCH(QStringList, played);
        QFETCH(int, playMode);
        QFETCH(QString, status);
        PlaybackRig r;
        r.setPlaylist(1, songs(4));
        r.player.defaultLengthSeconds = 2;
        r.state.AutoCue = how == u"autocue"_s;
        r.transport.Play(1);
        r.run(1);
        if (how == u"userStop"_s)
            r.player.userStop();
        if (how == u"closed"_s)
            r.player.close();
        if (how == u"pause"_s) {
            r.run(1);
            r.transport.Pause();
            r.run(1);
            const QString frozen = r.monitor.text(PlaybackMonitor::Time);
            r.run(10);
            QCOMPARE(frozen, u"0:01/0:02"_s);
            QCOMPARE(r.monitor.text(PlaybackMonitor::Time), frozen);
            QCOMPARE(r.state.WinampStatus, quint8(3));
        }
        r.monitor.tmrTimeTick();
        if (how != u"userStop"_s)
            r.run(10);
        QCOMPARE(r.player.playedFiles(), played);
        QCOMPARE(int(r.state.PlayMode), playMode);
        QCOMPARE(r.statusText(), status);
    }

    void titleScroll_data() {
        QTest::addColumn<int>("length");
        QTest::newRow("43 fits") << 43;
        QTest::newRow("44 scrolls") << 44;
    }
    void titleScroll() {
        QFETCH(int, length);
        PlaybackRig r;
        QString name;
        for (int i = 0; i < length; ++i)
            name += QChar(u'A' + i % 26);
        r.setPlaylist(1, {name, u"b"_s});
        r.transport.Play(0);
        r.run(1);
        QCOMPARE(r.monitor.tmrTitleScroll.isActive(), length > 43);
        const QString full = length > 43 ? name + u"   <<<>>> "_s : name;
        QCOMPARE(r.monitor.scrollText(), full);
        r.monitor.tmrTitleScrollTick();
        QCOMPARE(r.monitor.text(PlaybackMonitor::TrackName),
                 length > 43 ? (full.mid(1) + full.left(1)).left(43) : name);
        if (length == 43)
            return;
        r.monitor.tmrTitleScrollTick();
        QCOMPARE(r.monitor.text(PlaybackMonitor::TrackName), (full.mid(2) + full.left(2)).left(43));
        // While the volume is dragged the scroll stands still.
        r.state.volumeDrag = true;
        const QString standing = r.monitor.text(PlaybackMonitor::TrackName);
        r.monitor.tmrTitleScrollTick();
        QCOMPARE(r.monitor.text(PlaybackMonitor::TrackName), standing);
        r.state.volumeDrag = false;
        // Seeking back sets the title up again: the scroll starts from the beginning of the name.
        r.run(4);
        QCOMPARE(r.player.WinampJumpToTime(0, 0), 0);
        r.monitor.tmrTimeTick();
        QCOMPARE(r.monitor.scrollText(), full);
    }
};

QTEST_GUILESS_MAIN(tst_Playback)
#include "tst_Playback.moc"
