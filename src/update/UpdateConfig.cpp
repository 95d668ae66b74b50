#include "update/UpdateConfig.h"

#include "base/AppGlobals.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace {
QString sep() {
    return QString(QDir::separator());
}
QString downloads() {
    return QStringLiteral("/TavoMP3/Downloads/");
}
} // namespace

QString UpdateConfig::executableSuffix() {
#ifdef Q_OS_WIN
    return QStringLiteral(".exe");
#else
    return QString();
#endif
}

QString UpdateConfig::serverFromEnvironment() {
    const QString fromEnv = qEnvironmentVariable("TAVOMP3_UPDATE_HOST").trimmed();
    return fromEnv.isEmpty() ? defaultServer() : fromEnv;
}

UpdateConfig UpdateConfig::forThisProgram() {
    UpdateConfig c;
    c.server = serverFromEnvironment();
    c.programFolder = AppGlobals::programFolder();
    c.ownName = QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName();
    c.playerVersion =
        QString::number(TAVO_VERSION_MAJOR) + QLatin1Char('.') + QString::number(TAVO_VERSION_MINOR);
    c.updaterVersion = QString::number(TAVO_VERSION_REVISION);
    c.updaterPath = AppGlobals::UpdaterPath.isEmpty()
                        ? c.programFolder + sep() + AppGlobals::updaterFileName()
                        : AppGlobals::UpdaterPath;
    return c;
}

QString UpdateConfig::versionListAddress() const {
    return QStringLiteral("http://") + server + downloads() + QStringLiteral("Versions.txt");
}

QString UpdateConfig::playerAddress() const {
    return QStringLiteral("http://") + server + downloads() + QStringLiteral("TavoMP3Player") +
           executableSuffix();
}

QString UpdateConfig::updaterAddress() const {
    return QStringLiteral("http://") + server + downloads() + QStringLiteral("TavoMP3Update") +
           executableSuffix();
}

QString UpdateConfig::localVersionList() const {
    return programFolder + sep() + QStringLiteral("TavoMP3Versions.txt");
}

QString UpdateConfig::ownPath() const {
    return programFolder + sep() + ownName + executableSuffix();
}

QString UpdateConfig::newPlayerFile() const {
    return programFolder + sep() + ownName + QStringLiteral(".tmp");
}
