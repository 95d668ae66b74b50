#include "base/RuntimeError.h"
#include "support/PlaybackRig.h"

#include <QLocale>
#include <QtTest>

using namespace Qt::StringLiterals;

// PlaySong, SelectSong and the priority-weighted random pick, against the fake player.
class tst_SongSelection : public QObject {
    Q_OBJECT

    static QStringList list(const QString& names) { return names.split(u' '); }

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }

    void playSongHandsOverJumpsAndPlays() {
        PlaybackRig r;
        r.setPlaylist(1, list(u"a b:3 c"_s));
        r.state.PlayMode = 0;
        r.selection.PlaySong(1, 1);
        QCOMPARE(r.player.calls, (QStringList{u"PlayFile /m/b.mp3"_s, u"Command 40158"_s, u"Command 40045"_s,
                                              u"GetInfo 0"_s}));
        QCOMPARE(u"%1 %2 %3 %4 %5"_s.arg(r.state.PlaylistPosition)
                     .arg(r.state.CurrentSongName)
                     .arg(r.state.PlayMode)
                     .arg(r.state.PlayerStatus, 0, 16)
                     .arg(r.history.slot(1)),
                 u"1 b 1 2095 1"_s);
        QCOMPARE(r.playlists.list(1).selectedRows(), QList<int>{1});
    }

    void playSongOutsideTheListReportsAndSendsNothing_data() {
        QTest::addColumn<QStringList>("songs");
        QTest::addColumn<int>("position");
        QTest::newRow("after the last") << list(u"a b"_s) << 2;
        QTest::newRow("no selection") << list(u"a"_s) << -1;
        QTest::newRow("empty playlist") << QStringList{} << 0;
    }
    void playSongOutsideTheListReportsAndSendsNothing() {
        QFETCH(QStringList, songs);
        QFETCH(int, position);
        PlaybackRig r;
        r.setPlaylist(1, songs);
        r.state.PlayMode = 1;
        r.state.PlaylistPosition = 0;
        r.selection.PlaySong(position, 1);
        QCOMPARE(r.statusText(),
                 u"Sub Playsong: Lied nicht vorhanden oder Listenende erreicht! Songposition = %1"_s.arg(
                     position));
        QCOMPARE((QList<int>{r.state.PlayMode, int(r.player.calls.size()), r.state.PlaylistPosition,
                             r.history.slot(1)}),
                 QList<int>(4, 0));
    }

    void secondPlaylistSongUsesNamesOfTheFirstAndNoHistory() {
        PlaybackRig r;
        r.setPlaylist(1, list(u"eins zwei"_s));
        r.setPlaylist(2, list(u"x y z"_s));
        r.selection.PlaySong(1, 2);
        QCOMPARE(r.player.playedFiles(), QStringList{u"/m/y.mp3"_s});
        QCOMPARE((QList<int>{r.state.Playlist2Position, r.state.PlaylistPosition, r.history.slot(1)}),
                 (QList<int>{1, 0, 0}));
        QCOMPARE(r.state.CurrentSongName, u"zwei"_s);
        QCOMPARE(r.playlists.list(2).selectedRows(), QList<int>{1});
        QVERIFY(r.playlists.list(1).selectedRows().isEmpty());
        // Past the names of playlist 1: the file is already playing when the name lookup fails.
        r.selection.PlaySong(2, 2);
        QCOMPARE(r.player.playedFiles().last(), u"/m/z.mp3"_s);
        QCOMPARE(r.state.Playlist2Position, 2);
        QCOMPARE(r.state.PlayMode, quint8(0));
        QVERIFY(r.statusText().endsWith(u"Songposition = 2"_s));
        // The random pick draws from the active list.
        r.state.mainPlaylistActive = false;
        r.t.random.values = {0.5, 0.0};
        r.selection.FuncPickRandomSong();
        QCOMPARE(r.player.playedFiles().last(), u"/m/y.mp3"_s);
        QCOMPARE(r.state.Playlist2Position, 1);
        QCOMPARE(r.history.slot(1), 0);
    }

    // Each draw picks an entry (never the last), then the dice decide against its priority's chance.
    void pick_data() {
        QTest::addColumn<QStringList>("songs");
        QTest::addColumn<QList<double>>("draws");
        QTest::addColumn<int>("played");
        QTest::addColumn<QString>("ftest"); // chance, dice, tries
        QTest::newRow("priority 5 wins at once")
            << list(u"a b c"_s) << QList<double>{0.6, 0.999} << 1 << u"100 99 1"_s;
        QTest::newRow("priority 3 loses with dice 50")
            << list(u"a:3 b:4 c"_s) << QList<double>{0.1, 0.5, 0.7, 0.69} << 1 << u"70 69 2"_s;
        QTest::newRow("priority 3 wins with dice 49")
            << list(u"a:3 b c"_s) << QList<double>{0.1, 0.49} << 0 << u"50 49 1"_s;
        QTest::newRow("priority 1 loses with dice 10, priority 2 wins with 19")
            << list(u"a:1 b:2 c"_s) << QList<double>{0.2, 0.10, 0.5, 0.19} << 1 << u"20 19 2"_s;
        QTest::newRow("two entries: the draw never reaches the second")
            << list(u"a b"_s) << QList<double>{0.9999, 0.0} << 0 << u"100 0 1"_s;
    }
    void pick() {
        QFETCH(QStringList, songs);
        QFETCH(QList<double>, draws);
        QFETCH(int, played);
        QFETCH(QString, ftest);
        PlaybackRig r;
        r.setPlaylist(1, songs);
        r.t.random.values = draws;
        // A single-precision time shows the digits a float holds: 0,001, not 0,0009999999.
        r.t.clock.seconds = 0;
        r.t.clock.stepPerReading = 0.0009999999;
        r.selection.FuncPickRandomSong();
        QCOMPARE(r.t.random.draws, int(draws.size()));
        QCOMPARE(r.state.PlaylistPosition, played);
        QCOMPARE(r.player.playedFiles(), QStringList{PlaybackRig::lines(songs).at(played).chopped(2)});
        const QStringList f = ftest.split(u' ');
        QCOMPARE(r.testText,
                 u"gewonnen - Liedpriorität=%1   Schicksalswürfel=%2    Versuche=%3"_s.arg(f[0], f[1], f[2]));
        QVERIFY(r.state.ShuffleStatus);
        QVERIFY(r.indicatorChanges >= 1);
        QCOMPARE(r.statusText(), u"    Zeit: 0,001"_s);
    }

    // A pick that cannot end well plays nothing: it says why, or raises what the caller reports.
    void pickWithoutAWinner_data() {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QString>("outcome"); // status text, or "raises <number>"
        QTest::addColumn<int>("draws");       // -1: not counted
        QTest::newRow("all priority 0: timeout after exactly 100 tries")
            << list(u"/m/a.mp3:0 /m/b.mp3:0 /m/c.mp3:0"_s)
            << u"Zufallslied konnte nicht bestimmt werden - Timeout nach 100 Versuchen!"_s
            << 2 * SongSelection::kMaxTries;
        QTest::newRow("invalid priority names the entry before")
            << list(u"/m/vorher.mp3:5 /m/kaputt.mp3:7 /m/c.mp3:5"_s)
            << u"Fehler: Ungültige Liedpriorität \"7\" bei Lied \"1. vorher\""_s << 2;
        QTest::newRow("empty playlist") << QStringList{QString()} << u"raises 13"_s << -1;
        QTest::newRow("letter as priority") << list(u"/m/a.mp3:x /m/b.mp3:5"_s) << u"raises 13"_s << -1;
        QTest::newRow("bad digit on the first entry has no entry before")
            << list(u"/m/a.mp3:9 /m/b.mp3:5"_s) << u"raises 9"_s << -1;
    }
    void pickWithoutAWinner() {
        QFETCH(QStringList, lines);
        QFETCH(QString, outcome);
        QFETCH(int, draws);
        PlaybackRig r;
        r.setLines(1, lines);
        r.state.PlayMode = 1;
        r.t.random.values = {0.5, 0.1};
        try {
            r.selection.FuncPickRandomSong();
            QCOMPARE(r.statusText(), outcome);
            QCOMPARE(int(r.state.PlayMode), outcome.startsWith(u"Fehler"_s) ? 0 : 1);
            QCOMPARE(r.t.random.draws, draws);
        } catch (const RuntimeError& e) {
            QCOMPARE(u"raises %1"_s.arg(e.number()), outcome);
        }
        QVERIFY(r.player.calls.isEmpty());
    }
};

QTEST_GUILESS_MAIN(tst_SongSelection)
#include "tst_SongSelection.moc"
