#pragma once

#include <QString>

namespace NumberText {

// Rounds to the given number of decimals, halves going to the even neighbour (12.345 -> 12.34,
// 0.125 -> 0.12, 2.5 -> 2). Decimal halves are judged on the shortest text of the double, so that
// values such as 1.005 that read as a half are treated as one.
double roundHalfEven(double value, int decimals);

// The number as the user reads it: the locale's decimal separator, no group separators, no
// trailing zeros ("12,37", "3", "0,5" in German).
QString localeText(double value);

} // namespace NumberText
