#include "reports/BitrateReport.h"

#include "base/Clock.h"
#include "base/Dialogs.h"
#include "base/NumberText.h"
#include "base/RuntimeError.h"
#include "base/StatusLine.h"
#include "reports/ReportFile.h"

#include <QChar>

namespace {

const QChar CR(13);

// Times are single precision and shown rounded to two decimals, halves to even.
QString round2(double value) {
    return NumberText::localeText(NumberText::roundHalfEven(double(float(value)), 2));
}

} // namespace

BitrateReport::BitrateReport(Services& services, QString reportPath)
    : m_services(services), m_path(reportPath.isEmpty() ? ReportFile::bitrateReportPath() : reportPath),
      m_info(&Mp3Info::GetMP3Info) {
}

QString BitrateReport::questionText(double secondsPerSong, double estimateMinutes,
                                    qsizetype songCount) const {
    return QStringLiteral("Die Analyse kann einige Zeit dauern!") + CR +
           QStringLiteral("Die Bitrateanalyse dauert ca. ") + NumberText::localeText(secondsPerSong) +
           QStringLiteral(" s pro Lied ---> somit hochgerechnet ") + NumberText::localeText(estimateMinutes) +
           QStringLiteral(" min für alle ") + QString::number(songCount) + QStringLiteral(" MP3s...") + CR +
           CR + QStringLiteral("Der MP3 Bitrate Report wird unter ") + m_path +
           QStringLiteral(" abgespeichert.") + CR + CR + QStringLiteral("Möchten Sie fortfahren?") + CR + CR +
           CR + QStringLiteral("(Um den Report frühzeitig abzubrechen halten Sie die ESC Taste gedrückt)");
}

QString BitrateReport::songPath(const QStringList& lines, int index) const {
    if (index >= lines.size())
        throw RuntimeError::subscriptOutOfRange();
    const QString& entry = lines.at(index);
    if (entry.size() < 2)
        throw RuntimeError::invalidCall();
    return entry.left(entry.size() - 2);
}

qint32 BitrateReport::callInfo(const QString& path) {
    return m_info(path, m_bitRate, m_vbr, m_playtime, m_histogram);
}

float BitrateReport::now() const {
    return float(m_services.clock.secondsOfDay());
}

void BitrateReport::Run(const QStringList& lines, const Hooks& hooks, int& line) {
    m_bitRate = m_vbr = m_playtime = 0;
    m_histogram.fill(0);
    const qsizetype lastIndex = lines.size() - 1;

    line = 1;
    m_services.status.setText(QStringLiteral("Speedtest wird durchgeführt..."));
    const float testStart = now();
    for (int i = 0; i <= 3; ++i)
        callInfo(songPath(lines, i));
    const float testEnd = now();
    // Four songs are timed but the time is divided by three; the estimate rests on that figure.
    const double perSong = NumberText::roundHalfEven(double((testEnd - testStart) / 3.0f), 2);

    line = 2;
    const double estimate = NumberText::roundHalfEven((double(lastIndex) * perSong + 1.0) / 60.0, 0);

    line = 3;
    const Dialogs::Answer answer =
        m_services.dialogs.message(questionText(perSong, estimate, lastIndex + 1), QString(),
                                   Dialogs::Buttons::YesNoCancel, Dialogs::Icon::Question, 3);
    line = 4;
    if (answer != Dialogs::Answer::Yes) {
        m_services.status.setText(QStringLiteral("Vorgang abgebrochen."));
        return;
    }

    line = 5;
    m_services.status.setText(QStringLiteral("Der Bitratereport wird gestartet..."));
    const float start = now();
    ReportFile report(m_path);

    line = 6;
    for (int i = 0; i <= kLastSong; ++i) {
        const QString path = songPath(lines, i);
        const float before = now();
        const qint32 status = callInfo(path);
        const float after = now();
        const QString songSeconds = round2(after - before);
        report.WriteLine(QStringLiteral("Ret: ") + QString::number(status) + QStringLiteral("   BitRate: ") +
                         QString::number(m_bitRate) + QStringLiteral(" bps   VBR: ") +
                         QString::number(m_vbr) + QStringLiteral("   Playtime: ") +
                         QString::number(m_playtime) + QStringLiteral(" s    Zeit: ") + songSeconds +
                         QStringLiteral("  -  ") + path);
        if (i > 0 && hooks.showProgress) {
            const double minutes = double((now() - start) / 60.0f);
            hooks.showProgress(QString::number(i) + QLatin1Char('/') + QStringLiteral("100") +
                               QStringLiteral(" - Zeit akt. Lied: ") + songSeconds +
                               QStringLiteral(" s - geschätzte Dauer: ") + round2(minutes) +
                               QLatin1Char('/') + round2(minutes / i * 100.0) + QStringLiteral(" min"));
        }
        if (hooks.escapePressed && hooks.escapePressed()) {
            const Dialogs::Answer stop = m_services.dialogs.message(
                QStringLiteral("Möchten Sie den Bitratereport wirklich abbrechen?"), QString(),
                Dialogs::Buttons::YesNoCancel, Dialogs::Icon::Question, 3);
            if (stop == Dialogs::Answer::Yes) {
                m_services.status.setText(QStringLiteral("Bitratereport abgebrochen."));
                return;
            }
        }
    }

    line = 7;
    report.Close();
    const float total = now() - start;
    m_services.status.setText(QStringLiteral("Bitrate Report fertig. Benötigte Zeit: ") + round2(total) +
                              QStringLiteral(" s für ") + QStringLiteral("100") +
                              QStringLiteral(" Lieder (") + round2(total / 100.0f) +
                              QStringLiteral(" s pro Lied)"));
}
