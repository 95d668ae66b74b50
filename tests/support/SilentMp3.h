#pragma once

#include <QString>

// MP3 files without an encoder: MPEG-1 Layer III frames, 128 kbps, 44.1 kHz, whose bodies are all zero.
// Players decode them as exact-length silence.
namespace SilentMp3 {
// Frames for at least the given length; returns the number of frames written, or -1 when the file
// cannot be written (the test then fails on it, nothing is raised).
int write(const QString& path, double seconds);
} // namespace SilentMp3
