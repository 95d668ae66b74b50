#pragma once

#include "playlist/FolderLister.h"

#include <QList>
#include <QStringList>
#include <functional>

class StatusLine;

// Collects the music files below the music directories into playlist lines "folder\name:5".
// The walk keeps no stack of positions: it holds the current folder path and, when a folder is
// finished, finds that folder again in its parent's listing and goes on with the entry after it.
// Every entry that is not a music file is opened as a folder (a picture's listing simply fails).
// A folder the walk is already inside of,
// reached again through a link, is taken as empty: a link back up the tree is followed once and
// never round and round. Entries whose names are not valid UTF-8 are left out and counted.
class MusicFolderWalk {
public:
    MusicFolderWalk(const FolderLister& lister, StatusLine& status);

    // Called right after each progress text, so that the window can paint it while the walk runs.
    std::function<void()> paintStatus;

    // Walks every root into `lines`, an empty playlist ("" at 0) or lines from an earlier root.
    // Raises the overflow error at the 32768th file, like the 16-bit counter it replaces.
    void run(const QStringList& roots, QStringList& lines);
    qint16 count() const { return m_count; }
    // "" when every name could be read, else the note the final status text ends with: how many
    // entries were skipped because their names are not valid UTF-8 (old Latin-1 names), and the
    // first of them.
    QString skippedNote() const;

    // A substring test on the lower-case name: "a.mp3.bak" counts as music.
    static bool isMusicName(const QString& name);

private:
    struct Listing {
        QString folder;
        QByteArray identity;
        QStringList names;
    };

    void walkRoot(QString root, QStringList& lines);
    void addFile(const QString& line, QStringList& lines);
    // Lists a folder and keeps the listing while the folder is open; false when it cannot be listed
    // or is already open further up.
    bool enter(const QString& folder);

    const FolderLister& m_lister;
    StatusLine& m_status;
    QChar m_sep;
    qint16 m_count = 0;
    int m_skipped = 0;
    QString m_firstSkipped;
    // The listings of the current folder and its open ancestors. A finished folder is searched for
    // in the kept listing of its parent rather than in a new one: the same names on an unchanged
    // disk, at half the directory reads.
    QList<Listing> m_open;
};
