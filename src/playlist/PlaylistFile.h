#pragma once

#include "base/RuntimeError.h"

#include <QString>
#include <QStringList>

// The playlist text file: one line per entry, CR LF, no header, in the system's 8-bit code page.
namespace PlaylistFile {

// "OK", or "Fehler beim Laden von \"<file>\" -> #<number> <description>".
QString FuncCheckFile(const QString& file, int mode);
// All lines; CR LF, CR and LF all end a line and the last line need not be ended.
// Raises a RuntimeError when the file cannot be read.
QStringList readLines(const QString& file);
// The error a failed open raises, worded as the file system's (missing folder, folder, no rights).
RuntimeError openError(const QString& file, bool forWriting);
// Replaces the file in one atomic write, every line ended by CR LF. Raises a RuntimeError on failure.
void writeLines(const QString& file, const QStringList& lines);

} // namespace PlaylistFile
