#pragma once

#include <cstdint>

// One MPEG audio frame header (MPEG-1, MPEG-2 and MPEG-2.5, Layers I to III), decoded from its
// four bytes. Plain C++ so that the frame reader can be fuzzed without Qt.
struct MpegFrameHeader {
    enum Version : std::uint8_t { Mpeg25 = 0, Mpeg2 = 2, Mpeg1 = 3 };
    enum ChannelMode : std::uint8_t { Stereo = 0, JointStereo = 1, DualChannel = 2, Mono = 3 };

    std::uint32_t raw = 0;
    Version version = Mpeg1;
    int layer = 3;        // 1, 2 or 3
    int bitrateIndex = 0; // 0 = free format, 1..14 the table classes
    int bitrateKbps = 0;  // 0 for free format
    int sampleRate = 0;
    bool padding = false;
    bool protectedByCrc = false;
    ChannelMode channelMode = Stereo;

    // Bits that every frame of one stream shares: sync, version, layer and sample rate. The
    // protection bit is left out because a few encoders set it on the first frame only.
    static constexpr std::uint32_t kStreamMask = 0xFFFE0C00u;

    // Decodes four bytes; false for anything that is not a usable header (no sync, reserved
    // version, layer, bit rate 15, reserved sample rate or reserved emphasis).
    static bool parse(std::uint32_t raw, MpegFrameHeader& out);
    static bool parse(const unsigned char* bytes, MpegFrameHeader& out) { return parse(read32(bytes), out); }
    static std::uint32_t read32(const unsigned char* b) {
        return std::uint32_t(b[0]) << 24 | std::uint32_t(b[1]) << 16 | std::uint32_t(b[2]) << 8 | b[3];
    }

    bool isFreeFormat() const { return bitrateIndex == 0; }
    int samplesPerFrame() const;
    // Bytes that the padding bit adds: one slot, four bytes in Layer I.
    int paddingBytes() const { return padding ? (layer == 1 ? 4 : 1) : 0; }
    // Length of the frame in bytes including the header; free-format frames need the length of
    // their unpadded frame, learned from the stream.
    int frameLength(int freeFormatUnpadded = 0) const;
    // Where a Xing/Info tag starts in a Layer III frame: header plus side information.
    int xingOffset() const;

    // The bit rate in kbit/s of a class of the table for this version and layer (index 0..15).
    static int bitrateOfClass(Version version, int layer, int bitrateIndex);
};
