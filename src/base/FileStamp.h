#pragma once

#include <QString>
#include <QtGlobal>

// What the file system says about a file without reading it: size, modification time and, where
// the system has them, device and inode. An unchanged stamp means unchanged content (a write moves
// the modification time); the same device and inode under another name mean the same file renamed.
struct FileStamp {
    qint64 size = -1; // -1: no plain file there
    qint64 modifiedNs = 0;
    quint64 device = 0; // 0 with inode 0: the system does not tell
    quint64 inode = 0;

    bool isFile() const { return size >= 0; }
    bool hasInode() const { return inode != 0; }
    friend bool operator==(const FileStamp&, const FileStamp&) = default;

    // Follows symbolic links, as opening the file does.
    static FileStamp of(const QString& path);
#ifndef Q_OS_WIN
    // From the status of a file already open, so that the stamp belongs to the bytes read from it.
    static FileStamp ofDescriptor(int fd);
#endif
};
