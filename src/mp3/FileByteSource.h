#pragma once

#include "mp3/Mp3ByteSource.h"

class QFile;

// An open file read without Qt's own buffer: the readers already ask for large blocks.
class FileByteSource : public Mp3ByteSource {
public:
    explicit FileByteSource(QFile& file);
    std::uint64_t size() const override { return m_size; }
    std::size_t readAt(std::uint64_t offset, unsigned char* destination, std::size_t n) override;
    bool failed() const override { return m_failed; }

private:
    QFile& m_file;
    std::uint64_t m_size;
    std::uint64_t m_position = 0;
    bool m_failed = false;
};
