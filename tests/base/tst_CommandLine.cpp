#include "base/CommandLine.h"
#include "base/RuntimeError.h"

#include <QTest>

class TestCommandLine : public QObject {
    Q_OBJECT
private slots:
    void switches_data() {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<bool>("show");
        QTest::addColumn<bool>("play");
        QTest::newRow("empty") << QString() << true << false;
        QTest::newRow("blanks only") << QStringLiteral("     ") << true << false;
        QTest::newRow("start") << QStringLiteral("start") << false << false;
        QTest::newRow("capitals") << QStringLiteral("START") << false << false;
        QTest::newRow("slash") << QStringLiteral("/start") << false << false;
        QTest::newRow("hyphen") << QStringLiteral("-Start") << false << false;
        QTest::newRow("double hyphen") << QStringLiteral("--play") << true << true;
        QTest::newRow("inside the word") << QStringLiteral("s/t-a-r/t") << false << false;
        QTest::newRow("start play") << QStringLiteral("start play") << false << true;
        QTest::newRow("play start") << QStringLiteral("/PLAY -start") << false << true;
        QTest::newRow("written together") << QStringLiteral("startplay") << true << false;
        QTest::newRow("blank runs and edges") << QStringLiteral("   play     start   ") << false << true;
        QTest::newRow("quotes stay") << QStringLiteral("\"play\"") << true << false;
        QTest::newRow("tab is not a blank") << QStringLiteral("play\tstart") << true << false;
        QTest::newRow("unknown words") << QStringLiteral("foo bar play") << true << true;
    }
    void switches() {
        QFETCH(QString, arguments);
        QFETCH(bool, show);
        QFETCH(bool, play);
        const CommandLine cmd = CommandLine::parse(arguments);
        QCOMPARE(cmd.showWindow, show);
        QCOMPARE(cmd.playOnStart, play);
    }

    void wordsAreSplitOnBlankRuns() {
        QCOMPARE(CommandLine::parse(QStringLiteral("  a   b-c /d ")).words,
                 (QStringList{QStringLiteral("a"), QStringLiteral("bc"), QStringLiteral("d")}));
    }

    // The word counter is 8 bits wide: 256 words fit, the 257th overflows.
    void wordCounterOverflow_data() {
        QTest::addColumn<int>("words");
        QTest::addColumn<bool>("overflows");
        QTest::newRow("256 words") << 256 << false;
        QTest::newRow("257 words") << 257 << true;
    }
    void wordCounterOverflow() {
        QFETCH(int, words);
        QFETCH(bool, overflows);
        QStringList list;
        for (int i = 0; i < words; ++i)
            list.append(QStringLiteral("w"));
        list.last() = QStringLiteral("play");
        const QString text = list.join(QLatin1Char(' '));
        if (overflows) {
            try {
                CommandLine::parse(text);
                QFAIL("no overflow");
            } catch (const RuntimeError& e) {
                QCOMPARE(e.number(), int(RuntimeError::Overflow));
            }
        } else {
            const CommandLine cmd = CommandLine::parse(text);
            QCOMPARE(cmd.words.size(), words);
            QVERIFY(cmd.playOnStart);
        }
    }
};

QTEST_GUILESS_MAIN(TestCommandLine)
#include "tst_CommandLine.moc"
