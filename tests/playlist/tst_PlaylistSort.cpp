#include "playlist/PlaylistSort.h"

#include <QRandomGenerator>
#include <QTest>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// Upper case, lower case and umlauts, so that binary order differs from any case-insensitive or
// locale order; "sorted" and "reversed" give numbered lines in order or backwards.
QStringList lines(int count, int alphabet, const QString& order = {}) {
    QRandomGenerator rng(quint32(count) * 7 + 1);
    static const QString chars = u"aAbBzZäÄ _.9"_s;
    QStringList out;
    for (int i = 0; i < count; ++i) {
        QString s = u"/m/"_s;
        for (int k = int(rng.bounded(6)); k >= 0; --k)
            s += chars.at(int(rng.bounded(quint32(alphabet))));
        out << (order.isEmpty() ? s : u"/m/%1"_s.arg(i, 6, 10, QLatin1Char('0'))) + u".mp3:5"_s;
    }
    if (order == u"reversed"_s)
        std::reverse(out.begin(), out.end());
    return out;
}

} // namespace

class TestPlaylistSort : public QObject {
    Q_OBJECT
private slots:
    // The sort leaves element 0 where it is and orders the rest by code units, as std::sort does.
    void matchesStdSortFromElementOne_data() {
        QTest::addColumn<QStringList>("lines");
        for (int n : {0, 1, 2, 3, 13, 14, 15, 16, 40, 1000, 30000})
            QTest::addRow("%d lines", n) << lines(n, 12);
        QTest::newRow("many duplicates") << lines(5000, 2);
        QTest::newRow("all equal") << lines(500, 1);
        QTest::newRow("sorted") << lines(20000, 1, u"sorted"_s);
        QTest::newRow("reversed") << lines(20000, 1, u"reversed"_s);
        QTest::newRow("Z before a, element 0 stays") << u"x a Z b B"_s.split(u' ');
        QTest::newRow("umlaut after z") << u"0 ä z Ä A"_s.split(u' ');
        QTest::newRow("separator before blank")
            << QStringList{QString(), u"/m/b"_s, u"/m/a b"_s, u"/m/a/b"_s, u"/m/a"_s};
    }
    void matchesStdSortFromElementOne() {
        QFETCH(QStringList, lines);
        QStringList expected = lines;
        if (expected.size() > 1)
            std::sort(expected.begin() + 1, expected.end());
        PlaylistSort::QuickSort(lines);
        QCOMPARE(lines, expected);
    }
};

QTEST_APPLESS_MAIN(TestPlaylistSort)
#include "tst_PlaylistSort.moc"
