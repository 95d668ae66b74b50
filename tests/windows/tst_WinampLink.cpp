#include "base/StatusLine.h"
#include "player/WinampLink.h"
#include "support/ScriptedDialogs.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <windows.h>

using namespace Qt::StringLiterals;

// The Windows player link through real window messages, against FakeWinamp.exe: a scripted player
// that records every message it receives.
class tst_WinampLink : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    // A record of its own for each case: a player left from the case before may still hold its file.
    QString m_record;
    int m_case = 0;
    StatusLine m_status;
    ScriptedDialogs m_dialogs;
    std::unique_ptr<WinampLink> m_link;

    static QString fakePlayer() { return QCoreApplication::applicationDirPath() + u"/FakeWinamp.exe"_s; }
    static HWND playerWindow() { return FindWindowW(L"Winamp v1.x", nullptr); }
    QStringList recorded() const {
        QFile file(m_record);
        if (!file.open(QIODevice::ReadOnly))
            return {};
        return QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    }
    void forget() const { QFile(m_record).resize(0); }
    // One line of the player's test script, sent as the player reads it.
    static void tell(const QByteArray& line) {
        COPYDATASTRUCT record{0x54415630, DWORD(line.size()), const_cast<char*>(line.constData())};
        SendMessageW(playerWindow(), WM_COPYDATA, 0, LPARAM(&record));
    }
    int status() { return m_link->WinampGetInfo(PlayerLink::InfoStatus).toInt(); }
    void startPlayer() {
        m_link->StartWinamp(fakePlayer());
        QVERIFY(m_link->isConnected());
    }

private slots:
    void initTestCase() { QVERIFY(QFile::exists(fakePlayer())); }
    void init() {
        m_status.setText(QString());
        m_dialogs.questions.clear();
        m_link = std::make_unique<WinampLink>(m_status, m_dialogs);
        m_record = m_dir.filePath(u"record%1.txt"_s.arg(++m_case));
        qputenv("TAVO_FAKE_WINAMP_RECORD", QDir::toNativeSeparators(m_record).toLocal8Bit());
        qunsetenv("TAVO_FAKE_WINAMP_NEVER");
    }
    void cleanup() {
        if (playerWindow())
            tell("close");
        QTRY_VERIFY(!playerWindow());
    }

    void start_data() {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("alreadyRunning");
        QTest::addColumn<QByteArray>("neverOpensMs");
        QTest::addColumn<bool>("connected");
        QTest::addColumn<QString>("statusText");
        QTest::addColumn<QStringList>("messages");
        QTest::addColumn<int>("starts");
        const QString fake = fakePlayer();
        QTest::newRow("started") << fake << false << QByteArray() << true << QString() << QStringList() << 1;
        QTest::newRow("running one found, whatever the path")
            << u""_s << true << QByteArray() << true << QString() << QStringList() << 1;
        // Kept: the wait ends with the overflow report and the program goes on without a player.
        QTest::newRow("never opens") << fake << false << QByteArray("8000") << false
                                     << u"WinampModule Error: Überlauf and number 6"_s << QStringList() << 1;
        QTest::newRow("wrong path")
            << u"C:\\nicht\\da\\Winamp.exe"_s << false << QByteArray() << false << QString()
            << QStringList{u"The winamp path provided is incorrect.  Please specify a correct path"_s} << 0;
    }
    void start() {
        QFETCH(QString, path);
        QFETCH(bool, alreadyRunning);
        QFETCH(QByteArray, neverOpensMs);
        if (alreadyRunning) {
            QVERIFY(QProcess::startDetached(fakePlayer(), {}));
            QTRY_VERIFY_WITH_TIMEOUT(playerWindow(), 20000);
        }
        if (!neverOpensMs.isEmpty()) {
            qputenv("TAVO_FAKE_WINAMP_NEVER", neverOpensMs);
            m_link->startWaitMs = 1500; // well before the player ends by itself
        }
        m_link->StartWinamp(path);
        QTEST(m_link->isConnected(), "connected");
        QTEST(m_status.text(), "statusText");
        QTEST(m_dialogs.messageTexts(), "messages");
        QTEST(int(recorded().filter(QRegularExpression(u"^start "_s)).size()), "starts");
    }

    void queries_data() {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<int>("code");
        QTest::addColumn<QVariant>("answer");
        QTest::addColumn<QStringList>("messages");
        const QString status = u"ipc 104 0"_s;
        QTest::newRow("playing") << "status 1"_ba << 2 << QVariant(1) << QStringList{status, status};
        QTest::newRow("paused") << "status 3"_ba << 2 << QVariant(3) << QStringList{status, status};
        QTest::newRow("length") << "length 245"_ba << 3 << QVariant(245)
                                << QStringList{status, u"ipc 105 1"_s};
        QTest::newRow("position") << "position 90500"_ba << 4 << QVariant(90500)
                                  << QStringList{status, u"ipc 105 0"_s};
        QTest::newRow("sample rate") << "samplerate 44"_ba << 10 << QVariant(44)
                                     << QStringList{status, u"ipc 126 0"_s};
        QTest::newRow("bitrate") << "bitrate 192"_ba << 11 << QVariant(192)
                                 << QStringList{status, u"ipc 126 1"_s};
        QTest::newRow("version") << "version 8341"_ba << 0 << QVariant(8341)
                                 << QStringList{status, u"ipc 0 0"_s};
        QTest::newRow("code 5: only the status query")
            << QByteArray() << 5 << QVariant() << QStringList{status};
        QTest::newRow("code 14") << QByteArray() << 14 << QVariant() << QStringList{status};
        QTest::newRow("title playing") << "title 3. Artist - Title - Winamp"_ba << 13
                                       << QVariant(u"Artist - Title"_s) << QStringList{status};
        QTest::newRow("title paused") << "title 3. Artist - Title - Winamp [Paused]"_ba << 13
                                      << QVariant(u"Artist - Title"_s) << QStringList{status};
        // Read as wide text: characters no 8-bit code page has together arrive whole.
        QTest::newRow("title beyond the code page") << u"title 12. 日本 - Grüße - Winamp"_s.toUtf8() << 13
                                                    << QVariant(u"日本 - Grüße"_s) << QStringList{status};
    }
    void queries() {
        QFETCH(QByteArray, script);
        QFETCH(int, code);
        startPlayer();
        if (!script.isEmpty())
            tell(script);
        forget();
        QTEST(m_link->WinampGetInfo(quint8(code)), "answer");
        QTEST(recorded(), "messages");
    }

    void playback() {
        // Two bytes a character in a multi-byte code page (the test runs with Japanese Windows
        // settings): a count of characters would cut the name short.
        const QString name = GetACP() == 932 ? u"C:\\Musik\\日本の歌.mp3"_s : u"C:\\Musik\\Grüße Ärger.mp3"_s;
        startPlayer();
        m_link->WinampPlayFile(name + u"\\"_s);
        m_link->WinampCommand(PlayerLink::JumpToLastCommand);
        m_link->WinampCommand(PlayerLink::PlayCommand);
        QTRY_COMPARE(status(), 1);
        QCOMPARE(m_link->WinampSetVolume(200), 0);
        QCOMPARE(m_link->WinampJumpToTime(90, 500), 0);
        m_link->WinampCommand(PlayerLink::PauseCommand);
        QTRY_COMPARE(status(), 3);
        m_link->WinampCommand(PlayerLink::StopCommand);
        QTRY_COMPARE(status(), 0);
        QCOMPARE(recorded().filter(QRegularExpression(u"^(file|command|ipc 1(06|22))"_s)),
                 (QStringList{u"file "_s + name + u" 1"_s, u"command 40158"_s, u"command 40045"_s,
                              u"ipc 122 200"_s, u"ipc 106 90500"_s, u"command 40046"_s, u"command 40047"_s}));
        QCOMPARE(m_status.text(), QString());
    }

    void closedPlayer() {
        startPlayer();
        tell("status 1");
        QCOMPARE(status(), 1);
        tell("close");
        QTRY_VERIFY(!playerWindow());
        // Messages go nowhere: every query answers 0 (stopped), and that is no error.
        QCOMPARE(status(), 0);
        QCOMPARE(m_link->WinampSetVolume(10), 0);
        m_link->WinampCommand(PlayerLink::PlayCommand);
        QCOMPARE(m_status.text(), QString());
        QVERIFY(!m_link->isConnected());
    }

    void hungPlayer() {
        startPlayer();
        m_link->answerWaitMs = 300;
        tell("status 1");
        QCOMPARE(status(), 1);
        tell("hang 4000");
        const qsizetype heard = recorded().size();
        // Not waited for, and not taken for a stop: the last answer stands while the player still
        // hangs, having taken none of the messages.
        QCOMPARE(status(), 1);
        QCOMPARE(recorded().size(), heard);
        QCOMPARE(m_status.text(), u"WinampModule Error: Der Player antwortet nicht and number 57"_s);
        tell("status 3");
        QTRY_COMPARE_WITH_TIMEOUT(status(), 3, 15000);
        QCOMPARE(m_status.text(), QString());
    }
};

QTEST_GUILESS_MAIN(tst_WinampLink)
#include "tst_WinampLink.moc"
