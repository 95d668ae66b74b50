#include "support/Mp3Synth.h"

#include <QRandomGenerator>
#include <QtEndian>

namespace Mp3Synth {

namespace {

const int kMpeg1[3][15] = {
    {0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448},
    {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384},
    {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320},
};
const int kMpeg2[2][15] = {
    {0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256},
    {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160},
};

const int* table(const Frame& f) {
    if (f.version == Mpeg1)
        return kMpeg1[f.layer - 1];
    return kMpeg2[f.layer == 1 ? 0 : 1];
}

int rateBits(const Frame& f) {
    const int base = f.version == Mpeg1 ? 1 : f.version == Mpeg2 ? 2 : 4;
    const qsizetype bits = QList<int>{44100, 48000, 32000}.indexOf(f.sampleRate * base);
    if (bits < 0)
        qFatal("Mp3Synth: sample rate %d does not fit the MPEG version", f.sampleRate);
    return int(bits);
}

int sideInfo(const Frame& f) {
    const bool mono = f.channels == Mono;
    return f.version == Mpeg1 ? (mono ? 17 : 32) : (mono ? 9 : 17);
}

} // namespace

int Frame::bitrateClass() const {
    const int* t = table(*this);
    for (int i = 0; i < 15; ++i)
        if (t[i] == kbps)
            return i;
    qFatal("Mp3Synth: %d kbps is no class of this version and layer", kbps);
}

int Frame::samplesPerFrame() const {
    if (layer == 1)
        return 384;
    return (layer == 3 && version != Mpeg1) ? 576 : 1152;
}

int Frame::length() const {
    if (kbps == 0)
        return freeBytes + (padding ? (layer == 1 ? 4 : 1) : 0);
    if (layer == 1)
        return (12 * kbps * 1000 / sampleRate + (padding ? 1 : 0)) * 4;
    return samplesPerFrame() / 8 * kbps * 1000 / sampleRate + (padding ? 1 : 0);
}

QByteArray Frame::header() const {
    quint32 h = 0xFFE00000u;
    h |= quint32(version) << 19;
    h |= quint32(4 - layer) << 17;
    h |= 1u << 16; // no CRC
    h |= quint32(bitrateClass()) << 12;
    h |= quint32(rateBits(*this)) << 10;
    h |= padding ? 1u << 9 : 0u;
    h |= quint32(channels) << 6;
    QByteArray b(4, '\0');
    qToBigEndian(h, b.data());
    return b;
}

QByteArray Frame::bytes() const {
    return header() + QByteArray(length() - 4, '\0');
}

QByteArray cbrFrames(Frame f, int count) {
    QByteArray out;
    const qint64 numerator = qint64(f.layer == 1 ? 12 : f.samplesPerFrame() / 8) * f.kbps * 1000;
    qint64 rest = 0;
    for (int i = 0; i < count; ++i) {
        rest += numerator % f.sampleRate;
        f.padding = rest >= f.sampleRate;
        if (f.padding)
            rest -= f.sampleRate;
        out.append(f.bytes());
    }
    return out;
}

QByteArray vbrFrames(Frame f, const QList<int>& kbps) {
    QByteArray out;
    for (int rate : kbps) {
        f.kbps = rate;
        out.append(f.bytes());
    }
    return out;
}

QList<int> vbrPattern(int count) {
    QList<int> out;
    for (int i = 0; i < count; ++i)
        out << kMpeg1[2][1 + (i * 7 + i / 3) % 14];
    return out;
}

QByteArray xingFrame(Frame f, const char* magic, quint32 frames, quint32 bytes) {
    QByteArray b = f.bytes();
    const int at = 4 + sideInfo(f);
    b.replace(at, 4, QByteArray(magic, 4));
    qToBigEndian(quint32(0x3), b.data() + at + 4); // frame and byte counts present
    qToBigEndian(frames, b.data() + at + 8);
    qToBigEndian(bytes, b.data() + at + 12);
    return b;
}

QByteArray vbriFrame(Frame f, quint32 frames, quint32 bytes) {
    QByteArray b = f.bytes();
    const int at = 36;
    b.replace(at, 4, QByteArray("VBRI", 4));
    b[at + 5] = 1; // version 1
    qToBigEndian(bytes, b.data() + at + 10);
    qToBigEndian(frames, b.data() + at + 14);
    return b;
}

QByteArray id3v2(int bodySize, int major, bool footer) {
    QByteArray header("ID3", 3);
    header.append(char(major));
    header.append('\0');
    header.append(char(footer ? 0x10 : 0x00));
    for (int shift : {21, 14, 7, 0})
        header.append(char((bodySize >> shift) & 0x7F));
    // A picture-like body: valid-looking MPEG headers at frame distances, which a reader that
    // does not skip the tag would take for audio.
    const QByteArray trap = Frame{}.bytes();
    QByteArray body;
    while (body.size() < bodySize)
        body.append(trap);
    body.truncate(bodySize);
    QByteArray out = header + body;
    if (footer) {
        QByteArray foot = header;
        foot.replace(0, 3, QByteArray("3DI", 3));
        out.append(foot);
    }
    return out;
}

QByteArray id3v1() {
    return QByteArray("TAGTitel").leftJustified(128, '\0');
}

QByteArray apeTag(int itemBytes, bool withHeader) {
    auto block = [itemBytes](bool isHeader) {
        QByteArray b("APETAGEX", 8);
        const quint32 size = quint32(itemBytes + 32);
        const quint32 flags = (isHeader ? 0x20000000u : 0u) | 0x80000000u;
        for (quint32 v : {2000u, size, 1u, flags})
            for (int i = 0; i < 4; ++i)
                b.append(char((v >> (8 * i)) & 0xFF));
        b.append(QByteArray(8, '\0'));
        return b;
    };
    QByteArray out;
    if (withHeader)
        out.append(block(true));
    out.append(QByteArray(itemBytes, '\xFF'));
    QByteArray footer = block(false);
    if (!withHeader)
        footer[23] = 0; // no header flag
    out.append(footer);
    return out;
}

QByteArray junk(int size, quint32 seed) {
    QRandomGenerator rng(seed);
    QByteArray out(size, '\0');
    for (int i = 0; i < size; ++i)
        out[i] = char(rng.bounded(256));
    for (int i = 0; i + 4 <= size; i += 37) {
        out[i] = '\xFF';
        out[i + 1] = (i / 37) % 2 ? '\xFB' : '\xF3';
        out[i + 2] = char(0x90);
    }
    return out;
}

} // namespace Mp3Synth
