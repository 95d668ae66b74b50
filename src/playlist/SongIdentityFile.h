#pragma once

#include "base/FileStamp.h"
#include "mp3/AudioFingerprint.h"

#include <QByteArray>
#include <QHash>
#include <QString>

// What the program remembers of a song it has seen on disk: its fingerprint, and the stamp of the
// file it was read from (to know when to read it again and to recognise the same file renamed).
struct SongRecord {
    FileStamp stamp;
    AudioFingerprint fingerprint;
};
using SongRecords = QHash<QString, SongRecord>;

// The per-user file that keeps the records between runs. UTF-8 text, a header line, then one line
// per song:
//   <audio bytes> <hash, 32 hex digits> <file size> <modified, ns> <device> <inode> <path>
// with "%", CR and LF in the path written as %25, %0D and %0A. Lines are checked one by one and a
// line that is cut off or does not parse is left out, so a damaged file costs only what it lost.
// The file is replaced atomically; a failed write (a full disk) leaves the old one.
namespace SongIdentityFile {

extern const QByteArray kHeader;

// Missing, unreadable or of another kind (wrong header): no records.
SongRecords read(const QString& file);
QByteArray format(const SongRecords& records);
// Writes through a temporary file beside it with checked, unbuffered writes and a sync to disk
// before the rename; false (and the old file untouched) when any step fails.
bool write(const QString& file, const QByteArray& bytes);

} // namespace SongIdentityFile
