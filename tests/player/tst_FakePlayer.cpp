#include "base/StatusLine.h"
#include "support/FakePlayer.h"

#include <QtTest>

// The fake player is the ground the playback tests stand on: it must play on through its own
// list, freeze while paused, and answer like a closed window once it is gone.
class tst_FakePlayer : public QObject {
    Q_OBJECT

private slots:
    void advanceMovesThroughTheList_data() {
        QTest::addColumn<qint64>("ms");
        QTest::addColumn<int>("current");
        QTest::addColumn<int>("status");
        QTest::addColumn<qint64>("position");
        QTest::newRow("inside first song") << qint64(1500) << 0 << 1 << qint64(1500);
        QTest::newRow("exactly at the end goes on") << qint64(2000) << 1 << 1 << qint64(0);
        QTest::newRow("into the second song") << qint64(2500) << 1 << 1 << qint64(500);
        QTest::newRow("past the last song stops") << qint64(9000) << 1 << 0 << qint64(0);
    }
    void advanceMovesThroughTheList() {
        QFETCH(qint64, ms);
        QFETCH(int, current);
        QFETCH(int, status);
        QFETCH(qint64, position);
        StatusLine line;
        FakePlayer p(line);
        p.defaultLengthSeconds = 2;
        p.lengthSeconds.insert(QStringLiteral("/b.mp3"), 3);
        p.WinampPlayFile(QStringLiteral("/a.mp3"));
        p.WinampPlayFile(QStringLiteral("/b.mp3"));
        p.current = 0;
        p.WinampCommand(PlayerLink::PlayCommand);
        p.advance(ms);
        QCOMPARE(p.current, current);
        QCOMPARE(int(p.status), status);
        QCOMPARE(p.positionMs, position);
    }

    void pausedPlayerDoesNotMove() {
        StatusLine line;
        FakePlayer p(line);
        p.WinampPlayFile(QStringLiteral("/a.mp3"));
        p.WinampCommand(PlayerLink::JumpToLastCommand);
        p.WinampCommand(PlayerLink::PlayCommand);
        p.advance(1000);
        p.WinampCommand(PlayerLink::PauseCommand);
        p.advance(5000);
        QCOMPARE(p.WinampGetInfo(PlayerLink::InfoStatus).toInt(), 3);
        QCOMPARE(p.WinampGetInfo(PlayerLink::InfoPosition).toInt(), 1000);
        QCOMPARE(p.discardedStatusQueries, 2);
    }

    void closedPlayerAnswersZeroAndFailuresAreReported() {
        StatusLine line;
        FakePlayer p(line);
        p.failNext = RuntimeError(RuntimeError::Overflow, QStringLiteral("Überlauf"));
        QVERIFY(!p.WinampGetInfo(PlayerLink::InfoStatus).isValid());
        QCOMPARE(line.text(), QStringLiteral("WinampModule Error: Überlauf and number 6"));
        p.close();
        QCOMPARE(p.WinampGetInfo(PlayerLink::InfoStatus).toInt(), 0);
        QCOMPARE(p.WinampGetInfo(PlayerLink::InfoPosition).toInt(), 0);
    }
};

QTEST_GUILESS_MAIN(tst_FakePlayer)
#include "tst_FakePlayer.moc"
