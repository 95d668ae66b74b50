#include "ui/Mnemonic.h"

namespace Mnemonic {

QString spoken(const QString& caption) {
    QString name;
    name.reserve(caption.size());
    for (qsizetype i = 0; i < caption.size(); ++i) {
        if (caption.at(i) == QLatin1Char('&') && ++i == caption.size())
            break;
        name += caption.at(i);
    }
    return name;
}

} // namespace Mnemonic
