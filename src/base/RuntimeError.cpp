#include "base/RuntimeError.h"

#include <QDir>
#include <QFileInfo>
#include <cerrno>

RuntimeError::RuntimeError(int number, QString description)
    : m_number(number), m_description(std::move(description)), m_what(m_description.toUtf8()) {
}

RuntimeError RuntimeError::overflow() {
    return {Overflow, QStringLiteral("Überlauf")};
}

RuntimeError RuntimeError::typeMismatch() {
    return {TypeMismatch, QStringLiteral("Typen unverträglich")};
}

RuntimeError RuntimeError::invalidCall() {
    return {InvalidCall, QStringLiteral("Ungültiger Prozeduraufruf oder ungültiges Argument")};
}

RuntimeError RuntimeError::subscriptOutOfRange() {
    return {SubscriptOutOfRange, QStringLiteral("Index außerhalb des gültigen Bereichs")};
}

RuntimeError RuntimeError::fileOpen(const QString& file, bool forWriting) {
    const QFileInfo info(file);
    if (file.isEmpty())
        return {BadFileName, QStringLiteral("Dateiname oder -nummer falsch")};
    if (forWriting && !info.absoluteDir().exists())
        return {PathNotFound, QStringLiteral("Pfad nicht gefunden")};
    if (!forWriting && !info.exists())
        return {FileNotFound, QStringLiteral("Datei nicht gefunden")};
    if (info.isDir())
        return {PathFileAccess, QStringLiteral("Fehler beim Zugriff auf Pfad/Datei")};
    if (info.exists() && (forWriting ? !info.isWritable() : !info.isReadable()))
        return {PermissionDenied, QStringLiteral("Zugriff verweigert")};
    return {PathFileAccess, QStringLiteral("Fehler beim Zugriff auf Pfad/Datei")};
}

RuntimeError RuntimeError::fileWrite(int systemError) {
#ifdef EDQUOT
    if (systemError == EDQUOT)
        systemError = ENOSPC;
#endif
    if (systemError == ENOSPC)
        return {DiskFull, QStringLiteral("Datenträger voll")};
    return {DeviceIo, QStringLiteral("Fehler beim Geräte-E/A")};
}
