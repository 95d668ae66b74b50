#include "reports/PriorityReport.h"

#include "base/Checked.h"
#include "base/Clock.h"
#include "base/Dialogs.h"
#include "base/NumberText.h"
#include "base/RuntimeError.h"
#include "base/StatusLine.h"
#include "reports/ReportFile.h"

PriorityReport::PriorityReport(Services& services, QString reportPath)
    : m_services(services), m_path(reportPath.isEmpty() ? ReportFile::priorityReportPath() : reportPath) {
}

QString PriorityReport::questionText() const {
    return QStringLiteral("Die Liedprioritätsreport wird unter ") + m_path +
           QStringLiteral(" abgespeichert.") + QStringLiteral("\r\r") +
           QStringLiteral("Wollen Sie fortfahren?");
}

QString PriorityReport::progressText(qint32 done, qint32 last) {
    return QString::number(done) + QLatin1Char('/') + QString::number(last);
}

void PriorityReport::Run(const QStringList& lines, const ProgressDisplay& showProgress, int& line) {
    line = 1;
    // Cancel is the default: Return alone must not overwrite an earlier report.
    if (m_services.dialogs.message(questionText(), QString(), Dialogs::Buttons::YesNoCancel,
                                   Dialogs::Icon::None, 3) != Dialogs::Answer::Yes)
        return;
    line = 2;
    const float start = float(m_services.clock.secondsOfDay());
    line = 3;
    ReportFile report(m_path);
    line = 4;
    // The counter is as wide as a list's index (32 bits): any list that fits in memory is reported.
    const qint32 last = Checked::toInt32(lines.size() - 1);
    for (qint32 i = 0; i <= last; ++i) {
        const QString& entry = lines.at(i);
        if (entry.size() < 2)
            throw RuntimeError::invalidCall();
        const QChar priority = entry.back();
        // A digit is read at once; anything else goes through the conversion and its error.
        const bool digit = priority >= u'0' && priority <= u'9';
        if ((digit ? priority.unicode() - u'0' : Checked::textToInt16(QString(priority))) < 4) {
            QString text = entry.left(entry.size() - 2);
            text.append(QLatin1String(" - ")).append(priority);
            report.WriteLine(text);
        }
        if (showProgress)
            showProgress(i, last);
    }
    line = 5;
    report.Close();
    line = 6;
    const float elapsed = float(m_services.clock.secondsOfDay()) - start;
    m_services.status.setText(QStringLiteral("MP3Prio Report fertig. Benötigte Zeit: ") +
                              NumberText::localeText(NumberText::roundHalfEven(double(elapsed), 2)) +
                              QStringLiteral(" s"));
}
