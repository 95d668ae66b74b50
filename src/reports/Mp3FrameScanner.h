#pragma once

#include "reports/MpegFrameHeader.h"

#include <array>
#include <cstdint>
#include <vector>

class Mp3ByteSource;

// What a pass over the frames of one MP3 file found.
struct Mp3ScanResult {
    enum class InfoTag { None, Xing, Info, Vbri };

    bool readFailed = false;
    std::uint64_t audioBegin = 0; // behind leading ID3v2 tags
    std::uint64_t audioEnd = 0;   // before trailing tags
    std::uint64_t firstFrameOffset = 0;

    // Audio frames only: the Xing/Info/VBRI frame is never one of them.
    std::uint64_t frames = 0;
    std::uint64_t audioBytes = 0;
    std::array<std::uint64_t, 16> histogram{};
    bool bitrateVaries = false;
    bool freeFormat = false;
    // Playing time summed frame by frame, so that a stream that changes its sample rate is right.
    double seconds = 0.0;
    std::uint64_t wholeSeconds = 0;

    InfoTag infoTag = InfoTag::None;
    std::uint32_t tagFrames = 0; // 0 = the tag does not say
    std::uint32_t tagBytes = 0;

    // Of the first audio frame.
    MpegFrameHeader firstHeader;
    // How often the frame chain broke inside the audio and had to be found again.
    int resyncs = 0;
    bool truncatedLastFrame = false;
};

// Walks the frame headers of an MP3 file from the first confirmed sync to the end of the audio.
// A sync only counts when the following headers sit where the frame lengths say, so sync-like
// bytes in junk or in pictures do not start a stream. Reads large sequential blocks: the pass
// runs at the speed of a plain read of the file.
class Mp3FrameScanner {
public:
    explicit Mp3FrameScanner(Mp3ByteSource& source);
    ~Mp3FrameScanner();

    Mp3ScanResult scan();

    // Longest free-format frame searched for when learning its length.
    static constexpr int kMaxFreeFormatFrame = 4608;

private:
    class Window;
    bool findSync(std::uint64_t& pos, int& freeUnpadded);
    bool confirm(std::uint64_t pos, const MpegFrameHeader& first, int& freeUnpadded);
    bool learnFreeFormat(std::uint64_t pos, const MpegFrameHeader& first, int& freeUnpadded);
    bool follows(std::uint64_t pos, std::uint32_t streamBits, bool free, MpegFrameHeader& out);
    bool readInfoTag(std::uint64_t pos, const MpegFrameHeader& h, int length);
    void addFrame(int bitrateClass, int length);
    void finish();

    Mp3ByteSource& m_source;
    Window* m_window = nullptr;
    Mp3ScanResult m_result;
    std::uint64_t m_end = 0;
    int m_freeFormatAttempts = 0;
    int m_lastClass = -1;
    // Samples per sample rate (nine MPEG rates), so the time is summed exactly.
    std::array<std::uint64_t, 9> m_samples{};
};
