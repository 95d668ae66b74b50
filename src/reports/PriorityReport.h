#pragma once

#include "base/Services.h"

#include <QString>
#include <QStringList>
#include <functional>

// The "Liedprio Report": every song of the main playlist whose priority is below 4, so the
// user sees which songs the weighted shuffle rarely plays.
class PriorityReport {
public:
    // The FTest counter after entry `done` of 0..last; the window shows progressText(done, last).
    using ProgressDisplay = std::function<void(qint32 done, qint32 last)>;
    static QString progressText(qint32 done, qint32 last);

    explicit PriorityReport(Services& services, QString reportPath = QString());

    const QString& reportPath() const { return m_path; }
    QString questionText() const;

    // BReportPrio click. lines: the playlist's lines (path, ":", priority digit). showProgress
    // is called after every entry; it makes the counter's text only when it paints it, so that a list
    // of 300 000 entries does not spend its time on texts nobody sees. `line` follows the numbered steps for
    // the error report; run-time errors (short entries, a file that cannot be created) propagate.
    void Run(const QStringList& lines, const ProgressDisplay& showProgress, int& line);

private:
    Services& m_services;
    QString m_path;
};
