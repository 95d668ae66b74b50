#pragma once

#include <QDir>
#include <QtGlobal>
#include <QFile>
#include <QTemporaryDir>

#ifdef Q_OS_LINUX
#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>
#endif

// A real file system that runs full: a small tmpfs, mounted in a mount namespace of the test
// program's own, so that nothing outside the test sees it. Needs root (the tests run as root); the
// namespace is entered before main, while the process still has one thread, as unshare demands.
namespace FullDiskDetail {
#ifdef Q_OS_LINUX
inline const bool privateMounts = [] {
    return ::unshare(CLONE_NEWNS) == 0 && ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}();
#else
inline const bool privateMounts = false; // a private tmpfs is a Linux facility
#endif
} // namespace FullDiskDetail

class FullDisk {
public:
#ifdef Q_OS_LINUX
    FullDisk() {
        m_ready = FullDiskDetail::privateMounts && m_mountPoint.isValid() &&
                  ::mount("tmpfs", QFile::encodeName(m_mountPoint.path()).constData(), "tmpfs", 0,
                          "size=256k") == 0;
    }
    ~FullDisk() {
        if (m_ready)
            ::umount2(QFile::encodeName(m_mountPoint.path()).constData(), MNT_DETACH);
    }
#else
    FullDisk() = default;
#endif
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

    // False where no tmpfs can be mounted (not root): tests then skip with this reason.
    bool ready() const { return m_ready; }
    static const char* whyNot() { return "a full disk needs root for a private tmpfs (unshare -m)"; }
    QString path(const QString& name) const { return QDir(m_mountPoint.path()).filePath(name); }

    // Takes every free byte, as a disk that ran full.
    void fill() {
#ifdef Q_OS_LINUX
        const int fd = ::open(QFile::encodeName(path(QStringLiteral(".filler"))).constData(),
                              O_WRONLY | O_CREAT | O_APPEND, 0600);
        static const char block[4096] = {};
        while (fd >= 0 && ::write(fd, block, sizeof block) > 0) {
        }
        if (fd >= 0)
            ::close(fd);
#endif
    }
    void drain() { QFile::remove(path(QStringLiteral(".filler"))); }

private:
    QTemporaryDir m_mountPoint;
    bool m_ready = false;
};
