#include "support/SilentMp3.h"

#include <QFile>
#include <cmath>

namespace SilentMp3 {

QByteArray frames(int count) {
    // 144 × 128000 / 44100 = 417.96 bytes: mostly 418-byte frames (padding bit set), some of 417.
    constexpr qint64 numerator = 144 * 128000;
    QByteArray data;
    data.reserve(qsizetype(count) * 418);
    qint64 rest = 0;
    for (int i = 0; i < count; ++i) {
        rest += numerator % kSampleRate;
        const bool padded = rest >= kSampleRate;
        if (padded)
            rest -= kSampleRate;
        const int length = int(numerator / kSampleRate) + (padded ? 1 : 0);
        QByteArray frame(length, '\0');
        frame[0] = char(0xFF);
        frame[1] = char(0xFB);                 // MPEG-1, Layer III, no CRC
        frame[2] = char(padded ? 0x92 : 0x90); // 128 kbps, 44.1 kHz, padding bit
        frame[3] = char(0x04);                 // stereo, original
        data.append(frame);
    }
    return data;
}

int write(const QString& path, double seconds) {
    const int count = int(std::ceil(seconds * kSampleRate / kSamplesPerFrame));
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly) || f.write(frames(count)) < 0)
        return -1;
    return count;
}

} // namespace SilentMp3
