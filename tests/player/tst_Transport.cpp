#include "support/PlaybackRig.h"

#include <QtTest>

// Play, Pause, Stop, Next, AUTOCUE, SHUFFLE, the volume texts and the previous-songs history.
class tst_Transport : public QObject {
    Q_OBJECT

    static QStringList abc() { return {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}; }

private slots:
    void play_data() {
        QTest::addColumn<QStringList>("songs");
        QTest::addColumn<int>("selected");
        QTest::addColumn<bool>("autoCue");
        QTest::addColumn<QStringList>("played");
        QTest::addColumn<int>("playMode");
        QTest::newRow("selected line") << abc() << 2 << false << QStringList{QStringLiteral("/m/c.mp3")} << 1;
        QTest::newRow("autocue plays one song only")
            << abc() << 0 << true << QStringList{QStringLiteral("/m/a.mp3")} << 0;
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
            QVERIFY(r.statusText().endsWith(QStringLiteral("Songposition = -1")));
    }

    void playUsesTheActiveList() {
        PlaybackRig r;
        r.setPlaylist(1, abc());
        r.setPlaylist(2, {QStringLiteral("x"), QStringLiteral("y")});
        r.state.mainPlaylistActive = false;
        r.transport.Play(1);
        QCOMPARE(r.player.playedFiles(), QStringList{QStringLiteral("/m/y.mp3")});
        QCOMPARE(r.state.Playlist2Position, 1);
    }

    void pauseTogglesAndKeepsPlayMode() {
        PlaybackRig r;
        r.setPlaylist(1, abc());
        r.transport.Play(0);
        r.transport.Pause();
        QCOMPARE(int(r.player.status), int(FakePlayer::Paused));
        QCOMPARE(r.state.PlayMode, quint8(1));
        r.transport.Pause();
        QCOMPARE(int(r.player.status), int(FakePlayer::Playing));
        QCOMPARE(r.player.commands().mid(2), (QList<qint32>{40046, 40046}));
    }

    void stopEndsPlayModeAndKeepsAutoCue() {
        PlaybackRig r;
        r.setPlaylist(1, abc());
        r.transport.AutoCueClick();
        r.transport.Play(0);
        r.transport.Stop();
        QCOMPARE(r.state.PlayMode, quint8(0));
        QVERIFY(r.state.AutoCue);
        QCOMPARE(r.player.commands().last(), 40047);
        r.transport.Play(1);
        QCOMPARE(r.state.PlayMode, quint8(0));
    }

    void next_data() {
        QTest::addColumn<int>("position");
        QTest::addColumn<QStringList>("played");
        QTest::addColumn<QString>("status");
        QTest::newRow("middle") << 0 << QStringList{QStringLiteral("/m/b.mp3")} << QString();
        QTest::newRow("at the end no check")
            << 2 << QStringList{}
            << QStringLiteral("Sub Playsong: Lied nicht vorhanden oder Listenende "
                              "erreicht! Songposition = 3");
    }
    void next() {
        QFETCH(int, position);
        QFETCH(QStringList, played);
        QFETCH(QString, status);
        PlaybackRig r;
        r.setPlaylist(1, abc());
        r.state.PlaylistPosition = position;
        r.state.AutoCue = true;
        r.transport.Next();
        QCOMPARE(r.player.playedFiles(), played);
        QCOMPARE(r.statusText(), status);
        QCOMPARE(r.state.PlayMode, quint8(1)); // Next switches play mode on, even under AUTOCUE
    }

    void nextWithShuffleDrawsAndWithEmptyListDoesNothing() {
        PlaybackRig r;
        r.setPlaylist(1, abc());
        r.state.ShuffleStatus = true;
        r.t.random.values = {0.7, 0.0};
        r.transport.Next();
        QCOMPARE(r.player.playedFiles(), QStringList{QStringLiteral("/m/b.mp3")});

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

    void shuffleToggles() {
        PlaybackRig r;
        r.transport.ShuffleClick();
        QVERIFY(r.state.ShuffleStatus);
        r.transport.ShuffleClick();
        QVERIFY(!r.state.ShuffleStatus);
        QCOMPARE(r.indicatorChanges, 2);
    }

    void volumeText_data() {
        QTest::addColumn<int>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("200") << 200 << QStringLiteral("VOLUME: 78%");
        QTest::newRow("255") << 255 << QStringLiteral("VOLUME: 100%");
        QTest::newRow("0") << 0 << QStringLiteral("VOLUME: 0%");
        QTest::newRow("2 rounds down") << 2 << QStringLiteral("VOLUME: 0%");
        QTest::newRow("128") << 128 << QStringLiteral("VOLUME: 50%");
    }
    void volumeText() {
        QFETCH(int, value);
        QFETCH(QString, text);
        QCOMPARE(Transport::volumeText(value), text);
        PlaybackRig r;
        QString caption;
        connect(&r.transport, &Transport::volumeCaption, [&](const QString& s) { caption = s; });
        r.transport.VolumePressed();
        QVERIFY(r.state.volumeDrag);
        r.transport.VolumeMoved(value);
        QCOMPARE(caption, text);
        QCOMPARE(r.player.volume, value);
        r.transport.VolumeReleased();
        QVERIFY(!r.state.volumeDrag);
    }

    void historyKeepsNoImmediateRepeats() {
        PlaybackRig r;
        r.setPlaylist(1, abc());
        r.selection.PlaySong(1, 1);
        r.selection.PlaySong(1, 1);
        r.selection.PlaySong(2, 1);
        r.selection.PlaySong(1, 1);
        QCOMPARE(r.history.slot(1), 1);
        QCOMPARE(r.history.slot(2), 2);
        QCOMPARE(r.history.slot(3), 1);
        QCOMPARE(r.history.slot(4), 0);
        QCOMPARE(r.historyChanges, 3);
    }

    void the21stSongPushesTheOldestOut() {
        PrevSongs h;
        for (int i = 1; i <= 21; ++i)
            QVERIFY(h.AddToPrevSongs(i));
        QCOMPARE(h.slot(1), 21);
        QCOMPARE(h.slot(20), 2);
    }

    void menuCaptions() {
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
        QCOMPARE(captions.size(), 20);
        QCOMPARE(captions, QStringList(20, QStringLiteral("...")));
        QCOMPARE(visible.count(true), 1);
        QVERIFY(visible.first());

        r.history.AddToPrevSongs(2);
        r.history.AddToPrevSongs(7); // beyond the list
        r.history.AddToPrevSongs(1);
        r.transport.UpdatePreviousMenu();
        QCOMPARE(captions.mid(0, 4), (QStringList{QStringLiteral("1. b"), QStringLiteral("2. ..."),
                                                  QStringLiteral("3. c"), QStringLiteral("...")}));
        QCOMPARE(visible.mid(0, 4), (QList<bool>{true, true, true, false}));

        r.transport.ResetPrevSongs();
        QCOMPARE(captions, QStringList(20, QStringLiteral("...")));
        QCOMPARE(r.history.slot(1), 0);
    }

    void historyEntriesPlay_data() {
        QTest::addColumn<QList<int>>("history"); // oldest first
        QTest::addColumn<int>("slot");
        QTest::addColumn<QStringList>("played");
        QTest::newRow("slot 2") << QList<int>{2, 1} << 2 << QStringList{QStringLiteral("/m/c.mp3")};
        QTest::newRow("beyond the list") << QList<int>{9} << 1 << QStringList{};
        QTest::newRow("empty slot 1 plays entry 0")
            << QList<int>{} << 1 << QStringList{QStringLiteral("/m/a.mp3")};
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
        r.transport.PlayPrevious(slot);
        QCOMPARE(r.player.playedFiles(), played);
        QCOMPARE(refreshes, played.isEmpty() ? 0 : 1);
    }

    void trayPreviousPlaysTheSongBeforeTheCurrent() {
        PlaybackRig r;
        r.setPlaylist(1, abc());
        r.selection.PlaySong(0, 1);
        r.selection.PlaySong(2, 1);
        r.player.clearLog();
        r.transport.Previous();
        QCOMPARE(r.player.playedFiles(), QStringList{QStringLiteral("/m/a.mp3")});
    }

    void historySurvivesTheSettingsStore() {
        PlaybackRig r;
        for (int i = 1; i <= 20; ++i)
            r.history.AddToPrevSongs(i * 10);
        r.t.settings.SaveSettings(r.history.entries());
        QCOMPARE(r.t.settings.GetSetting(QStringLiteral("PreviousSongs"), QStringLiteral("Prev01"), 0),
                 QStringLiteral("200"));
        QCOMPARE(r.t.settings.GetSetting(QStringLiteral("PreviousSongs"), QStringLiteral("Prev20"), 0),
                 QStringLiteral("10"));
        PrevSongs back;
        back.read(r.t.settings);
        for (int i = 1; i <= 20; ++i)
            QCOMPARE(back.slot(i), r.history.slot(i));
        PrevSongs missing;
        missing.setSlot(3, 5);
        TestServices fresh;
        missing.read(fresh.settings);
        QCOMPARE(missing.slot(3), 0);
    }
};

QTEST_GUILESS_MAIN(tst_Transport)
#include "tst_Transport.moc"
