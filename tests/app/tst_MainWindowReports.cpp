// The report buttons and the mini diagram on the main window, driven like a user would.
#include "support/MainWindowRig.h"
#include "support/Mp3Synth.h"
#include "ui/TavoxMiniDiagram.h"

#include <QKeyEvent>
#include <QLocale>
#include <QMouseEvent>
#include <QtTest>

using namespace Qt::StringLiterals;

class tst_MainWindowReports : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    QStringList m_songs; // 101 playlist lines of synthesized files

    // A loaded window on these lines whose reports go to the test's folder.
    void load(MainWindowRig& r, const QStringList& lines) {
        r.w.BitrateReportPath = m_dir.filePath(QStringLiteral("MP3Info.txt"));
        r.w.PriorityReportPath = m_dir.filePath(QStringLiteral("MP3Prio.txt"));
        r.load(lines);
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

    // Each report button asks first, then writes its report over the playlist and tells so.
    void reportButtons_data() {
        QTest::addColumn<bool>("bitrate");
        QTest::addColumn<int>("lines");
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("second");
        QTest::addColumn<QString>("progress");
        QTest::addColumn<QString>("status");
        QTest::newRow("priorities 0..3 of i % 6")
            << false << 68 << u"Lied 000.mp3 - 0"_s << u"Lied 001.mp3 - 1"_s << u"100/100"_s
            << u"MP3Prio Report fertig. Benötigte Zeit: "_s;
        QTest::newRow("bitrate: CBR, then VBR")
            << true << 101 << u"Ret: 0   BitRate: 128000 bps   VBR: 0   Playtime: 10 s    Zeit: "_s
            << u" bps   VBR: 1   Playtime: 13 s    Zeit: "_s << u"100/100 - Zeit akt. Lied: "_s
            << u"Bitrate Report fertig. Benötigte Zeit: "_s;
    }
    void reportButtons() {
        QFETCH(bool, bitrate);
        QFETCH(int, lines);
        QFETCH(QString, first);
        QFETCH(QString, second);
        QFETCH(QString, progress);
        QFETCH(QString, status);
        MainWindowRig r;
        load(r, m_songs);
        TavoMP3PlayerMain& w = r.w;
        ScriptedDialogs& d = r.t.dialogs;
        d.answers = {Dialogs::Answer::Yes};
        QTest::mouseClick(bitrate ? w.BReportBitrate : w.BReportPrio, Qt::LeftButton);
        QCOMPARE(d.questions.size(), 1);
        const QString path = bitrate ? w.BitrateReportPath : w.PriorityReportPath;
        if (bitrate)
            QVERIFY(d.questions.first().text.contains(path + QStringLiteral(" abgespeichert.")));
        const QStringList written = QString::fromUtf8(readAll(path)).split(QStringLiteral("\r\n"));
        QCOMPARE(written.size(), lines + 1);
        QVERIFY2(written.at(0).contains(first), qPrintable(written.at(0)));
        QVERIFY2(written.at(1).contains(second), qPrintable(written.at(1)));
        QVERIFY(w.FTest->text().startsWith(progress));
        QVERIFY(w.FStatus->text().startsWith(status));
    }

    void escapeStopsTheBitrateReportAndClicksWait() {
        MainWindowRig r;
        load(r, m_songs);
        TavoMP3PlayerMain& w = r.w;
        ScriptedDialogs& d = r.t.dialogs;
        d.answers = {Dialogs::Answer::Yes, Dialogs::Answer::Yes};
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
        QCOMPARE(d.questions.size(), 2);
        QCOMPARE(d.questions.at(1).text, QStringLiteral("Möchten Sie den Bitratereport wirklich abbrechen?"));
        QCOMPARE(w.FStatus->text(), QStringLiteral("Bitratereport abgebrochen."));
        QCOMPARE(readAll(w.BitrateReportPath).count("\r\n"), 1);
        QCoreApplication::processEvents();
        QCOMPARE(d.questions.size(), 2);
    }

    void shortPlaylistShowsTheErrorMessage() {
        MainWindowRig r;
        load(r, m_songs.mid(0, 2));
        TavoMP3PlayerMain& w = r.w;
        ScriptedDialogs& d = r.t.dialogs;
        QTest::mouseClick(w.BReportBitrate, Qt::LeftButton);
        QCOMPARE(d.messageTexts(),
                 QStringList{QStringLiteral(
                     "Fehler in BReportBitrate_Click in Zeile 1: Index außerhalb des gültigen Bereichs")});
        QVERIFY(w.isVisible());
    }

    void clickedSongShowsItsHistogram() {
        MainWindowRig r;
        load(r, m_songs);
        TavoMP3PlayerMain& w = r.w;
        ScriptedDialogs& d = r.t.dialogs;
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
        QVERIFY(d.questions.isEmpty());
    }
};

QTEST_MAIN(tst_MainWindowReports)
#include "tst_MainWindowReports.moc"
