#pragma once

#include <QString>

// Playlist lines hold absolute paths. On Windows they start with a drive ("C:\") or a share ("\\"),
// on Linux with "/". The rules that read playlist lines take the style explicitly so that the
// Windows rules stay tested on Linux.
enum class PathStyle { Windows, Posix };

namespace Paths {

PathStyle nativeStyle();
QChar separator(PathStyle style);
// Absolute in the playlist sense: "X:\..." or "\\..." (Windows), "/..." (POSIX).
bool isRooted(const QString& path, PathStyle style);
// The folder part of a full file name, with its trailing separator ("C:\Music\a.txt" -> "C:\Music\").
QString folderWithSeparator(const QString& fullName, PathStyle style);
// A path with the native separators of the style.
QString toStyle(const QString& path, PathStyle style);

} // namespace Paths
