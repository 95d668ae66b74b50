#include "update/DownloadProgress.h"

#include "base/NumberText.h"

namespace {
qint64 roundedKb(qint64 bytes) {
    return qint64(NumberText::roundHalfEven(double(bytes) / 1024.0, 0));
}
} // namespace

void DownloadProgress::setMax(qint64 max) {
    m_max = max;
    emit changed(m_value, m_max);
}

void DownloadProgress::setValue(qint64 value) {
    m_value = value;
    emit changed(m_value, m_max);
}

QString DownloadProgress::infoText(qint64 value, qint64 max) {
    return QString::number(roundedKb(value)) + QStringLiteral(" kb / ") + QString::number(roundedKb(max)) +
           QStringLiteral(" kb");
}

QString DownloadProgress::percentText(qint64 value, qint64 max) {
    const qint64 maxKb = roundedKb(max);
    if (maxKb == 0)
        return QString();
    const double percent = double(roundedKb(value)) * 100.0 / double(maxKb);
    return QString::number(qint64(NumberText::roundHalfEven(percent, 0))) + QStringLiteral(" %");
}
