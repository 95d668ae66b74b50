// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

// The mini diagram: bar lengths from a histogram and the picture it paints.
#include "ui/TavoxMiniDiagram.h"

#include <QImage>
#include <QLabel>
#include <QTest>

namespace {

using Histogram = std::array<qint32, 16>;
using Ends = QList<int>; // X2 of xLine(1..14) in twips

Histogram histogram(std::initializer_list<std::pair<int, qint32>> counts) {
    Histogram h{};
    for (const auto& [index, count] : counts)
        h[size_t(index)] = count;
    return h;
}

Ends ends(const TavoxMiniDiagram& d) {
    Ends e;
    for (int i = 1; i <= 14; ++i)
        e << d.lineEnd(i);
    return e;
}

Ends stubsWith(std::initializer_list<std::pair<int, int>> bars) {
    Ends e(14, 380);
    for (const auto& [index, end] : bars)
        e[index - 1] = end;
    return e;
}

} // namespace

Q_DECLARE_METATYPE(Histogram)

class TestTavoxMiniDiagram : public QObject {
    Q_OBJECT
private slots:
    void barsScaleToTheLargestClass_data() {
        QTest::addColumn<Histogram>("counts");
        QTest::addColumn<Ends>("expected");
        QTest::newRow("half and quarter")
            << histogram({{14, 40}, {7, 20}, {1, 10}}) << stubsWith({{14, 1320}, {7, 850}, {1, 615}});
        // 1 x 940 / 8 = 117.5 -> 118 (even); 3 x 940 / 8 = 352.5 -> 352 (even).
        QTest::newRow("halves to even")
            << histogram({{2, 8}, {3, 1}, {4, 3}}) << stubsWith({{2, 1320}, {3, 498}, {4, 732}});
        QTest::newRow("classes 0 and 15 are not drawn and do not scale")
            << histogram({{0, 1000}, {15, 1000}, {5, 2}}) << stubsWith({{5, 1320}});
        // Nothing to draw leaves the diagram of the song before.
        const Ends before = stubsWith({{9, 1320}, {10, 850}});
        QTest::newRow("only classes 0 and 15") << histogram({{0, 500}, {15, 3}}) << before;
    }
    void barsScaleToTheLargestClass() {
        QFETCH(Histogram, counts);
        QFETCH(Ends, expected);
        TavoxMiniDiagram d;
        d.SetMiniDiagram(histogram({{9, 10}, {10, 5}}));
        d.SetMiniDiagram(counts);
        QCOMPARE(ends(d), expected);
    }

    void paintsBarsInTheTextColour() {
        TavoxMiniDiagram d;
        d.SetTextColor(0x00ffff);       // yellow as a classic colour number, red in the low byte
        d.SetBackgroundColor(0x400000); // dark blue
        // A VBR song: most frames at 128-192 kbit/s, some lower and higher.
        d.SetMiniDiagram(Histogram{0, 0, 0, 0, 0, 40, 90, 200, 380, 520, 610, 300, 120, 45, 12, 0});
        const QImage image = d.grab().toImage();
        auto at = [&image](int xTwips, int yTwips) { return image.pixelColor(xTwips / 15, yTwips / 15); };
        QCOMPARE(at(1300, TavoxMiniDiagram::lineY(10)), QColor(255, 255, 0)); // the full bar
        QCOMPARE(at(1300, TavoxMiniDiagram::lineY(14)), QColor(0, 0, 64));    // short bar ends early
        QCOMPARE(at(366, TavoxMiniDiagram::lineY(1)), QColor(255, 255, 0));   // the stub of an empty class
        QCOMPARE(at(700, TavoxMiniDiagram::lineY(1)), QColor(0, 0, 64));
        // "320" sits above "32": the higher classes are nearer the top.
        auto* top = d.findChild<QLabel*>("Label5");
        QVERIFY(top->text() == QLatin1String("320") && top->y() < d.findChild<QLabel*>("Label1")->y());
        QCOMPARE(top->palette().color(QPalette::WindowText), QColor(255, 255, 0));
    }
};

QTEST_MAIN(TestTavoxMiniDiagram)
#include "tst_TavoxMiniDiagram.moc"
