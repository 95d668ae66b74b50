#include "mp3/AudioFingerprint.h"

#include "mp3/FileByteSource.h"
#include "mp3/Mp3ByteSource.h"
#include "mp3/Mp3TagBounds.h"

#include <QFile>
#include <memory>
#include <vector>
#include <xxhash.h>

namespace {

// Most songs' tags and audio come in one read; larger files are hashed block by block.
constexpr qint64 kWholeFileLimit = 1 << 20;
constexpr std::size_t kBlock = 1 << 20;

AudioFingerprint fingerprintOf(std::uint64_t audioBytes, XXH128_hash_t hash) {
    return AudioFingerprint{audioBytes, hash.high64, hash.low64};
}

bool readFully(QFile& file, QByteArray& bytes) {
    qint64 got = 0;
    while (got < bytes.size()) {
        const qint64 n = file.read(bytes.data() + got, bytes.size() - got);
        if (n <= 0)
            return false; // an error, or the file became shorter while it was read
        got += n;
    }
    return true;
}

} // namespace

AudioFingerprint::Reading AudioFingerprint::read(const QString& path,
                                                 const std::function<bool(std::uint64_t)>& wanted,
                                                 const std::atomic<bool>* cancel) {
    Reading r;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return r;
#ifdef Q_OS_WIN
    r.stamp = FileStamp::of(path);
#else
    r.stamp = FileStamp::ofDescriptor(file.handle());
#endif
    if (!r.stamp.isFile())
        return r;

    if (r.stamp.size <= kWholeFileLimit) {
        QByteArray bytes(r.stamp.size, Qt::Uninitialized);
        if (!readFully(file, bytes))
            return r;
        const auto* data = reinterpret_cast<const unsigned char*>(bytes.constData());
        MemoryByteSource source(data, std::size_t(bytes.size()));
        const Mp3TagBounds::Range range = Mp3TagBounds::audioRange(source);
        r.audioBytes = range.end - range.begin;
        if (*r.audioBytes == 0 || (wanted && !wanted(*r.audioBytes)))
            return r;
        r.fingerprint = fingerprintOf(*r.audioBytes, XXH3_128bits(data + range.begin, *r.audioBytes));
        return r;
    }

    FileByteSource source(file);
    const Mp3TagBounds::Range range = Mp3TagBounds::audioRange(source);
    if (source.failed())
        return r;
    r.audioBytes = range.end - range.begin;
    if (*r.audioBytes == 0 || (wanted && !wanted(*r.audioBytes)))
        return r;
    const std::unique_ptr<XXH3_state_t, decltype(&XXH3_freeState)> state(XXH3_createState(), XXH3_freeState);
    if (!state || XXH3_128bits_reset(state.get()) != XXH_OK)
        return r;
    std::vector<unsigned char> block(kBlock);
    for (std::uint64_t at = range.begin; at < range.end;) {
        if (cancel && cancel->load(std::memory_order_relaxed))
            return r;
        const std::size_t want = std::size_t(std::min<std::uint64_t>(kBlock, range.end - at));
        const std::size_t got = source.readAt(at, block.data(), want);
        if (got != want)
            return r;
        XXH3_128bits_update(state.get(), block.data(), got);
        at += got;
    }
    r.fingerprint = fingerprintOf(*r.audioBytes, XXH3_128bits_digest(state.get()));
    return r;
}
