#include "playlist/PlaylistSort.h"

#include <QRandomGenerator>
#include <QTest>
#include <algorithm>

namespace {

QStringList texts(std::initializer_list<const char*> items) {
    QStringList out;
    for (const char* item : items)
        out << QString::fromUtf8(item);
    return out;
}

QStringList randomLines(int count, quint32 seed, int alphabet) {
    QRandomGenerator rng(seed);
    QStringList lines;
    for (int i = 0; i < count; ++i) {
        QString s = QStringLiteral("/m/");
        const int len = 1 + int(rng.bounded(6));
        for (int k = 0; k < len; ++k) {
            // Upper case, lower case and umlauts, so that binary order differs from any
            // case-insensitive or locale order.
            static const QString chars = QStringLiteral("aAbBzZäÄ _.9");
            s += chars.at(int(rng.bounded(quint32(qMin(alphabet, int(chars.size()))))));
        }
        lines << s + QStringLiteral(".mp3:5");
    }
    return lines;
}

} // namespace

class TestPlaylistSort : public QObject {
    Q_OBJECT
private slots:
    void matchesStdSortFromElementOne_data() {
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("alphabet");
        for (int n : {0, 1, 2, 3, 13, 14, 15, 16, 40, 1000, 30000})
            QTest::addRow("%d lines", n) << n << 12;
        QTest::newRow("many duplicates") << 5000 << 2;
        QTest::newRow("all equal") << 500 << 1;
    }
    void matchesStdSortFromElementOne() {
        QFETCH(int, count);
        QFETCH(int, alphabet);
        QStringList lines = randomLines(count, quint32(count) * 7 + 1, alphabet);
        QStringList expected = lines;
        if (expected.size() > 1)
            std::sort(expected.begin() + 1, expected.end());
        PlaylistSort::QuickSort(lines);
        QCOMPARE(lines, expected);
    }

    void alreadySortedAndReversed_data() {
        QTest::addColumn<bool>("reversed");
        QTest::newRow("sorted") << false;
        QTest::newRow("reversed") << true;
    }
    void alreadySortedAndReversed() {
        QFETCH(bool, reversed);
        QStringList lines;
        for (int i = 0; i < 20000; ++i)
            lines << QStringLiteral("/m/%1.mp3:5").arg(i, 6, 10, QLatin1Char('0'));
        if (reversed)
            std::reverse(lines.begin(), lines.end());
        QStringList expected = lines;
        std::sort(expected.begin() + 1, expected.end());
        PlaylistSort::QuickSort(lines);
        QCOMPARE(lines, expected);
    }

    void binaryOrder_data() {
        QTest::addColumn<QStringList>("input");
        QTest::addColumn<QStringList>("sorted");
        QTest::newRow("Z before a, element 0 stays")
            << texts({"x", "a", "Z", "b", "B"}) << texts({"x", "B", "Z", "a", "b"});
        QTest::newRow("umlaut after z")
            << texts({"0", "ä", "z", "Ä", "A"}) << texts({"0", "A", "z", "Ä", "ä"});
        QTest::newRow("separator vs blank") << texts({"", "/m/b", "/m/a b", "/m/a/b", "/m/a"})
                                            << texts({"", "/m/a", "/m/a b", "/m/a/b", "/m/b"});
    }
    void binaryOrder() {
        QFETCH(QStringList, input);
        QFETCH(QStringList, sorted);
        PlaylistSort::QuickSort(input);
        QCOMPARE(input, sorted);
    }

    void middleIndex_data() {
        QTest::addColumn<int>("lo");
        QTest::addColumn<int>("hi");
        QTest::addColumn<int>("middle");
        QTest::newRow("even sum") << 1 << 15 << 8;
        QTest::newRow("half to even up") << 1 << 14 << 8;  // 7.5
        QTest::newRow("half to even down") << 1 << 4 << 2; // 2.5
        QTest::newRow("half 10.5") << 0 << 21 << 10;       // 10.5
        QTest::newRow("half 11.5") << 2 << 21 << 12;       // 11.5
    }
    void middleIndex() {
        QFETCH(int, lo);
        QFETCH(int, hi);
        QFETCH(int, middle);
        QCOMPARE(PlaylistSort::middleIndex(lo, hi), qsizetype(middle));
    }

    void partitionPlacesMiddleElement_data() {
        QTest::addColumn<int>("seed");
        QTest::addColumn<int>("alphabet");
        for (int seed = 1; seed <= 6; ++seed)
            QTest::addRow("seed %d", seed) << seed << (seed % 3 == 0 ? 2 : 12);
    }
    void partitionPlacesMiddleElement() {
        QFETCH(int, seed);
        QFETCH(int, alphabet);
        QStringList lines = randomLines(60, quint32(seed), alphabet);
        const qsizetype lo = 3;
        const qsizetype hi = 50;
        const QString pivot = lines.at(PlaylistSort::middleIndex(lo, hi));
        const QStringList before = lines;
        const qsizetype p = PlaylistSort::QuickSortPartition(lo, hi, lines);
        QVERIFY(p >= lo && p <= hi);
        QCOMPARE(lines.at(p), pivot);
        for (qsizetype i = lo; i < p; ++i)
            QVERIFY2(!(pivot < lines.at(i)), qPrintable(QString::number(i)));
        for (qsizetype i = p + 1; i <= hi; ++i)
            QVERIFY2(!(lines.at(i) < pivot), qPrintable(QString::number(i)));
        // Outside the range nothing moves, and inside it is a permutation.
        QCOMPARE(lines.mid(0, lo), before.mid(0, lo));
        QCOMPARE(lines.mid(hi + 1), before.mid(hi + 1));
        QStringList a = lines.mid(lo, hi - lo + 1), b = before.mid(lo, hi - lo + 1);
        std::sort(a.begin(), a.end());
        std::sort(b.begin(), b.end());
        QCOMPARE(a, b);
    }

    void insertSortRangeOnly() {
        QStringList lines = texts({"e", "d", "c", "b", "a"});
        PlaylistSort::InsertSort(1, 3, lines);
        QCOMPARE(lines, (texts({"e", "b", "c", "d", "a"})));
    }
};

QTEST_APPLESS_MAIN(TestPlaylistSort)
#include "tst_PlaylistSort.moc"
