#include "base/Checked.h"

#include "base/NumberText.h"
#include "base/RuntimeError.h"

#include <QLocale>
#include <cmath>
#include <limits>

namespace Checked {

namespace {

template <typename T> T narrow(qint64 value) {
    if (value < std::numeric_limits<T>::min() || value > std::numeric_limits<T>::max())
        throw RuntimeError::overflow();
    return static_cast<T>(value);
}

template <typename T> T wholeFromText(const QString& text) {
    const double v = NumberText::roundHalfEven(toNumber(text), 0);
    if (!(v >= static_cast<double>(std::numeric_limits<T>::min()) &&
          v <= static_cast<double>(std::numeric_limits<T>::max())))
        throw RuntimeError::overflow();
    return static_cast<T>(v);
}

} // namespace

quint8 toByte(qint64 value) {
    return narrow<quint8>(value);
}
qint16 toInt16(qint64 value) {
    return narrow<qint16>(value);
}
qint32 toInt32(qint64 value) {
    return narrow<qint32>(value);
}

double toNumber(const QString& text) {
    const QString t = text.trimmed();
    if (t.isEmpty())
        throw RuntimeError::typeMismatch();
    bool ok = false;
    double v = QLocale::c().toDouble(t, &ok);
    if (!ok)
        v = QLocale().toDouble(t, &ok);
    if (!ok || !std::isfinite(v))
        throw RuntimeError::typeMismatch();
    return v;
}

quint8 textToByte(const QString& text) {
    return wholeFromText<quint8>(text);
}
qint16 textToInt16(const QString& text) {
    return wholeFromText<qint16>(text);
}
qint32 textToInt32(const QString& text) {
    return wholeFromText<qint32>(text);
}

bool textToBool(const QString& text) {
    const QString t = text.trimmed();
    if (t.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0 ||
        t.compare(QLatin1String("wahr"), Qt::CaseInsensitive) == 0)
        return true;
    if (t.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0 ||
        t.compare(QLatin1String("falsch"), Qt::CaseInsensitive) == 0)
        return false;
    return toNumber(t) != 0.0;
}

QString boolText(bool value) {
    return value ? QStringLiteral("True") : QStringLiteral("False");
}

} // namespace Checked
