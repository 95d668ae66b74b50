// The priority report: which lines are listed, the question, the progress counter and the errors.
// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "base/ErrorReport.h"
#include "reports/PriorityReport.h"
#include "support/FileBytes.h"
#include "support/FullDisk.h"
#include "support/TestServices.h"

#include <QFile>
#include <QLocale>
#include <QTemporaryDir>
#include <QTest>

class TestPriorityReport : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    FullDisk m_disk;
    QString reportPath() const { return m_dir.filePath("MP3Prio.txt"); }

    struct Run {
        TestServices t;
        PriorityReport report;
        QStringList progress;
        explicit Run(const QString& path, Dialogs::Answer answer = Dialogs::Answer::Yes)
            : report(t.services, path) {
            t.dialogs.answers = {answer};
        }
        bool go(const QStringList& lines) {
            return ErrorReport::guard(t.dialogs, "BReportPrio_Click", [&](int& line) {
                report.Run(
                    lines,
                    [this](qint32 done, qint32 last) {
                        progress << PriorityReport::progressText(done, last);
                    },
                    line);
            });
        }
    };

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }
    void init() { QFile::remove(reportPath()); }

    void listsPrioritiesBelowFour_data() {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QByteArray>("report");
        QTest::newRow("each digit once")
            << QStringList{"/m/fünf.mp3:5", "/m/vier.mp3:4", "/m/drei.mp3:3",
                           "/m/zwei.mp3:2", "/m/eins.mp3:1", "/m/null.mp3:0"}
            << QByteArray("/m/drei.mp3 - 3\r\n/m/zwei.mp3 - 2\r\n/m/eins.mp3 - 1\r\n/m/null.mp3 - 0\r\n");
        QTest::newRow("only normal priorities: empty file")
            << QStringList{"/a.mp3:5", "/b.mp3:4"} << QByteArray();
        QTest::newRow("colons in the path")
            << QStringList{"C:\\Musik\\x.mp3:1"} << QByteArray("C:\\Musik\\x.mp3 - 1\r\n");
        QTest::newRow("two characters: empty song") << QStringList{":2"} << QByteArray(" - 2\r\n");
    }
    void listsPrioritiesBelowFour() {
        QFETCH(QStringList, lines);
        QFETCH(QByteArray, report);
        Run r(reportPath());
        r.t.clock.stepPerReading = 1.5;
        QVERIFY(r.go(lines));
        QCOMPARE(FileBytes::read(reportPath()), report);
        QCOMPARE(r.progress.size(), lines.size());
        QCOMPARE(r.progress.first(), QString("0/%1").arg(lines.size() - 1));
        QCOMPARE(r.progress.last(), QString("%1/%1").arg(lines.size() - 1));
        QCOMPARE(r.t.status.text(), "MP3Prio Report fertig. Benötigte Zeit: 1,5 s");
        QCOMPARE(r.t.dialogs.messageTexts(),
                 QStringList{"Die Liedprioritätsreport wird unter " + reportPath() +
                             " abgespeichert.\r\rWollen Sie fortfahren?"});
        QCOMPARE(r.t.dialogs.questions.first().buttons, Dialogs::Buttons::YesNoCancel);
    }

    // Cancel is the default button, so Return alone leaves the old report.
    void cancelLeavesEverything() {
        QVERIFY(FileBytes::write(reportPath(), "alt\r\n"));
        Run r(reportPath(), Dialogs::Answer::Cancel);
        r.t.status.setText("vorher");
        QVERIFY(r.go({"/a.mp3:0"}));
        QCOMPARE(FileBytes::read(reportPath()), QByteArray("alt\r\n"));
        QCOMPARE(r.t.status.text(), "vorher");
        QVERIFY(r.progress.isEmpty());
    }

    void badEntriesRaiseErrors_data() {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QString>("report");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QByteArray>("written");
        const QString mine = m_dir.filePath("MP3Prio.txt");
        const QString invalid = "Zeile 4: Ungültiger Prozeduraufruf oder ungültiges Argument";
        QTest::newRow("empty playlist") << QStringList{QString()} << mine << invalid << QByteArray();
        QTest::newRow("one character after listed ones")
            << QStringList{"/a.mp3:1", "x"} << mine << invalid << QByteArray("/a.mp3 - 1\r\n");
        QTest::newRow("no digit at the end")
            << QStringList{"/a.mp3:x"} << mine << "Zeile 4: Typen unverträglich" << QByteArray();
        QTest::newRow("report file is a folder")
            << QStringList{"/a.mp3:1"} << m_dir.path() << "Zeile 3: Fehler beim Zugriff auf Pfad/Datei"
            << QByteArray("<missing>");
        // The old report stays whole, and the report does not say "fertig".
        QTest::newRow("full disk") << QStringList{"/a.mp3:1"} << m_disk.path("MP3Prio.txt")
                                   << "Zeile 5: Datenträger voll" << QByteArray("alter Report\r\n");
    }
    void badEntriesRaiseErrors() {
        QFETCH(QStringList, lines);
        QFETCH(QString, report);
        QFETCH(QString, message);
        QFETCH(QByteArray, written);
        const bool full = report == m_disk.path("MP3Prio.txt");
        if (full && !m_disk.ready())
            QSKIP(FullDisk::whyNot());
        if (full) {
            FileBytes::write(report, written);
            m_disk.fill();
        }
        Run r(report);
        const bool done = r.go(lines);
        m_disk.drain();
        QVERIFY(!done);
        QCOMPARE(r.t.status.text(), QString());
        QCOMPARE(r.t.dialogs.questions.last().text, "Fehler in BReportPrio_Click in " + message);
        QCOMPARE(FileBytes::read(report), written);
    }
};

QTEST_GUILESS_MAIN(TestPriorityReport)
#include "tst_PriorityReport.moc"
