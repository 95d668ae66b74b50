#include "base/Checked.h"
#include "base/NumberText.h"
#include "base/PathStyle.h"
#include "base/RuntimeError.h"

#include <QLocale>
#include <QTest>

using namespace Qt::StringLiterals;

class TestConversions : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }

    // Rounding half to even, and the German text of the result.
    void roundedText_data() {
        QTest::addColumn<double>("value");
        QTest::addColumn<int>("decimals");
        QTest::addColumn<double>("expected");
        QTest::addColumn<QString>("text");
        QTest::newRow("2.5") << 2.5 << 0 << 2.0 << "2";
        QTest::newRow("3.5") << 3.5 << 0 << 4.0 << "4";
        QTest::newRow("-2.5") << -2.5 << 0 << -2.0 << "-2";
        QTest::newRow("0.125") << 0.125 << 2 << 0.12 << "0,12";
        QTest::newRow("12.3451") << 12.3451 << 2 << 12.35 << "12,35";
        QTest::newRow("already short") << 1.5 << 2 << 1.5 << "1,5";
        QTest::newRow("no grouping") << 12345.5 << 1 << 12345.5 << "12345,5";
        QTest::newRow("zero") << 0.0 << 2 << 0.0 << "0";
    }
    void roundedText() {
        QFETCH(double, value);
        QFETCH(int, decimals);
        QFETCH(double, expected);
        QFETCH(QString, text);
        QCOMPARE(NumberText::roundHalfEven(value, decimals), expected);
        QCOMPARE(NumberText::localeText(expected), text);
    }

    void checkedRanges_data() {
        QTest::addColumn<int>("width");
        QTest::addColumn<qint64>("value");
        QTest::addColumn<bool>("overflows");
        QTest::newRow("byte 0") << 8 << qint64(0) << false;
        QTest::newRow("byte 255") << 8 << qint64(255) << false;
        QTest::newRow("byte 256") << 8 << qint64(256) << true;
        QTest::newRow("byte -1") << 8 << qint64(-1) << true;
        QTest::newRow("int16 32767") << 16 << qint64(32767) << false;
        QTest::newRow("int16 32768") << 16 << qint64(32768) << true;
        QTest::newRow("int16 -32768") << 16 << qint64(-32768) << false;
        QTest::newRow("int16 -32769") << 16 << qint64(-32769) << true;
        QTest::newRow("int32 2^31") << 32 << qint64(2147483648LL) << true;
    }
    void checkedRanges() {
        QFETCH(int, width);
        QFETCH(qint64, value);
        QFETCH(bool, overflows);
        try {
            QCOMPARE(width == 8    ? Checked::toByte(value)
                     : width == 16 ? Checked::toInt16(value)
                                   : Checked::toInt32(value),
                     value);
            QVERIFY(!overflows);
        } catch (const RuntimeError& e) {
            QVERIFY(overflows);
            QCOMPARE(e.number(), int(RuntimeError::Overflow));
        }
    }

    void textToNumbers_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("expected"); // -99999 = type mismatch
        QTest::newRow("blanks") << " 17 " << 17;
        QTest::newRow("negative") << "-3" << -3;
        QTest::newRow("half to even") << "2.5" << 2;
        QTest::newRow("german decimal") << "3,5" << 4;
        QTest::newRow("empty") << "" << -99999;
        QTest::newRow("word") << "abc" << -99999;
    }
    void textToNumbers() {
        QFETCH(QString, text);
        QFETCH(int, expected);
        try {
            QCOMPARE(int(Checked::textToInt32(text)), expected);
        } catch (const RuntimeError& e) {
            QCOMPARE(expected, -99999);
            QCOMPARE(e.number(), int(RuntimeError::TypeMismatch));
        }
    }

    void paths_data() {
        QTest::addColumn<int>("style"); // 0 Windows, 1 POSIX
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("folder"); // "" = not rooted
        QTest::newRow("drive") << 0 << u"C:\\Music\\a.txt"_s << u"C:\\Music\\"_s;
        QTest::newRow("share") << 0 << u"\\\\srv\\x\\a.txt"_s << u"\\\\srv\\x\\"_s;
        QTest::newRow("drive relative") << 0 << u"C:a.txt"_s << u""_s;
        QTest::newRow("posix") << 1 << u"/home/u/a.txt"_s << u"/home/u/"_s;
        QTest::newRow("posix relative") << 1 << u"u/a.txt"_s << u""_s;
    }
    void paths() {
        QFETCH(int, style);
        QFETCH(QString, path);
        QFETCH(QString, folder);
        const PathStyle s = style == 0 ? PathStyle::Windows : PathStyle::Posix;
        QCOMPARE(Paths::isRooted(path, s), !folder.isEmpty());
        if (!folder.isEmpty())
            QCOMPARE(Paths::folderWithSeparator(path, s), folder);
    }
};

QTEST_GUILESS_MAIN(TestConversions)
#include "tst_Conversions.moc"
