#pragma once

#include "playlist/FolderLister.h"

#include <QList>
#include <QStringList>
#include <functional>

class StatusLine;

// Collects the music files below the music directories into playlist lines "folder\name:5".
// The walk keeps no stack of positions: it holds the current folder path and, when a folder is
// finished, finds that folder again in its parent's listing and goes on with the entry after it.
// Every entry that is not a music file is opened as a folder (a picture's listing simply fails),
// unless its listing already says it is a plain file. A folder the walk is already inside of,
// reached again through a link, is taken as empty: a link back up the tree is followed once and
// never round and round. Entries whose names are not valid UTF-8 are left out and counted.
class MusicFolderWalk {
public:
    MusicFolderWalk(const FolderLister& lister, StatusLine& status);

    // Called before each entry is taken, so that a long walk can let the window paint (EventSlices).
    std::function<void()> between;

    // Walks every root into `lines`, an empty playlist ("" at 0) or lines from an earlier root.
    // The file counter is 32 bits wide, as large as a list can be.
    void run(const QStringList& roots, QStringList& lines);
    qint32 count() const { return m_count; }
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
        QList<bool> plainFiles;
        qsizetype next = 0; // position of the next name to walk
    };

    void walkRoot(QString root, QStringList& lines);
    void addFile(const QString& line, QStringList& lines);
    // Lists a folder and keeps the listing while the folder is open; false when it cannot be listed
    // or is already open further up.
    bool enter(const QString& folder);
    // Whether the name just taken from the current listing is known to be a plain file.
    bool tookPlainFile() const;

    const FolderLister& m_lister;
    StatusLine& m_status;
    QChar m_sep;
    qint32 m_count = 0;
    int m_skipped = 0;
    QString m_firstSkipped;
    // The listings of the current folder and its open ancestors. A finished folder goes back to its
    // parent's kept listing at the entry after it, rather than reading the parent again and
    // searching for it by name: the same names on an unchanged disk, at half the directory reads
    // and without a search that made a large folder cost the square of its size.
    QList<Listing> m_open;
};
