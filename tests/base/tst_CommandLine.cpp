#include "base/CommandLine.h"
#include "base/RuntimeError.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestCommandLine : public QObject {
    Q_OBJECT
private slots:
    void switches_data() {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<bool>("show");
        QTest::addColumn<bool>("play");
        QTest::newRow("empty") << "" << true << false;
        QTest::newRow("blanks only") << "     " << true << false;
        QTest::newRow("start") << "start" << false << false;
        QTest::newRow("slash") << "/start" << false << false;
        QTest::newRow("hyphen") << "-Start" << false << false;
        QTest::newRow("double hyphen") << "--play" << true << true;
        QTest::newRow("start play") << "start play" << false << true;
        QTest::newRow("play start") << "/PLAY -start" << false << true;
        QTest::newRow("written together") << "startplay" << true << false;
        QTest::newRow("blank runs and edges") << "   play     start   " << false << true;
        QTest::newRow("quotes stay") << "\"play\"" << true << false;
        QTest::newRow("tab is not a blank") << "play\tstart" << true << false;
        QTest::newRow("unknown words") << "foo bar play" << true << true;
    }
    void switches() {
        QFETCH(QString, arguments);
        QFETCH(bool, show);
        QFETCH(bool, play);
        const CommandLine cmd = CommandLine::parse(arguments);
        QCOMPARE(QPair(cmd.showWindow, cmd.playOnStart), QPair(show, play));
    }

    // Words are split on blank runs; the word counter is 8 bits wide: 256 words fit, the 257th overflows.
    void words() {
        QCOMPARE(CommandLine::parse(u"  a   b-c /d "_s).words, (QStringList{u"a"_s, u"bc"_s, u"d"_s}));
        const QString words256 = QString(u"w "_s).repeated(255) + u"play"_s;
        QCOMPARE(CommandLine::parse(words256).words.size(), 256);
        QVERIFY(CommandLine::parse(words256).playOnStart);
        QVERIFY_THROWS_EXCEPTION(RuntimeError, CommandLine::parse(u"w "_s + words256));
    }
};

QTEST_GUILESS_MAIN(TestCommandLine)
#include "tst_CommandLine.moc"
