#pragma once

#include "base/AtomicFileWriter.h"

#include <QString>

// A report text file: created anew, lines in the system's 8-bit code page ended by CR LF, and
// replaced in one atomic step. When a report stops early (Esc, a run-time error) the lines
// written so far are what the file holds afterwards: the previous report is gone from the moment
// the new one was created, as the user was told. A disk that cannot take the report keeps the
// previous one whole.
class ReportFile {
public:
    // Where reports go: the root of drive C: on Windows, the home folder elsewhere.
    static QString reportPath(const QString& fileName);
    static QString bitrateReportPath() { return reportPath(QStringLiteral("MP3Info.txt")); }
    static QString priorityReportPath() { return reportPath(QStringLiteral("MP3Prio.txt")); }

    // Raises the file system's RuntimeError when the file cannot be created.
    explicit ReportFile(const QString& path);
    ~ReportFile();
    ReportFile(const ReportFile&) = delete;
    ReportFile& operator=(const ReportFile&) = delete;

    void WriteLine(const QString& line);
    // Puts the file in place; raises a RuntimeError when that fails.
    void Close();

private:
    QString m_path;
    AtomicFileWriter m_file;
    bool m_closed = false;
};
