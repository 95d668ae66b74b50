#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

// Random-access bytes of one file for the frame reader. The reader asks for large sequential
// blocks, so an implementation needs no buffering of its own.
class Mp3ByteSource {
public:
    virtual ~Mp3ByteSource() = default;
    virtual std::uint64_t size() const = 0;
    // Copies up to n bytes from offset; returns how many were copied. Fewer than asked means the
    // end of the data or a read error (then failed() turns true).
    virtual std::size_t readAt(std::uint64_t offset, unsigned char* destination, std::size_t n) = 0;
    virtual bool failed() const { return false; }
};

// Bytes already in memory (tests and the fuzz target).
class MemoryByteSource : public Mp3ByteSource {
public:
    MemoryByteSource(const unsigned char* data, std::size_t size) : m_data(data), m_size(size) {}
    std::uint64_t size() const override { return m_size; }
    std::size_t readAt(std::uint64_t offset, unsigned char* destination, std::size_t n) override {
        if (offset >= m_size)
            return 0;
        const std::size_t count = n < m_size - offset ? n : std::size_t(m_size - offset);
        std::memcpy(destination, m_data + offset, count);
        return count;
    }

private:
    const unsigned char* m_data;
    std::size_t m_size;
};
