#include "base/RuntimeError.h"
#include "player/MpvLink.h"
#include "player/PlayerLink.h"
#include "player/WinampMessages.h"
#include "player/WinampTitle.h"

#include <QtTest>

// The platform-free half of the player link: title parsing and the message arguments the window
// messages carry, plus the number translations of the mpv link.
class tst_WinampProtocol : public QObject {
    Q_OBJECT

private slots:
    void titleParsing_data() {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("song");
        QTest::newRow("playing") << QStringLiteral("3. Artist - Song - Winamp")
                                 << QStringLiteral("Artist - Song");
        QTest::newRow("paused") << QStringLiteral("3. Artist - Song - Winamp [Paused]")
                                << QStringLiteral("Artist - Song");
        QTest::newRow("full stop in the name keeps what follows the first")
            << QStringLiteral("12. Mr. X - Y - Winamp") << QStringLiteral("Mr. X - Y");
        QTest::newRow("no list number keeps everything")
            << QStringLiteral("Artist - Song - Winamp") << QStringLiteral("Artist - Song");
        // The class reading: a title ending in 'd' counts as "paused" and loses only 8 characters.
        QTest::newRow("last letter in the class")
            << QStringLiteral("1. Band - Winamp stopped") << QStringLiteral("Band - Winamp");
        QTest::newRow("capital last letter") << QStringLiteral("7. Lied - WINAMP") << QStringLiteral("Lied");
        QTest::newRow("exactly nine to cut then eight")
            << QStringLiteral("1. AB - Winamp [Paused]") << QStringLiteral("AB");
    }
    void titleParsing() {
        QFETCH(QString, title);
        QFETCH(QString, song);
        WinampTitle t;
        QCOMPARE(t.parse(title), song);
        QCOMPARE(t.currentSongTitle(), song);
        QCOMPARE(t.rawTitle(), title);
    }

    void titleTooShortRaisesAndIsNotParsedAgain_data() {
        QTest::addColumn<QString>("title");
        QTest::newRow("bare player title") << QStringLiteral("Winamp");
        QTest::newRow("empty") << QString();
        QTest::newRow("cut of nine leaves fewer than eight") << QStringLiteral("Winamp 2.91x");
    }
    void titleTooShortRaisesAndIsNotParsedAgain() {
        QFETCH(QString, title);
        WinampTitle t;
        QCOMPARE(t.parse(QStringLiteral("3. Artist - Song - Winamp")), QStringLiteral("Artist - Song"));
        try {
            t.parse(title);
            QFAIL("a title too short to cut must raise");
        } catch (const RuntimeError& e) {
            QCOMPARE(e.number(), int(RuntimeError::InvalidCall));
        }
        QCOMPARE(t.rawTitle(), title);
        // Same title again: not parsed, the previous song name comes back.
        QCOMPARE(t.parse(title), QStringLiteral("Artist - Song"));
    }

    void infoQueries_data() {
        QTest::addColumn<int>("code");
        QTest::addColumn<bool>("sends");
        QTest::addColumn<qint64>("wParam");
        QTest::addColumn<qint64>("lParam");
        QTest::newRow("0 version") << 0 << true << qint64(0) << qint64(0);
        QTest::newRow("1 delete") << 1 << true << qint64(0) << qint64(101);
        QTest::newRow("2 status") << 2 << true << qint64(0) << qint64(104);
        QTest::newRow("3 length") << 3 << true << qint64(1) << qint64(105);
        QTest::newRow("4 position") << 4 << true << qint64(0) << qint64(105);
        QTest::newRow("5 nothing") << 5 << false << qint64(0) << qint64(0);
        QTest::newRow("6 write playlist") << 6 << true << qint64(3) << qint64(120);
        QTest::newRow("7 nothing") << 7 << false << qint64(0) << qint64(0);
        QTest::newRow("8 list length") << 8 << true << qint64(0) << qint64(124);
        QTest::newRow("9 list position") << 9 << true << qint64(0) << qint64(125);
        QTest::newRow("10 sample rate") << 10 << true << qint64(0) << qint64(126);
        QTest::newRow("11 bitrate") << 11 << true << qint64(1) << qint64(126);
        QTest::newRow("12 info 3") << 12 << true << qint64(3) << qint64(126);
        QTest::newRow("13 reads the title") << 13 << false << qint64(0) << qint64(0);
        QTest::newRow("14 nothing") << 14 << false << qint64(0) << qint64(0);
        QTest::newRow("255 nothing") << 255 << false << qint64(0) << qint64(0);
    }
    void infoQueries() {
        QFETCH(int, code);
        QFETCH(bool, sends);
        QFETCH(qint64, wParam);
        QFETCH(qint64, lParam);
        const auto m = WinampMessages::infoQuery(quint8(code));
        QCOMPARE(m.has_value(), sends);
        if (sends)
            QCOMPARE(*m, (WinampMessages::Message{WinampMessages::WmUser, wParam, lParam}));
        QCOMPARE(WinampMessages::statusQuery(), (WinampMessages::Message{1024, 0, 104}));
    }

    void jumpToTime_data() {
        QTest::addColumn<qint32>("seconds");
        QTest::addColumn<qint32>("ms");
        QTest::addColumn<qint64>("expected"); // -1 = overflow
        QTest::newRow("90.5 s") << 90 << 500 << qint64(90500);
        QTest::newRow("zero") << 0 << 0 << qint64(0);
        QTest::newRow("largest") << 2147483 << 647 << qint64(2147483647);
        QTest::newRow("sum overflows") << 2147483 << 648 << qint64(-1);
        QTest::newRow("product overflows") << 2147484 << 0 << qint64(-1);
    }
    void jumpToTime() {
        QFETCH(qint32, seconds);
        QFETCH(qint32, ms);
        QFETCH(qint64, expected);
        try {
            const auto m = WinampMessages::jumpToTime(seconds, ms);
            QCOMPARE(m.wParam, expected);
            QCOMPARE(m.lParam, qint64(106));
        } catch (const RuntimeError& e) {
            QCOMPARE(expected, qint64(-1));
            QCOMPARE(e.number(), int(RuntimeError::Overflow));
        }
    }

    void playFileArguments_data() {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("handedOver");
        QTest::newRow("plain") << QStringLiteral("C:\\Music\\a.mp3") << QStringLiteral("C:\\Music\\a.mp3");
        QTest::newRow("one backslash dropped")
            << QStringLiteral("C:\\Music\\") << QStringLiteral("C:\\Music");
        QTest::newRow("only one of two") << QStringLiteral("C:\\Music\\\\") << QStringLiteral("C:\\Music\\");
        QTest::newRow("empty") << QString() << QString();
    }
    void playFileArguments() {
        QFETCH(QString, path);
        QFETCH(QString, handedOver);
        QCOMPARE(WinampMessages::playFileName(path), handedOver);
        QCOMPARE(WinampMessages::playFileDataSize(handedOver), qint32(handedOver.size() + 1));
    }

    void commandAndVolumeMessages() {
        QCOMPARE(WinampMessages::command(PlayerLink::JumpToLastCommand),
                 (WinampMessages::Message{273, 40158, 0}));
        QCOMPARE(WinampMessages::setVolume(200), (WinampMessages::Message{1024, 200, 122}));
    }

    void mpvNumbers_data() {
        QTest::addColumn<QString>("version");
        QTest::addColumn<qint32>("number");
        QTest::newRow("debian") << QStringLiteral("mpv 0.35.1") << qint32(0x0035);
        QTest::newRow("git build") << QStringLiteral("mpv v0.38.0-dirty") << qint32(0x0038);
        QTest::newRow("one-digit minor") << QStringLiteral("mpv 1.5") << qint32(0x1005);
        QTest::newRow("unreadable") << QStringLiteral("mpv") << qint32(0);
    }
    void mpvNumbers() {
        QFETCH(QString, version);
        QFETCH(qint32, number);
        QCOMPARE(MpvLink::versionNumber(version), number);
    }

    void mpvVolumeScale() {
        QCOMPARE(MpvLink::mpvVolume(0), 0.0);
        QCOMPARE(MpvLink::mpvVolume(255), 100.0);
        QVERIFY(qAbs(MpvLink::mpvVolume(200) - 78.43) < 0.01);
    }
};

QTEST_GUILESS_MAIN(tst_WinampProtocol)
#include "tst_WinampProtocol.moc"
