#include "playlist/FolderLister.h"

#include <QFileInfo>
#include <algorithm>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <dirent.h>
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

std::optional<QStringList> DiskFolderLister::list(const QString& folder) const {
    const std::wstring pattern = (folder + QStringLiteral("\\*.*")).toStdWString();
    WIN32_FIND_DATAW data;
    HANDLE h = FindFirstFileExW(pattern.c_str(), FindExInfoBasic, &data, FindExSearchNameMatch, nullptr,
                                FIND_FIRST_EX_LARGE_FETCH);
    if (h == INVALID_HANDLE_VALUE)
        return std::nullopt;
    QStringList names;
    do {
        if (data.dwFileAttributes & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM))
            continue;
        const QString name = QString::fromWCharArray(data.cFileName);
        if (name == QLatin1String(".") || name == QLatin1String(".."))
            continue;
        names.append(name);
    } while (FindNextFileW(h, &data));
    FindClose(h);
    sortNames(names);
    return names;
}

#else

std::optional<QStringList> DiskFolderLister::list(const QString& folder) const {
    // The walk joins with "/" itself, so the root folder arrives as "" and is listed as "/".
    DIR* dir = opendir(QFile::encodeName(folder + QLatin1Char('/')).constData());
    if (!dir)
        return std::nullopt;
    QStringList names;
    while (const dirent* e = readdir(dir)) {
        if (e->d_name[0] == '.')
            continue; // ".", ".." and hidden entries
        names.append(QFile::decodeName(e->d_name));
    }
    closedir(dir);
    sortNames(names);
    return names;
}

#endif
