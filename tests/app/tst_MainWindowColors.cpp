// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "support/MainWindowRig.h"
#include "ui/BackgroundPicture.h"
#include "ui/TavoMP3Settings.h"
#include "ui/TavoxMiniDiagram.h"

#include <QCheckBox>
#include <QImage>
#include <QListWidget>
#include <QSlider>
#include <QtTest>

// The main window's side of the colour scheme: the role operations, the indicators and the
// background picture.
class tst_MainWindowColors : public QObject {
    Q_OBJECT

    static QColor text(const QWidget* w) { return w->palette().color(QPalette::WindowText); }
    static QColor face(const QWidget* w) { return w->palette().color(QPalette::Window); }
    static QColor base(const QWidget* w) { return w->palette().color(QPalette::Base); }

private slots:
    // Every role of the built-in preset reaches its widgets, and the secondary windows, created
    // unshown for it; the settings window keeps its own look.
    void freshStartPaintsEveryRole() {
        MainWindowRig r;
        int created = 0;
        QWidget* other = nullptr;
        r.w.addSchemeWindow([&]() -> QWidget* {
            if (!other) {
                ++created;
                other = new QWidget(&r.w, Qt::Window);
                new QLabel("Suche", other);
                new QListView(other);
            }
            return other;
        });
        r.load();
        QCOMPARE(text(r.w.FSleepmode), QColor(200, 200, 0));
        QCOMPARE(face(r.w.centralWidget()), QColor(38, 38, 38));
        QCOMPARE(base(r.w.FPlaylist), QColor(106, 125, 192));
        QCOMPARE(r.w.FPlaylist->palette().color(QPalette::Text), QColor(0, 0, 0));
        QCOMPARE(r.w.BPLOpen->foreColor(), QColor(138, 142, 34));
        QCOMPARE(text(r.w.lblTrackName), QColor(0, 160, 0));
        QCOMPARE(face(r.w.lblTime), QColor(0, 0, 0));
        QCOMPARE(r.w.TavoxMiniDiagram1->textColor(), QColor(0, 160, 0));
        QCOMPARE(r.w.TavoxMiniDiagram1->backgroundColor(), QColor(0, 0, 0));
        // After the preset the load redraws the indicators with the fixed greens.
        QCOMPARE(text(r.w.lblShuffle), QColor(0, 64, 0));
        QCOMPARE(created, 1);
        QVERIFY(!other->isVisible());
        QCOMPARE(face(other), QColor(38, 38, 38));
        QCOMPARE(text(other->findChild<QLabel*>()), QColor(200, 200, 0));
        QCOMPARE(base(other->findChild<QListView*>()), QColor(106, 125, 192));
        QVERIFY(!r.w.settingsWindow()->isVisible());
        QVERIFY(r.w.settingsWindow()->FStatus->palette().color(QPalette::Window) != QColor(106, 125, 192));
    }

    void indicatorsSplitBrightAndDark_data() {
        QTest::addColumn<bool>("shuffle");
        QTest::addColumn<bool>("repeat");
        QTest::addColumn<bool>("autocue");
        QTest::newRow("all off") << false << false << false;
        QTest::newRow("shuffle on") << true << false << false;
        QTest::newRow("repeat and autocue on") << false << true << true;
    }
    void indicatorsSplitBrightAndDark() {
        QFETCH(bool, shuffle);
        QFETCH(bool, repeat);
        QFETCH(bool, autocue);
        MainWindowRig r;
        r.w.ShuffleOn = shuffle;
        r.w.RepeatOn = repeat;
        r.w.AutoCueOn = autocue;
        r.w.SetColorDisplayTextBright(Rgb{250, 1, 2});
        r.w.SetColorDisplayTextDark(Rgb{3, 4, 150});
        auto expected = [&](bool on) { return on ? QColor(250, 1, 2) : QColor(3, 4, 150); };
        QCOMPARE(text(r.w.lblShuffle), expected(shuffle));
        QCOMPARE(text(r.w.lblRepeat), expected(repeat));
        QCOMPARE(text(r.w.LAutoCue), expected(autocue));
    }

    void updateColorsUsesTheFixedGreensAfterAPresetLoad() {
        MainWindowRig r;
        r.setting("ActivePreset", "4");
        r.t.settings.SaveSetting("Preset4", "PresetName", "Rot");
        r.t.settings.SaveSetting("Preset4", "DisplayTextBright", "255 000 000");
        r.t.settings.SaveSetting("Preset4", "DisplayTextDark", "100 000 000");
        r.w.load();
        r.w.ShuffleOn = true;
        r.w.settingsWindow()->LoadPreset("4", "LoadPresetClick");
        QCOMPARE(text(r.w.lblShuffle), QColor(255, 0, 0));
        QCOMPARE(text(r.w.LAutoCue), QColor(100, 0, 0));
        r.w.ShuffleOn = false; // the toggle, as the transport does it
        r.w.UpdateColors();
        QCOMPARE(text(r.w.lblShuffle), QColor(0, 64, 0));
        QCOMPARE(text(r.w.LAutoCue), QColor(0, 64, 0));
        QCOMPARE(text(r.w.lblRepeat), QColor(100, 0, 0)); // not touched
        r.w.ShuffleOn = true;
        r.w.UpdateColors();
        QCOMPARE(text(r.w.lblShuffle), QColor(0, 192, 0));
    }

    void backgroundPictureLoadsAndIgnoresErrors() {
        MainWindowRig r;
        const QString path = r.dir.filePath("bg.png");
        QImage image(40, 30, QImage::Format_RGB32);
        image.fill(QColor(10, 200, 30));
        QVERIFY(image.save(path));
        r.setting("BGImagePath", path);
        r.w.load();
        QCOMPARE(r.w.backgroundPicture()->picture().size(), QSize(40, 30));
        QCOMPARE(r.w.centralWidget()->grab().toImage().pixelColor(5, 5), QColor(10, 200, 30));
        r.w.LoadBGImage(r.dir.filePath("fehlt.png")); // missing: the old picture stays
        QCOMPARE(r.w.backgroundPicture()->picture().size(), QSize(40, 30));
        r.w.LoadBGImage(""); // empty: removed, no message
        QVERIFY(r.w.backgroundPicture()->picture().isNull());
        QCOMPARE(r.w.centralWidget()->grab().toImage().pixelColor(5, 5), QColor(38, 38, 38));
        QVERIFY(r.t.dialogs.questions.isEmpty());
    }

    // The menu opens the settings window the load made; a slider edit there repaints at once, the
    // button background alone changes nothing (the skin buttons draw their own face).
    void menuOpensTheSameSettingsWindow() {
        MainWindowRig r;
        r.w.load();
        const QImage before = r.w.grab().toImage();
        r.w.SetColorButtonBackground(Rgb{255, 0, 255});
        QCOMPARE(r.w.grab().toImage(), before);
        TavoMP3Settings* hidden = r.w.settingsWindow();
        r.w.MenuEinstellungen->trigger();
        QCOMPARE(r.w.settingsWindow(), hidden);
        QVERIFY(hidden->isVisible());
        hidden->LColorType->setCurrentRow(ColorRoles::Background);
        hidden->SliderRed->setValue(90);
        QCOMPARE(face(r.w.centralWidget()), QColor(90, 38, 38));
    }
};

QTEST_MAIN(tst_MainWindowColors)
#include "tst_MainWindowColors.moc"
