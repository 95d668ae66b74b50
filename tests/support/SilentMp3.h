#pragma once

#include <QByteArray>
#include <QString>

// MP3 files without an encoder: MPEG-1 Layer III frames, 128 kbps, 44.1 kHz, joint nothing, whose
// bodies are all zero. Players decode them as exact-length silence. Padding is spread like an
// encoder does, so the stream averages exactly 128 kbps.
namespace SilentMp3 {

constexpr int kSamplesPerFrame = 1152;
constexpr int kSampleRate = 44100;

QByteArray frames(int count);
// Frames for at least the given length; returns the number of frames written. Raises nothing:
// a file that cannot be written makes the test fail on the returned -1.
int write(const QString& path, double seconds);

} // namespace SilentMp3
