#pragma once

#include "base/Services.h"
#include "playlist/FolderLister.h"

#include <QObject>
#include <QStringList>

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

    // Carries ":" and the priority digit of every old line over to the line with the same path in
    // `fresh`, searching each old path from the position of the last match on. Returns the number
    // of comparisons that did not match.
    static qint32 mergePriorities(const QStringList& old, qint16 oldUpper, QStringList& fresh);

signals:
    // A progress text was put into the status line and should be painted before the walk goes on.
    void statusPaintRequested();

private:
    // Walks all music directories into `lines` (an empty playlist on entry). Returns the note on
    // skipped names that ends the final status text ("" when none).
    QString collect(QStringList& lines);

    Services& m_services;
    PlaylistManager& m_playlists;
    const FolderLister& m_lister;
};
