#include "mp3/FileByteSource.h"

#include <QFile>
#include <limits>

FileByteSource::FileByteSource(QFile& file) : m_file(file), m_size(std::uint64_t(file.size())) {
}

std::size_t FileByteSource::readAt(std::uint64_t offset, unsigned char* destination, std::size_t n) {
    if (m_failed)
        return 0;
    if (offset != m_position && !m_file.seek(qint64(offset))) {
        m_failed = true;
        return 0;
    }
    const qint64 got = m_file.read(reinterpret_cast<char*>(destination), qint64(n));
    if (got < 0) {
        m_failed = true;
        m_position = std::numeric_limits<std::uint64_t>::max();
        return 0;
    }
    m_position = offset + std::uint64_t(got);
    return std::size_t(got);
}
