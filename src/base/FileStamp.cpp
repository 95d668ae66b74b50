#include "base/FileStamp.h"

#ifdef Q_OS_WIN
#include <QDateTime>
#include <QFileInfo>
#else
#include <QFile>
#include <sys/stat.h>
#endif

#ifdef Q_OS_WIN

FileStamp FileStamp::of(const QString& path) {
    const QFileInfo info(path);
    FileStamp stamp;
    if (!info.isFile())
        return stamp;
    stamp.size = info.size();
    stamp.modifiedNs = info.lastModified().toMSecsSinceEpoch() * 1000000;
    return stamp;
}

#else

namespace {

FileStamp fromStat(const struct stat& st) {
    FileStamp stamp;
    if (!S_ISREG(st.st_mode))
        return stamp;
    stamp.size = qint64(st.st_size);
    stamp.modifiedNs = qint64(st.st_mtim.tv_sec) * 1000000000 + qint64(st.st_mtim.tv_nsec);
    stamp.device = quint64(st.st_dev);
    stamp.inode = quint64(st.st_ino);
    return stamp;
}

} // namespace

FileStamp FileStamp::of(const QString& path) {
    struct stat st;
    if (::stat(QFile::encodeName(path).constData(), &st) != 0)
        return FileStamp();
    return fromStat(st);
}

FileStamp FileStamp::ofDescriptor(int fd) {
    struct stat st;
    if (::fstat(fd, &st) != 0)
        return FileStamp();
    return fromStat(st);
}

#endif
