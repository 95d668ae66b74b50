#pragma once

#include <QString>

namespace Mnemonic {

// A caption as a screen reader speaks it: the "&" marks of the keyboard mnemonic dropped, "&&"
// read as one real "&", a mark at the very end dropped.
QString spoken(const QString& caption);

} // namespace Mnemonic
