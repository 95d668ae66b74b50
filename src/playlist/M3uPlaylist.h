#pragma once

#include "base/PathStyle.h"

#include <QHash>
#include <QString>
#include <QStringList>

// Playlists in the M3U format other players read and write: "#EXTM3U" first, "#EXTINF:<seconds>,<title>"
// before an entry, one path or address per line, relative paths counting from the list's folder.
// Our priority travels in a comment line other players ignore, so a list comes back as it went.
namespace M3uPlaylist {

// Written before an entry whose priority is not 5.
inline const QString kPriorityTag = QStringLiteral("#TAVOMP3PRIO:");

// What an M3U file gives a playlist.
struct Import {
    QStringList lines;              // PlaylistLines, priority 5 where the file names none
    QHash<QString, qint32> seconds; // lengths the file names, by file path
    QHash<QString, QString> titles; // "#EXTINF" titles, by file path: a save gives them back
    QStringList addresses;          // network entries, left out
    QStringList missing;            // files not on disk, kept
    // A German account of what was left out or is missing; "" when nothing was.
    QString notes() const;
};

// ".m3u" or ".m3u8", in any case: saved in this format, whatever the folder.
bool isM3uName(const QString& file);
// A file of that name, or text that starts with the "#EXTM3U" header.
bool isM3u(const QString& file, const QStringList& lines);
// listFolder: folder of the playlist file, native separators.
Import read(const QStringList& lines, const QString& listFolder);
// The text of an M3U8 file for the playlist lines; seconds and titles: what is known, by file path
// (titles otherwise from the file names). Every entry is written so that read() gives the same path
// back: a name starting with "#" gets "./" in front, one read() would change (edge blanks, a
// trailing ":<digit>") is written as a file:// address.
QString write(const QStringList& playlistLines, const QString& listFolder,
              const QHash<QString, qint32>& seconds, const QHash<QString, QString>& titles, PathStyle style);

} // namespace M3uPlaylist
