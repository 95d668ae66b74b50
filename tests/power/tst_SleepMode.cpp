#include "app/TavoMP3PlayerMain.h"
#include "power/SleepMode.h"
#include "support/ScriptedDialogs.h"
#include "support/TestServices.h"
#include "ui/ClickLabel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QSignalSpy>
#include <QtTest>

class tst_SleepMode : public QObject {
    Q_OBJECT
    ScriptedDialogs m_dialogs;

private slots:
    void countdownTicksToShutdown_data() {
        QTest::addColumn<QString>("choice");
        QTest::addColumn<int>("minutes");
        QTest::newRow("1 min") << QStringLiteral("1 min") << 1;
        QTest::newRow("5 min") << QStringLiteral("5 min") << 5;
        QTest::newRow("20 min") << QStringLiteral("20 min") << 20;
        QTest::newRow("60 min") << QStringLiteral("60 min") << 60;
    }
    void countdownTicksToShutdown() {
        QFETCH(QString, choice);
        QFETCH(int, minutes);
        SleepMode sleep(m_dialogs);
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
        SleepMode sleep(m_dialogs);
        sleep.FSleepmodeClick(true, QStringLiteral("5 min"));
        sleep.TimerSleepmodeTimer();
        sleep.FSleepmodeClick(true, text);
        QVERIFY(sleep.TimerSleepmode.isActive());
        QCOMPARE(sleep.SleepMinutesTotal, quint8(5));
        QCOMPARE(sleep.SleepMinutesElapsed, quint8(1));
        QCOMPARE(sleep.LSleepmode(), QStringLiteral("Herunterfahren in 4 min"));
    }

    void choosingAgainRestartsOnlyOnChange() {
        SleepMode sleep(m_dialogs);
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
        SleepMode sleep(m_dialogs);
        sleep.FSleepmodeClick(true, QStringLiteral("10 min"));
        sleep.TimerSleepmodeTimer();
        sleep.TimerSleepmodeTimer();
        sleep.FSleepmodeClick(false, QStringLiteral("10 min"));
        QVERIFY(!sleep.TimerSleepmode.isActive());
        QCOMPARE(sleep.LSleepmode(), QString());
        sleep.FSleepmodeClick(true, QStringLiteral("10 min"));
        QCOMPARE(sleep.LSleepmode(), QStringLiteral("Herunterfahren in 10 min"));
    }

    // The window's controls drive the countdown through its timer; its end asks for the power-off
    // once. A computer that only slept comes back to the mode switched off.
    void mainWindowCountdownEndsInOnePowerOff_data() {
        QTest::addColumn<qint64>("sleptMs");
        QTest::addColumn<bool>("wokeUp");
        QTest::newRow("suspended and woken up") << qint64(45000) << true;
        QTest::newRow("clock noise is no sleep") << qint64(300) << false;
    }
    void mainWindowCountdownEndsInOnePowerOff() {
        QFETCH(qint64, sleptMs);
        QFETCH(bool, wokeUp);
        TestServices t;
        TavoMP3PlayerMain w(t.services);
        w.load();
        QCOMPARE(w.FSleepmodeTime->currentText(), QStringLiteral("20 min"));
        QCOMPARE(w.LSleepmode->text(), QString());
        qint64 slept = 1000;
        w.sleepMode().wakeUp.sleptMs = [&slept] { return slept; };
        w.sleepMode().TimerSleepmode.setInterval(20); // minutes of 20 ms

        w.FSleepmodeTime->setCurrentIndex(1); // "2 min"
        emit w.FSleepmodeTime->activated(1);
        QVERIFY(!w.sleepMode().TimerSleepmode.isActive());
        emit w.LabelSleep->clicked(); // the caption toggles the box
        QVERIFY(w.FSleepmode->isChecked());
        QCOMPARE(w.LSleepmode->text(), QStringLiteral("Herunterfahren in 2 min"));
        QTRY_COMPARE(t.power.requests, QList<qint32>{1});
        QTest::qWait(100);
        QCOMPARE(t.power.requests, QList<qint32>{1});
        QVERIFY(w.FSleepmode->isChecked());
        QCOMPARE(w.LSleepmode->text(), QStringLiteral("Herunterfahren in 1 min"));

        slept += sleptMs;
        w.sleepMode().wakeUp.check();
        QCOMPARE(!w.FSleepmode->isChecked(), wokeUp);
        QCOMPARE(w.LSleepmode->text().isEmpty(), wokeUp);
        QCOMPARE(w.sleepMode().wakeUp.isArmed(), !wokeUp);
        QVERIFY(!w.sleepMode().TimerSleepmode.isActive());
        QCOMPARE(t.power.requests, QList<qint32>{1});

        emit w.LabelSleep->clicked(); // armed anew (woken) or switched off (not woken)
        QCOMPARE(w.FSleepmode->isChecked(), wokeUp);
        QVERIFY(!w.sleepMode().wakeUp.isArmed());
        QCOMPARE(w.LSleepmode->text(), wokeUp ? QStringLiteral("Herunterfahren in 2 min") : QString());
    }
};

QTEST_MAIN(tst_SleepMode)
#include "tst_SleepMode.moc"
