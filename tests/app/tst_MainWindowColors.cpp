// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "app/TavoMP3PlayerMain.h"
#include "support/TestServices.h"
#include "ui/BackgroundPicture.h"
#include "ui/SkinControl.h"
#include "ui/TavoMP3Settings.h"

#include <QAction>
#include <QCheckBox>
#include <QImage>
#include <QLabel>
#include <QListView>
#include <QListWidget>
#include <QPushButton>
#include <QSlider>
#include <QTemporaryDir>
#include <QtTest>

// The main window's side of the colour scheme: the role operations, the indicators and the
// background picture.
class tst_MainWindowColors : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;

    static QColor text(const QWidget* w) { return w->palette().color(QPalette::WindowText); }
    static QColor face(const QWidget* w) { return w->palette().color(QPalette::Window); }
    static QColor base(const QWidget* w) { return w->palette().color(QPalette::Base); }

private slots:
    void freshStartPaintsTheBuiltInPreset() {
        TestServices t;
        t.settings.SaveSetting("Settings", "WinampPath", "/usr/bin/mpv");
        t.settings.SaveSetting("Settings", "UserMP3Directory", "/m");
        TavoMP3PlayerMain w(t.services);
        w.load();
        QCOMPARE(text(w.FSleepmode), QColor(200, 200, 0));
        QCOMPARE(text(w.Version), QColor(200, 200, 0));
        QCOMPARE(face(w.centralWidget()), QColor(38, 38, 38));
        QVERIFY(w.centralWidget()->autoFillBackground());
        QCOMPARE(base(w.FPlaylist), QColor(106, 125, 192));
        QCOMPARE(w.FPlaylist->palette().color(QPalette::Text), QColor(0, 0, 0));
        QCOMPARE(face(w.FStatus), QColor(106, 125, 192));
        QCOMPARE(w.BPLOpen->foreColor(), QColor(138, 142, 34));
        QCOMPARE(text(w.lblTrackName), QColor(0, 160, 0));
        QCOMPARE(face(w.lblTime), QColor(0, 0, 0));
        QCOMPARE(face(w.Picture1), QColor(0, 0, 0));
        // After the preset the load redraws the indicators with the fixed greens.
        QCOMPARE(text(w.lblShuffle), QColor(0, 64, 0));
        QCOMPARE(text(w.lblRepeat), QColor(0, 64, 0));
        QVERIFY(t.dialogs.questions.isEmpty());
        // The settings window exists, unshown, and keeps its own look.
        QVERIFY(w.settingsWindow());
        QVERIFY(!w.settingsWindow()->isVisible());
        QVERIFY(w.settingsWindow()->FStatus->palette().color(QPalette::Window) != QColor(106, 125, 192));
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
        TestServices t;
        TavoMP3PlayerMain w(t.services);
        w.ShuffleOn = shuffle;
        w.RepeatOn = repeat;
        w.AutoCueOn = autocue;
        const Rgb bright{250, 1, 2};
        const Rgb dark{3, 4, 150};
        w.SetColorDisplayTextBright(bright);
        w.SetColorDisplayTextDark(dark);
        auto expected = [&](bool on) { return on ? QColor(250, 1, 2) : QColor(3, 4, 150); };
        QCOMPARE(text(w.lblShuffle), expected(shuffle));
        QCOMPARE(text(w.lblRepeat), expected(repeat));
        QCOMPARE(text(w.LAutoCue), expected(autocue));
    }

    void updateColorsUsesTheFixedGreensAfterAPresetLoad() {
        TestServices t;
        t.settings.SaveSetting("Settings", "ActivePreset", "4");
        t.settings.SaveSetting("Preset4", "PresetName", "Rot");
        t.settings.SaveSetting("Preset4", "DisplayTextBright", "255 000 000");
        t.settings.SaveSetting("Preset4", "DisplayTextDark", "100 000 000");
        TavoMP3PlayerMain w(t.services);
        w.load();
        w.ShuffleOn = true;
        w.settingsWindow()->LoadPreset("4", "LoadPresetClick");
        QCOMPARE(text(w.lblShuffle), QColor(255, 0, 0));
        QCOMPARE(text(w.LAutoCue), QColor(100, 0, 0));
        QCOMPARE(text(w.lblRepeat), QColor(100, 0, 0));
        w.ShuffleOn = false; // the toggle, as the transport does it
        w.UpdateColors();
        QCOMPARE(text(w.lblShuffle), QColor(0, 64, 0));
        QCOMPARE(text(w.LAutoCue), QColor(0, 64, 0));
        QCOMPARE(text(w.lblRepeat), QColor(100, 0, 0)); // not touched
        w.ShuffleOn = true;
        w.UpdateColors();
        QCOMPARE(text(w.lblShuffle), QColor(0, 192, 0));
    }

    void buttonBackgroundChangesNothing() {
        TestServices t;
        TavoMP3PlayerMain w(t.services);
        w.load();
        const QImage before = w.grab().toImage();
        w.SetColorButtonBackground(Rgb{255, 0, 255});
        QCOMPARE(w.grab().toImage(), before);
    }

    void rolesReachSecondaryWindows() {
        TestServices t;
        TavoMP3PlayerMain w(t.services);
        int created = 0;
        QWidget* other = nullptr;
        w.addSchemeWindow([&]() -> QWidget* {
            if (!other) {
                ++created;
                other = new QWidget(&w, Qt::Window);
                new QLabel("Suche", other);
                new QListView(other);
            }
            return other;
        });
        w.load();
        QCOMPARE(created, 1);
        QVERIFY(!other->isVisible());
        QCOMPARE(face(other), QColor(38, 38, 38));
        QCOMPARE(text(other->findChild<QLabel*>()), QColor(200, 200, 0));
        QCOMPARE(base(other->findChild<QListView*>()), QColor(106, 125, 192));
    }

    void backgroundPictureLoadsAndIgnoresErrors() {
        TestServices t;
        TavoMP3PlayerMain w(t.services);
        const QString path = m_dir.filePath("bg.png");
        QImage image(40, 30, QImage::Format_RGB32);
        image.fill(QColor(10, 200, 30));
        QVERIFY(image.save(path));
        t.settings.SaveSetting("Settings", "BGImagePath", path);
        w.load();
        QCOMPARE(w.backgroundPicture()->picture().size(), QSize(40, 30));
        QCOMPARE(w.centralWidget()->grab().toImage().pixelColor(5, 5), QColor(10, 200, 30));
        w.LoadBGImage(m_dir.filePath("fehlt.png")); // missing: the old picture stays
        QCOMPARE(w.backgroundPicture()->picture().size(), QSize(40, 30));
        w.LoadBGImage(""); // empty: removed, no message
        QVERIFY(w.backgroundPicture()->picture().isNull());
        QCOMPARE(w.centralWidget()->grab().toImage().pixelColor(5, 5), QColor(38, 38, 38));
        QVERIFY(t.dialogs.questions.isEmpty());
    }

    void menuOpensTheSameSettingsWindow() {
        TestServices t;
        TavoMP3PlayerMain w(t.services);
        w.load();
        TavoMP3Settings* hidden = w.settingsWindow();
        QCOMPARE(w.MenuEinstellungen->text(), QString("&Einstellungen"));
        w.MenuEinstellungen->trigger();
        QCOMPARE(w.settingsWindow(), hidden);
        QVERIFY(hidden->isVisible());
        // A slider edit on the open window repaints the main window at once.
        hidden->LColorType->setCurrentRow(ColorRoles::Background);
        hidden->SliderRed->setValue(90);
        QCOMPARE(face(w.centralWidget()), QColor(90, 38, 38));
    }
};

QTEST_MAIN(tst_MainWindowColors)
#include "tst_MainWindowColors.moc"
