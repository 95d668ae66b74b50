#pragma once

#include "base/Services.h"

#include <QStringList>

class PlaylistManager;

// What the user does to marked entries of a playlist: give them a priority or delete them.
class PlaylistEntryEditor {
public:
    PlaylistEntryEditor(Services& services, PlaylistManager& playlists);

    // The legend beside the FPrio buttons, priority 5 down to 0.
    static QStringList priorityCaptions();
    // The MenuSetPrio items, Index 0..5; Index i sets priority 5 - i.
    static QStringList priorityMenuCaptions();

    // FPrio click: priority p on every marked entry of playlist 1. The playlist does not count as
    // changed by this, so a priority change alone never asks to save.
    void FPrioClick(int p);
    void MenuSetPrioClick(int index) { FPrioClick(5 - index); }

    // Removes the marked entries of playlist n (1, any other value = playlist 2).
    void DeleteSelectedSongs(int n);

private:
    Services& m_services;
    PlaylistManager& m_playlists;
};
