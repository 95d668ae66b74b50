#include "mp3/AudioFingerprint.h"

#include "mp3/Mp3ByteSource.h"
#include "mp3/Mp3TagBounds.h"

#include <QFile>
#include <memory>
#include <vector>
#include <xxhash.h>
#if defined(__x86_64__) && __has_include(<xxh_x86dispatch.h>)
// The library picks the widest vector unit at run time (AVX2, AVX-512): about twice the speed of
// the plain SSE2 code, so that hashing stays well below the cost of copying a file in memory.
#include <xxh_x86dispatch.h>
#endif

#ifdef Q_OS_WIN
#include "mp3/FileByteSource.h"
#else
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace {

// Small files come in one read; songs are hashed block by block, each block while it is still in
// the processor's cache. The buffer is kept per thread: a fresh one per file would be new memory
// for every song.
constexpr std::size_t kBlock = 256 * 1024;

std::vector<unsigned char>& blockBuffer() {
    thread_local std::vector<unsigned char> buffer(kBlock);
    return buffer;
}

AudioFingerprint fingerprintOf(std::uint64_t audioBytes, XXH128_hash_t hash) {
    return AudioFingerprint{audioBytes, hash.high64, hash.low64};
}

#ifdef Q_OS_WIN

class OpenFile : public Mp3ByteSource {
public:
    explicit OpenFile(const QString& path) : m_file(path) {
        if (m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
            m_stamp = FileStamp::of(path);
            m_source = std::make_unique<FileByteSource>(m_file);
        }
    }
    const FileStamp& stamp() const { return m_stamp; }
    std::uint64_t size() const override { return m_source ? m_source->size() : 0; }
    std::size_t readAt(std::uint64_t offset, unsigned char* destination, std::size_t n) override {
        return m_source ? m_source->readAt(offset, destination, n) : 0;
    }
    bool failed() const override { return !m_source || m_source->failed(); }

private:
    QFile m_file;
    FileStamp m_stamp;
    std::unique_ptr<FileByteSource> m_source;
};

#else

// A plain descriptor read with pread: QFile asks the system for the file's status before every
// read, which for a small file costs as much as the read itself.
class OpenFile : public Mp3ByteSource {
public:
    explicit OpenFile(const QString& path)
        : m_fd(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC)) {
        if (m_fd >= 0)
            m_stamp = FileStamp::ofDescriptor(m_fd);
    }
    ~OpenFile() override {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    const FileStamp& stamp() const { return m_stamp; }
    std::uint64_t size() const override { return std::uint64_t(qMax<qint64>(0, m_stamp.size)); }
    std::size_t readAt(std::uint64_t offset, unsigned char* destination, std::size_t n) override {
        std::size_t got = 0;
        while (got < n) {
            const ssize_t r = ::pread(m_fd, destination + got, n - got, off_t(offset + got));
            if (r < 0 && errno == EINTR)
                continue;
            if (r < 0)
                m_failed = true;
            if (r <= 0)
                break;
            got += std::size_t(r);
        }
        return got;
    }
    bool failed() const override { return m_failed; }

private:
    int m_fd;
    FileStamp m_stamp;
    bool m_failed = false;
};

#endif

} // namespace

AudioFingerprint::Reading AudioFingerprint::read(const QString& path, const KnownStamp& known,
                                                 const std::function<bool(std::uint64_t)>& wanted,
                                                 const std::atomic<bool>* cancel) {
    Reading r;
    OpenFile file(path);
    r.stamp = file.stamp();
    if (!r.stamp.isFile())
        return r;
    if (known) {
        r.fingerprint = known(r.stamp);
        if (r.fingerprint) {
            r.audioBytes = r.fingerprint->audioBytes;
            return r;
        }
    }

    std::vector<unsigned char>& block = blockBuffer();
    if (file.size() <= kBlock) {
        // An error, or a file that became shorter while it was read, gives fewer bytes.
        const std::size_t size = std::size_t(file.size());
        if (file.readAt(0, block.data(), size) != size)
            return r;
        MemoryByteSource source(block.data(), size);
        const Mp3TagBounds::Range range = Mp3TagBounds::audioRange(source);
        r.audioBytes = range.end - range.begin;
        if (*r.audioBytes == 0 || (wanted && !wanted(*r.audioBytes)))
            return r;
        r.fingerprint = fingerprintOf(*r.audioBytes, XXH3_128bits(block.data() + range.begin, *r.audioBytes));
        return r;
    }

    const Mp3TagBounds::Range range = Mp3TagBounds::audioRange(file);
    if (file.failed())
        return r;
    r.audioBytes = range.end - range.begin;
    if (*r.audioBytes == 0 || (wanted && !wanted(*r.audioBytes)))
        return r;
    const std::unique_ptr<XXH3_state_t, decltype(&XXH3_freeState)> state(XXH3_createState(), XXH3_freeState);
    if (!state || XXH3_128bits_reset(state.get()) != XXH_OK)
        return r;
    for (std::uint64_t at = range.begin; at < range.end;) {
        if (cancel && cancel->load(std::memory_order_relaxed))
            return r;
        const std::size_t want = std::size_t(std::min<std::uint64_t>(kBlock, range.end - at));
        if (file.readAt(at, block.data(), want) != want)
            return r;
        XXH3_128bits_update(state.get(), block.data(), want);
        at += want;
    }
    r.fingerprint = fingerprintOf(*r.audioBytes, XXH3_128bits_digest(state.get()));
    return r;
}
