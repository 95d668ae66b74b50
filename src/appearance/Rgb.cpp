#include "appearance/Rgb.h"

#include "base/Checked.h"
#include "base/RuntimeError.h"

#include <algorithm>

Rgb Rgb::make(int red, int green, int blue) {
    if (red < 0 || green < 0 || blue < 0)
        throw RuntimeError::invalidCall();
    return {std::min(red, 255), std::min(green, 255), std::min(blue, 255)};
}

Rgb Rgb::fromComponentTexts(const QString& red, const QString& green, const QString& blue) {
    return make(Checked::textToInt16(red), Checked::textToInt16(green), Checked::textToInt16(blue));
}
