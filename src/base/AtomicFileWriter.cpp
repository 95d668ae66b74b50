#include "base/AtomicFileWriter.h"

#include "base/RuntimeError.h"

#include <QFileInfo>
#include <cerrno>

#ifdef Q_OS_WIN
#include <io.h>
#include <windows.h>
#else
#include <unistd.h>
#endif

namespace {

constexpr qsizetype kBlock = 64 * 1024;

// QSaveFile syncs before its rename but ignores the answer; a disk that only now finds it has no
// room (delayed allocation, network file systems) must stop the rename.
bool syncToDisk(QSaveFile& file) {
#ifdef Q_OS_WIN
    return FlushFileBuffers(HANDLE(_get_osfhandle(file.handle())));
#else
    int result;
    do
        result = ::fsync(file.handle());
    while (result != 0 && errno == EINTR);
    return result == 0 || errno == EINVAL; // EINVAL: a file that cannot be synced (a pipe, /dev/...)
#endif
}

} // namespace

AtomicFileWriter::AtomicFileWriter(const QString& path) : m_path(path), m_file(path) {
    if (QFileInfo(path).isDir() || !m_file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        throw RuntimeError::fileOpen(path, true);
}

AtomicFileWriter::~AtomicFileWriter() {
    if (!m_done)
        m_file.cancelWriting();
}

void AtomicFileWriter::write(const QByteArray& bytes) {
    m_pending.append(bytes);
    if (m_pending.size() >= kBlock)
        writePending();
}

void AtomicFileWriter::writePending() {
    qsizetype done = 0;
    while (done < m_pending.size()) {
        errno = 0;
        const qint64 n = m_file.write(m_pending.constData() + done, m_pending.size() - done);
        if (n <= 0)
            fail(errno ? errno : ENOSPC);
        done += n;
    }
    m_pending.clear();
}

void AtomicFileWriter::fail(int error) {
    m_done = true;
    m_file.cancelWriting();
    throw RuntimeError::fileWrite(error);
}

void AtomicFileWriter::commit() {
    writePending();
    errno = 0;
    if (!syncToDisk(m_file))
        fail(errno);
    m_done = true;
    if (!m_file.commit())
        throw RuntimeError::fileOpen(m_path, true);
}

void AtomicFileWriter::writeFile(const QString& path, const QByteArray& bytes) {
    AtomicFileWriter out(path);
    out.write(bytes);
    out.commit();
}
