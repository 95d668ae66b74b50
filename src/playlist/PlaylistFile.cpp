#include "playlist/PlaylistFile.h"

#include "base/RuntimeError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace PlaylistFile {

RuntimeError openError(const QString& file, bool forWriting) {
    const QFileInfo info(file);
    if (file.isEmpty())
        return {RuntimeError::BadFileName, QStringLiteral("Dateiname oder -nummer falsch")};
    if (forWriting && !info.absoluteDir().exists())
        return {RuntimeError::PathNotFound, QStringLiteral("Pfad nicht gefunden")};
    if (!forWriting && !info.exists())
        return {RuntimeError::FileNotFound, QStringLiteral("Datei nicht gefunden")};
    if (info.isDir())
        return {RuntimeError::PathFileAccess, QStringLiteral("Fehler beim Zugriff auf Pfad/Datei")};
    if (info.exists() && (forWriting ? !info.isWritable() : !info.isReadable()))
        return {RuntimeError::PermissionDenied, QStringLiteral("Zugriff verweigert")};
    return {RuntimeError::PathFileAccess, QStringLiteral("Fehler beim Zugriff auf Pfad/Datei")};
}

QString FuncCheckFile(const QString& file, int mode) {
    Q_UNUSED(mode); // only ever opened for reading
    QFile f(file);
    if (!QFileInfo(file).isDir() && f.open(QIODevice::ReadOnly))
        return QStringLiteral("OK");
    const RuntimeError e = openError(file, false);
    return QStringLiteral("Fehler beim Laden von \"") + file + QStringLiteral("\" -> #") +
           QString::number(e.number()) + QLatin1Char(' ') + e.description();
}

QStringList readLines(const QString& file) {
    QFile f(file);
    if (QFileInfo(file).isDir() || !f.open(QIODevice::ReadOnly))
        throw openError(file, false);
    const QString text = QString::fromLocal8Bit(f.readAll());
    QStringList lines;
    qsizetype start = 0;
    const qsizetype n = text.size();
    for (qsizetype i = 0; i < n; ++i) {
        const QChar c = text.at(i);
        if (c == QLatin1Char('\r') || c == QLatin1Char('\n')) {
            lines.append(text.mid(start, i - start));
            if (c == QLatin1Char('\r') && i + 1 < n && text.at(i + 1) == QLatin1Char('\n'))
                ++i;
            start = i + 1;
        }
    }
    if (start < n)
        lines.append(text.mid(start));
    return lines;
}

void writeLines(const QString& file, const QStringList& lines) {
    QByteArray data;
    qsizetype size = 0;
    for (const QString& l : lines)
        size += l.size() + 2;
    data.reserve(size + size / 4);
    for (const QString& l : lines) {
        data.append(l.toLocal8Bit());
        data.append("\r\n", 2);
    }
    QSaveFile out(file);
    if (QFileInfo(file).isDir() || !out.open(QIODevice::WriteOnly))
        throw openError(file, true);
    if (out.write(data) != data.size() || !out.commit())
        throw openError(file, true);
}

} // namespace PlaylistFile
