// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "appearance/ColorRoles.h"
#include "appearance/ColorScheme.h"
#include "appearance/Rgb.h"
#include "base/RuntimeError.h"

#include <QTest>

// The stored colour text, the roles and the working scheme's component texts.
class tst_ColorScheme : public QObject {
    Q_OBJECT
private slots:
    void rolesByCaption() {
        QCOMPARE(ColorRoles::indexOfCaption("Display Text hell"), int(ColorRoles::DisplayTextBright));
        QCOMPARE(ColorRoles::indexOfCaption("feld hintergrund"), -1);
    }

    void splitByPosition_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("pieces");
        QTest::newRow("padded") << "200 200 000" << QStringList{"200", "200", "000"};
        QTest::newRow("unpadded digits") << "7 8 9" << QStringList{"7 8", "9", ""};
        QTest::newRow("short") << "12" << QStringList{"12", "", ""};
        QTest::newRow("longer than eleven") << "001 002 003 004" << QStringList{"001", "002", "003"};
        QTest::newRow("no blanks") << "123456789ab" << QStringList{"123", "567", "9ab"};
        QTest::newRow("empty") << "" << QStringList{"", "", ""};
    }
    void splitByPosition() {
        QFETCH(QString, text);
        QFETCH(QStringList, pieces);
        const auto split = ColorScheme::splitColourText(text);
        QCOMPARE((QStringList{split[0], split[1], split[2]}), pieces);
    }

    void componentTextsBecomeColours_data() {
        QTest::addColumn<QString>("text"); // stored text = red green blue, or "!" where the conversion fails
        QTest::newRow("built-in text") << "200 200 000=200 200 0";
        QTest::newRow("above 255 counts as 255") << "999 256 255=255 255 255";
        QTest::newRow("letters fail") << "abc 000 000=!";
        QTest::newRow("missing blue fails") << "001 002=!";
    }
    void componentTextsBecomeColours() {
        QFETCH(QString, text);
        const QString rgb = text.section('=', 1);
        ColorScheme scheme;
        scheme.setColourText(ColorRoles::Text, text.section('=', 0, 0));
        try {
            const Rgb c = scheme.rgb(ColorRoles::Text);
            QCOMPARE(QString("%1 %2 %3").arg(c.red).arg(c.green).arg(c.blue), rgb);
        } catch (const RuntimeError& e) {
            QVERIFY2(rgb == "!", qPrintable(e.description()));
            QCOMPARE(e.number(), int(RuntimeError::TypeMismatch));
        }
    }

    void rgbChecksAndPacks() {
        for (auto [red, green, blue] : {std::tuple{-1, 0, 0}, {0, -1, 0}, {0, 0, -1}})
            QVERIFY_THROWS_EXCEPTION(RuntimeError, Rgb::make(red, green, blue));
        QCOMPARE(Rgb::fromPacked(0xC000), (Rgb{0, 192, 0}));
        QCOMPARE((Rgb{1, 2, 3}).packed(), quint32(0x030201));
    }

    void storedFormIsPaddedAndJoined_data() {
        QTest::addColumn<QStringList>("components");
        QTest::addColumn<QString>("stored");
        QTest::newRow("slider values") << QStringList{"7", "64", "255"} << "007 064 255";
        QTest::newRow("not a number stays") << QStringList{"7 8", "9", "1"} << "7 8 009 001";
    }
    void storedFormIsPaddedAndJoined() {
        QFETCH(QStringList, components);
        QFETCH(QString, stored);
        ColorScheme scheme;
        for (int c = 0; c < 3; ++c)
            scheme.setComponent(ColorRoles::ButtonText, ColorScheme::Component(c), components[c]);
        QCOMPARE(scheme.colourText(ColorRoles::ButtonText), stored);
    }
};

QTEST_GUILESS_MAIN(tst_ColorScheme)
#include "tst_ColorScheme.moc"
