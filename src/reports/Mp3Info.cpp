#include "reports/Mp3Info.h"

#include "mp3/FileByteSource.h"

#include <QFile>
#include <QFileInfo>
#include <cmath>
#include <limits>

namespace {

qint32 clampToInt32(double value) {
    if (value >= double(std::numeric_limits<qint32>::max()))
        return std::numeric_limits<qint32>::max();
    return qint32(value);
}

} // namespace

namespace Mp3Info {

qint32 vbrFlag(const Mp3ScanResult& scan) {
    const bool tagSaysVariable =
        scan.infoTag == Mp3ScanResult::InfoTag::Xing || scan.infoTag == Mp3ScanResult::InfoTag::Vbri;
    return scan.bitrateVaries || tagSaysVariable ? 1 : 0;
}

qint32 averageBitrate(const Mp3ScanResult& scan) {
    if (scan.frames == 0 || scan.seconds <= 0.0)
        return 0;
    if (!scan.bitrateVaries && !scan.freeFormat)
        return scan.firstHeader.bitrateKbps * 1000;
    return clampToInt32(std::round(double(scan.audioBytes) * 8.0 / scan.seconds));
}

Mp3ScanResult scanFile(const QString& path, bool& opened) {
    QFile file(path);
    opened = !QFileInfo(path).isDir() && file.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    if (!opened)
        return Mp3ScanResult();
    FileByteSource source(file);
    return Mp3FrameScanner(source).scan();
}

qint32 GetMP3Info(const QString& path, qint32& BitRate, qint32& VBR, qint32& Playtime, Histogram& histogram) {
    bool opened = false;
    const Mp3ScanResult scan = scanFile(path, opened);
    if (!opened || scan.readFailed)
        return Unreadable;
    if (scan.frames == 0)
        return NoFrames;
    BitRate = averageBitrate(scan);
    VBR = vbrFlag(scan);
    Playtime = clampToInt32(double(scan.wholeSeconds));
    for (std::size_t i = 0; i < histogram.size(); ++i)
        histogram[i] = clampToInt32(double(scan.histogram[i]));
    return Ok;
}

} // namespace Mp3Info
