#include "reports/MpegFrameHeader.h"

namespace {

// kbit/s per bit-rate class; class 0 is free format and 15 is forbidden.
constexpr int kBitrates[5][16] = {
    {0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448, 0}, // MPEG-1 Layer I
    {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384, 0},    // MPEG-1 Layer II
    {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 0},     // MPEG-1 Layer III
    {0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256, 0},    // MPEG-2/2.5 Layer I
    {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160, 0},         // MPEG-2/2.5 Layer II, III
};

constexpr int kSampleRates[3] = {44100, 48000, 32000};

int tableRow(MpegFrameHeader::Version version, int layer) {
    if (version == MpegFrameHeader::Mpeg1)
        return layer - 1;
    return layer == 1 ? 3 : 4;
}

} // namespace

bool MpegFrameHeader::parse(std::uint32_t raw, MpegFrameHeader& out) {
    if ((raw & 0xFFE00000u) != 0xFFE00000u)
        return false;
    const unsigned versionBits = (raw >> 19) & 3;
    const unsigned layerBits = (raw >> 17) & 3;
    const unsigned bitrateBits = (raw >> 12) & 15;
    const unsigned rateBits = (raw >> 10) & 3;
    if (versionBits == 1 || layerBits == 0 || bitrateBits == 15 || rateBits == 3 || (raw & 3) == 2)
        return false;
    out.raw = raw;
    out.version = Version(versionBits);
    out.layer = 4 - int(layerBits);
    out.bitrateIndex = int(bitrateBits);
    out.bitrateKbps = bitrateOfClass(out.version, out.layer, out.bitrateIndex);
    const int divisor = out.version == Mpeg1 ? 1 : out.version == Mpeg2 ? 2 : 4;
    out.sampleRate = kSampleRates[rateBits] / divisor;
    out.padding = (raw >> 9) & 1;
    out.protectedByCrc = ((raw >> 16) & 1) == 0;
    out.channelMode = ChannelMode((raw >> 6) & 3);
    return true;
}

int MpegFrameHeader::bitrateOfClass(Version version, int layer, int bitrateIndex) {
    if (layer < 1 || layer > 3 || bitrateIndex < 0 || bitrateIndex > 15)
        return 0;
    return kBitrates[tableRow(version, layer)][bitrateIndex];
}

int MpegFrameHeader::samplesPerFrame() const {
    if (layer == 1)
        return 384;
    if (layer == 2 || version == Mpeg1)
        return 1152;
    return 576;
}

int MpegFrameHeader::frameLength(int freeFormatUnpadded) const {
    if (isFreeFormat())
        return freeFormatUnpadded > 0 ? freeFormatUnpadded + paddingBytes() : 0;
    const int bps = bitrateKbps * 1000;
    if (layer == 1)
        return (12 * bps / sampleRate + (padding ? 1 : 0)) * 4;
    // Layer III of MPEG-2/2.5 has half the samples per frame, hence half the bytes.
    const int factor = (layer == 3 && version != Mpeg1) ? 72 : 144;
    return factor * bps / sampleRate + paddingBytes();
}

int MpegFrameHeader::xingOffset() const {
    const bool mono = channelMode == Mono;
    if (version == Mpeg1)
        return 4 + (mono ? 17 : 32);
    return 4 + (mono ? 9 : 17);
}
