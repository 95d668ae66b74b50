#include "playlist/FolderLister.h"

#include <QFileInfo>
#include <algorithm>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <dirent.h>
#include <sys/stat.h>
#endif

void FolderLister::sortNames(QStringList& names) {
    std::sort(names.begin(), names.end(), [](const QString& a, const QString& b) {
        const int c = QString::compare(a, b, Qt::CaseInsensitive);
        return c != 0 ? c < 0 : a < b;
    });
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
    FolderListing listing;
    do {
        if (data.dwFileAttributes & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM))
            continue;
        const QString name = QString::fromWCharArray(data.cFileName);
        if (name == QLatin1String(".") || name == QLatin1String(".."))
            continue;
        listing.names.append(name);
    } while (FindNextFileW(h, &data));
    FindClose(h);
    sortNames(listing.names);
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
    FolderListing listing;
    while (const dirent* e = readdir(dir)) {
        if (e->d_name[0] == '.')
            continue; // ".", ".." and hidden entries
        const QString name = QFile::decodeName(e->d_name);
        if (QFile::encodeName(name) == e->d_name)
            listing.names.append(name);
        else
            listing.unreadableNames.append(name);
    }
    closedir(dir);
    sortNames(listing.names);
    sortNames(listing.unreadableNames);
    if (known)
        listing.identity =
            QByteArray::number(quint64(self.st_dev)) + ':' + QByteArray::number(quint64(self.st_ino));
    return listing;
}

#endif
