// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "app/TransportBinding.h"
#include "base/RuntimeError.h"
#include "playback/PlaybackMonitor.h"
#include "support/WindowPartRig.h"
#include "ui/TavoSlider.h"

#include <QTimer>
#include <QtTest>

// The position slider: its configuration, the easing and the press that makes the player jump.
class tst_TavoSlider : public QObject {
    Q_OBJECT

    static void mouse(QWidget* w, QEvent::Type type, int x, Qt::MouseButton button, Qt::MouseButtons held) {
        QMouseEvent e(type, QPointF(x, 5), w->mapToGlobal(QPointF(x, 5)), button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(w, &e);
    }

private slots:
    // The knob eases in from the left, comes to rest just short of its target, and eases back down.
    void easingConvergesAndStops() {
        TavoSlider s;
        s.timer().stop();
        s.SetValue("SliderMax", 243);
        s.SetValue("SliderValue", 97);
        float last = -1;
        for (int ticks = 0; s.knobPosition() != last; ++ticks) {
            QVERIFY2(ticks < 2000, "the knob never stopped");
            last = s.knobPosition();
            s.TimerSlider_Timer();
        }
        QVERIFY(s.knobPosition() >= s.target() - 5.0f && s.knobPosition() < s.target());
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

    void mainWindowDragPausesTmrTimeAndJumpsThePlayer_data() {
        QTest::addColumn<int>("pixelX");
        QTest::addColumn<int>("seconds");
        QTest::addColumn<bool>("left"); // the right button only moves the target: no pause
        // 391 pixels show 5860 units; maximum 200 seconds.
        QTest::newRow("left end") << 0 << 0 << true;
        QTest::newRow("middle") << 195 << 100 << true; // 2922.5 units -> 99.74 s
        QTest::newRow("right end") << 391 << 200 << true;
        QTest::newRow("right button") << 195 << 100 << false;
    }
    void mainWindowDragPausesTmrTimeAndJumpsThePlayer() {
        QFETCH(int, pixelX);
        QFETCH(int, seconds);
        QFETCH(bool, left);
        const Qt::MouseButton button = left ? Qt::LeftButton : Qt::RightButton;
        WindowPartRig r;
        TransportBinding& w = r.bind<TransportBinding>();
        QTimer* tmrTime = &r.core.playback().monitor().tmrTime;
        QVERIFY(tmrTime->isActive());
        TavoSlider* s = r.ui.TavoSlider1;
        s->resize(391, s->height());
        s->SetValue("SliderMax", 200);
        mouse(s, QEvent::MouseButtonPress, pixelX, button, button);
        QCOMPARE(tmrTime->isActive(), !left);
        QCOMPARE(w.HideScroll && w.AllowTimeChange, left);
        mouse(s, QEvent::MouseButtonRelease, pixelX, button, Qt::NoButton);
        QVERIFY(tmrTime->isActive() && !w.HideScroll && !w.AllowTimeChange);
        QCOMPARE(r.core.playback().monitor().shownName(), QString());
        QCOMPARE(r.player.calls.filter("JumpToTime"),
                 QStringList{QString("JumpToTime %1").arg(seconds * 1000)});
    }
};

QTEST_MAIN(tst_TavoSlider)
#include "tst_TavoSlider.moc"
