#include "reports/ReportFile.h"

#include "base/RuntimeError.h"
#include "playlist/PlaylistFile.h"

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
    if (QFileInfo(path).isDir() || !m_file.open(QIODevice::WriteOnly))
        throw PlaylistFile::openError(path, true);
}

ReportFile::~ReportFile() {
    if (!m_closed)
        m_file.commit();
}

void ReportFile::WriteLine(const QString& line) {
    QByteArray bytes = line.toLocal8Bit();
    bytes.append("\r\n", 2);
    if (m_file.write(bytes) != bytes.size())
        throw PlaylistFile::openError(m_path, true);
}

void ReportFile::Close() {
    m_closed = true;
    if (!m_file.commit())
        throw PlaylistFile::openError(m_path, true);
}
