#pragma once

#include "reports/Mp3FrameScanner.h"

#include <QString>
#include <array>

// The MP3 information call of the bitrate report and the mini diagram, answered by our own frame
// reader. Outputs: average bit rate in bit/s, VBR indication, playing time in whole seconds and
// the number of frames of each bit-rate class 0..15.
namespace Mp3Info {

using Histogram = std::array<qint32, 16>;

// The status the call returns. On an error the outputs are left as they were.
enum Status : qint32 {
    Ok = 0,
    Unreadable = -1, // missing, a folder, no read permission or a read error
    NoFrames = -2,   // readable, but no confirmed MPEG audio frame (empty, junk, truncated)
};

// VBR indication: 1 when the audio frames differ in bit rate or a Xing or VBRI header marks the
// file as variable; 0 for constant bit rate (also with an "Info" header, which is LAME's CBR tag).
qint32 vbrFlag(const Mp3ScanResult& scan);
// Constant bit rate: the nominal rate of the frames. Otherwise audio bytes × 8 ÷ playing time.
qint32 averageBitrate(const Mp3ScanResult& scan);

// Scans a file; opened is false when it could not be opened for reading.
Mp3ScanResult scanFile(const QString& path, bool& opened);

qint32 GetMP3Info(const QString& path, qint32& BitRate, qint32& VBR, qint32& Playtime, Histogram& histogram);

} // namespace Mp3Info
