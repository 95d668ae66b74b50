#pragma once

#include <QString>
#include <QtGlobal>

// The product's counters and fields have fixed widths (8-bit bytes, 16-bit integers, 32-bit longs).
// Going past a range must raise the overflow error instead of wrapping, so every narrowing goes
// through these helpers.
namespace Checked {

quint8 toByte(qint64 value);
qint16 toInt16(qint64 value);
qint32 toInt32(qint64 value);

// Text-to-number as the settings readers need it: blanks around the number are allowed, either
// '.' or the locale's decimal separator is accepted; anything else raises the type-mismatch error.
double toNumber(const QString& text);
// Whole-number readers round half to even before the range check, like the classic runtime.
quint8 textToByte(const QString& text);
qint16 textToInt16(const QString& text);
qint32 textToInt32(const QString& text);
// "True"/"False" (any case), "-1"/"0" and other numbers (non-zero is true).
bool textToBool(const QString& text);
QString boolText(bool value);

} // namespace Checked
