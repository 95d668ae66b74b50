// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "app/TavoMP3PlayerMain.h"
#include "base/RuntimeError.h"
#include "player/PlaybackMonitor.h"
#include "support/MainWindowRig.h"
#include "ui/SliderHost.h"
#include "ui/TavoSlider.h"

#include <QTimer>
#include <QtTest>

// The position slider: its configuration, the easing and the drag that makes the player jump.
class tst_TavoSlider : public QObject {
    Q_OBJECT

    struct RecordingHost : SliderHost {
        QStringList calls;
        void setMonitorEnabled(bool on) override { calls << QString("monitor %1").arg(on); }
        void setHideScroll(bool on) override { calls << QString("HideScroll %1").arg(on); }
        void setAllowTimeChange(bool on) override { calls << QString("AllowTimeChange %1").arg(on); }
        void jumpToTime(qint32 s) override { calls << QString("jump %1").arg(s); }
        void focusPlaylist() override { calls << "focus"; }
        void clearShownTitle() override { calls << "title"; }
    };

    static void mouse(QWidget* w, QEvent::Type type, int x, Qt::MouseButton button, Qt::MouseButtons held) {
        QMouseEvent e(type, QPointF(x, 5), w->mapToGlobal(QPointF(x, 5)), button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(w, &e);
    }

private slots:
    void easingConvergesAndStops_data() {
        QTest::addColumn<int>("value");
        QTest::addColumn<int>("maximum");
        QTest::newRow("to the right end") << 200 << 200;
        QTest::newRow("within the dead band: no move") << 1 << 1000; // 5 units
        QTest::newRow("mid-song") << 97 << 243;
    }
    void easingConvergesAndStops() {
        QFETCH(int, value);
        QFETCH(int, maximum);
        TavoSlider s;
        s.timer().stop();
        s.SetValue("SliderMax", maximum);
        s.SetValue("SliderValue", value);
        const float target = s.target();
        int ticks = 0;
        float last = -1;
        while (ticks < 2000 && s.knobPosition() != last) {
            last = s.knobPosition();
            s.TimerSlider_Timer();
            ++ticks;
        }
        QVERIFY2(ticks < 2000, "the knob never stopped");
        QVERIFY(qAbs(s.knobPosition() - target) <= 5.0f);
        if (target <= 5.0f)
            QCOMPARE(s.knobPosition(), 0.0f);
        else
            QVERIFY(s.knobPosition() > 0.0f && s.knobPosition() < target); // eases in from the left
        // Moving back to the start eases the knob down again.
        s.SetValue("SliderValue", 0);
        for (int i = 0; i < 2000; ++i)
            s.TimerSlider_Timer();
        QVERIFY(s.knobPosition() <= 5.0f);
    }

    void namesAreExactAndValuesChecked() {
        TavoSlider s;
        s.SetValue("SliderWidth", 5860);
        s.SetValue("sliderwidth", 100);
        QCOMPARE(s.unitWidth(), qint16(5860));
        s.SetValue("ShapeBackFillColor", 0x4000u); // packed &H4000
        QCOMPARE(s.shapeBackColor(), QColor(0, 64, 0));
        QVERIFY_THROWS_EXCEPTION(RuntimeError, s.SetValue("SliderWidth", 40000)); // 16-bit
        try {
            s.SetValue("SliderValue", 10); // no maximum yet
            QFAIL("no error");
        } catch (const RuntimeError& e) {
            QCOMPARE(e.number(), 11);
        }
    }

    // The left button drags and pauses; the right one only moves the target, which the next monitor
    // tick can move back before the release.
    void onlyTheLeftButtonDragsAndPauses() {
        TavoSlider s;
        s.resize(500, 16);
        RecordingHost host;
        s.setHost(&host);
        s.SetValue("SliderMax", 100);
        mouse(&s, QEvent::MouseButtonPress, 100, Qt::LeftButton, Qt::LeftButton);
        mouse(&s, QEvent::MouseMove, 250, Qt::NoButton, Qt::LeftButton);
        QCOMPARE(s.target(), 2500.0f);
        mouse(&s, QEvent::MouseMove, 300, Qt::NoButton, Qt::LeftButton | Qt::RightButton);
        QCOMPARE(s.target(), 2500.0f);
        mouse(&s, QEvent::MouseButtonRelease, 400, Qt::LeftButton, Qt::NoButton);
        QCOMPARE(host.calls.filter("jump"), QStringList{"jump 80"});
        host.calls.clear();
        mouse(&s, QEvent::MouseButtonPress, 50, Qt::RightButton, Qt::RightButton);
        QCOMPARE(s.target(), 500.0f);
        QVERIFY(host.calls.isEmpty());
        s.SetValue("SliderValue", 40);
        QCOMPARE(s.target(), 2000.0f);
        mouse(&s, QEvent::MouseButtonRelease, 50, Qt::RightButton, Qt::NoButton);
        QCOMPARE(host.calls.filter("jump"), QStringList{"jump 10"});
    }

    void mainWindowDragPausesTmrTimeAndJumpsThePlayer_data() {
        QTest::addColumn<int>("pixelX");
        QTest::addColumn<int>("seconds");
        // 391 pixels show 5860 units; maximum 200 seconds.
        QTest::newRow("left end") << 0 << 0;
        QTest::newRow("middle") << 195 << 100; // 2922.5 units -> 99.74 s
        QTest::newRow("right end") << 391 << 200;
    }
    void mainWindowDragPausesTmrTimeAndJumpsThePlayer() {
        QFETCH(int, pixelX);
        QFETCH(int, seconds);
        MainWindowRig r;
        TavoMP3PlayerMain& w = r.w;
        w.load();
        QTimer* tmrTime = &w.playback().tmrTime;
        QVERIFY(tmrTime->isActive());
        TavoSlider* s = w.TavoSlider1;
        s->resize(391, s->height());
        s->SetValue("SliderMax", 200);
        mouse(s, QEvent::MouseButtonPress, pixelX, Qt::LeftButton, Qt::LeftButton);
        QVERIFY(!tmrTime->isActive());
        QVERIFY(w.HideScroll && w.AllowTimeChange);
        mouse(s, QEvent::MouseButtonRelease, pixelX, Qt::LeftButton, Qt::NoButton);
        QVERIFY(tmrTime->isActive());
        QVERIFY(!w.HideScroll && !w.AllowTimeChange);
        QCOMPARE(w.playback().shownName(), QString());
        QCOMPARE(r.player.calls.filter("JumpToTime"),
                 QStringList{QString("JumpToTime %1").arg(seconds * 1000)});
    }
};

QTEST_MAIN(tst_TavoSlider)
#include "tst_TavoSlider.moc"
