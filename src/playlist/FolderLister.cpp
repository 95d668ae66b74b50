#include "playlist/FolderLister.h"

#include <QFileInfo>
#include <algorithm>
#include <cstring>
#include <vector>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <dirent.h>
#include <sys/stat.h>
#endif

namespace {

char16_t foldAscii(char16_t c) {
    return c >= u'A' && c <= u'Z' ? char16_t(c + (u'a' - u'A')) : c;
}

struct Entry {
    QString name;
    bool plainFile;
};

FolderListing sortedListing(std::vector<Entry>& entries) {
    std::sort(entries.begin(), entries.end(),
              [](const Entry& a, const Entry& b) { return FolderLister::listsBefore(a.name, b.name); });
    FolderListing listing;
    listing.names.reserve(qsizetype(entries.size()));
    listing.plainFiles.reserve(qsizetype(entries.size()));
    for (Entry& e : entries) {
        listing.names.append(std::move(e.name));
        listing.plainFiles.append(e.plainFile);
    }
    return listing;
}

} // namespace

bool FolderLister::listsBefore(const QString& a, const QString& b) {
    // Most names are ASCII, where case folding is the ASCII lower case. Folding those here and
    // handing only the rest, from the first other character that differs, to QString::compare keeps
    // its order and spares its table look-up per character, which made sorting cost more than
    // reading a large folder.
    const qsizetype common = qMin(a.size(), b.size());
    const char16_t* pa = reinterpret_cast<const char16_t*>(a.constData());
    const char16_t* pb = reinterpret_cast<const char16_t*>(b.constData());
    qsizetype i = 0;
    while (i + 4 <= common && std::memcmp(pa + i, pb + i, 4 * sizeof(char16_t)) == 0)
        i += 4; // equal four at a time: names in one folder often share a long start
    for (; i < common; ++i) {
        if (pa[i] == pb[i])
            continue;
        if (pa[i] >= 0x80 || pb[i] >= 0x80) {
            // A character outside the basic plane folds as a pair: start at its first half.
            const qsizetype from = i > 0 && QChar::isHighSurrogate(pa[i - 1]) ? i - 1 : i;
            const int c = QStringView(a).mid(from).compare(QStringView(b).mid(from), Qt::CaseInsensitive);
            return c != 0 ? c < 0 : a < b;
        }
        if (foldAscii(pa[i]) != foldAscii(pb[i]))
            return foldAscii(pa[i]) < foldAscii(pb[i]);
    }
    return a.size() != b.size() ? a.size() < b.size() : a < b;
}

void FolderLister::sortNames(QStringList& names) {
    std::sort(names.begin(), names.end(), listsBefore);
}

PathStyle DiskFolderLister::style() const {
    return Paths::nativeStyle();
}

bool DiskFolderLister::folderExists(const QString& folder) const {
    return QFileInfo(folder).isDir();
}

#ifdef Q_OS_WIN

std::optional<FolderListing> DiskFolderLister::list(const QString& folder) const {
    const std::wstring pattern = (folder + QStringLiteral("\\*.*")).toStdWString();
    WIN32_FIND_DATAW data;
    HANDLE h = FindFirstFileExW(pattern.c_str(), FindExInfoBasic, &data, FindExSearchNameMatch, nullptr,
                                FIND_FIRST_EX_LARGE_FETCH);
    if (h == INVALID_HANDLE_VALUE)
        return std::nullopt;
    std::vector<Entry> entries;
    do {
        if (data.dwFileAttributes & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM))
            continue;
        const QString name = QString::fromWCharArray(data.cFileName);
        if (name == QLatin1String(".") || name == QLatin1String(".."))
            continue;
        const bool plainFile =
            !(data.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT));
        entries.push_back({name, plainFile});
    } while (FindNextFileW(h, &data));
    FindClose(h);
    FolderListing listing = sortedListing(entries);
    // Junctions and links resolved: the same folder gives the same path.
    listing.identity = QFileInfo(folder + QLatin1Char('\\')).canonicalFilePath().toUtf8();
    return listing;
}

#else

std::optional<FolderListing> DiskFolderLister::list(const QString& folder) const {
    // The walk joins with "/" itself, so the root folder arrives as "" and is listed as "/".
    DIR* dir = opendir(QFile::encodeName(folder + QLatin1Char('/')).constData());
    if (!dir)
        return std::nullopt;
    struct stat self;
    const bool known = fstat(dirfd(dir), &self) == 0;
    std::vector<Entry> entries;
    QStringList unreadable;
    while (const dirent* e = readdir(dir)) {
        if (e->d_name[0] == '.')
            continue; // ".", ".." and hidden entries
        const QString name = QFile::decodeName(e->d_name);
        if (QFile::encodeName(name) != e->d_name)
            unreadable.append(name);
        else
            entries.push_back({name, e->d_type != DT_DIR && e->d_type != DT_LNK && e->d_type != DT_UNKNOWN});
    }
    closedir(dir);
    FolderListing listing = sortedListing(entries);
    sortNames(unreadable);
    listing.unreadableNames = std::move(unreadable);
    if (known)
        listing.identity =
            QByteArray::number(quint64(self.st_dev)) + ':' + QByteArray::number(quint64(self.st_ino));
    return listing;
}

#endif
