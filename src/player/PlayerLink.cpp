#include "player/PlayerLink.h"

#include "base/StatusLine.h"

void PlayerLink::ReportWinampError(const QString& description, int number) {
    m_status.setText(QStringLiteral("WinampModule Error: ") + description + QStringLiteral(" and number ") +
                     QString::number(number));
}

qint64 PlayerLink::lengthMicroseconds() {
    const qint64 seconds = WinampGetInfo(InfoLength).toLongLong();
    return seconds > 0 ? seconds * 1000000 : 0;
}
