#pragma once

#include <QStringList>
#include <functional>

// The playlist sort: a quicksort that hands ranges of up to 13 elements to an insertion sort and
// recurses only into the smaller part. Comparisons are binary (UTF-16 code-unit order), so "Z"
// sorts before "a". Element 0 stays where it is: in a built playlist the first file found keeps
// its place at the top.
namespace PlaylistSort {

// Sorts elements 1 .. last of the list in place. `between`, when given, is called before each
// partition, so that sorting a long list can let the window paint (EventSlices).
void QuickSort(QStringList& list, const std::function<void()>& between = {});
void QuickSortRange(qsizetype lo, qsizetype hi, QStringList& list, const std::function<void()>& between = {});
// Places the middle element of lo..hi at its final index and returns that index: everything left
// of it is not greater, everything right of it is not smaller.
qsizetype QuickSortPartition(qsizetype lo, qsizetype hi, QStringList& list);
void InsertSort(qsizetype lo, qsizetype hi, QStringList& list);

// Index of the pivot for lo..hi: their mean, a half rounded to the even neighbour.
qsizetype middleIndex(qsizetype lo, qsizetype hi);

} // namespace PlaylistSort
