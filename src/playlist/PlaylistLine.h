#pragma once

#include "base/PathStyle.h"

#include <QString>

// One playlist entry: absolute path of a music file, ":", one priority digit "0".."5".
// The priority is always the last character; the extension is four characters with its dot.
namespace PlaylistLine {

// Display name of a line (file name without extension, colon and digit), or an error text that
// starts with "Fehler:".
QString FuncGetSongName(const QString& line, PathStyle style);
bool isErrorName(const QString& name);
// "<i+1>. <name>", as list boxes show element i.
QString listItemText(qsizetype index, const QString& name);

QChar priority(const QString& line);
QString withPriority(const QString& line, QChar digit);
// The file path: the line without its last two characters.
QString path(const QString& line);

} // namespace PlaylistLine
