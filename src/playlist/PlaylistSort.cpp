#include "playlist/PlaylistSort.h"

#include <utility>

namespace PlaylistSort {

namespace {
// Ranges whose bounds differ by less than this are sorted by insertion.
constexpr qsizetype kInsertionLimit = 13;
} // namespace

void QuickSort(QStringList& list, const std::function<void()>& between) {
    QuickSortRange(1, list.size() - 1, list, between);
}

void QuickSortRange(qsizetype lo, qsizetype hi, QStringList& list, const std::function<void()>& between) {
    while (lo < hi) {
        if (hi - lo < kInsertionLimit) {
            InsertSort(lo, hi, list);
            return;
        }
        if (between)
            between();
        const qsizetype p = QuickSortPartition(lo, hi, list);
        // Recursing into the smaller part and looping on the larger keeps the depth logarithmic.
        if (p - lo > hi - p) {
            QuickSortRange(p + 1, hi, list, between);
            hi = p - 1;
        } else {
            QuickSortRange(lo, p - 1, list, between);
            lo = p + 1;
        }
    }
}

qsizetype middleIndex(qsizetype lo, qsizetype hi) {
    const qsizetype sum = lo + hi;
    const qsizetype down = sum / 2;
    if (sum % 2 == 0)
        return down;
    return down % 2 == 0 ? down : down + 1;
}

qsizetype QuickSortPartition(qsizetype lo, qsizetype hi, QStringList& list) {
    QString* a = list.data(); // one detach check instead of one per access
    const qsizetype middle = middleIndex(lo, hi);
    std::swap(a[middle], a[lo]);
    const QString& pivot = a[lo];
    qsizetype up = lo + 1;
    qsizetype down = hi;
    for (;;) {
        while (up <= down && a[up] < pivot)
            ++up;
        while (up <= down && pivot < a[down])
            --down;
        if (up >= down)
            break;
        std::swap(a[up], a[down]);
        ++up;
        --down;
    }
    std::swap(a[lo], a[down]);
    return down;
}

void InsertSort(qsizetype lo, qsizetype hi, QStringList& list) {
    QString* a = list.data();
    for (qsizetype i = lo + 1; i <= hi; ++i) {
        QString item = std::move(a[i]);
        qsizetype j = i - 1;
        while (j >= lo && item < a[j]) {
            a[j + 1] = std::move(a[j]);
            --j;
        }
        a[j + 1] = std::move(item);
    }
}

} // namespace PlaylistSort
