#include "player/WinampTitle.h"

#include "base/RuntimeError.h"

namespace {

QString dropRight(const QString& text, qsizetype count) {
    if (text.size() < count)
        throw RuntimeError::invalidCall();
    return text.left(text.size() - count);
}

// Blanks only, like the classic Trim (tabs and line breaks stay).
QString trimBlanks(const QString& text) {
    qsizetype from = 0;
    qsizetype to = text.size();
    while (from < to && text.at(from) == QLatin1Char(' '))
        ++from;
    while (to > from && text.at(to - 1) == QLatin1Char(' '))
        --to;
    return text.mid(from, to - from);
}

} // namespace

bool WinampTitle::endsInPausedClass(const QString& title) {
    if (title.isEmpty())
        return false;
    return QStringLiteral("paused").contains(title.back().toLower());
}

QString WinampTitle::parse(const QString& title) {
    if (title == m_raw)
        return m_current;
    m_raw = title;
    QString text = title;
    if (!endsInPausedClass(text))
        text = dropRight(text, 9); // " [Paused]"
    text = dropRight(text, 8);     // "- Winamp" (the blank before it goes with the trim)
    const qsizetype dot = text.indexOf(QLatin1Char('.'));
    if (dot >= 0)
        text = text.mid(dot + 1);
    m_current = trimBlanks(text);
    return m_current;
}
