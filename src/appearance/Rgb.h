#pragma once

#include <QString>

// A 24-bit colour as the scheme hands it to the windows: three components 0..255.
struct Rgb {
    int red = 0;
    int green = 0;
    int blue = 0;

    // Like the classic RGB function: components above 255 count as 255, negative ones raise the
    // invalid-call error.
    static Rgb make(int red, int green, int blue);
    // Each text converted to a whole number first; a text that is no number raises the
    // type-mismatch error (this is how a malformed stored colour surfaces).
    static Rgb fromComponentTexts(const QString& red, const QString& green, const QString& blue);

    // The classic packed form &H00BBGGRR, so that &HC000 is a medium green.
    quint32 packed() const { return quint32(red) | (quint32(green) << 8) | (quint32(blue) << 16); }
    static Rgb fromPacked(quint32 value) {
        return {int(value & 0xFF), int((value >> 8) & 0xFF), int((value >> 16) & 0xFF)};
    }

    bool operator==(const Rgb&) const = default;
};
