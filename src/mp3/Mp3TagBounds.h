#pragma once

#include <cstdint>

class Mp3ByteSource;

// Where the audio of an MP3 file lies between its tags: ID3v2 tags in front (their size is
// syncsafe, a footer adds ten bytes), ID3v1, APEv2, Lyrics3v2 and appended ID3v2 tags behind.
// A malformed tag is not skipped; the frame reader's sync search then steps over it.
namespace Mp3TagBounds {

struct Range {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;
};

Range audioRange(Mp3ByteSource& source);
// Offset behind any ID3v2 tags that start at offset (offset itself when there is none).
std::uint64_t skipLeadingId3v2(Mp3ByteSource& source, std::uint64_t offset, std::uint64_t end);
// End of the audio once trailing tags are cut off; never before begin.
std::uint64_t trimTrailingTags(Mp3ByteSource& source, std::uint64_t begin, std::uint64_t end);

} // namespace Mp3TagBounds
