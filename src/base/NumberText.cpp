#include "base/NumberText.h"

#include <QLocale>
#include <cmath>

namespace NumberText {

double roundHalfEven(double value, int decimals) {
    if (!std::isfinite(value))
        return value;
    // Work on the shortest decimal text so that 0.125 or 2.675 are judged by the digits the user sees.
    QString digits = QString::number(std::fabs(value), 'f', QLocale::FloatingPointShortest);
    const int dot = digits.indexOf(QLatin1Char('.'));
    if (dot < 0 || digits.size() - dot - 1 <= decimals)
        return value;
    const QString kept = digits.left(dot + 1 + decimals);
    const QString rest = digits.mid(dot + 1 + decimals);
    double base = QString(kept).remove(QLatin1Char('.')).toDouble(); // scaled by 10^decimals
    const QChar first = rest.at(0);
    bool tail = false;
    for (int i = 1; i < rest.size(); ++i)
        tail = tail || rest.at(i) != QLatin1Char('0');
    if (first > QLatin1Char('5') || (first == QLatin1Char('5') && tail))
        base += 1;
    else if (first == QLatin1Char('5') && std::fmod(base, 2.0) != 0.0)
        base += 1;
    const double result = base / std::pow(10.0, decimals);
    return value < 0 ? -result : result;
}

QString localeText(double value) {
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return locale.toString(value, 'f', QLocale::FloatingPointShortest);
}

} // namespace NumberText
