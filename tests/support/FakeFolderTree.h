#pragma once

#include "base/RuntimeError.h"
#include "playlist/FolderLister.h"

#include <QHash>
#include <QPair>
#include <QSet>

// A folder tree in memory, in either path style: tests of the walk's rules that depend on the
// style (drive roots, "\" separators) run without a Windows file system.
class FakeFolderTree : public FolderLister {
public:
    explicit FakeFolderTree(PathStyle style) : m_style(style) {}

    // Adds a file by its full path; the folders above it come into being.
    void addFile(const QString& path) { addEntry(path, false); }
    void addFolder(const QString& path) { addEntry(path, true); }
    // Listing this folder raises the given error instead.
    void failListing(const QString& folder, int number, const QString& description) {
        m_failures.insert(folder, qMakePair(number, description));
    }

    PathStyle style() const override { return m_style; }
    bool folderExists(const QString& folder) const override {
        QString f = folder;
        if (f.endsWith(Paths::separator(m_style)))
            f.chop(1);
        return m_folders.contains(f);
    }
    std::optional<FolderListing> list(const QString& folder) const override {
        if (m_failures.contains(folder))
            throw RuntimeError(m_failures.value(folder).first, m_failures.value(folder).second);
        if (!m_folders.contains(folder))
            return std::nullopt;
        FolderListing listing;
        listing.names = m_folders.value(folder).values();
        sortNames(listing.names);
        return listing;
    }

private:
    void addEntry(const QString& path, bool isFolder) {
        const QChar sep = Paths::separator(m_style);
        if (isFolder)
            m_folders[path];
        const qsizetype cut = path.lastIndexOf(sep);
        if (cut < 0)
            return;
        const QString parent = path.left(cut);
        const bool known = m_folders.contains(parent);
        m_folders[parent].insert(path.mid(cut + 1));
        if (!known)
            addEntry(parent, true);
    }

    PathStyle m_style;
    QHash<QString, QSet<QString>> m_folders;
    QHash<QString, QPair<int, QString>> m_failures;
};
