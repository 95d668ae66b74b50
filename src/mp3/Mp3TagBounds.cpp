#include "mp3/Mp3TagBounds.h"

#include "mp3/Mp3ByteSource.h"

#include <cstring>

namespace {

constexpr int kId3HeaderSize = 10;
constexpr int kId3v1Size = 128;
constexpr int kApeFooterSize = 32;

bool readExact(Mp3ByteSource& source, std::uint64_t offset, unsigned char* out, std::size_t n) {
    return source.readAt(offset, out, n) == n;
}

// The 28-bit size of an ID3v2 header or footer; false when a byte has its high bit set, which a
// real tag never has.
bool syncsafe(const unsigned char* b, std::uint32_t& size) {
    if ((b[0] | b[1] | b[2] | b[3]) & 0x80)
        return false;
    size = std::uint32_t(b[0]) << 21 | std::uint32_t(b[1]) << 14 | std::uint32_t(b[2]) << 7 | b[3];
    return true;
}

// Total bytes of the ID3v2 header or footer block at b (magic "ID3" or "3DI"), or 0.
std::uint64_t id3v2Length(const unsigned char* b, const char* magic) {
    if (std::memcmp(b, magic, 3) != 0 || b[3] == 0xFF || b[4] == 0xFF)
        return 0;
    std::uint32_t size = 0;
    if (!syncsafe(b + 6, size))
        return 0;
    const bool footer = (b[5] & 0x10) != 0 && b[3] >= 4;
    return kId3HeaderSize + std::uint64_t(size) + (footer ? kId3HeaderSize : 0);
}

std::uint32_t littleEndian32(const unsigned char* b) {
    return std::uint32_t(b[0]) | std::uint32_t(b[1]) << 8 | std::uint32_t(b[2]) << 16 |
           std::uint32_t(b[3]) << 24;
}

// Length of one trailing tag that ends at end, or 0 when none is recognised there.
std::uint64_t trailingTagLength(Mp3ByteSource& source, std::uint64_t begin, std::uint64_t end) {
    const std::uint64_t room = end - begin;
    unsigned char b[kApeFooterSize];
    if (room >= kId3v1Size && readExact(source, end - kId3v1Size, b, 3) && std::memcmp(b, "TAG", 3) == 0)
        return kId3v1Size;
    if (room >= kApeFooterSize && readExact(source, end - kApeFooterSize, b, kApeFooterSize) &&
        std::memcmp(b, "APETAGEX", 8) == 0) {
        // The size counts the items and this footer; a header of its own may come in front.
        const std::uint64_t size = littleEndian32(b + 12);
        const bool hasHeader = (b[23] & 0x80) != 0;
        const std::uint64_t total = size + (hasHeader ? kApeFooterSize : 0);
        if (size >= kApeFooterSize && total <= room)
            return total;
    }
    if (room >= kId3HeaderSize && readExact(source, end - kId3HeaderSize, b, kId3HeaderSize)) {
        // An appended tag ends in a footer that repeats the header, so its length counts both.
        const std::uint64_t total = (b[5] & 0x10) ? id3v2Length(b, "3DI") : 0;
        if (total > 0 && total <= room)
            return total;
    }
    constexpr int kLyricsEnd = 15; // six size digits and "LYRICS200"
    if (room >= kLyricsEnd && readExact(source, end - kLyricsEnd, b, kLyricsEnd) &&
        std::memcmp(b + 6, "LYRICS200", 9) == 0) {
        std::uint64_t size = 0;
        for (int i = 0; i < 6; ++i) {
            if (b[i] < '0' || b[i] > '9')
                return 0;
            size = size * 10 + (b[i] - '0');
        }
        if (size + kLyricsEnd <= room)
            return size + kLyricsEnd;
    }
    return 0;
}

} // namespace

namespace Mp3TagBounds {

std::uint64_t skipLeadingId3v2(Mp3ByteSource& source, std::uint64_t offset, std::uint64_t end) {
    unsigned char b[kId3HeaderSize];
    while (offset + kId3HeaderSize <= end && readExact(source, offset, b, kId3HeaderSize)) {
        const std::uint64_t length = id3v2Length(b, "ID3");
        if (length == 0)
            break;
        offset = length > end - offset ? end : offset + length;
    }
    return offset;
}

std::uint64_t trimTrailingTags(Mp3ByteSource& source, std::uint64_t begin, std::uint64_t end) {
    // Tags stack (APE or Lyrics3 before ID3v1 is common); each round cuts one.
    for (int round = 0; round < 8 && end > begin; ++round) {
        const std::uint64_t length = trailingTagLength(source, begin, end);
        if (length == 0)
            break;
        end -= length;
    }
    return end;
}

Range audioRange(Mp3ByteSource& source) {
    Range r;
    r.end = source.size();
    r.begin = skipLeadingId3v2(source, 0, r.end);
    r.end = trimTrailingTags(source, r.begin, r.end);
    return r;
}

} // namespace Mp3TagBounds
