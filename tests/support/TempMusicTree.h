#pragma once

#include <QDir>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

// A music folder tree on disk: empty files are all the folder walk needs. Entries are relative
// paths with "/"; an entry ending in "/" is an empty folder.
class TempMusicTree {
public:
    QTemporaryDir dir;

    explicit TempMusicTree(const QStringList& entries = {}) { add(entries); }

    QString root() const { return dir.path(); }
    QString path(const QString& relative) const { return dir.filePath(relative); }

    void add(const QStringList& entries) {
        for (const QString& e : entries) {
            if (e.endsWith(QLatin1Char('/'))) {
                QDir().mkpath(path(e));
                continue;
            }
            QDir().mkpath(QFileInfo(path(e)).path());
            QFile f(path(e));
            f.open(QIODevice::WriteOnly);
        }
    }
    void remove(const QString& relative) { QFile::remove(path(relative)); }

    // The playlist line the walk makes of a relative file path.
    QString line(const QString& relative, char priority = '5') const {
        return path(relative) + QLatin1Char(':') + QLatin1Char(priority);
    }
    QStringList lines(const QStringList& relatives) const {
        QStringList out;
        for (const QString& r : relatives)
            out << line(r);
        return out;
    }
};
