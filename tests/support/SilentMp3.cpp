#include "support/SilentMp3.h"

#include <QFile>
#include <cmath>

int SilentMp3::write(const QString& path, double seconds) {
    constexpr int sampleRate = 44100;
    const int count = int(std::ceil(seconds * sampleRate / 1152)); // samples per frame
    // 144 × 128000 / 44100 = 417.96 bytes: padding spread as an encoder does, so the stream averages
    // exactly 128 kbps.
    constexpr qint64 numerator = 144 * 128000;
    QByteArray data;
    qint64 rest = 0;
    for (int i = 0; i < count; ++i) {
        rest += numerator % sampleRate;
        const bool padded = rest >= sampleRate;
        rest -= padded ? sampleRate : 0;
        QByteArray frame(int(numerator / sampleRate) + (padded ? 1 : 0), '\0');
        frame[0] = char(0xFF);
        frame[1] = char(0xFB);                 // MPEG-1, Layer III, no CRC
        frame[2] = char(padded ? 0x92 : 0x90); // 128 kbps, 44.1 kHz, padding bit
        frame[3] = char(0x04);                 // stereo, original
        data.append(frame);
    }
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(data) >= 0 ? count : -1;
}
