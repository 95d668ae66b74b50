#include "base/Checked.h"
#include "base/ErrorReport.h"
#include "base/NumberText.h"
#include "base/PathStyle.h"
#include "base/RuntimeError.h"
#include "support/ScriptedDialogs.h"

#include <QLocale>
#include <QTest>

class TestConversions : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }

    void roundHalfEven_data() {
        QTest::addColumn<double>("value");
        QTest::addColumn<int>("decimals");
        QTest::addColumn<double>("expected");
        QTest::newRow("2.5") << 2.5 << 0 << 2.0;
        QTest::newRow("3.5") << 3.5 << 0 << 4.0;
        QTest::newRow("-2.5") << -2.5 << 0 << -2.0;
        QTest::newRow("0.125") << 0.125 << 2 << 0.12;
        QTest::newRow("0.135") << 0.135 << 2 << 0.14;
        QTest::newRow("12.345") << 12.345 << 2 << 12.34;
        QTest::newRow("12.3451") << 12.3451 << 2 << 12.35;
        QTest::newRow("12.366") << 12.366 << 2 << 12.37;
        QTest::newRow("already short") << 1.5 << 2 << 1.5;
    }
    void roundHalfEven() {
        QFETCH(double, value);
        QFETCH(int, decimals);
        QFETCH(double, expected);
        QCOMPARE(NumberText::roundHalfEven(value, decimals), expected);
    }

    void localeText_data() {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("expected");
        QTest::newRow("decimal comma") << 12.37 << QStringLiteral("12,37");
        QTest::newRow("whole") << 3.0 << QStringLiteral("3");
        QTest::newRow("no grouping") << 12345.5 << QStringLiteral("12345,5");
        QTest::newRow("zero") << 0.0 << QStringLiteral("0");
    }
    void localeText() {
        QFETCH(double, value);
        QFETCH(QString, expected);
        QCOMPARE(NumberText::localeText(value), expected);
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
        bool raised = false;
        qint64 got = 0;
        try {
            got = width == 8    ? Checked::toByte(value)
                  : width == 16 ? Checked::toInt16(value)
                                : Checked::toInt32(value);
        } catch (const RuntimeError& e) {
            raised = e.number() == RuntimeError::Overflow;
        }
        QCOMPARE(raised, overflows);
        if (!overflows)
            QCOMPARE(got, value);
    }

    void textToNumbers_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("expected"); // -99999 = type mismatch
        QTest::newRow("plain") << QStringLiteral("200") << 200;
        QTest::newRow("blanks") << QStringLiteral(" 17 ") << 17;
        QTest::newRow("negative") << QStringLiteral("-3") << -3;
        QTest::newRow("half to even") << QStringLiteral("2.5") << 2;
        QTest::newRow("german decimal") << QStringLiteral("3,5") << 4;
        QTest::newRow("empty") << QString() << -99999;
        QTest::newRow("word") << QStringLiteral("abc") << -99999;
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

    void booleans_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("expected");
        QTest::newRow("True") << QStringLiteral("True") << true;
        QTest::newRow("false lower") << QStringLiteral("false") << false;
        QTest::newRow("-1") << QStringLiteral("-1") << true;
        QTest::newRow("0") << QStringLiteral("0") << false;
    }
    void booleans() {
        QFETCH(QString, text);
        QFETCH(bool, expected);
        QCOMPARE(Checked::textToBool(text), expected);
        QCOMPARE(Checked::textToBool(Checked::boolText(expected)), expected);
    }

    void paths_data() {
        QTest::addColumn<int>("style");
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("rooted");
        QTest::addColumn<QString>("folder");
        QTest::newRow("drive") << 0 << QStringLiteral("C:\\Music\\a.txt") << true
                               << QStringLiteral("C:\\Music\\");
        QTest::newRow("share") << 0 << QStringLiteral("\\\\srv\\x\\a.txt") << true
                               << QStringLiteral("\\\\srv\\x\\");
        QTest::newRow("drive relative") << 0 << QStringLiteral("C:a.txt") << false << QString();
        QTest::newRow("posix") << 1 << QStringLiteral("/home/u/a.txt") << true << QStringLiteral("/home/u/");
        QTest::newRow("posix relative") << 1 << QStringLiteral("u/a.txt") << false << QStringLiteral("u/");
    }
    void paths() {
        QFETCH(int, style);
        QFETCH(QString, path);
        QFETCH(bool, rooted);
        QFETCH(QString, folder);
        const PathStyle s = style == 0 ? PathStyle::Windows : PathStyle::Posix;
        QCOMPARE(Paths::isRooted(path, s), rooted);
        QCOMPARE(Paths::folderWithSeparator(path, s), folder);
    }

    void errorReportNamesPlaceAndLastLine() {
        ScriptedDialogs dialogs;
        const bool ok = ErrorReport::guard(dialogs, QStringLiteral("Submain"), [](int& line) {
            line = 4;
            Checked::toByte(300);
            line = 5;
        });
        QVERIFY(!ok);
        QCOMPARE(dialogs.messageTexts(),
                 QStringList{QStringLiteral("Fehler in Submain in Zeile 4: Überlauf")});
        QVERIFY(ErrorReport::guard(dialogs, QStringLiteral("x"), [](int&) {}));
        QCOMPARE(dialogs.questions.size(), 1);
    }
};

QTEST_GUILESS_MAIN(TestConversions)
#include "tst_Conversions.moc"
