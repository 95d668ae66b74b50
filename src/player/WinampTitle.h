#pragma once

#include <QString>

// Turns the player window's title ("3. Artist - Song - Winamp", "… - Winamp [Paused]") into the
// song name. The last title seen is remembered, so an unchanged title is not parsed again; that also
// means a title that failed to parse is not retried and the previous song name stays.
class WinampTitle {
public:
    // Raises the invalid-call error when the title is too short to cut; the raw title is stored first.
    QString parse(const QString& title);

    const QString& rawTitle() const { return m_raw; }
    const QString& currentSongTitle() const { return m_current; }

    // True when the lower-cased title ends in one of p, a, u, s, e, d: the classic "*[paused]"
    // pattern is a character class, not the word, and that is what tells playing from paused titles.
    static bool endsInPausedClass(const QString& title);

private:
    QString m_raw;
    QString m_current;
};
