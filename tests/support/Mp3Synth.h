#pragma once

#include <QByteArray>
#include <QList>

// Builds MP3 files byte by byte for the frame reader's tests: valid frame headers in front of
// zeroed bodies (players decode them as silence of exact length), Xing/Info/VBRI frames, ID3v2,
// ID3v1 and APE tags, and junk full of sync-like bytes. Frame lengths are computed here from the
// MPEG tables independently of the product's reader, so the tests have their own oracle.
namespace Mp3Synth {

enum Version { Mpeg1 = 3, Mpeg2 = 2, Mpeg25 = 0 };
enum Channels { Stereo = 0, JointStereo = 1, DualChannel = 2, Mono = 3 };

struct Frame {
    Version version = Mpeg1;
    int layer = 3;
    int kbps = 128; // 0 = free format, then freeBytes is the unpadded frame length
    int sampleRate = 44100;
    bool padding = false;
    Channels channels = JointStereo;
    int freeBytes = 0;

    int bitrateClass() const;
    int length() const;
    int samplesPerFrame() const;
    QByteArray header() const;
    QByteArray bytes() const; // header and a zeroed body
};

// Frames of one constant bit rate, padded the way encoders spread the fractional byte, so that
// the average is the nominal rate.
QByteArray cbrFrames(Frame f, int count);
// One frame per entry of kbps, unpadded.
QByteArray vbrFrames(Frame f, const QList<int>& kbps);
// A pattern of bit rates for VBR streams: deterministic, all classes of MPEG-1 Layer III.
QList<int> vbrPattern(int count);

// The tag frame LAME writes in front of the audio: "Xing" (variable) or "Info" (constant).
QByteArray xingFrame(Frame f, const char* magic, quint32 frames, quint32 bytes);
QByteArray vbriFrame(Frame f, quint32 frames, quint32 bytes);

// ID3v2 tag of version 2.major with a body of bodySize bytes full of sync-like bytes; with
// footer, a 2.4 footer follows the body.
QByteArray id3v2(int bodySize, int major = 3, bool footer = false);
QByteArray id3v1();
QByteArray apeTag(int itemBytes, bool withHeader);
// Random bytes with many 0xFF 0xFB / 0xFF 0xF3 pairs, none of which starts a real stream.
QByteArray junk(int size, quint32 seed);

} // namespace Mp3Synth
