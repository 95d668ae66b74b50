#include "player/PlayerLink.h"

#include "base/StatusLine.h"

void PlayerLink::ReportWinampError(const QString& description, int number) {
    m_status.setText(QStringLiteral("WinampModule Error: ") + description + QStringLiteral(" and number ") +
                     QString::number(number));
}
