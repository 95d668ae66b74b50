#include "base/PathStyle.h"

namespace Paths {

PathStyle nativeStyle() {
#ifdef Q_OS_WIN
    return PathStyle::Windows;
#else
    return PathStyle::Posix;
#endif
}

QChar separator(PathStyle style) {
    return style == PathStyle::Windows ? QLatin1Char('\\') : QLatin1Char('/');
}

bool isRooted(const QString& path, PathStyle style) {
    if (style == PathStyle::Posix)
        return path.startsWith(QLatin1Char('/'));
    return path.mid(1, 2) == QLatin1String(":\\") || path.startsWith(QLatin1String("\\\\"));
}

QString folderWithSeparator(const QString& fullName, PathStyle style) {
    const int last = fullName.lastIndexOf(separator(style));
    return last < 0 ? QString() : fullName.left(last + 1);
}

QString toStyle(const QString& path, PathStyle style) {
    QString p = path;
    if (style == PathStyle::Windows)
        p.replace(QLatin1Char('/'), QLatin1Char('\\'));
    return p;
}

} // namespace Paths
