#include "support/PlaybackRig.h"

#include <QtTest>

// The 750 ms monitor: continuous play, the end of a list, pause, the display labels and the title scroll.
class tst_PlaybackMonitor : public QObject {
    Q_OBJECT

    static QStringList songs(int count) {
        QStringList s;
        for (int i = 0; i < count; ++i)
            s << QStringLiteral("s%1").arg(i);
        return s;
    }

private slots:
    void formatTime_data() {
        QTest::addColumn<int>("seconds");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("after");
        QTest::newRow("0") << 0 << QStringLiteral("0:00") << 0;
        QTest::newRow("67") << 67 << QStringLiteral("1:07") << 67;
        QTest::newRow("3725 has no hours") << 3725 << QStringLiteral("62:05") << 3725;
        QTest::newRow("negative is set to 0") << -5 << QStringLiteral("0:00") << 0;
        QTest::newRow("largest") << 32767 << QStringLiteral("546:07") << 32767;
    }
    void formatTime() {
        QFETCH(int, seconds);
        QFETCH(QString, text);
        QFETCH(int, after);
        qint16 s = qint16(seconds);
        QCOMPARE(PlaybackMonitor::FormatTime(s), text);
        QCOMPARE(int(s), after);
    }

    void playsInOrderToTheEndOfTheList() {
        PlaybackRig r;
        r.setPlaylist(1, songs(3));
        r.player.defaultLengthSeconds = 2;
        r.transport.Play(0);
        r.run(20);
        QCOMPARE(r.player.playedFiles(),
                 (QStringList{QStringLiteral("/m/s0.mp3"), QStringLiteral("/m/s1.mp3"),
                              QStringLiteral("/m/s2.mp3")}));
        QCOMPARE(r.state.PlayMode, quint8(0));
        QCOMPARE(r.statusText(), QStringLiteral("Playlistende erreicht - Playmodus gestoppt."));
        QCOMPARE(r.state.PlaylistPosition, 2);
        QCOMPARE(r.history.slot(1), 2);
        QCOMPARE(r.history.slot(3), 0);
    }

    void eachTickAsksTheStatusFirst() {
        PlaybackRig r;
        r.setPlaylist(1, songs(2));
        r.monitor.tmrTimeTick();
        QCOMPARE(r.player.calls.first(), QStringLiteral("GetInfo 2"));
        QCOMPARE(r.monitor.text(PlaybackMonitor::Test2), QStringLiteral("Winamp Status = 0 / Playmode = 0"));
        r.transport.Play(0);
        r.player.clearLog();
        r.monitor.tmrTimeTick();
        QCOMPARE(r.monitor.text(PlaybackMonitor::Test2), QStringLiteral("Winamp Status = 1 / Playmode = 1"));
        QVERIFY(r.player.playedFiles().isEmpty());
    }

    void pauseDoesNotAdvanceAndFreezesTheLabels() {
        PlaybackRig r;
        r.setPlaylist(1, songs(3));
        r.transport.Play(0);
        r.run(3);
        r.transport.Pause();
        r.run(1);
        const QString frozen = r.monitor.text(PlaybackMonitor::Time);
        r.run(10);
        QCOMPARE(r.player.playedFiles().size(), 1);
        QCOMPARE(r.monitor.text(PlaybackMonitor::Time), frozen);
        QCOMPARE(frozen, QStringLiteral("0:02/3:00"));
        QCOMPARE(r.state.WinampStatus, quint8(3));
    }

    void userStopInThePlayerStartsTheNextSong() {
        PlaybackRig r;
        r.setPlaylist(1, songs(3));
        r.transport.Play(0);
        r.run(2);
        r.player.userStop();
        r.monitor.tmrTimeTick();
        QCOMPARE(r.player.playedFiles().last(), QStringLiteral("/m/s1.mp3"));
    }

    void autoCuePlaysOneSongThenStops() {
        PlaybackRig r;
        r.setPlaylist(1, songs(3));
        r.player.defaultLengthSeconds = 2;
        r.transport.AutoCueClick();
        r.transport.Play(1);
        r.run(10);
        QCOMPARE(r.player.playedFiles(), QStringList{QStringLiteral("/m/s1.mp3")});
        QCOMPARE(r.state.WinampStatus, quint8(0));
        QVERIFY(r.statusText().isEmpty());
    }

    void missingPlayerRunsThroughTheListOneSongPerTick() {
        PlaybackRig r;
        r.setPlaylist(1, songs(4));
        r.player.close();
        r.transport.Play(0);
        for (int tick = 1; tick <= 3; ++tick) {
            r.monitor.tmrTimeTick();
            QCOMPARE(r.state.PlaylistPosition, tick);
        }
        r.monitor.tmrTimeTick();
        QCOMPARE(r.state.PlayMode, quint8(0));
        QCOMPARE(r.statusText(), QStringLiteral("Playlistende erreicht - Playmodus gestoppt."));
    }

    void secondPlaylistEnd_data() {
        QTest::addColumn<bool>("shutdownBox");
        QTest::addColumn<int>("shutdowns");
        QTest::addColumn<QString>("status");
        QTest::newRow("box ticked shuts down once") << true << 1 << QString();
        QTest::newRow("box clear stops")
            << false << 0 << QStringLiteral("Playlistende erreicht - Playmodus gestoppt.");
    }
    void secondPlaylistEnd() {
        QFETCH(bool, shutdownBox);
        QFETCH(int, shutdowns);
        QFETCH(QString, status);
        PlaybackRig r;
        r.setPlaylist(1, songs(5));
        r.setPlaylist(2, {QStringLiteral("x"), QStringLiteral("y")});
        r.player.defaultLengthSeconds = 2;
        r.state.mainPlaylistActive = false;
        r.state.shutdownOnPL2End = shutdownBox;
        r.state.ShuffleStatus = true;
        r.monitor.tmrTimeTick();
        QCOMPARE(r.state.ShuffleStatus, !shutdownBox); // played in order when it ends in a shutdown
        r.state.ShuffleStatus = false;
        r.transport.Play(0);
        r.run(4);
        QCOMPARE(r.player.playedFiles(),
                 (QStringList{QStringLiteral("/m/x.mp3"), QStringLiteral("/m/y.mp3")}));
        // Many ticks after the end (a suspend instead of a power-off wakes up to them): one request.
        r.run(20);
        QCOMPARE(r.shutdowns, shutdowns);
        QCOMPARE(r.state.PlayMode, quint8(0));
        QCOMPARE(r.statusText(), status);
        QCOMPARE(r.player.playedFiles().size(), 2);
    }

    // A failing step of the tick is reported with its step number; the program and the timer go on.
    void failingStepIsReported() {
        PlaybackRig r;
        r.setPlaylist(1, {});
        r.state.ShuffleStatus = true; // the pick on an empty list raises the conversion error
        r.state.PlayMode = 1;
        r.monitor.tmrTime.start();
        QTRY_VERIFY(!r.t.dialogs.questions.isEmpty());
        const QString report = r.t.dialogs.messageTexts().first();
        QVERIFY2(report.startsWith(QStringLiteral("Fehler in tmrTime_Timer in Zeile 4: ")),
                 qPrintable(report));
        QVERIFY(r.monitor.tmrTime.isActive());
        QCOMPARE(r.monitor.text(PlaybackMonitor::Test2), QStringLiteral("Winamp Status = 0 / Playmode = 1"));
    }

    void displayLabels() {
        PlaybackRig r;
        r.setPlaylist(1, songs(2));
        r.player.lengthSeconds.insert(QStringLiteral("/m/s0.mp3"), 185);
        QList<QPair<QString, int>> slider;
        connect(&r.monitor, &PlaybackMonitor::sliderValue, [&](const QString& n, int v) {
            slider.append({n, v});
        });
        r.monitor.tmrTimeTick(); // nothing loaded: labels stay empty
        QVERIFY(r.monitor.text(PlaybackMonitor::Time).isEmpty());
        QVERIFY(slider.isEmpty());
        r.transport.Play(0);
        r.player.advance(67400);
        r.monitor.tmrTimeTick();
        QCOMPARE(r.monitor.text(PlaybackMonitor::Time), QStringLiteral("1:07/3:05"));
        QCOMPARE(r.monitor.text(PlaybackMonitor::Bitrate), QStringLiteral("128 kbps"));
        QCOMPARE(r.monitor.text(PlaybackMonitor::Samplerate), QStringLiteral("44 kHz"));
        QCOMPARE(r.monitor.text(PlaybackMonitor::TrackName), QStringLiteral("s0"));
        QCOMPARE(slider, (QList<QPair<QString, int>>{{QStringLiteral("SliderMax"), 185},
                                                     {QStringLiteral("SliderValue"), 67}}));
    }

    void titleScroll_data() {
        QTest::addColumn<int>("length");
        QTest::addColumn<bool>("scrolls");
        QTest::newRow("43 fits") << 43 << false;
        QTest::newRow("44 scrolls") << 44 << true;
    }
    void titleScroll() {
        QFETCH(int, length);
        QFETCH(bool, scrolls);
        PlaybackRig r;
        QString name;
        for (int i = 0; i < length; ++i)
            name += QChar(QLatin1Char('A' + i % 26));
        r.setPlaylist(1, {name, QStringLiteral("b")});
        r.transport.Play(0);
        r.run(1);
        QCOMPARE(r.monitor.tmrTitleScroll.isActive(), scrolls);
        if (!scrolls) {
            QCOMPARE(r.monitor.text(PlaybackMonitor::TrackName), name);
            r.monitor.tmrTitleScrollTick();
            QCOMPARE(r.monitor.text(PlaybackMonitor::TrackName), name);
            return;
        }
        const QString full = name + QStringLiteral("   <<<>>> ");
        QCOMPARE(r.monitor.scrollText(), full);
        r.monitor.tmrTitleScrollTick();
        QCOMPARE(r.monitor.text(PlaybackMonitor::TrackName), (full.mid(1) + full.left(1)).left(43));
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

    void volumeReleaseRestoresTheSongName() {
        PlaybackRig r;
        r.setPlaylist(1, songs(2));
        r.transport.Play(1);
        r.run(1);
        connect(&r.transport, &Transport::volumeCaption,
                [&](const QString& s) { r.monitor.setText(PlaybackMonitor::TrackName, s); });
        r.transport.VolumePressed();
        r.transport.VolumeMoved(200);
        r.run(1);
        QCOMPARE(r.monitor.text(PlaybackMonitor::TrackName), QStringLiteral("VOLUME: 78%"));
        r.monitor.VolumeReleased();
        QCOMPARE(r.monitor.text(PlaybackMonitor::TrackName), QStringLiteral("s1"));
        QVERIFY(r.monitor.shownName().isEmpty());
        r.run(1);
        QCOMPARE(r.monitor.shownName(), QStringLiteral("s1"));
    }
};

QTEST_GUILESS_MAIN(tst_PlaybackMonitor)
#include "tst_PlaybackMonitor.moc"
