// libFuzzer target for the MP3 frame reader: any bytes must give a result without crashing,
// hanging or reading out of bounds, and the result must be consistent with itself.
#include "mp3/Mp3ByteSource.h"
#include "reports/Mp3FrameScanner.h"

#include <cstddef>
#include <cstdint>

namespace {

void check(bool condition) {
    if (!condition)
        __builtin_trap();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    MemoryByteSource source(data, size);
    const Mp3ScanResult r = Mp3FrameScanner(source).scan();
    std::uint64_t counted = 0;
    for (std::uint64_t n : r.histogram)
        counted += n;
    check(counted == r.frames);
    check(r.histogram[15] == 0); // class 15 is forbidden and never a frame
    check(r.audioBegin <= r.audioEnd && r.audioEnd <= size);
    check(r.audioBytes <= r.audioEnd - r.audioBegin);
    check(r.frames == 0 || (r.firstFrameOffset >= r.audioBegin && r.firstFrameOffset < r.audioEnd));
    check(r.frames == 0 || r.seconds > 0.0);
    check(!r.readFailed);
    return 0;
}
