#include "reports/Mp3FrameScanner.h"

#include "mp3/Mp3ByteSource.h"
#include "mp3/Mp3TagBounds.h"

#include <cmath>
#include <cstring>

namespace {

constexpr std::size_t kReadBlock = 64 * 1024;
constexpr std::size_t kLookahead = 16 * 1024;
// Free-format candidates are costly to check (a search over several kilobytes); junk full of
// such bytes must not make the pass quadratic.
constexpr int kFreeFormatAttemptBudget = 64;
// Smallest unpadded free-format frame that is taken for real: header plus side information.
constexpr int kMinFreeFormatFrame = 24;

int rateSlot(const MpegFrameHeader& h) {
    const int row = h.version == MpegFrameHeader::Mpeg1 ? 0 : h.version == MpegFrameHeader::Mpeg2 ? 1 : 2;
    return row * 3 + int((h.raw >> 10) & 3);
}

std::uint32_t bigEndian32(const unsigned char* b) {
    return MpegFrameHeader::read32(b);
}

} // namespace

// A sliding view on the file: large sequential reads, with the tail of the previous block kept
// so that a header or tag that straddles two blocks is seen whole.
class Mp3FrameScanner::Window {
public:
    Window(Mp3ByteSource& source, std::uint64_t end) : m_source(source), m_end(end) {
        m_buffer.resize(kReadBlock + kLookahead);
    }

    // n bytes at pos, or null when they lie (partly) beyond the end or cannot be read.
    const unsigned char* at(std::uint64_t pos, std::size_t n) {
        if (pos >= m_start && pos + n <= m_start + m_length)
            return m_buffer.data() + (pos - m_start);
        return refill(pos, n);
    }

    // Bytes that can be had contiguously from pos (at least n unless the end is near).
    std::size_t available(std::uint64_t pos) {
        if (!at(pos, 1))
            return 0;
        return std::size_t(m_start + m_length - pos);
    }
    const unsigned char* pointer(std::uint64_t pos) const { return m_buffer.data() + (pos - m_start); }

private:
    const unsigned char* refill(std::uint64_t pos, std::size_t n) {
        if (pos >= m_end || n > m_end - pos || n > kLookahead)
            return nullptr;
        if (pos >= m_start && pos < m_start + m_length) {
            const std::size_t keep = std::size_t(m_start + m_length - pos);
            std::memmove(m_buffer.data(), m_buffer.data() + (pos - m_start), keep);
            m_length = keep;
        } else {
            m_length = 0;
        }
        m_start = pos;
        const std::uint64_t next = m_start + m_length;
        std::size_t want = m_buffer.size() - m_length;
        if (want > m_end - next)
            want = std::size_t(m_end - next);
        m_length += m_source.readAt(next, m_buffer.data() + m_length, want);
        if (n > m_length)
            return nullptr;
        return m_buffer.data();
    }

    Mp3ByteSource& m_source;
    std::uint64_t m_end;
    std::vector<unsigned char> m_buffer;
    std::uint64_t m_start = 0;
    std::size_t m_length = 0;
};

Mp3FrameScanner::Mp3FrameScanner(Mp3ByteSource& source) : m_source(source) {
}

Mp3FrameScanner::~Mp3FrameScanner() {
    delete m_window;
}

bool Mp3FrameScanner::follows(std::uint64_t pos, std::uint32_t streamBits, bool free, MpegFrameHeader& out) {
    const unsigned char* p = m_window->at(pos, 4);
    if (!p)
        return false;
    const std::uint32_t raw = MpegFrameHeader::read32(p);
    return (raw & MpegFrameHeader::kStreamMask) == streamBits && MpegFrameHeader::parse(raw, out) &&
           out.isFreeFormat() == free;
}

bool Mp3FrameScanner::learnFreeFormat(std::uint64_t pos, const MpegFrameHeader& first, int& freeUnpadded) {
    if (++m_freeFormatAttempts > kFreeFormatAttemptBudget)
        return false;
    const std::uint32_t bits = first.raw & MpegFrameHeader::kStreamMask;
    const std::uint64_t from = pos + kMinFreeFormatFrame + first.paddingBytes();
    const std::uint64_t to = pos + kMaxFreeFormatFrame + first.paddingBytes();
    MpegFrameHeader next;
    for (std::uint64_t q = from; q <= to && q + 4 <= m_end; ++q) {
        const unsigned char* p = m_window->at(q, 4);
        if (!p)
            return false;
        if (p[0] != 0xFF || !follows(q, bits, true, next))
            continue;
        const int unpadded = int(q - pos) - first.paddingBytes();
        // The third header decides: two free-format headers in a row can be chance.
        const std::uint64_t third = q + std::uint64_t(unpadded + next.paddingBytes());
        MpegFrameHeader after;
        if (third == m_end || (third + 4 > m_end && third <= m_end) || follows(third, bits, true, after)) {
            freeUnpadded = unpadded;
            return true;
        }
    }
    return false;
}

bool Mp3FrameScanner::confirm(std::uint64_t pos, const MpegFrameHeader& first, int& freeUnpadded) {
    if (first.isFreeFormat())
        return learnFreeFormat(pos, first, freeUnpadded);
    const std::uint32_t bits = first.raw & MpegFrameHeader::kStreamMask;
    const std::uint64_t second = pos + std::uint64_t(first.frameLength());
    if (second + 4 > m_end)
        return second <= m_end; // a stream of one frame that ends the file
    MpegFrameHeader next;
    if (!follows(second, bits, false, next))
        return false;
    const std::uint64_t third = second + std::uint64_t(next.frameLength());
    if (third + 4 > m_end)
        return true;
    MpegFrameHeader after;
    return follows(third, bits, false, after);
}

bool Mp3FrameScanner::findSync(std::uint64_t& pos, int& freeUnpadded) {
    while (pos + 4 <= m_end) {
        const std::size_t n = m_window->available(pos);
        if (n < 4)
            return false;
        const unsigned char* base = m_window->pointer(pos);
        const void* hit = std::memchr(base, 0xFF, n - 3);
        if (!hit) {
            pos += n - 3;
            continue;
        }
        pos += std::uint64_t(static_cast<const unsigned char*>(hit) - base);
        MpegFrameHeader h;
        freeUnpadded = 0;
        if (MpegFrameHeader::parse(m_window->at(pos, 4), h) && confirm(pos, h, freeUnpadded))
            return true;
        ++pos;
    }
    return false;
}

bool Mp3FrameScanner::readInfoTag(std::uint64_t pos, const MpegFrameHeader& h, int length) {
    if (h.layer != 3)
        return false;
    // VBRI sits at a fixed place, Xing/Info behind the side information (and a CRC, if any).
    const int vbriAt = 4 + 32;
    if (vbriAt + 18 <= length) {
        const unsigned char* v = m_window->at(pos + vbriAt, 18);
        if (v && std::memcmp(v, "VBRI", 4) == 0) {
            m_result.infoTag = Mp3ScanResult::InfoTag::Vbri;
            m_result.tagBytes = bigEndian32(v + 10);
            m_result.tagFrames = bigEndian32(v + 14);
            return true;
        }
    }
    for (int extra : {0, 2}) {
        const int at = h.xingOffset() + extra;
        if (at + 16 > length)
            continue;
        const unsigned char* x = m_window->at(pos + std::uint64_t(at), 16);
        if (!x)
            continue;
        const bool xing = std::memcmp(x, "Xing", 4) == 0;
        if (!xing && std::memcmp(x, "Info", 4) != 0)
            continue;
        m_result.infoTag = xing ? Mp3ScanResult::InfoTag::Xing : Mp3ScanResult::InfoTag::Info;
        const std::uint32_t flags = bigEndian32(x + 4);
        int field = 8;
        if (flags & 1) {
            m_result.tagFrames = bigEndian32(x + field);
            field += 4;
        }
        if (flags & 2)
            m_result.tagBytes = bigEndian32(x + field);
        return true;
    }
    return false;
}

void Mp3FrameScanner::addFrame(int bitrateClass, int length) {
    ++m_result.frames;
    m_result.audioBytes += std::uint64_t(length);
    ++m_result.histogram[std::size_t(bitrateClass)];
    if (m_lastClass >= 0 && m_lastClass != bitrateClass)
        m_result.bitrateVaries = true;
    m_lastClass = bitrateClass;
}

void Mp3FrameScanner::finish() {
    static constexpr int kRates[9] = {44100, 48000, 32000, 22050, 24000, 16000, 11025, 12000, 8000};
    int used = 0;
    std::uint64_t wholeOfOneRate = 0;
    for (int i = 0; i < 9; ++i) {
        if (m_samples[std::size_t(i)] == 0)
            continue;
        ++used;
        wholeOfOneRate = m_samples[std::size_t(i)] / std::uint64_t(kRates[i]);
        m_result.seconds += double(m_samples[std::size_t(i)]) / kRates[i];
    }
    // One sample rate (the normal case): exact integer division, no rounding doubt.
    m_result.wholeSeconds = used == 1 ? wholeOfOneRate : std::uint64_t(std::floor(m_result.seconds));
}

Mp3ScanResult Mp3FrameScanner::scan() {
    m_result = Mp3ScanResult();
    const Mp3TagBounds::Range range = Mp3TagBounds::audioRange(m_source);
    m_result.audioBegin = range.begin;
    m_result.audioEnd = range.end;
    m_end = range.end;
    delete m_window;
    m_window = new Window(m_source, m_end);

    std::uint64_t pos = range.begin;
    bool everLocked = false;
    int freeUnpadded = 0;
    while (findSync(pos, freeUnpadded)) {
        MpegFrameHeader h;
        MpegFrameHeader::parse(m_window->at(pos, 4), h);
        const std::uint32_t bits = h.raw & MpegFrameHeader::kStreamMask;
        const bool free = h.isFreeFormat();
        if (everLocked)
            ++m_result.resyncs;
        else
            m_result.firstFrameOffset = pos;
        const bool firstChain = !everLocked;
        everLocked = true;
        const int samplesPerFrame = h.samplesPerFrame();
        const std::size_t slot = std::size_t(rateSlot(h));
        const std::uint64_t framesBefore = m_result.frames;
        int length = h.frameLength(freeUnpadded);
        // The first frame may be the Xing/Info/VBRI frame, which is not audio.
        if (pos + std::uint64_t(length) <= m_end && firstChain && m_result.frames == 0 &&
            m_result.infoTag == Mp3ScanResult::InfoTag::None && readInfoTag(pos, h, length)) {
            pos += std::uint64_t(length);
            if (!follows(pos, bits, free, h))
                continue;
            length = h.frameLength(freeUnpadded);
        }
        // The chain: every header where the previous frame's length says, until it breaks. Within
        // one chain only the bit-rate class, the padding and bits that do not matter here change,
        // so frame lengths are looked up by class and padding instead of being worked out again.
        std::array<int, 32> lengths{};
        if (m_result.frames == 0)
            m_result.firstHeader = h;
        if (free)
            m_result.freeFormat = true;
        int bitrateClass = h.bitrateIndex;
        while (true) {
            if (pos + std::uint64_t(length) > m_end) {
                m_result.truncatedLastFrame = true;
                pos = m_end;
                break;
            }
            addFrame(bitrateClass, length);
            pos += std::uint64_t(length);
            const unsigned char* p = m_window->at(pos, 4);
            if (!p)
                break;
            const std::uint32_t raw = MpegFrameHeader::read32(p);
            bitrateClass = int((raw >> 12) & 15);
            if ((raw & MpegFrameHeader::kStreamMask) != bits || (raw & 3) == 2 || bitrateClass == 15 ||
                (bitrateClass == 0) != free)
                break;
            int& known = lengths[std::size_t(bitrateClass << 1 | int((raw >> 9) & 1))];
            if (known == 0) {
                MpegFrameHeader next;
                MpegFrameHeader::parse(raw, next);
                known = next.frameLength(freeUnpadded);
            }
            length = known;
        }
        m_samples[slot] += (m_result.frames - framesBefore) * std::uint64_t(samplesPerFrame);
    }
    m_result.readFailed = m_source.failed();
    finish();
    return m_result;
}
