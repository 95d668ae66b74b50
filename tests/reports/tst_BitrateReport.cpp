// The bitrate report with a scripted information call, a stepped clock and scripted answers.
#include "base/ErrorReport.h"
#include "reports/BitrateReport.h"
#include "support/Mp3Synth.h"
#include "support/TestServices.h"

#include <QFile>
#include <QLocale>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QChar CR(13);

QStringList playlist(int songs) {
    QStringList lines;
    for (int i = 0; i < songs; ++i)
        lines << QStringLiteral("/musik/Lied %1.mp3:5").arg(i);
    return lines;
}

QByteArray readAll(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<fehlt>");
}

// An information call that takes a quarter second on the fake clock and answers from the
// song's number: bit rate 1000 x n, VBR n mod 2, playing time n. Songs in `failing` return -2
// without touching the outputs.
struct FakeInfo {
    FakeClock* clock;
    QList<int> failing;
    QStringList calls;
    qint32 operator()(const QString& path, qint32& bitRate, qint32& vbr, qint32& playtime,
                      Mp3Info::Histogram& histogram) {
        calls << path;
        clock->advance(0.25);
        const int n = path.section(QLatin1Char(' '), 1).section(QLatin1Char('.'), 0, 0).toInt();
        if (failing.contains(n))
            return -2;
        bitRate = 1000 * n;
        vbr = n % 2;
        playtime = n;
        histogram[9] = n;
        return 0;
    }
};

} // namespace

class TestBitrateReport : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    QString reportPath() const { return m_dir.filePath(QStringLiteral("MP3Info.txt")); }

    struct Run {
        TestServices t;
        FakeInfo info{&t.clock, {}, {}};
        BitrateReport report;
        QStringList progress;
        QList<int> escapeAt;
        int polls = 0;
        explicit Run(const QString& path) : report(t.services, path) {
            report.setInfoCall([this](const QString& p, qint32& b, qint32& v, qint32& pt,
                                      Mp3Info::Histogram& h) { return info(p, b, v, pt, h); });
        }
        bool go(const QStringList& lines) {
            BitrateReport::Hooks hooks;
            hooks.showProgress = [this](const QString& text) { progress << text; };
            hooks.escapePressed = [this] { return escapeAt.contains(polls++); };
            return ErrorReport::guard(t.dialogs, QStringLiteral("BReportBitrate_Click"),
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
        QTest::addColumn<QString>("estimate");
        // 4 calls timed, divided by 3; estimate = (last index x per song + 1) / 60, halves to even.
        QTest::newRow("500 songs, 0.25 s") << 500 << 0.25 << QStringLiteral("0,33") << QStringLiteral("3");
        QTest::newRow("101 songs, 0.75 s") << 101 << 0.75 << QStringLiteral("1") << QStringLiteral("2");
        QTest::newRow("4 songs, instant") << 4 << 0.0 << QStringLiteral("0") << QStringLiteral("0");
        // 3 x 0.5 / 60 = 0.025 -> 0; 89 x 0.5 + 1 = 45.5 / 60 -> 1.
        QTest::newRow("90 songs, 0.375 s") << 90 << 0.375 << QStringLiteral("0,5") << QStringLiteral("1");
    }
    void questionStatesEstimate() {
        QFETCH(int, songs);
        QFETCH(double, callSeconds);
        QFETCH(QString, perSong);
        QFETCH(QString, estimate);
        Run r(reportPath());
        r.report.setInfoCall(
            [&r, callSeconds](const QString&, qint32&, qint32&, qint32&, Mp3Info::Histogram&) {
                r.t.clock.advance(callSeconds);
                return 0;
            });
        r.t.dialogs.answers = {Dialogs::Answer::No};
        QVERIFY(r.go(playlist(songs)));
        QCOMPARE(r.t.dialogs.questions.size(), 1);
        const auto& q = r.t.dialogs.questions.first();
        QCOMPARE(
            q.text,
            QStringLiteral("Die Analyse kann einige Zeit dauern!") + CR +
                QStringLiteral("Die Bitrateanalyse dauert ca. ") + perSong +
                QStringLiteral(" s pro Lied ---> somit hochgerechnet ") + estimate +
                QStringLiteral(" min für alle ") + QString::number(songs) + QStringLiteral(" MP3s...") + CR +
                CR + QStringLiteral("Der MP3 Bitrate Report wird unter ") + reportPath() +
                QStringLiteral(" abgespeichert.") + CR + CR + QStringLiteral("Möchten Sie fortfahren?") + CR +
                CR + CR +
                QStringLiteral("(Um den Report frühzeitig abzubrechen halten Sie die ESC Taste gedrückt)"));
        QCOMPARE(q.buttons, Dialogs::Buttons::YesNoCancel);
        QCOMPARE(q.icon, Dialogs::Icon::Question);
        QCOMPARE(q.title, QString());
    }

    void anyAnswerButYesCancels_data() {
        QTest::addColumn<Dialogs::Answer>("answer");
        QTest::newRow("Nein") << Dialogs::Answer::No;
        QTest::newRow("Abbrechen") << Dialogs::Answer::Cancel;
    }
    void anyAnswerButYesCancels() {
        QFETCH(Dialogs::Answer, answer);
        QFile old(reportPath());
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.write("alter Report\r\n");
        old.close();
        Run r(reportPath());
        r.t.dialogs.answers = {answer};
        QVERIFY(r.go(playlist(500)));
        QCOMPARE(r.t.status.text(), QStringLiteral("Vorgang abgebrochen."));
        QCOMPARE(readAll(reportPath()), QByteArray("alter Report\r\n"));
        QCOMPARE(r.info.calls.size(), 4); // the speed test only
        QVERIFY(r.progress.isEmpty());
    }

    void writesFixed101Songs() {
        Run r(reportPath());
        r.t.dialogs.answers = {Dialogs::Answer::Yes};
        QVERIFY(r.go(playlist(500)));

        const QList<QByteArray> lines = readAll(reportPath()).split('\n');
        QCOMPARE(lines.size(), 102); // 101 lines and the empty rest after the last CR LF
        QCOMPARE(lines.last(), QByteArray());
        QCOMPARE(lines.at(0), QByteArray("Ret: 0   BitRate: 0 bps   VBR: 0   Playtime: 0 s    Zeit: 0,25  -  "
                                         "/musik/Lied 0.mp3\r"));
        QCOMPARE(lines.at(37),
                 QByteArray("Ret: 0   BitRate: 37000 bps   VBR: 1   Playtime: 37 s    Zeit: 0,25  -  "
                            "/musik/Lied 37.mp3\r"));
        QCOMPARE(lines.at(100),
                 QByteArray("Ret: 0   BitRate: 100000 bps   VBR: 0   Playtime: 100 s    Zeit: 0,25  "
                            "-  /musik/Lied 100.mp3\r"));
        QCOMPARE(r.info.calls.size(), 4 + 101);

        // No progress for the first song; then one line per song against the fixed 100.
        QCOMPARE(r.progress.size(), 100);
        QCOMPARE(r.progress.first(),
                 QStringLiteral("1/100 - Zeit akt. Lied: 0,25 s - geschätzte Dauer: 0,01/0,83 min"));
        QCOMPARE(r.progress.last(),
                 QStringLiteral("100/100 - Zeit akt. Lied: 0,25 s - geschätzte Dauer: 0,42/0,42 min"));
        QCOMPARE(r.t.status.text(),
                 QStringLiteral(
                     "Bitrate Report fertig. Benötigte Zeit: 25,25 s für 100 Lieder (0,25 s pro Lied)"));
    }

    void failedCallKeepsPreviousValues() {
        Run r(reportPath());
        r.info.failing = {1, 2, 3, 5}; // 1..3 fail in the speed test too
        r.t.dialogs.answers = {Dialogs::Answer::Yes};
        QVERIFY(r.go(playlist(101)));
        const QList<QByteArray> lines = readAll(reportPath()).split('\n');
        QVERIFY(lines.at(4).startsWith("Ret: 0   BitRate: 4000 bps   VBR: 0   Playtime: 4 s"));
        QVERIFY(lines.at(5).startsWith("Ret: -2   BitRate: 4000 bps   VBR: 0   Playtime: 4 s"));
        // Song 0's line shows what the speed test's last successful call (song 0) left.
        QVERIFY(lines.at(1).startsWith("Ret: -2   BitRate: 0 bps"));
    }

    void escAsksAndStopsOnYes_data() {
        QTest::addColumn<QList<int>>("escapeAt");
        QTest::addColumn<QList<Dialogs::Answer>>("answers");
        QTest::addColumn<int>("linesWritten");
        QTest::addColumn<QString>("status");
        const QString done =
            QStringLiteral("Bitrate Report fertig. Benötigte Zeit: 25,25 s für 100 Lieder (0,25 s pro Lied)");
        QTest::newRow("Esc, Ja") << QList<int>{10}
                                 << QList<Dialogs::Answer>{Dialogs::Answer::Yes, Dialogs::Answer::Yes} << 11
                                 << QStringLiteral("Bitratereport abgebrochen.");
        QTest::newRow("Esc, Nein, Esc, Ja")
            << QList<int>{3, 50}
            << QList<Dialogs::Answer>{Dialogs::Answer::Yes, Dialogs::Answer::No, Dialogs::Answer::Yes} << 51
            << QStringLiteral("Bitratereport abgebrochen.");
        QTest::newRow("Esc, Abbrechen goes on")
            << QList<int>{0} << QList<Dialogs::Answer>{Dialogs::Answer::Yes, Dialogs::Answer::Cancel} << 101
            << done;
        QTest::newRow("Esc after the last song")
            << QList<int>{100} << QList<Dialogs::Answer>{Dialogs::Answer::Yes, Dialogs::Answer::Yes} << 101
            << QStringLiteral("Bitratereport abgebrochen.");
    }
    void escAsksAndStopsOnYes() {
        QFETCH(QList<int>, escapeAt);
        QFETCH(QList<Dialogs::Answer>, answers);
        QFETCH(int, linesWritten);
        QFETCH(QString, status);
        Run r(reportPath());
        r.escapeAt = escapeAt;
        r.t.dialogs.answers = answers;
        QVERIFY(r.go(playlist(300)));
        QCOMPARE(r.t.dialogs.questions.size(), 1 + escapeAt.size());
        for (int i = 1; i < r.t.dialogs.questions.size(); ++i) {
            QCOMPARE(r.t.dialogs.questions.at(i).text,
                     QStringLiteral("Möchten Sie den Bitratereport wirklich abbrechen?"));
            QCOMPARE(r.t.dialogs.questions.at(i).buttons, Dialogs::Buttons::YesNoCancel);
        }
        QCOMPARE(r.t.status.text(), status);
        QCOMPARE(readAll(reportPath()).count("\r\n"), linesWritten);
    }

    void shortPlaylistsRaiseErrors_data() {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<int>("questions");
        QTest::addColumn<QString>("message");
        QTest::addColumn<int>("linesWritten");
        QTest::newRow("3 songs: speed test")
            << playlist(3) << 0
            << QStringLiteral(
                   "Fehler in BReportBitrate_Click in Zeile 1: Index außerhalb des gültigen Bereichs")
            << -1;
        QTest::newRow("empty playlist")
            << QStringList{QString()} << 0
            << QStringLiteral("Fehler in BReportBitrate_Click in Zeile 1: Ungültiger Prozeduraufruf oder "
                              "ungültiges Argument")
            << -1;
        QTest::newRow("50 songs: main loop")
            << playlist(50) << 1
            << QStringLiteral(
                   "Fehler in BReportBitrate_Click in Zeile 6: Index außerhalb des gültigen Bereichs")
            << 50;
    }
    void shortPlaylistsRaiseErrors() {
        QFETCH(QStringList, lines);
        QFETCH(int, questions);
        QFETCH(QString, message);
        QFETCH(int, linesWritten);
        Run r(reportPath());
        r.t.dialogs.answers = {Dialogs::Answer::Yes};
        QVERIFY(!r.go(lines));
        QCOMPARE(r.t.dialogs.questions.size(), questions + 1);
        QCOMPARE(r.t.dialogs.questions.last().text, message);
        if (linesWritten < 0)
            QVERIFY(!QFile::exists(reportPath()));
        else
            QCOMPARE(readAll(reportPath()).count("\r\n"), linesWritten);
    }

    void reportFileThatCannotBeCreated() {
        Run r(m_dir.filePath(QStringLiteral("fehlt/MP3Info.txt")));
        r.t.dialogs.answers = {Dialogs::Answer::Yes};
        QVERIFY(!r.go(playlist(200)));
        QCOMPARE(r.t.dialogs.questions.last().text,
                 QStringLiteral("Fehler in BReportBitrate_Click in Zeile 5: Pfad nicht gefunden"));
    }

    void realFramesThroughTheBuiltInReader() {
        QTemporaryDir music;
        QStringList lines;
        const QByteArray song = Mp3Synth::cbrFrames(Mp3Synth::Frame{}, 1000); // 26.12 s of 128 kbps
        for (int i = 0; i < 101; ++i) {
            const QString path = music.filePath(QStringLiteral("song%1.mp3").arg(i));
            QFile f(path);
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write(i == 7 ? QByteArray("kein mp3") : song);
            lines << path + QStringLiteral(":5");
        }
        TestServices t;
        t.dialogs.answers = {Dialogs::Answer::Yes};
        BitrateReport report(t.services, reportPath());
        int line = 0;
        report.Run(lines, BitrateReport::Hooks{}, line);
        const QList<QByteArray> out = readAll(reportPath()).split('\n');
        QVERIFY(
            out.at(0).startsWith("Ret: 0   BitRate: 128000 bps   VBR: 0   Playtime: 26 s    Zeit: 0  -  "));
        QVERIFY(out.at(7).startsWith("Ret: -2   BitRate: 128000 bps   VBR: 0   Playtime: 26 s"));
        QVERIFY(out.at(7).endsWith("song7.mp3\r"));
    }
};

QTEST_GUILESS_MAIN(TestBitrateReport)
#include "tst_BitrateReport.moc"
