#pragma once

#include "base/Services.h"

#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

class PlaylistManager;

// Finds an entry of playlist 1 by text and marks it. A search can be continued (F3) from the entry
// after the last hit; it never wraps around to the top.
class QuickSearch {
public:
    QuickSearch(Services& services, PlaylistManager& playlists);

    QString LastSearchText;
    QString LastSearchMode;
    qint32 NextSearchStart = 0;

    // Marks the hit as the only selected entry of the main list. Defaults to marking the row of
    // playlist 1; the main window can point it at its own song selection.
    std::function<void(qint32)> SelectSong;

    // The options of the search window in order, and the mode word each one stands for.
    static QStringList modeCaptions();
    static QStringList modeWords();

    void PrcQuickSearch(const QString& text, const QString& mode, bool continueSearch);

    // The name of the folder holding the file of a playlist line; nullopt for a line whose file
    // lies directly below the root (a line with only one separator).
    static std::optional<QString> albumOf(const QString& line, PathStyle style);

private:
    void selectInList(qint32 position);

    Services& m_services;
    PlaylistManager& m_playlists;
};
