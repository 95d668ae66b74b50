#pragma once

#include <QDir>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>
#include <filesystem>
#include <fstream>

// A music folder tree on disk: empty files are all the folder walk needs. Entries are relative
// paths with "/"; root(), path() and line() give the platform's own separators, as the folder dialog
// hands them to the program; an entry ending in "/" is an empty folder, "link -> target" a symbolic link to a
// path of the tree ("." for the tree itself), and "latin1:path" a file whose path is stored in
// Latin-1 bytes, as old collections keep their names.
class TempMusicTree {
public:
    QTemporaryDir dir;

    explicit TempMusicTree(const QStringList& entries = {}) { add(entries); }

    QString root() const { return QDir::toNativeSeparators(dir.path()); }
    QString path(const QString& relative) const { return QDir::toNativeSeparators(dir.filePath(relative)); }

    void add(const QStringList& entries) {
        for (const QString& e : entries) {
            const qsizetype arrow = e.indexOf(QLatin1String(" -> "));
            if (arrow > 0) {
                QDir().mkpath(QFileInfo(path(e.left(arrow))).path());
                QFile::link(path(e.mid(arrow + 4)), path(e.left(arrow)));
                continue;
            }
            if (e.startsWith(QLatin1String("latin1:"))) {
                const std::filesystem::path file(QFile::encodeName(root()).toStdString() + '/' +
                                                 e.mid(7).toLatin1().toStdString());
                std::filesystem::create_directories(file.parent_path());
                std::ofstream{file};
                continue;
            }
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
