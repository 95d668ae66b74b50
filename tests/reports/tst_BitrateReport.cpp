// The bitrate report with a scripted information call, a stepped clock and scripted answers.
// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "base/ErrorReport.h"
#include "reports/BitrateReport.h"
#include "support/FileBytes.h"
#include "support/FullDisk.h"
#include "support/TestServices.h"

#include <QFile>
#include <QLocale>
#include <QTemporaryDir>
#include <QTest>

namespace {

QStringList playlist(int songs) {
    QStringList lines;
    for (int i = 0; i < songs; ++i)
        lines << QString("/musik/Lied %1.mp3:5").arg(i);
    return lines;
}

} // namespace

class TestBitrateReport : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    FullDisk m_disk;
    QString reportPath() const { return m_dir.filePath("MP3Info.txt"); }

    // The information call takes callSeconds on the fake clock and answers from the song's number:
    // bit rate 1000 x n, VBR n mod 2, playing time n. Songs in `failing` return -2 without touching
    // the outputs.
    struct Run {
        TestServices t;
        BitrateReport report;
        double callSeconds = 0.25;
        QList<int> failing;
        QStringList calls;
        QStringList progress;
        QList<int> escapeAt;
        int polls = 0;
        explicit Run(const QString& path) : report(t.services, path) {
            report.setInfoCall([this](const QString& p, qint32& bitRate, qint32& vbr, qint32& playtime,
                                      Mp3Info::Histogram& histogram) {
                calls << p;
                t.clock.advance(callSeconds);
                const int n = p.section(' ', 1).section('.', 0, 0).toInt();
                if (failing.contains(n))
                    return -2;
                bitRate = 1000 * n;
                vbr = n % 2;
                playtime = n;
                histogram[9] = n;
                return 0;
            });
        }
        bool go(const QStringList& lines) {
            BitrateReport::Hooks hooks;
            hooks.showProgress = [this](const QString& text) { progress << text; };
            hooks.escapePressed = [this] { return escapeAt.contains(polls++); };
            return ErrorReport::guard(t.dialogs, "BReportBitrate_Click",
                                      [&](int& line) { report.Run(lines, hooks, line); });
        }
    };

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }
    void init() { QFile::remove(reportPath()); }

    void questionStatesEstimate_data() {
        QTest::addColumn<int>("songs");
        QTest::addColumn<double>("callSeconds");
        QTest::addColumn<QString>("perSong");
        QTest::addColumn<int>("estimate");
        // 4 calls timed, divided by 3; estimate = (last index x per song + 1) / 60, halves to even.
        QTest::newRow("500 songs, 0.25 s") << 500 << 0.25 << "0,33" << 3;
        QTest::newRow("101 songs, 0.75 s") << 101 << 0.75 << "1" << 2;
        QTest::newRow("4 songs, instant") << 4 << 0.0 << "0" << 0;
        // 3 x 0.5 / 60 = 0.025 -> 0; 89 x 0.5 + 1 = 45.5 / 60 -> 1.
        QTest::newRow("90 songs, 0.375 s") << 90 << 0.375 << "0,5" << 1;
    }
    void questionStatesEstimate() {
        QFETCH(int, songs);
        QFETCH(double, callSeconds);
        QFETCH(QString, perSong);
        QFETCH(int, estimate);
        QVERIFY(FileBytes::write(reportPath(), "alter Report\r\n"));
        Run r(reportPath());
        r.callSeconds = callSeconds;
        r.t.dialogs.answers = {Dialogs::Answer::Cancel}; // only Ja starts the report
        QVERIFY(r.go(playlist(songs)));
        QCOMPARE(r.t.status.text(), "Vorgang abgebrochen.");
        QCOMPARE(FileBytes::read(reportPath()), QByteArray("alter Report\r\n"));
        QCOMPARE(r.calls.size(), 4); // the speed test only
        QCOMPARE(r.t.dialogs.questions.size(), 1);
        const auto& q = r.t.dialogs.questions.first();
        QVERIFY2(q.text.contains(QString("ca. %1 s pro Lied ---> somit hochgerechnet %2 min für alle %3 MP3s")
                                     .arg(perSong)
                                     .arg(estimate)
                                     .arg(songs)),
                 qPrintable(q.text));
        QVERIFY(q.text.contains(" unter " + reportPath() + " abgespeichert."));
        QCOMPARE(q.buttons, Dialogs::Buttons::YesNoCancel);
    }

    void writesFixed101Songs() {
        Run r(reportPath());
        r.t.dialogs.answers = {Dialogs::Answer::Yes};
        QVERIFY(r.go(playlist(500)));

        const QList<QByteArray> lines = FileBytes::read(reportPath()).split('\n');
        QCOMPARE(lines.size(), 102); // 101 lines and the empty rest after the last CR LF
        QCOMPARE(lines.last(), QByteArray());
        QCOMPARE(lines.at(37),
                 QByteArray("Ret: 0   BitRate: 37000 bps   VBR: 1   Playtime: 37 s    Zeit: 0,25  -  "
                            "/musik/Lied 37.mp3\r"));
        QVERIFY(lines.at(100).endsWith("/musik/Lied 100.mp3\r"));
        QCOMPARE(r.calls.size(), 4 + 101);

        // No progress for the first song; then one line per song against the fixed 100.
        QCOMPARE(r.progress.size(), 100);
        QCOMPARE(r.progress.first(), "1/100 - Zeit akt. Lied: 0,25 s - geschätzte Dauer: 0,01/0,83 min");
        QCOMPARE(r.progress.last(), "100/100 - Zeit akt. Lied: 0,25 s - geschätzte Dauer: 0,42/0,42 min");
        QCOMPARE(r.t.status.text(),
                 "Bitrate Report fertig. Benötigte Zeit: 25,25 s für 100 Lieder (0,25 s pro Lied)");
    }

    void failedCallKeepsPreviousValues() {
        Run r(reportPath());
        r.failing = {1, 2, 3, 5}; // 1..3 fail in the speed test too
        r.t.dialogs.answers = {Dialogs::Answer::Yes};
        QVERIFY(r.go(playlist(101)));
        const QList<QByteArray> lines = FileBytes::read(reportPath()).split('\n');
        QVERIFY(lines.at(4).startsWith("Ret: 0   BitRate: 4000 bps   VBR: 0   Playtime: 4 s"));
        QVERIFY(lines.at(5).startsWith("Ret: -2   BitRate: 4000 bps   VBR: 0   Playtime: 4 s"));
        // Song 0's line shows what the speed test's last successful call (song 0) left.
        QVERIFY(lines.at(1).startsWith("Ret: -2   BitRate: 0 bps"));
    }

    void escAsksAndStopsOnYes_data() {
        QTest::addColumn<QList<int>>("escapeAt");
        QTest::addColumn<QList<Dialogs::Answer>>("answers");
        QTest::addColumn<int>("linesWritten");
        using A = Dialogs::Answer;
        QTest::newRow("Esc, Nein, Esc, Ja") << QList<int>{3, 50} << QList<A>{A::Yes, A::No, A::Yes} << 51;
        QTest::newRow("Esc, Abbrechen goes on") << QList<int>{0} << QList<A>{A::Yes, A::Cancel} << 101;
        QTest::newRow("Esc after the last song") << QList<int>{100} << QList<A>{A::Yes, A::Yes} << 101;
    }
    void escAsksAndStopsOnYes() {
        QFETCH(QList<int>, escapeAt);
        QFETCH(QList<Dialogs::Answer>, answers);
        QFETCH(int, linesWritten);
        Run r(reportPath());
        r.escapeAt = escapeAt;
        r.t.dialogs.answers = answers;
        QVERIFY(r.go(playlist(300)));
        QCOMPARE(r.t.dialogs.messageTexts().mid(1),
                 QStringList(escapeAt.size(), "Möchten Sie den Bitratereport wirklich abbrechen?"));
        QCOMPARE(r.t.dialogs.questions.last().buttons, Dialogs::Buttons::YesNoCancel);
        QCOMPARE(r.t.status.text().startsWith("Bitratereport abgebrochen."),
                 answers.last() == Dialogs::Answer::Yes);
        QCOMPARE(FileBytes::read(reportPath()).count("\r\n"), linesWritten);
    }

    void errorsStopTheReport_data() {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QString>("report");
        QTest::addColumn<int>("questions");
        QTest::addColumn<QString>("message");
        QTest::addColumn<int>("linesWritten"); // -1: no report file
        const QString index = "Index außerhalb des gültigen Bereichs";
        const QString mine = m_dir.filePath("MP3Info.txt");
        QTest::newRow("empty playlist")
            << QStringList{QString()} << mine << 0
            << "Zeile 1: Ungültiger Prozeduraufruf oder ungültiges Argument" << -1;
        QTest::newRow("50 songs: main loop") << playlist(50) << mine << 1 << "Zeile 6: " + index << 50;
        QTest::newRow("report folder missing") << playlist(200) << m_dir.filePath("fehlt/MP3Info.txt") << 1
                                               << "Zeile 5: Pfad nicht gefunden" << -1;
        // The one line of the old report stays.
        QTest::newRow("full disk") << playlist(200) << m_disk.path("MP3Info.txt") << 1
                                   << "Zeile 7: Datenträger voll" << 1;
    }
    void errorsStopTheReport() {
        QFETCH(QStringList, lines);
        QFETCH(QString, report);
        QFETCH(int, questions);
        QFETCH(QString, message);
        QFETCH(int, linesWritten);
        const bool full = report == m_disk.path("MP3Info.txt");
        if (full && !m_disk.ready())
            QSKIP(FullDisk::whyNot());
        if (full) {
            FileBytes::write(report, "alter Report\r\n");
            m_disk.fill();
        }
        Run r(report);
        r.t.dialogs.answers = {Dialogs::Answer::Yes};
        const bool done = r.go(lines);
        m_disk.drain();
        QVERIFY(!done);
        QVERIFY(!r.t.status.text().contains("fertig"));
        QCOMPARE(r.t.dialogs.questions.size(), questions + 1);
        QCOMPARE(r.t.dialogs.questions.last().text, "Fehler in BReportBitrate_Click in " + message);
        if (linesWritten < 0)
            QVERIFY(!QFile::exists(report));
        else
            QCOMPARE(FileBytes::read(report).count("\r\n"), linesWritten);
    }
};

QTEST_GUILESS_MAIN(TestBitrateReport)
#include "tst_BitrateReport.moc"
