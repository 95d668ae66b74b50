#pragma once

#include "base/Services.h"

#include <QString>
#include <QStringList>
#include <functional>

// The "Liedprio Report": every song of the main playlist whose priority is below 4, so the
// user sees which songs the weighted shuffle rarely plays.
class PriorityReport {
public:
    using ProgressDisplay = std::function<void(const QString& text)>;

    explicit PriorityReport(Services& services, QString reportPath = QString());

    const QString& reportPath() const { return m_path; }
    QString questionText() const;

    // BReportPrio click. lines: the playlist's lines (path, ":", priority digit). showProgress
    // gets the FTest counter after every entry. `line` follows the numbered steps for the error
    // report; run-time errors (short entries, a file that cannot be created) propagate.
    void Run(const QStringList& lines, const ProgressDisplay& showProgress, int& line);

private:
    Services& m_services;
    QString m_path;
};
