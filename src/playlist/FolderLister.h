#pragma once

#include "base/PathStyle.h"

#include <QByteArray>
#include <QStringList>
#include <optional>

// What listing one folder gives.
struct FolderListing {
    QStringList names;
    // Per name, whether the entry is known to be a plain file (not a folder, nor a link that may lead
    // to one): opening it as a folder could only fail. Empty when the lister cannot tell.
    QList<bool> plainFiles;
    // The folder itself, whichever path led to it (device and inode on Linux); empty when unknown.
    // A link that leads back to a folder the walk is inside of is recognised by it.
    QByteArray identity;
    // Entries whose names do not decode to text and back (Latin-1 names on a UTF-8 system), shown
    // with replacement characters. They are not in `names`: a path built from such a name would
    // lead nowhere.
    QStringList unreadableNames;
};

// The directory listing the music-folder walk reads: the visible entries of one folder, files and
// sub-folders alike, without "." and "..". Hidden entries are left out (dot-names on Linux, the
// hidden or system attribute on Windows), and the names come sorted case-insensitively with ties
// in binary order, so that a playlist does not depend on the order the file system keeps.
class FolderLister {
public:
    virtual ~FolderLister() = default;
    virtual PathStyle style() const = 0;
    virtual bool folderExists(const QString& folder) const = 0;
    // Lists folder & separator; nullopt when that is not a readable folder (a file, a missing path).
    virtual std::optional<FolderListing> list(const QString& folder) const = 0;

    // The listing order: case-insensitive, ties in binary order.
    static bool listsBefore(const QString& a, const QString& b);
    static void sortNames(QStringList& names);
};

// The real file system, in the native path style.
class DiskFolderLister : public FolderLister {
public:
    PathStyle style() const override;
    bool folderExists(const QString& folder) const override;
    std::optional<FolderListing> list(const QString& folder) const override;
};
