// The report buttons and the mini diagram on the main window, driven like a user would.
#include "app/TavoMP3PlayerMain.h"
#include "appearance/Rgb.h"
#include "playlist/PlaylistFile.h"
#include "support/Mp3Synth.h"
#include "support/TestServices.h"
#include "ui/SkinControl.h"
#include "ui/TavoxMiniDiagram.h"

#include <QKeyEvent>
#include <QLabel>
#include <QListView>
#include <QLocale>
#include <QMouseEvent>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

class tst_MainWindowReports : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    QStringList m_songs; // 101 playlist lines of synthesized files

    void loadPlaylist(TestServices& t, TavoMP3PlayerMain& w, const QStringList& lines) {
        const QString file = m_dir.filePath(QStringLiteral("liste.txt"));
        PlaylistFile::writeLines(file, lines);
        t.settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("PlaylistFile"), file);
        // Without a player path and music folders start-up would only open the settings window.
        t.settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("WinampPath"),
                               QStringLiteral("/usr/bin/mpv"));
        t.settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("UserMP3Directory"), m_dir.path());
        w.BitrateReportPath = m_dir.filePath(QStringLiteral("MP3Info.txt"));
        w.PriorityReportPath = m_dir.filePath(QStringLiteral("MP3Prio.txt"));
        w.load();
    }

    static QByteArray readAll(const QString& path) {
        QFile f(path);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }

private slots:
    void initTestCase() {
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        using namespace Mp3Synth;
        const Frame f;
        const QByteArray cbr = cbrFrames(f, 400);
        const QList<int> pattern = vbrPattern(500);
        const QByteArray vbr = xingFrame(f, "Xing", 500, 0) + vbrFrames(f, pattern);
        for (int i = 0; i < 101; ++i) {
            const QString path =
                m_dir.filePath(QStringLiteral("Lied %1.mp3").arg(i, 3, 10, QLatin1Char('0')));
            QFile out(path);
            QVERIFY(out.open(QIODevice::WriteOnly));
            out.write(i == 1 ? vbr : cbr);
            m_songs << path + QStringLiteral(":%1").arg(i % 6);
        }
    }

    void controlsAreThere() {
        TestServices t;
        TavoMP3PlayerMain w(t.services);
        w.load();
        QCOMPARE(w.BReportPrio->label(), QStringLiteral("Liedprio Report"));
        QCOMPARE(w.BReportBitrate->label(), QStringLiteral("Bitrate Report"));
        QVERIFY(w.MP3InfoAvailable);
        QVERIFY(w.BReportBitrate->isVisible());
        QVERIFY(w.TavoxMiniDiagram1->isVisible());
        QCOMPARE(w.TavoxMiniDiagram1->objectName(), QStringLiteral("TavoxMiniDiagram1"));
    }

    void displayColoursReachTheDiagram() {
        TestServices t;
        TavoMP3PlayerMain w(t.services);
        w.SetColorDisplayTextBright(Rgb::make(250, 200, 10));
        w.SetColorDisplayBackground(Rgb::make(0, 0, 80));
        QCOMPARE(w.TavoxMiniDiagram1->textColor(), QColor(250, 200, 10));
        QCOMPARE(w.TavoxMiniDiagram1->backgroundColor(), QColor(0, 0, 80));
    }

    void priorityReportFromTheButton() {
        TestServices t;
        TavoMP3PlayerMain w(t.services);
        loadPlaylist(t, w, m_songs);
        t.dialogs.answers = {Dialogs::Answer::Yes};
        QTest::mouseClick(w.BReportPrio, Qt::LeftButton);
        QCOMPARE(t.dialogs.questions.size(), 1);
        const QList<QByteArray> lines = readAll(w.PriorityReportPath).split('\n');
        QCOMPARE(lines.size(), 68 + 1); // priorities 0..3 of i % 6 over 101 songs
        QVERIFY(lines.first().endsWith("Lied 000.mp3 - 0\r"));
        QCOMPARE(w.FTest->text(), QStringLiteral("100/100"));
        QVERIFY(w.FStatus->text().startsWith(QStringLiteral("MP3Prio Report fertig. Benötigte Zeit: ")));
    }

    void bitrateReportFromTheButton() {
        TestServices t;
        TavoMP3PlayerMain w(t.services);
        loadPlaylist(t, w, m_songs);
        t.dialogs.answers = {Dialogs::Answer::Yes};
        QTest::mouseClick(w.BReportBitrate, Qt::LeftButton);
        QCOMPARE(t.dialogs.questions.size(), 1);
        QVERIFY(t.dialogs.questions.first().text.contains(w.BitrateReportPath +
                                                          QStringLiteral(" abgespeichert.")));
        const QList<QByteArray> lines = readAll(w.BitrateReportPath).split('\n');
        QCOMPARE(lines.size(), 102);
        QVERIFY(lines.at(0).startsWith("Ret: 0   BitRate: 128000 bps   VBR: 0   Playtime: 10 s    Zeit: "));
        QVERIFY(lines.at(1).startsWith("Ret: 0   BitRate: "));
        QVERIFY(lines.at(1).contains(" bps   VBR: 1   Playtime: 13 s    Zeit: "));
        QVERIFY(w.FTest->text().startsWith(QStringLiteral("100/100 - Zeit akt. Lied: ")));
        QVERIFY(w.FStatus->text().startsWith(QStringLiteral("Bitrate Report fertig. Benötigte Zeit: ")));
    }

    void escapeStopsTheBitrateReportAndClicksWait() {
        TestServices t;
        TavoMP3PlayerMain w(t.services);
        loadPlaylist(t, w, m_songs);
        t.dialogs.answers = {Dialogs::Answer::Yes, Dialogs::Answer::Yes};
        // Pending when the run starts: Esc pressed on the list, and a click on the other report
        // button that must not start a second report inside the first.
        QCoreApplication::postEvent(w.FPlaylist,
                                    new QKeyEvent(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier));
        const QPointF centre = QPointF(w.BReportPrio->rect().center());
        QCoreApplication::postEvent(w.BReportPrio,
                                    new QMouseEvent(QEvent::MouseButtonPress, centre, centre, Qt::LeftButton,
                                                    Qt::LeftButton, Qt::NoModifier));
        QCoreApplication::postEvent(w.BReportPrio,
                                    new QMouseEvent(QEvent::MouseButtonRelease, centre, centre,
                                                    Qt::LeftButton, Qt::NoButton, Qt::NoModifier));
        QTest::mouseClick(w.BReportBitrate, Qt::LeftButton);
        QCOMPARE(t.dialogs.questions.size(), 2);
        QCOMPARE(t.dialogs.questions.at(1).text,
                 QStringLiteral("Möchten Sie den Bitratereport wirklich abbrechen?"));
        QCOMPARE(w.FStatus->text(), QStringLiteral("Bitratereport abgebrochen."));
        QCOMPARE(readAll(w.BitrateReportPath).count("\r\n"), 1);
        QCoreApplication::processEvents();
        QCOMPARE(t.dialogs.questions.size(), 2);
    }

    void shortPlaylistShowsTheErrorMessage() {
        TestServices t;
        TavoMP3PlayerMain w(t.services);
        loadPlaylist(t, w, m_songs.mid(0, 2));
        QTest::mouseClick(w.BReportBitrate, Qt::LeftButton);
        QCOMPARE(t.dialogs.messageTexts(),
                 QStringList{QStringLiteral(
                     "Fehler in BReportBitrate_Click in Zeile 1: Index außerhalb des gültigen Bereichs")});
        QVERIFY(w.isVisible());
    }

    void clickedSongShowsItsHistogram() {
        TestServices t;
        TavoMP3PlayerMain w(t.services);
        loadPlaylist(t, w, m_songs);
        auto click = [&w](int row) {
            const QRect r = w.FPlaylist->visualRect(w.FPlaylist->model()->index(row, 0));
            QTest::mouseClick(w.FPlaylist->viewport(), Qt::LeftButton, Qt::NoModifier, r.center());
        };
        click(0); // CBR: one full bar at 128 kbit/s (class 9)
        for (int i = 1; i <= 14; ++i)
            QCOMPARE(w.TavoxMiniDiagram1->lineEnd(i), i == 9 ? 1320 : 380);
        click(1); // VBR: every class of the pattern has frames
        int full = 0;
        for (int i = 1; i <= 14; ++i) {
            QVERIFY(w.TavoxMiniDiagram1->lineEnd(i) > 380);
            full += w.TavoxMiniDiagram1->lineEnd(i) == 1320 ? 1 : 0;
        }
        QVERIFY(full >= 1);
        if (!qEnvironmentVariableIsEmpty("TAVO_SCREENSHOT_DIR"))
            w.grab().save(qEnvironmentVariable("TAVO_SCREENSHOT_DIR") +
                          QStringLiteral("/MainWindowReports.png"));
        QVERIFY(t.dialogs.questions.isEmpty());
    }
};

QTEST_MAIN(tst_MainWindowReports)
#include "tst_MainWindowReports.moc"
