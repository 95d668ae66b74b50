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

private slots:
    // Play <selected row> and Next from <position>, "autocue" or "shuffle" on: the files handed over,
    // then play mode ("7" = untouched), focus requests and random draws, and the status line.
    void playAndNext_data() {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QStringList>("songs");
        QTest::addColumn<QString>("played");
        QTest::addColumn<QString>("outcome");
        const QString missing =
            u"Sub Playsong: Lied nicht vorhanden oder Listenende erreicht! Songposition = "_s;
        QTest::newRow("play the selected line") << u"play 2"_s << abc() << u"/m/c.mp3"_s << u"1 1 0|"_s;
        QTest::newRow("autocue plays one song only")
            << u"play 0 autocue"_s << abc() << u"/m/a.mp3"_s << u"0 1 0|"_s;
        QTest::newRow("nothing selected hands on -1")
            << u"play -1"_s << abc() << QString() << u"1 1 0|"_s + missing + u"-1"_s;
        QTest::newRow("play on an empty list") << u"play -1"_s << QStringList{} << QString() << u"7 0 0|"_s;
        // Next switches play mode on, even under AUTOCUE; it leaves the end of the list to PlaySong.
        QTest::newRow("next") << u"next 0 autocue"_s << abc() << u"/m/b.mp3"_s << u"1 1 0|"_s;
        QTest::newRow("next at the end")
            << u"next 2 autocue"_s << abc() << QString() << u"1 1 0|"_s + missing + u"3"_s;
        QTest::newRow("next draws") << u"next 2 shuffle"_s << abc() << u"/m/b.mp3"_s
                                    << u"1 1 2|    Zeit: 0"_s;
        QTest::newRow("next on an empty list")
            << u"next -1 shuffle"_s << QStringList{} << QString() << u"7 0 0|"_s;
    }
    void playAndNext() {
        QFETCH(QString, button);
        QFETCH(QStringList, songs);
        QFETCH(QString, played);
        QFETCH(QString, outcome);
        const QStringList words = button.split(u' ');
        PlaybackRig r;
        r.setPlaylist(1, songs);
        r.state.PlaylistPosition = words[1].toInt();
        r.state.AutoCue = words.contains(u"autocue"_s);
        r.state.ShuffleStatus = words.contains(u"shuffle"_s);
        r.state.PlayMode = 7;
        r.t.random.values = {0.7, 0.0};
        int focus = 0;
        connect(&r.transport, &Transport::focusPlaylistRequested, [&] { ++focus; });
        if (words[0] == u"play"_s)
            r.transport.Play(words[1].toInt());
        else
            r.transport.Next();
        QCOMPARE(r.player.playedFiles().join(u' '), played);
        QCOMPARE(u"%1 %2 %3|%4"_s.arg(r.state.PlayMode).arg(focus).arg(r.t.random.draws).arg(r.statusText()),
                 outcome);
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
        QCOMPARE((QList<int>{r.state.AutoCue, r.state.PlayMode, r.indicatorChanges}),
                 (QList<int>{!on, playModeAfter, 1}));
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
        // An entry past the list plays nothing; Previous is the song before the one playing now; an
        // empty slot reads as entry 0.
        int refreshes = 0;
        connect(&r.transport, &Transport::priorityDisplayRefreshRequested, [&] { ++refreshes; });
        r.player.clearLog();
        r.transport.PlayPrevious(2);
        r.transport.PlayPrevious(4);
        r.transport.Previous();
        r.transport.ResetPrevSongs();
        QCOMPARE(captions, QStringList(20, u"..."_s));
        r.transport.PlayPrevious(1);
        QCOMPARE(r.player.playedFiles(), (QStringList{u"/m/c.mp3"_s, u"/m/b.mp3"_s, u"/m/a.mp3"_s}));
        QCOMPARE(refreshes, 3);
        // The history's last slot plays as any other.
        for (int i = 0; i < 20; ++i)
            r.history.AddToPrevSongs(1 + i % 2);
        r.player.clearLog();
        r.transport.PlayPrevious(20);
        QCOMPARE(r.player.playedFiles(), QStringList{u"/m/b.mp3"_s});

        PrevSongs h;
        for (int i = 1; i <= 21; ++i)
            QVERIFY(h.AddToPrevSongs(i));
        QCOMPARE(QPair(h.slot(1), h.slot(20)), QPair(21, 2));
    }

    // Minutes without hours; a negative time reads and becomes 0.
    void formatTime() {
        QString texts;
        for (qint16 s : {67, 3725, -5, 32767}) {
            texts += PlaybackMonitor::FormatTime(s);
            texts += u'=' + QString::number(s) + u' ';
        }
        QCOMPARE(texts, u"1:07=67 62:05=3725 0:00=0 546:07=32767 "_s);
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
        r.setPlaylist(1, {u"s0"_s, u"s1"_s, u"s2"_s, u"s3"_s});
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
        // While the volume is dragged the title says the volume and the scroll stands still.
        r.transport.VolumePressed();
        QStringList captions;
        connect(&r.transport, &Transport::volumeCaption, [&](const QString& s) { captions << s; });
        for (int value : {255, 2, 128})
            r.transport.VolumeMoved(value);
        r.monitor.tmrTitleScrollTick();
        QCOMPARE(r.monitor.text(PlaybackMonitor::TrackName), u"VOLUME: 50%"_s);
        QCOMPARE(captions.join(u'|') + QString::number(r.player.volume),
                 u"VOLUME: 100%|VOLUME: 0%|VOLUME: 50%128"_s);
        r.transport.VolumeReleased();
        // Seeking back sets the title up again: the scroll starts from the beginning of the name.
        r.run(4);
        QCOMPARE(r.player.WinampJumpToTime(0, 0), 0);
        r.monitor.tmrTimeTick();
        QCOMPARE(r.monitor.scrollText(), full);
    }
};

QTEST_GUILESS_MAIN(tst_Playback)
#include "tst_Playback.moc"
