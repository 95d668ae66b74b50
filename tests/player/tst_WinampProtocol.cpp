#include "base/RuntimeError.h"
#include "player/MpvLink.h"
#include "player/WinampMessages.h"
#include "player/WinampTitle.h"

#include <QtTest>

using namespace Qt::StringLiterals;

// The platform-free parts of the player link: the window title, the seek and file arguments, and the
// version number the mpv link reports.
class tst_WinampProtocol : public QObject {
    Q_OBJECT

private slots:
    void titleParsing_data() {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("song"); // "!" = too short to cut: raises, the song before stays
        QTest::newRow("playing") << u"3. Artist - Song - Winamp"_s << u"Artist - Song"_s;
        QTest::newRow("full stop in the name") << u"12. Mr. X - Y - Winamp"_s << u"Mr. X - Y"_s;
        // The class reading: a title ending in 'd' counts as "paused" and loses only 8 characters.
        QTest::newRow("last letter in the class") << u"1. Band - Winamp stopped"_s << u"Band - Winamp"_s;
        QTest::newRow("capital last letter") << u"7. Lied - WINAMP"_s << u"Lied"_s;
        QTest::newRow("nine to cut, then eight") << u"1. AB - Winamp [Paused]"_s << u"AB"_s;
        QTest::newRow("bare player title") << u"Winamp"_s << u"!"_s;
        QTest::newRow("empty") << u""_s << u"!"_s;
        QTest::newRow("fewer than eight left") << u"Winamp 2.91x"_s << u"!"_s;
    }
    void titleParsing() {
        QFETCH(QString, title);
        QFETCH(QString, song);
        WinampTitle t;
        QCOMPARE(t.parse(u"3. Before - Winamp"_s), u"Before"_s);
        if (song == QLatin1String("!")) {
            QVERIFY_THROWS_EXCEPTION(RuntimeError, t.parse(title));
            song = u"Before"_s; // the same title again is not parsed again
        }
        QCOMPARE(t.parse(title), song);
        QCOMPARE(t.currentSongTitle(), song);
        QCOMPARE(t.rawTitle(), title);
    }

    void jumpToTime_data() {
        QTest::addColumn<qint32>("seconds");
        QTest::addColumn<qint32>("ms");
        QTest::addColumn<qint64>("expected"); // -1 = overflow
        QTest::newRow("90.5 s") << 90 << 500 << qint64(90500);
        QTest::newRow("largest") << 2147483 << 647 << qint64(2147483647);
        QTest::newRow("sum overflows") << 2147483 << 648 << qint64(-1);
        QTest::newRow("product overflows") << 2147484 << 0 << qint64(-1);
    }
    void jumpToTime() {
        QFETCH(qint32, seconds);
        QFETCH(qint32, ms);
        QFETCH(qint64, expected);
        try {
            QCOMPARE(WinampMessages::jumpToTime(seconds, ms).wParam, expected);
        } catch (const RuntimeError& e) {
            QCOMPARE(expected, qint64(-1));
            QCOMPARE(e.number(), int(RuntimeError::Overflow));
        }
    }

    void playFileArguments_data() {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("handedOver");
        QTest::newRow("plain") << u"C:\\Music\\a.mp3"_s << u"C:\\Music\\a.mp3"_s;
        QTest::newRow("one backslash dropped") << u"C:\\Music\\"_s << u"C:\\Music"_s;
        QTest::newRow("only one of two") << u"C:\\Music\\\\"_s << u"C:\\Music\\"_s;
        QTest::newRow("empty") << u""_s << u""_s;
        // More bytes than characters wherever the 8-bit code page is UTF-8 (Linux, and Windows set so).
        QTest::newRow("umlauts") << u"C:\\Grüße\\Ärger.mp3"_s << u"C:\\Grüße\\Ärger.mp3"_s;
    }
    void playFileArguments() {
        QFETCH(QString, path);
        QFETCH(QString, handedOver);
        QCOMPARE(WinampMessages::playFileName(path), handedOver);
        // cbData covers the whole name and its zero: the player reads it back complete.
        const QByteArray data = WinampMessages::playFileData(handedOver);
        QVERIFY(data.endsWith('\0'));
        QCOMPARE(QString::fromLocal8Bit(data.constData(), data.size() - 1), handedOver);
    }

    void mpvVersionNumber_data() {
        QTest::addColumn<QString>("version");
        QTest::addColumn<qint32>("number");
        QTest::newRow("debian") << u"mpv 0.35.1"_s << qint32(0x0035);
        QTest::newRow("git build") << u"mpv v0.38.0-dirty"_s << qint32(0x0038);
        QTest::newRow("one-digit minor") << u"mpv 1.5"_s << qint32(0x1005);
        QTest::newRow("unreadable") << u"mpv"_s << qint32(0);
    }
    void mpvVersionNumber() {
        QFETCH(QString, version);
        QFETCH(qint32, number);
        QCOMPARE(MpvLink::versionNumber(version), number);
    }
};

QTEST_GUILESS_MAIN(tst_WinampProtocol)
#include "tst_WinampProtocol.moc"
