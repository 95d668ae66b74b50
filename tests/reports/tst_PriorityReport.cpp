// The priority report: which lines are listed, the question, the progress counter and the errors.
#include "base/ErrorReport.h"
#include "reports/PriorityReport.h"
#include "support/TestServices.h"

#include <QFile>
#include <QLocale>
#include <QTemporaryDir>
#include <QTest>

namespace {

QByteArray readAll(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<fehlt>");
}

} // namespace

class TestPriorityReport : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    QString reportPath() const { return m_dir.filePath(QStringLiteral("MP3Prio.txt")); }

    struct Run {
        TestServices t;
        PriorityReport report;
        QStringList progress;
        explicit Run(const QString& path) : report(t.services, path) {}
        bool go(const QStringList& lines) {
            return ErrorReport::guard(t.dialogs, QStringLiteral("BReportPrio_Click"), [&](int& line) {
                report.Run(
                    lines, [this](const QString& text) { progress << text; }, line);
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
            << QStringList{QStringLiteral("/m/fünf.mp3:5"), QStringLiteral("/m/vier.mp3:4"),
                           QStringLiteral("/m/drei.mp3:3"), QStringLiteral("/m/zwei.mp3:2"),
                           QStringLiteral("/m/eins.mp3:1"), QStringLiteral("/m/null.mp3:0")}
            << QByteArray("/m/drei.mp3 - 3\r\n/m/zwei.mp3 - 2\r\n/m/eins.mp3 - 1\r\n/m/null.mp3 - 0\r\n");
        QTest::newRow("playlist order kept")
            << QStringList{QStringLiteral("/b.mp3:0"), QStringLiteral("/a.mp3:3"), QStringLiteral("/c.mp3:5")}
            << QByteArray("/b.mp3 - 0\r\n/a.mp3 - 3\r\n");
        QTest::newRow("only normal priorities: empty file")
            << QStringList{QStringLiteral("/a.mp3:5"), QStringLiteral("/b.mp3:4")} << QByteArray();
        QTest::newRow("colons in the path")
            << QStringList{QStringLiteral("C:\\Musik\\x.mp3:1")} << QByteArray("C:\\Musik\\x.mp3 - 1\r\n");
        QTest::newRow("two characters: empty song")
            << QStringList{QStringLiteral(":2")} << QByteArray(" - 2\r\n");
    }
    void listsPrioritiesBelowFour() {
        QFETCH(QStringList, lines);
        QFETCH(QByteArray, report);
        Run r(reportPath());
        r.t.dialogs.answers = {Dialogs::Answer::Yes};
        r.t.clock.stepPerReading = 1.5;
        QVERIFY(r.go(lines));
        QCOMPARE(readAll(reportPath()), report);
        QCOMPARE(r.progress.size(), lines.size());
        QCOMPARE(r.progress.first(), QStringLiteral("0/%1").arg(lines.size() - 1));
        QCOMPARE(r.progress.last(), QStringLiteral("%1/%1").arg(lines.size() - 1));
        QCOMPARE(r.t.status.text(), QStringLiteral("MP3Prio Report fertig. Benötigte Zeit: 1,5 s"));
    }

    void question() {
        Run r(reportPath());
        r.t.dialogs.answers = {Dialogs::Answer::Yes};
        QVERIFY(r.go({QStringLiteral("/a.mp3:1")}));
        QCOMPARE(r.t.dialogs.questions.size(), 1);
        QCOMPARE(r.t.dialogs.questions.first().text,
                 QStringLiteral("Die Liedprioritätsreport wird unter ") + reportPath() +
                     QStringLiteral(" abgespeichert.\r\rWollen Sie fortfahren?"));
        QCOMPARE(r.t.dialogs.questions.first().buttons, Dialogs::Buttons::YesNoCancel);
    }

    void anyAnswerButYesLeavesEverything_data() {
        QTest::addColumn<Dialogs::Answer>("answer");
        QTest::newRow("Nein") << Dialogs::Answer::No;
        QTest::newRow("Abbrechen") << Dialogs::Answer::Cancel;
    }
    void anyAnswerButYesLeavesEverything() {
        QFETCH(Dialogs::Answer, answer);
        QFile old(reportPath());
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.write("alt\r\n");
        old.close();
        Run r(reportPath());
        r.t.status.setText(QStringLiteral("vorher"));
        r.t.dialogs.answers = {answer};
        QVERIFY(r.go({QStringLiteral("/a.mp3:0")}));
        QCOMPARE(readAll(reportPath()), QByteArray("alt\r\n"));
        QCOMPARE(r.t.status.text(), QStringLiteral("vorher"));
        QVERIFY(r.progress.isEmpty());
    }

    void badEntriesRaiseErrors_data() {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QByteArray>("written");
        QTest::newRow("empty playlist")
            << QStringList{QString()}
            << QStringLiteral("Fehler in BReportPrio_Click in Zeile 4: Ungültiger Prozeduraufruf oder "
                              "ungültiges Argument")
            << QByteArray();
        QTest::newRow("one character after listed ones")
            << QStringList{QStringLiteral("/a.mp3:1"), QStringLiteral("x")}
            << QStringLiteral("Fehler in BReportPrio_Click in Zeile 4: Ungültiger Prozeduraufruf oder "
                              "ungültiges Argument")
            << QByteArray("/a.mp3 - 1\r\n");
        QTest::newRow("no digit at the end")
            << QStringList{QStringLiteral("/a.mp3:x")}
            << QStringLiteral("Fehler in BReportPrio_Click in Zeile 4: Typen unverträglich") << QByteArray();
    }
    void badEntriesRaiseErrors() {
        QFETCH(QStringList, lines);
        QFETCH(QString, message);
        QFETCH(QByteArray, written);
        Run r(reportPath());
        r.t.dialogs.answers = {Dialogs::Answer::Yes};
        QVERIFY(!r.go(lines));
        QCOMPARE(r.t.dialogs.questions.last().text, message);
        QCOMPARE(readAll(reportPath()), written);
    }

    void sixteenBitCounter_data() {
        QTest::addColumn<int>("entries");
        QTest::addColumn<bool>("overflows");
        QTest::addColumn<int>("progressCalls");
        QTest::newRow("32767 entries") << 32767 << false << 32767;
        // The counter steps past 32767 after the last entry.
        QTest::newRow("32768 entries") << 32768 << true << 32768;
        // The bound itself does not fit.
        QTest::newRow("32769 entries") << 32769 << true << 0;
    }
    void sixteenBitCounter() {
        QFETCH(int, entries);
        QFETCH(bool, overflows);
        QFETCH(int, progressCalls);
        QStringList lines;
        lines.reserve(entries);
        for (int i = 0; i < entries; ++i)
            lines << QStringLiteral("/m/%1.mp3:%2").arg(i).arg(i % 6);
        Run r(reportPath());
        r.t.dialogs.answers = {Dialogs::Answer::Yes};
        QCOMPARE(r.go(lines), !overflows);
        QCOMPARE(r.progress.size(), progressCalls);
        if (overflows)
            QCOMPARE(r.t.dialogs.questions.last().text,
                     QStringLiteral("Fehler in BReportPrio_Click in Zeile 4: Überlauf"));
    }

    void reportFileThatCannotBeCreated() {
        Run r(m_dir.path()); // a folder
        r.t.dialogs.answers = {Dialogs::Answer::Yes};
        QVERIFY(!r.go({QStringLiteral("/a.mp3:1")}));
        QCOMPARE(
            r.t.dialogs.questions.last().text,
            QStringLiteral("Fehler in BReportPrio_Click in Zeile 3: Fehler beim Zugriff auf Pfad/Datei"));
    }

    void defaultPathIsInTheHomeFolder() {
        TestServices t;
        QCOMPARE(PriorityReport(t.services).reportPath(),
                 QDir::toNativeSeparators(QDir::homePath() + QStringLiteral("/MP3Prio.txt")));
        QVERIFY(PriorityReport(t.services)
                    .questionText()
                    .contains(QDir::homePath() + QStringLiteral("/MP3Prio.txt")));
    }
};

QTEST_GUILESS_MAIN(TestPriorityReport)
#include "tst_PriorityReport.moc"
