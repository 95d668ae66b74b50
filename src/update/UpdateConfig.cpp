#include "update/UpdateConfig.h"

#include "base/AppGlobals.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryFile>

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

QString UpdateConfig::playerFileName() {
    return QStringLiteral("TavoMP3Player") + executableSuffix();
}

QString UpdateConfig::updaterFileName() {
    return AppGlobals::updaterFileName();
}

QString UpdateConfig::serverFromEnvironment() {
    const QString fromEnv = qEnvironmentVariable("TAVOMP3_UPDATE_HOST").trimmed();
    return fromEnv.isEmpty() ? defaultServer() : fromEnv;
}

QString UpdateConfig::publicKeyFromEnvironment() {
    const QString fromEnv = qEnvironmentVariable("TAVOMP3_UPDATE_PUBLIC_KEY").trimmed();
    return fromEnv.isEmpty() ? QStringLiteral(TAVO_UPDATE_PUBLIC_KEY) : fromEnv;
}

UpdateConfig UpdateConfig::forThisProgram() {
    UpdateConfig c;
    c.server = serverFromEnvironment();
    c.publicKey = publicKeyFromEnvironment();
    c.programFolder = AppGlobals::programFolder();
    c.cacheFolder = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) + sep() +
                    QStringLiteral("TavoMP3Player");
    c.ownName = QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName();
    c.playerVersion =
        QString::number(TAVO_VERSION_MAJOR) + QLatin1Char('.') + QString::number(TAVO_VERSION_MINOR);
    c.updaterVersion = QString::number(TAVO_VERSION_REVISION);
    c.updaterPath = AppGlobals::UpdaterPath.isEmpty()
                        ? c.programFolder + sep() + AppGlobals::updaterFileName()
                        : AppGlobals::UpdaterPath;
    return c;
}

bool UpdateConfig::folderWritable(const QString& folder) {
    QTemporaryFile probe(folder + sep() + QStringLiteral(".tavo-write-test-XXXXXX"));
    return probe.open();
}

QString UpdateConfig::updateFolder() const {
    if (folderWritable(programFolder))
        return programFolder;
    QDir().mkpath(cacheFolder);
    return cacheFolder;
}

QString UpdateConfig::versionListAddress() const {
    return QStringLiteral("http://") + server + downloads() + QStringLiteral("Versions.txt");
}

QString UpdateConfig::playerAddress() const {
    return QStringLiteral("http://") + server + downloads() + playerFileName();
}

QString UpdateConfig::updaterAddress() const {
    return QStringLiteral("http://") + server + downloads() + updaterFileName();
}

QString UpdateConfig::localVersionList() const {
    return updateFolder() + sep() + QStringLiteral("TavoMP3Versions.txt");
}

QString UpdateConfig::ownPath() const {
    return programFolder + sep() + ownName + executableSuffix();
}

QString UpdateConfig::newPlayerFile() const {
    return programFolder + sep() + ownName + QStringLiteral(".tmp");
}
