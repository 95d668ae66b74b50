#include "base/AppGlobals.h"

#include <QCoreApplication>
#include <QDir>

namespace AppGlobals {

bool StartUpdaterOnExit = false;
QString UpdaterPath;
bool PlayOnStart = false;

QString programFolder() {
    QString dir = QCoreApplication::applicationDirPath();
    while (dir.size() > 1 && (dir.endsWith(QLatin1Char('/')) || dir.endsWith(QLatin1Char('\\'))))
        dir.chop(1);
    return QDir::toNativeSeparators(dir);
}

QString updaterFileName() {
#ifdef Q_OS_WIN
    return QStringLiteral("TavoMP3Update.exe");
#else
    return QStringLiteral("TavoMP3Update");
#endif
}

} // namespace AppGlobals
