#include "support/PlaybackRig.h"

#include <QtTest>

using namespace Qt::StringLiterals;

// The 750 ms monitor: continuous play, pause, the display labels and the title scroll. The end of the
// second playlist, a failing tick and the volume caption are tested through the main window.
class tst_PlaybackMonitor : public QObject {
    Q_OBJECT

    static QStringList songs(int count) {
        QStringList s;
        for (int i = 0; i < count; ++i)
            s << u"s%1"_s.arg(i);
        return s;
    }

private slots:
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

    void displayLabels() {
        PlaybackRig r;
        r.setPlaylist(1, songs(2));
        r.player.lengthSeconds.insert(u"/m/s0.mp3"_s, 185);
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
        QCOMPARE(r.monitor.text(PlaybackMonitor::Time), u"1:07/3:05"_s);
        QCOMPARE(r.monitor.text(PlaybackMonitor::Bitrate), u"128 kbps"_s);
        QCOMPARE(r.monitor.text(PlaybackMonitor::Samplerate), u"44 kHz"_s);
        QCOMPARE(r.monitor.text(PlaybackMonitor::TrackName), u"s0"_s);
        QCOMPARE(slider, (QList<QPair<QString, int>>{{u"SliderMax"_s, 185}, {u"SliderValue"_s, 67}}));
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

QTEST_GUILESS_MAIN(tst_PlaybackMonitor)
#include "tst_PlaybackMonitor.moc"
