#pragma once

#include "support/Mp3Synth.h"

#include <QFile>
#include <cmath>

// MP3 files without an encoder: MPEG-1 Layer III frames, 128 kbps, 44.1 kHz, whose bodies are all zero.
// Players decode them as exact-length silence.
namespace SilentMp3 {
// Frames for at least the given length; returns the number of frames written, or -1 when the file
// cannot be written (the test then fails on it, nothing is raised).
inline int write(const QString& path, double seconds) {
    const Mp3Synth::Frame frame;
    const int count = int(std::ceil(seconds * frame.sampleRate / frame.samplesPerFrame()));
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(Mp3Synth::cbrFrames(frame, count)) >= 0 ? count : -1;
}
} // namespace SilentMp3
