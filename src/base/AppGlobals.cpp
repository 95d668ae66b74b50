#include "base/AppGlobals.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

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

QString skinFolder() {
    const QString beside = programFolder();
    const QString installed = QDir::cleanPath(beside + QStringLiteral("/../share/tavomp3player"));
    for (const QString& folder : {beside, installed})
        if (QFileInfo::exists(folder + QStringLiteral("/Button129x22.bmp")))
            return QDir::toNativeSeparators(folder);
    return beside;
}

QString updaterFileName() {
#ifdef Q_OS_WIN
    return QStringLiteral("TavoMP3Update.exe");
#else
    return QStringLiteral("TavoMP3Update");
#endif
}

} // namespace AppGlobals
