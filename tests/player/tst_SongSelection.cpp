#include "base/RuntimeError.h"
#include "support/PlaybackRig.h"

#include <QLocale>
#include <QtTest>

// PlaySong, SelectSong and the priority-weighted random pick, against the fake player.
class tst_SongSelection : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }

    void playSongHandsOverJumpsAndPlays() {
        PlaybackRig r;
        r.setPlaylist(1, {QStringLiteral("a"), QStringLiteral("b:3"), QStringLiteral("c")});
        r.state.PlayMode = 0;
        r.selection.PlaySong(1, 1);
        QCOMPARE(r.player.calls,
                 (QStringList{QStringLiteral("PlayFile /m/b.mp3"), QStringLiteral("Command 40158"),
                              QStringLiteral("Command 40045"), QStringLiteral("GetInfo 0")}));
        QCOMPARE(r.state.PlaylistPosition, 1);
        QCOMPARE(r.state.CurrentSongName, QStringLiteral("b"));
        QCOMPARE(r.state.PlayMode, quint8(1));
        QCOMPARE(r.state.PlayerStatus, qint16(0x2095));
        QCOMPARE(r.history.slot(1), 1);
        QCOMPARE(r.historyChanges, 1);
        QCOMPARE(r.startedNames, QStringList{QStringLiteral("b")});
        QCOMPARE(r.playlists.list(1).selectedRows(), QList<int>{1});
        QCOMPARE(int(r.player.status), int(FakePlayer::Playing));
        QCOMPARE(r.player.list.last(), QStringLiteral("/m/b.mp3"));
    }

    void playSongOutsideTheListReportsAndSendsNothing_data() {
        QTest::addColumn<QStringList>("songs");
        QTest::addColumn<int>("position");
        QTest::newRow("after the last") << QStringList{QStringLiteral("a"), QStringLiteral("b")} << 2;
        QTest::newRow("no selection") << QStringList{QStringLiteral("a")} << -1;
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
        QCOMPARE(
            r.statusText(),
            QStringLiteral("Sub Playsong: Lied nicht vorhanden oder Listenende erreicht! Songposition = ") +
                QString::number(position));
        QCOMPARE(r.state.PlayMode, quint8(0));
        QVERIFY(r.player.calls.isEmpty());
        QCOMPARE(r.state.PlaylistPosition, 0);
        QCOMPARE(r.history.slot(1), 0);
    }

    void secondPlaylistSongUsesNamesOfTheFirstAndNoHistory() {
        PlaybackRig r;
        r.setPlaylist(1, {QStringLiteral("eins"), QStringLiteral("zwei")});
        r.setPlaylist(2, {QStringLiteral("x"), QStringLiteral("y"), QStringLiteral("z")});
        r.selection.PlaySong(1, 2);
        QCOMPARE(r.player.playedFiles(), QStringList{QStringLiteral("/m/y.mp3")});
        QCOMPARE(r.state.Playlist2Position, 1);
        QCOMPARE(r.state.PlaylistPosition, 0);
        QCOMPARE(r.state.CurrentSongName, QStringLiteral("zwei"));
        QCOMPARE(r.history.slot(1), 0);
        QCOMPARE(r.playlists.list(2).selectedRows(), QList<int>{1});
        QVERIFY(r.playlists.list(1).selectedRows().isEmpty());

        // Past the names of playlist 1: the file is already playing when the name lookup fails.
        r.selection.PlaySong(2, 2);
        QCOMPARE(r.player.playedFiles().last(), QStringLiteral("/m/z.mp3"));
        QCOMPARE(r.state.Playlist2Position, 2);
        QCOMPARE(r.state.PlayMode, quint8(0));
        QVERIFY(r.statusText().endsWith(QStringLiteral("Songposition = 2")));
    }

    void selectSongFailureIsReported_data() {
        QTest::addColumn<int>("position");
        QTest::newRow("past the list") << 3;
        QTest::newRow("negative") << -1;
        QTest::newRow("beyond 16 bits") << 40000;
    }
    void selectSongFailureIsReported() {
        QFETCH(int, position);
        PlaybackRig r;
        r.setPlaylist(1, {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
        r.playlists.list(1).selectOnly(1);
        r.selection.SelectSong(position, 1);
        QCOMPARE(r.statusText(), QStringLiteral("Sub SelectSong: Fehler beim Lied auswählen! ToSelect = ") +
                                     QString::number(position));
    }

    void pick_data() {
        QTest::addColumn<QStringList>("songs");
        QTest::addColumn<QList<double>>("draws");
        QTest::addColumn<int>("played");
        QTest::addColumn<QString>("ftest");
        QTest::newRow("priority 5 wins at once")
            << QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}
            << QList<double>{0.6, 0.999} << 1
            << QStringLiteral("gewonnen - Liedpriorität=100   Schicksalswürfel=99    Versuche=1");
        QTest::newRow("priority 3 loses with dice 50")
            << QStringList{QStringLiteral("a:3"), QStringLiteral("b:4"), QStringLiteral("c")}
            << QList<double>{0.1, 0.5, 0.7, 0.69} << 1
            << QStringLiteral("gewonnen - Liedpriorität=70   Schicksalswürfel=69    Versuche=2");
        QTest::newRow("priority 3 wins with dice 49")
            << QStringList{QStringLiteral("a:3"), QStringLiteral("b"), QStringLiteral("c")}
            << QList<double>{0.1, 0.49} << 0
            << QStringLiteral("gewonnen - Liedpriorität=50   Schicksalswürfel=49    Versuche=1");
        QTest::newRow("priority 1 needs dice below 10")
            << QStringList{QStringLiteral("a:1"), QStringLiteral("b:2"), QStringLiteral("c")}
            << QList<double>{0.2, 0.10, 0.2, 0.09} << 0
            << QStringLiteral("gewonnen - Liedpriorität=10   Schicksalswürfel=9    Versuche=2");
        QTest::newRow("two entries: the draw never reaches the second")
            << QStringList{QStringLiteral("a"), QStringLiteral("b")} << QList<double>{0.9999, 0.0} << 0
            << QStringLiteral("gewonnen - Liedpriorität=100   Schicksalswürfel=0    Versuche=1");
    }
    void pick() {
        QFETCH(QStringList, songs);
        QFETCH(QList<double>, draws);
        QFETCH(int, played);
        QFETCH(QString, ftest);
        PlaybackRig r;
        r.setPlaylist(1, songs);
        r.t.random.values = draws;
        r.t.clock.stepPerReading = 0.25;
        r.selection.FuncPickRandomSong();
        QCOMPARE(r.t.random.draws, int(draws.size()));
        QCOMPARE(r.state.PlaylistPosition, played);
        QCOMPARE(r.player.playedFiles(), QStringList{PlaybackRig::lines(songs).at(played).chopped(2)});
        QCOMPARE(r.testText, ftest);
        QVERIFY(r.state.ShuffleStatus);
        QVERIFY(r.indicatorChanges >= 1);
        QCOMPARE(r.statusText(), QStringLiteral("    Zeit: 0,25"));
    }

    void pickUsesTheSecondPlaylistWhenItIsActive() {
        PlaybackRig r;
        r.setPlaylist(1, {QStringLiteral("a"), QStringLiteral("b")});
        r.setPlaylist(2, {QStringLiteral("x"), QStringLiteral("y"), QStringLiteral("z")});
        r.state.mainPlaylistActive = false;
        r.t.random.values = {0.5, 0.0};
        r.selection.FuncPickRandomSong();
        QCOMPARE(r.player.playedFiles(), QStringList{QStringLiteral("/m/y.mp3")});
        QCOMPARE(r.state.Playlist2Position, 1);
        QCOMPARE(r.history.slot(1), 0);
    }

    void allZeroTimesOutAfterExactly100Draws() {
        PlaybackRig r;
        r.setPlaylist(1, {QStringLiteral("a:0"), QStringLiteral("b:0"), QStringLiteral("c:0")});
        r.state.PlayMode = 1;
        r.selection.FuncPickRandomSong();
        QCOMPARE(r.t.random.draws, 2 * SongSelection::kMaxTries);
        QCOMPARE(r.statusText(),
                 QStringLiteral("Zufallslied konnte nicht bestimmt werden - Timeout nach 100 Versuchen!"));
        QVERIFY(r.player.calls.isEmpty());
        QVERIFY(!r.state.ShuffleStatus);
        QCOMPARE(r.state.PlayMode, quint8(1));
    }

    void invalidPriorityStopsWithTheNameOfTheEntryBefore() {
        PlaybackRig r;
        r.setPlaylist(1, {QStringLiteral("vorher"), QStringLiteral("kaputt:7"), QStringLiteral("c")});
        r.state.PlayMode = 1;
        r.t.random.values = {0.5, 0.1};
        r.selection.FuncPickRandomSong();
        QCOMPARE(r.statusText(),
                 QStringLiteral("Fehler: Ungültige Liedpriorität \"7\" bei Lied \"1. vorher\""));
        QCOMPARE(r.state.PlayMode, quint8(0));
        QVERIFY(r.player.calls.isEmpty());
    }

    void unreadableDrawsRaise_data() {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<int>("number");
        QTest::newRow("empty playlist") << QStringList{QString()} << int(RuntimeError::TypeMismatch);
        QTest::newRow("letter as priority")
            << QStringList{QStringLiteral("/m/a.mp3:x"), QStringLiteral("/m/b.mp3:5")}
            << int(RuntimeError::TypeMismatch);
        QTest::newRow("bad digit on the first entry has no entry before")
            << QStringList{QStringLiteral("/m/a.mp3:9"), QStringLiteral("/m/b.mp3:5")} << 9;
    }
    void unreadableDrawsRaise() {
        QFETCH(QStringList, lines);
        QFETCH(int, number);
        PlaybackRig r;
        r.playlists.PlaylistPaths = lines;
        r.playlists.FuncDisplayPlaylist(true, 1);
        r.t.random.values = {0.0, 0.0};
        try {
            r.selection.FuncPickRandomSong();
            QFAIL("the pick must raise");
        } catch (const RuntimeError& e) {
            QCOMPARE(e.number(), number);
        }
        QVERIFY(r.player.calls.isEmpty());
    }

    void pickFrequenciesFollowTheChanceTable() {
        PlaybackRig r;
        // The last entry (priority 5) must never be picked: the draw stops one short of it.
        r.setPlaylist(1, {QStringLiteral("p5:5"), QStringLiteral("p4:4"), QStringLiteral("p3:3"),
                          QStringLiteral("p2:2"), QStringLiteral("p1:1"), QStringLiteral("p0:0"),
                          QStringLiteral("last:5")});
        const int picks = 20000;
        QList<int> counts(7, 0);
        for (int i = 0; i < picks; ++i) {
            r.selection.FuncPickRandomSong();
            ++counts[r.state.PlaylistPosition];
        }
        const double chances[] = {100, 70, 50, 20, 10, 0};
        const double total = 250;
        for (int i = 0; i < 6; ++i) {
            const double seen = double(counts[i]) / picks;
            QVERIFY2(
                qAbs(seen - chances[i] / total) < 0.015,
                qPrintable(
                    QStringLiteral("entry %1: %2 instead of %3").arg(i).arg(seen).arg(chances[i] / total)));
        }
        QCOMPARE(counts[5], 0);
        QCOMPARE(counts[6], 0);
    }

    void chanceTable_data() {
        QTest::addColumn<int>("digit");
        QTest::addColumn<int>("chance");
        const int table[][2] = {{5, 100}, {4, 70}, {3, 50}, {2, 20}, {1, 10}, {0, 0}, {6, -1}, {9, -1}};
        for (const auto& row : table)
            QTest::addRow("%d", row[0]) << row[0] << row[1];
    }
    void chanceTable() {
        QFETCH(int, digit);
        QFETCH(int, chance);
        QCOMPARE(SongSelection::chanceOf(digit), chance);
    }
};

QTEST_GUILESS_MAIN(tst_SongSelection)
#include "tst_SongSelection.moc"
