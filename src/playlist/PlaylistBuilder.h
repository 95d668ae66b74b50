#pragma once

#include "base/Services.h"
#include "playlist/FolderLister.h"

#include <QObject>
#include <QStringList>
#include <functional>

class EventSlices;
class PlaylistManager;

// Builds playlist 1 from the music directories (BCreateList) and brings it up to date with the
// disk while keeping the priorities the user has set (BUpdateList).
class PlaylistBuilder : public QObject {
    Q_OBJECT
public:
    PlaylistBuilder(Services& services, PlaylistManager& playlists, const FolderLister& lister,
                    QObject* parent = nullptr);

    // The folders to walk, lower bound 0.
    QStringList MusicDirectories{QString()};
    // The directory field's text: one folder per line or separated by ", ". A folder whose name
    // contains ", " is split apart, as it always was.
    static QStringList splitMusicDirectories(const QString& browsePathText);

    void BCreateList();
    void BUpdateList();

    // Carries ":" and the priority digit of every old line (0 to oldUpper) over to the line with the
    // same path in `fresh`, searching each old path from the position of the last match on. Returns
    // the number of comparisons a search along the list would make that do not match (64 bits: a
    // list whose entries are all gone counts the square of its size). `between` is called now and
    // then, so that a long list lets the window paint.
    static qint64 mergePriorities(const QStringList& old, qint32 oldUpper, QStringList& fresh,
                                  const std::function<void()>& between = {});

    // A build or update is running: the window paints meanwhile (user input waits), and a second
    // run asked for in that time does nothing.
    bool isRunning() const { return m_running; }

signals:
    // A build or update has ended (also by an error).
    void finished();

private:
    struct Running;
    // Walks all music directories into `lines` (an empty playlist on entry), letting the window
    // paint now and then. Returns the note on skipped names that ends the final status text ("" when
    // none).
    QString collect(QStringList& lines, EventSlices& slices);

    Services& m_services;
    PlaylistManager& m_playlists;
    const FolderLister& m_lister;
    bool m_running = false;
};
