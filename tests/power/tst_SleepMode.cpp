#include "app/TavoMP3PlayerMain.h"
#include "power/SleepMode.h"
#include "support/TestServices.h"
#include "ui/ClickLabel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QSignalSpy>
#include <QtTest>

class tst_SleepMode : public QObject {
    Q_OBJECT
private slots:
    void countdownTicksToShutdown_data() {
        QTest::addColumn<QString>("choice");
        QTest::addColumn<int>("minutes");
        for (const QString& item : SleepMode::timeItems())
            QTest::newRow(qPrintable(item)) << item << item.section(QLatin1Char(' '), 0, 0).toInt();
    }
    void countdownTicksToShutdown() {
        QFETCH(QString, choice);
        QFETCH(int, minutes);
        SleepMode sleep;
        QSignalSpy shutdown(&sleep, &SleepMode::shutdownRequested);
        sleep.FSleepmodeClick(true, choice);
        QVERIFY(sleep.TimerSleepmode.isActive());
        QCOMPARE(sleep.TimerSleepmode.interval(), 60000);
        for (int tick = 1; tick < minutes; ++tick) {
            QCOMPARE(sleep.LSleepmode(), QStringLiteral("Herunterfahren in %1 min").arg(minutes - tick + 1));
            sleep.TimerSleepmodeTimer();
            QCOMPARE(shutdown.count(), 0);
        }
        QCOMPARE(sleep.LSleepmode(), QStringLiteral("Herunterfahren in 1 min"));
        sleep.TimerSleepmodeTimer();
        QCOMPARE(shutdown.count(), 1);
        QVERIFY(!sleep.TimerSleepmode.isActive());
        QCOMPARE(sleep.LSleepmode(), QStringLiteral("Herunterfahren in 1 min")); // last text stays
        QCOMPARE(sleep.SleepMinutesElapsed, quint8(0));
    }

    void unknownTextLeavesModeAlone_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("case differs") << QStringLiteral("20 MIN");
        QTest::newRow("not offered") << QStringLiteral("15 min");
        QTest::newRow("empty") << QString();
    }
    void unknownTextLeavesModeAlone() {
        QFETCH(QString, text);
        SleepMode sleep;
        sleep.FSleepmodeClick(true, QStringLiteral("5 min"));
        sleep.TimerSleepmodeTimer();
        sleep.FSleepmodeClick(true, text);
        QVERIFY(sleep.TimerSleepmode.isActive());
        QCOMPARE(sleep.SleepMinutesTotal, quint8(5));
        QCOMPARE(sleep.SleepMinutesElapsed, quint8(1));
        QCOMPARE(sleep.LSleepmode(), QStringLiteral("Herunterfahren in 4 min"));
    }

    void choosingAgainRestartsOnlyOnChange() {
        SleepMode sleep;
        sleep.SleepTimeChoice = QStringLiteral("20 min");
        sleep.FSleepmodeClick(true, QStringLiteral("20 min"));
        sleep.TimerSleepmodeTimer();
        sleep.FSleepmodeTimeClick(true, QStringLiteral("20 min")); // same choice: count runs on
        QCOMPARE(sleep.LSleepmode(), QStringLiteral("Herunterfahren in 19 min"));
        sleep.FSleepmodeTimeClick(true, QStringLiteral("5 min"));
        QCOMPARE(sleep.LSleepmode(), QStringLiteral("Herunterfahren in 5 min"));
        QCOMPARE(sleep.SleepMinutesElapsed, quint8(0));
        // Unarmed: a new choice just clears again.
        sleep.FSleepmodeClick(false, QStringLiteral("5 min"));
        sleep.FSleepmodeTimeClick(false, QStringLiteral("60 min"));
        QVERIFY(!sleep.TimerSleepmode.isActive());
        QCOMPARE(sleep.LSleepmode(), QString());
        QCOMPARE(sleep.SleepTimeChoice, QStringLiteral("60 min"));
    }

    void uncheckStopsAndRecheckStartsFromFullTime() {
        SleepMode sleep;
        sleep.FSleepmodeClick(true, QStringLiteral("10 min"));
        sleep.TimerSleepmodeTimer();
        sleep.TimerSleepmodeTimer();
        sleep.FSleepmodeClick(false, QStringLiteral("10 min"));
        QVERIFY(!sleep.TimerSleepmode.isActive());
        QCOMPARE(sleep.LSleepmode(), QString());
        sleep.FSleepmodeClick(true, QStringLiteral("10 min"));
        QCOMPARE(sleep.LSleepmode(), QStringLiteral("Herunterfahren in 10 min"));
    }

    // The window's controls drive the countdown and its end reaches the power-off seam.
    void mainWindowControlsEndInPowerOffRequest() {
        TestServices t;
        TavoMP3PlayerMain w(t.services);
        w.load();
        QCOMPARE(w.FSleepmodeTime->currentText(), QStringLiteral("20 min"));
        QCOMPARE(w.FSleepmodeTime->count(), 9);
        QCOMPARE(w.LSleepmode->text(), QString());
        QCOMPARE(w.sleepMode().SleepTimeChoice, QStringLiteral("20 min"));

        w.FSleepmodeTime->setCurrentIndex(0); // "1 min"
        emit w.FSleepmodeTime->activated(0);
        QVERIFY(!w.sleepMode().TimerSleepmode.isActive());
        emit w.LabelSleep->clicked(); // the caption toggles the box
        QVERIFY(w.FSleepmode->isChecked());
        QCOMPARE(w.LSleepmode->text(), QStringLiteral("Herunterfahren in 1 min"));
        QVERIFY(t.power.requests.isEmpty());
        w.sleepMode().TimerSleepmodeTimer();
        QCOMPARE(t.power.requests, QList<qint32>{1});
        QVERIFY(w.FSleepmode->isChecked());

        emit w.LabelSleep->clicked();
        QVERIFY(!w.FSleepmode->isChecked());
        QCOMPARE(w.LSleepmode->text(), QString());
    }
};

QTEST_MAIN(tst_SleepMode)
#include "tst_SleepMode.moc"
