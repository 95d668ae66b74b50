// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "app/SleepBinding.h"
#include "power/SleepMode.h"
#include "support/TestServices.h"
#include "support/WindowPartRig.h"
#include "ui/ClickLabel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QtTest>

using namespace Qt::StringLiterals;

class tst_SleepMode : public QObject {
    Q_OBJECT
    ScriptedDialogs m_dialogs;

private slots:
    // What a choice or a click on the box does while the countdown runs (armed) or not: the label, then
    // the remembered choice.
    void choicesAndClicks_data() {
        QTest::addColumn<bool>("armed");     // by a click on "5 min", then a minute passed
        QTest::addColumn<QString>("action"); // a click on the "box" or a "time" chosen; box "on"/"off"
        QTest::addColumn<QString>("choice");
        QTest::addColumn<QString>("expected");
        QTest::newRow("unknown text: case differs")
            << true << u"box on"_s << u"5 MIN"_s << u"in 4 min|5 min"_s;
        QTest::newRow("box checked again: full time")
            << true << u"box on"_s << u"5 min"_s << u"in 5 min|5 min"_s;
        QTest::newRow("box unchecked: stops") << true << u"box off"_s << u"5 min"_s << u"|5 min"_s;
        QTest::newRow("same choice: count runs on")
            << true << u"time on"_s << u"5 min"_s << u"in 4 min|5 min"_s;
        QTest::newRow("other choice: restarts")
            << true << u"time on"_s << u"20 min"_s << u"in 20 min|20 min"_s;
        QTest::newRow("choice while unarmed: only kept")
            << false << u"time off"_s << u"60 min"_s << u"|60 min"_s;
    }
    void choicesAndClicks() {
        QFETCH(bool, armed);
        QFETCH(QString, action);
        QFETCH(QString, choice);
        QFETCH(QString, expected);
        SleepMode sleep(m_dialogs);
        sleep.SleepTimeChoice = "5 min";
        sleep.FSleepmodeClick(armed, "5 min");
        if (armed)
            sleep.TimerSleepmodeTimer();
        const bool checked = action.endsWith(" on");
        if (action.startsWith("box"))
            sleep.FSleepmodeClick(checked, choice);
        else
            sleep.FSleepmodeTimeClick(checked, choice);
        const bool counting = !expected.startsWith('|');
        QCOMPARE(sleep.LSleepmode(), counting ? "Herunterfahren " + expected.section('|', 0, 0) : QString());
        QCOMPARE(sleep.SleepTimeChoice, expected.section('|', 1));
        QCOMPARE(sleep.TimerSleepmode.isActive(), counting);
        if (counting) { // one more minute: a count that was not started anew would skip ahead
            sleep.TimerSleepmodeTimer();
            QCOMPARE(sleep.LSleepmode(),
                     u"Herunterfahren in %1 min"_s.arg(expected.section(' ', 1, 1).toInt() - 1));
        }
    }

    // The window's controls drive the countdown through its timer, a minute a tick; its end asks for
    // the power-off once. A computer that only slept comes back to the mode switched off.
    void mainWindowCountdownEndsInOnePowerOff_data() {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("choice");
        QTest::addColumn<qint64>("sleptMs");
        QTest::addColumn<bool>("wokeUp");
        QTest::newRow("1 min, suspended and woken up") << 0 << u"1 min"_s << qint64(45000) << true;
        QTest::newRow("60 min, clock noise is no sleep") << 8 << u"60 min"_s << qint64(300) << false;
    }
    void mainWindowCountdownEndsInOnePowerOff() {
        QFETCH(int, index);
        QFETCH(QString, choice);
        QFETCH(qint64, sleptMs);
        QFETCH(bool, wokeUp);
        WindowPartRig r;
        r.bind<SleepBinding>();
        MainWindowUi& w = r.ui;
        SleepMode& sleep = r.core.sleepMode();
        const TestServices& t = r.t;
        qint64 slept = 1000;
        sleep.wakeUp.sleptMs = [&slept] { return slept; };
        QCOMPARE(sleep.TimerSleepmode.interval(), 60000);
        sleep.TimerSleepmode.setInterval(20); // minutes of 20 ms

        w.FSleepmodeTime->setCurrentIndex(index);
        emit w.FSleepmodeTime->activated(index);
        QCOMPARE(w.FSleepmodeTime->currentText(), choice);
        QVERIFY(!sleep.TimerSleepmode.isActive());
        emit w.LabelSleep->clicked(); // the caption toggles the box
        QVERIFY(w.FSleepmode->isChecked());
        QCOMPARE(w.LSleepmode->text(), "Herunterfahren in " + choice);
        QTRY_COMPARE_WITH_TIMEOUT(t.power.requests, QList<qint32>{1}, 10000);
        QTest::qWait(100);
        QCOMPARE(t.power.requests, QList<qint32>{1});
        QVERIFY(w.FSleepmode->isChecked());
        QCOMPARE(w.LSleepmode->text(), "Herunterfahren in 1 min"); // the last text stays

        slept += sleptMs;
        sleep.wakeUp.check();
        QCOMPARE(!w.FSleepmode->isChecked(), wokeUp);
        QCOMPARE(w.LSleepmode->text().isEmpty(), wokeUp);
        QCOMPARE(sleep.wakeUp.isArmed(), !wokeUp);
        QVERIFY(!sleep.TimerSleepmode.isActive());
        QCOMPARE(t.power.requests, QList<qint32>{1});

        emit w.LabelSleep->clicked(); // armed anew (woken) or switched off (not woken)
        QCOMPARE(w.FSleepmode->isChecked(), wokeUp);
        QVERIFY(!sleep.wakeUp.isArmed());
        QCOMPARE(w.LSleepmode->text(), wokeUp ? "Herunterfahren in " + choice : QString());
    }
};

QTEST_MAIN(tst_SleepMode)
#include "tst_SleepMode.moc"
