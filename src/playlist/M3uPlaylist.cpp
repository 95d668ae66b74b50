#include "playlist/M3uPlaylist.h"

#include "playlist/PlaylistLine.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QUrl>

namespace M3uPlaylist {

namespace {

const QString kHeader = QStringLiteral("#EXTM3U");
const QString kInfo = QStringLiteral("#EXTINF:");

// "1 Eintrag … wurde" / "3 Einträge … wurden".
QString counted(qsizetype n, const char* one, const char* many) {
    return QString::number(n) + QLatin1Char(' ') + QString::fromUtf8(n == 1 ? one : many);
}

bool isPriorityDigit(QChar c) {
    return c >= QLatin1Char('0') && c <= QLatin1Char('5');
}

// An entry that already ends in ":<digit>", as our own lines do.
bool hasPriority(const QString& entry) {
    return entry.size() > 2 && entry.at(entry.size() - 2) == QLatin1Char(':') &&
           isPriorityDigit(entry.back());
}

bool isAddress(const QString& entry) {
    static const QRegularExpression scheme(QStringLiteral("^[A-Za-z][A-Za-z0-9+.-]+://"));
    return scheme.match(entry).hasMatch();
}

} // namespace

QString Import::notes() const {
    QStringList parts;
    if (!addresses.isEmpty())
        parts << counted(addresses.size(), "Eintrag mit Internetadresse wurde",
                         "Einträge mit Internetadressen wurden") +
                     QStringLiteral(" nicht übernommen (nur Dateien auf diesem Rechner), z. B. \"") +
                     addresses.first() + QStringLiteral("\".");
    if (!missing.isEmpty())
        parts << counted(missing.size(), "Datei wurde", "Dateien wurden") +
                     QStringLiteral(" nicht gefunden und bleiben in der Liste, z. B. \"") + missing.first() +
                     QStringLiteral("\".");
    return parts.join(QLatin1Char('\n'));
}

bool isM3uName(const QString& file) {
    const QString suffix = QFileInfo(file).suffix().toLower();
    return suffix == QLatin1String("m3u") || suffix == QLatin1String("m3u8");
}

bool isM3u(const QString& file, const QStringList& lines) {
    return isM3uName(file) || (!lines.isEmpty() && lines.first().trimmed().startsWith(kHeader));
}

Import read(const QStringList& lines, const QString& listFolder) {
    Import result;
    const QDir folder(listFolder);
    qint32 seconds = -1;
    QChar priority = QLatin1Char('5');
    for (const QString& raw : lines) {
        const QString line = raw.trimmed();
        if (line.isEmpty())
            continue;
        if (line.startsWith(QLatin1Char('#'))) {
            if (line.startsWith(kInfo))
                seconds = line.mid(kInfo.size()).section(QLatin1Char(','), 0, 0).trimmed().toInt();
            else if (line.startsWith(kPriorityTag) && line.size() == kPriorityTag.size() + 1 &&
                     isPriorityDigit(line.back()))
                priority = line.back();
            continue;
        }
        QString entry = line;
        if (entry.startsWith(QLatin1String("file://"), Qt::CaseInsensitive)) {
            entry = QUrl(entry).toLocalFile();
        } else if (isAddress(entry)) {
            result.addresses << entry;
            seconds = -1;
            priority = QLatin1Char('5');
            continue;
        }
        QChar digit = priority;
        if (hasPriority(entry)) {
            digit = entry.back();
            entry.chop(2);
        }
        if (QDir::isRelativePath(entry))
            entry = folder.filePath(entry);
        entry = QDir::toNativeSeparators(QDir::cleanPath(entry));
        if (!QFileInfo::exists(entry))
            result.missing << entry;
        if (seconds > 0)
            result.seconds.insert(entry, seconds);
        result.lines << entry + QLatin1Char(':') + digit;
        seconds = -1;
        priority = QLatin1Char('5');
    }
    return result;
}

QString write(const QStringList& playlistLines, const QString& listFolder,
              const QHash<QString, qint32>& seconds, PathStyle style) {
    QString text = kHeader + QLatin1Char('\n');
    const QString below = QDir::cleanPath(QDir::fromNativeSeparators(listFolder)) + QLatin1Char('/');
    for (const QString& line : playlistLines) {
        if (line.isEmpty())
            continue;
        const QString path = PlaylistLine::path(line);
        const QChar digit = PlaylistLine::priority(line);
        if (digit != QLatin1Char('5'))
            text += kPriorityTag + digit + QLatin1Char('\n');
        QString title;
        try {
            title = PlaylistLine::FuncGetSongName(line, style);
        } catch (const std::exception&) {
        }
        if (title.isEmpty() || PlaylistLine::isErrorName(title))
            title = QFileInfo(path).completeBaseName();
        text +=
            kInfo + QString::number(seconds.value(path, -1)) + QLatin1Char(',') + title + QLatin1Char('\n');
        const QString plain = QDir::fromNativeSeparators(path);
        text += plain.startsWith(below) ? QDir::toNativeSeparators(plain.mid(below.size())) : path;
        text += QLatin1Char('\n');
    }
    return text;
}

} // namespace M3uPlaylist
