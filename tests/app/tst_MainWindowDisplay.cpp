// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "base/StatusLine.h"
#include "playback/PlaybackMonitor.h"
#include "playback/SongSelection.h"
#include "support/FileBytes.h"
#include "support/MainWindowRig.h"
#include "support/Mp3Synth.h"
#include "ui/BackgroundPicture.h"
#include "ui/TavoMP3Settings.h"
#include "ui/TavoxMiniDiagram.h"

#include <QCheckBox>
#include <QImage>
#include <QKeyEvent>
#include <QListWidget>
#include <QLocale>
#include <QMouseEvent>
#include <QSlider>
#include <QtTest>

using namespace Qt::StringLiterals;

// What the main window shows: the colour scheme's roles, the indicators, the background picture,
// and the report buttons with the mini diagram of the clicked song.
class tst_MainWindowDisplay : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    QStringList m_songs; // 101 playlist lines of synthesized files

    void load(MainWindowRig& r, const QStringList& lines) {
        r.core.BitrateReportPath = m_dir.filePath(QStringLiteral("MP3Info.txt"));
        r.core.PriorityReportPath = m_dir.filePath(QStringLiteral("MP3Prio.txt"));
        r.load(lines);
    }

private slots:
    // Every role of the built-in preset reaches its widgets, and the secondary windows, created
    // unshown for it; the settings window keeps its own look. The stored background picture shows.
    void freshStartPaintsEveryRole() {
        MainWindowRig r;
        QWidget* other = nullptr;
        r.w.windows().addSchemeWindow([&]() -> QWidget* {
            other = other ? other : new QWidget(&r.w, Qt::Window);
            new QLabel("Suche", other);
            return other;
        });
        const QString picture = r.dir.filePath("bg.png");
        QImage image(40, 30, QImage::Format_RGB32);
        image.fill(QColor(10, 200, 30));
        QVERIFY(image.save(picture));
        r.setting("BGImagePath", picture);
        r.load();
        QCOMPARE(r.w.ui().FSleepmode->palette().color(QPalette::WindowText), QColor(200, 200, 0));
        QCOMPARE(r.w.centralWidget()->palette().color(QPalette::Window), QColor(38, 38, 38));
        QCOMPARE(r.w.ui().FPlaylist->palette().color(QPalette::Base), QColor(106, 125, 192));
        QCOMPARE(r.w.ui().BPLOpen->foreColor(), QColor(138, 142, 34));
        QVERIFY(QFile::exists(r.w.ui().BPLOpen->image())); // the load gives the skin buttons their face
        QCOMPARE(r.w.ui().TavoxMiniDiagram1->textColor(), QColor(0, 160, 0));
        // After the preset the load redraws the indicators with the fixed greens.
        QCOMPARE(r.w.ui().lblShuffle->palette().color(QPalette::WindowText), QColor(0, 64, 0));
        QVERIFY(other && !other->isVisible());
        QCOMPARE(other->palette().color(QPalette::Window), QColor(38, 38, 38));
        QCOMPARE(other->findChild<QLabel*>()->palette().color(QPalette::WindowText), QColor(200, 200, 0));
        QVERIFY(!r.w.windows().settingsWindow()->isVisible());
        QVERIFY(r.w.windows().settingsWindow()->FStatus->palette().color(QPalette::Window) !=
                QColor(106, 125, 192));
        // The background picture: a missing file keeps the old one, an empty path removes it silently.
        QCOMPARE(r.w.centralWidget()->grab().toImage().pixelColor(5, 5), QColor(10, 200, 30));
        r.w.ui().background->load(r.dir.filePath("fehlt.png"));
        QCOMPARE(r.w.ui().background->picture().size(), QSize(40, 30));
        r.w.ui().background->load("");
        QVERIFY(r.w.ui().background->picture().isNull());
        QCOMPARE(r.w.centralWidget()->grab().toImage().pixelColor(5, 5), QColor(38, 38, 38));
        QVERIFY(r.t.dialogs.questions.isEmpty());
    }

    void initTestCase() {
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        using namespace Mp3Synth;
        const Frame f;
        const QByteArray cbr = cbrFrames(f, 400);
        const QList<int> pattern = vbrPattern(500);
        const QByteArray vbr = xingFrame(f, "Xing", 500, 0) + vbrFrames(f, pattern);
        for (int i = 0; i < 101; ++i) {
            const QString path = QDir::toNativeSeparators(
                m_dir.filePath(QStringLiteral("Lied %1.mp3").arg(i, 3, 10, QLatin1Char('0'))));
            QVERIFY(FileBytes::write(path, i == 1 ? vbr : cbr));
            m_songs << path + QStringLiteral(":%1").arg(i % 6);
        }
    }

    // A clicked song shows its histogram; Esc stops the bitrate report, and a click meanwhile waits.
    void clickedSongAndTheBitrateReport() {
        MainWindowRig r(Paths::nativeStyle());
        load(r, m_songs);
        TavoMP3PlayerMain& w = r.w;
        auto click = [&w](int row) {
            const QRect rect = w.ui().FPlaylist->visualRect(w.ui().FPlaylist->model()->index(row, 0));
            QTest::mouseClick(w.ui().FPlaylist->viewport(), Qt::LeftButton, Qt::NoModifier, rect.center());
        };
        click(0); // CBR: one full bar at 128 kbit/s (class 9)
        for (int i = 1; i <= 14; ++i)
            QCOMPARE(w.ui().TavoxMiniDiagram1->lineEnd(i), i == 9 ? 1320 : 380);
        click(1); // VBR: every class of the pattern has frames
        int full = 0;
        for (int i = 1; i <= 14; ++i) {
            QVERIFY(w.ui().TavoxMiniDiagram1->lineEnd(i) > 380);
            full += w.ui().TavoxMiniDiagram1->lineEnd(i) == 1320 ? 1 : 0;
        }
        QVERIFY(full >= 1);
        ScriptedDialogs& d = r.t.dialogs;
        d.answers = {Dialogs::Answer::Yes, Dialogs::Answer::Yes};
        // Pending when the run starts: Esc pressed on the list, and a click on the other report
        // button that must not start a second report inside the first.
        QCoreApplication::postEvent(w.ui().FPlaylist,
                                    new QKeyEvent(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier));
        const QPointF centre = QPointF(w.ui().BReportPrio->rect().center());
        QCoreApplication::postEvent(w.ui().BReportPrio,
                                    new QMouseEvent(QEvent::MouseButtonPress, centre, centre, Qt::LeftButton,
                                                    Qt::LeftButton, Qt::NoModifier));
        QCoreApplication::postEvent(w.ui().BReportPrio,
                                    new QMouseEvent(QEvent::MouseButtonRelease, centre, centre,
                                                    Qt::LeftButton, Qt::NoButton, Qt::NoModifier));
        QTest::mouseClick(w.ui().BReportBitrate, Qt::LeftButton);
        QCOMPARE(d.questions.size(), 2);
        QCOMPARE(w.ui().FStatus->text(), QStringLiteral("Bitratereport abgebrochen."));
        QCOMPARE(FileBytes::read(r.core.BitrateReportPath).count("\r\n"), 1);
        QCoreApplication::processEvents();
        QCOMPARE(d.questions.size(), 2);
    }

    // No text makes the window wider: a day of shuffle appends to the status line, song names and paths
    // can be of any length. The status line keeps its newest end, and only a bounded part of it.
    void longTextsNeverWidenTheWindow_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("shuffle picks") << "picks";
        QTest::newRow("song name") << "name";
        QTest::newRow("playlist path") << "path";
    }
    void longTextsNeverWidenTheWindow() {
        QFETCH(QString, text);
        MainWindowRig r;
        const QString longName = "/m/" + QString(300, 'x') + ".mp3:5";
        if (text == "path") {
            const QString folder = r.dir.filePath(QString(200, 'o'));
            QVERIFY(QDir().mkpath(folder));
            PlaylistFile::writeLines(folder + "/" + QString(200, 'l') + ".txt", r.songs(3));
            r.setting("PlaylistFile", folder + "/" + QString(200, 'l') + ".txt");
            r.load();
        } else {
            r.load(r.songs(3) << longName);
        }
        const int width = r.w.width();
        if (text == "picks") {
            for (int i = 0; i < 700; ++i)
                r.core.playback().selection().FuncPickRandomSong();
        } else if (text == "name") {
            r.play(3);
            r.core.playback().monitor().tmrTimeTick();
        }
        QCoreApplication::processEvents();
        QCOMPARE(r.w.width(), width);
        QVERIFY(r.w.minimumSizeHint().width() <= width);
        QVERIFY(r.w.ui().FStatus->text().size() <= StatusLine::kMaxLength);
        QCOMPARE(r.w.ui().FStatus->text().endsWith("Zeit: 0"), text == "picks");
    }

    void shortPlaylistShowsTheErrorMessage() {
        MainWindowRig r(Paths::nativeStyle());
        load(r, m_songs.mid(0, 2));
        QTest::mouseClick(r.w.ui().BReportBitrate, Qt::LeftButton);
        QCOMPARE(r.t.dialogs.messageTexts(),
                 QStringList{QStringLiteral(
                     "Fehler in BReportBitrate_Click in Zeile 1: Index außerhalb des gültigen Bereichs")});
        QVERIFY(r.w.isVisible());
    }
};

QTEST_MAIN(tst_MainWindowDisplay)
#include "tst_MainWindowDisplay.moc"
