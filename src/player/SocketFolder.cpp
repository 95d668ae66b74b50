#include "player/SocketFolder.h"

#include <QDir>
#include <QFile>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace SocketFolder {

Verdict check(const QString& folder) {
#ifdef Q_OS_UNIX
    struct stat info {};
    if (::lstat(QFile::encodeName(folder).constData(), &info) != 0)
        return Verdict::Missing;
    if (!S_ISDIR(info.st_mode))
        return Verdict::NotDirectory;
    if (info.st_uid != ::geteuid())
        return Verdict::NotOurs;
    if ((info.st_mode & 077) != 0)
        return Verdict::OpenToOthers;
    return Verdict::Private;
#else
    return QDir(folder).exists() ? Verdict::Private : Verdict::Missing;
#endif
}

Verdict makePrivate(const QString& folder) {
#ifdef Q_OS_UNIX
    // mkdir either creates a fresh folder with these rights or fails; what was there already is
    // judged as it is, never changed.
    if (::mkdir(QFile::encodeName(folder).constData(), 0700) != 0 && errno != EEXIST)
        return Verdict::Missing;
#else
    QDir().mkpath(folder);
#endif
    return check(folder);
}

QString fallbackFolder() {
#ifdef Q_OS_UNIX
    const QString uid = QString::number(::geteuid());
#else
    const QString uid = QStringLiteral("0");
#endif
    return QDir(QDir::tempPath()).filePath(QStringLiteral("tavomp3-") + uid);
}

QString refusalText(const QString& folder, Verdict verdict) {
    QString why;
    switch (verdict) {
    case Verdict::Private:
        return QString();
    case Verdict::Missing:
        why = QStringLiteral("lässt sich nicht anlegen");
        break;
    case Verdict::NotDirectory:
        why = QStringLiteral("ist kein Ordner");
        break;
    case Verdict::NotOurs:
        why = QStringLiteral("gehört einem anderen Benutzer");
        break;
    case Verdict::OpenToOthers:
        why = QStringLiteral("ist für andere Benutzer zugänglich");
        break;
    }
    return QStringLiteral("Player nicht gestartet: der Ordner ") + QDir::toNativeSeparators(folder) +
           QLatin1Char(' ') + why + QLatin1Char('.');
}

QString choose(QString* refusal) {
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!runtime.isEmpty() && check(runtime) == Verdict::Private)
        return runtime;
    const QString own = fallbackFolder();
    const Verdict verdict = makePrivate(own);
    if (verdict == Verdict::Private)
        return own;
    if (refusal)
        *refusal = refusalText(own, verdict);
    return QString();
}

} // namespace SocketFolder
