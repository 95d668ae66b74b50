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

namespace {

// One entry line as read() takes it: its path (native separators, relative ones from the list's
// folder) and the priority digit it carries itself, if any. Empty for a network address.
struct Entry {
    QString path;
    QChar digit;
};

Entry parseEntry(const QString& line, const QDir& folder) {
    QString entry = line;
    bool address = false;
    if (entry.startsWith(QLatin1String("file://"), Qt::CaseInsensitive)) {
        entry = QUrl(entry).toLocalFile();
        address = true;
    } else if (isAddress(entry)) {
        return {};
    }
    QChar digit;
    // Our own lines end in ":<digit>"; an address names its file exactly.
    if (!address && hasPriority(entry)) {
        digit = entry.back();
        entry.chop(2);
    }
    if (QDir::isRelativePath(entry))
        entry = folder.filePath(entry);
    return {QDir::toNativeSeparators(QDir::cleanPath(entry)), digit};
}

} // namespace

Import read(const QStringList& lines, const QString& listFolder) {
    Import result;
    const QDir folder(listFolder);
    qint32 seconds = -1;
    QString title;
    QChar priority = QLatin1Char('5');
    for (const QString& raw : lines) {
        const QString line = raw.trimmed();
        if (line.isEmpty())
            continue;
        if (line.startsWith(QLatin1Char('#'))) {
            if (line.startsWith(kInfo)) {
                const qsizetype comma = line.indexOf(QLatin1Char(','));
                seconds = line.mid(kInfo.size(), comma < 0 ? -1 : comma - kInfo.size()).trimmed().toInt();
                title = comma < 0 ? QString() : line.mid(comma + 1);
            } else if (line.startsWith(kPriorityTag) && line.size() == kPriorityTag.size() + 1 &&
                       isPriorityDigit(line.back())) {
                priority = line.back();
            }
            continue;
        }
        const Entry entry = parseEntry(line, folder);
        if (entry.path.isEmpty()) {
            result.addresses << line;
        } else {
            if (!QFileInfo::exists(entry.path))
                result.missing << entry.path;
            if (seconds > 0)
                result.seconds.insert(entry.path, seconds);
            if (!title.isEmpty())
                result.titles.insert(entry.path, title);
            result.lines << entry.path + QLatin1Char(':') + (entry.digit.isNull() ? priority : entry.digit);
        }
        seconds = -1;
        title.clear();
        priority = QLatin1Char('5');
    }
    return result;
}

QString write(const QStringList& playlistLines, const QString& listFolder,
              const QHash<QString, qint32>& seconds, const QHash<QString, QString>& titles, PathStyle style) {
    QString text = kHeader + QLatin1Char('\n');
    const QDir folder(listFolder);
    const QString below = QDir::cleanPath(QDir::fromNativeSeparators(listFolder)) + QLatin1Char('/');
    auto readsBack = [&folder](const QString& written, const QString& path) {
        const Entry e = parseEntry(written.trimmed(), folder);
        return !written.trimmed().startsWith(QLatin1Char('#')) && e.path == path && e.digit.isNull();
    };
    for (const QString& line : playlistLines) {
        if (line.isEmpty())
            continue;
        const QString path = PlaylistLine::path(line);
        const QChar digit = PlaylistLine::priority(line);
        if (digit != QLatin1Char('5'))
            text += kPriorityTag + digit + QLatin1Char('\n');
        QString title = titles.value(path);
        if (title.isEmpty()) {
            try {
                title = PlaylistLine::FuncGetSongName(line, style);
            } catch (const std::exception&) {
            }
            if (title.isEmpty() || PlaylistLine::isErrorName(title))
                title = QFileInfo(path).completeBaseName();
        }
        text +=
            kInfo + QString::number(seconds.value(path, -1)) + QLatin1Char(',') + title + QLatin1Char('\n');
        const QString plain = QDir::fromNativeSeparators(path);
        QString written = path;
        if (plain.startsWith(below)) {
            written = QDir::toNativeSeparators(plain.mid(below.size()));
            if (written.startsWith(QLatin1Char('#')))
                written = QStringLiteral(".") + QDir::separator() + written; // not a comment line
        }
        if (!readsBack(written, path)) {
            const QString address = QUrl::fromLocalFile(plain).toString(QUrl::FullyEncoded);
            if (readsBack(address, path))
                written = address;
        }
        text += written;
        text += QLatin1Char('\n');
    }
    return text;
}

} // namespace M3uPlaylist
