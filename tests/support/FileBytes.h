#pragma once

#include <QFile>

// Whole files in and out, for tests that compare the bytes on disk. A file that cannot be read reads as
// "<missing>", so a failed comparison says which file was absent.
namespace FileBytes {
inline QByteArray read(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
}
inline bool write(const QString& path, const QByteArray& bytes, bool executable = false) {
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate) || f.write(bytes) != bytes.size())
        return false;
    f.close();
    return !executable || f.setPermissions(f.permissions() | QFileDevice::ExeOwner | QFileDevice::ExeUser);
}
} // namespace FileBytes
