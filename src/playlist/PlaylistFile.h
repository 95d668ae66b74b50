#pragma once

#include "base/RuntimeError.h"

#include <QString>
#include <QStringConverter>
#include <QStringList>

// The playlist text file: one line per entry, CR LF, no header. Classic files are ANSI (Latin-1 here),
// newer ones UTF-8; the bytes are read in whichever the file is and written back the same way.
namespace PlaylistFile {

// How a file's bytes become text. Kept per playlist so that a save writes back what was read.
struct TextFormat {
    QStringConverter::Encoding encoding = QStringConverter::Utf8;
    bool byteOrderMark = false;
    bool operator==(const TextFormat&) const = default;
};

// "OK", or "Fehler beim Laden von \"<file>\" -> #<number> <description>".
QString FuncCheckFile(const QString& file, int mode);
// All lines; CR LF, CR and LF all end a line and the last line need not be ended. A byte-order mark
// chooses the encoding; otherwise valid UTF-8 is UTF-8 and anything else the 8-bit code page.
// Raises a RuntimeError when the file cannot be read.
QStringList readLines(const QString& file, TextFormat* format = nullptr);
// The format a file's bytes are in (see readLines) and the text they hold.
TextFormat detectFormat(const QByteArray& data);
QString decode(const QByteArray& data, const TextFormat& format);
// Replaces the file in one atomic write, every line ended by CR LF, in the format given; text the
// 8-bit code page cannot hold is written as UTF-8 instead. Returns the format written.
// Raises a RuntimeError on failure.
TextFormat writeLines(const QString& file, const QStringList& lines, const TextFormat& format = {});
// Replaces the file with the bytes in one atomic write. Raises a RuntimeError on failure.
void writeBytes(const QString& file, const QByteArray& data);

} // namespace PlaylistFile
