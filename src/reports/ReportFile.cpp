#include "reports/ReportFile.h"

#include "base/RuntimeError.h"

#include <QDir>
#include <QFileInfo>

QString ReportFile::reportPath(const QString& fileName) {
#ifdef Q_OS_WIN
    return QStringLiteral("C:\\") + fileName;
#else
    return QDir::toNativeSeparators(QDir::home().filePath(fileName));
#endif
}

ReportFile::ReportFile(const QString& path) : m_path(path), m_file(path) {
}

ReportFile::~ReportFile() {
    if (m_closed)
        return;
    try {
        m_file.commit();
    } catch (const RuntimeError&) {
        // The report already stopped with an error of its own; the old file stays.
    }
}

void ReportFile::WriteLine(const QString& line) {
    QByteArray bytes = line.toLocal8Bit();
    bytes.append("\r\n", 2);
    m_file.write(bytes);
}

void ReportFile::Close() {
    m_closed = true;
    m_file.commit();
}
