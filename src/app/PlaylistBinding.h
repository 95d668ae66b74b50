#pragma once

#include "app/Binding.h"

class PlaylistKeyFilter;
class SecondaryWindows;

// Playlist 1 and its commands: open and save, building and updating from the music folders,
// priorities (buttons, context menu, tray submenu), the keys of the list and the quick search, and
// the status line.
class PlaylistBinding : public Binding {
    Q_OBJECT
public:
    PlaylistBinding(ProgramCore& core, MainWindowUi& ui, QMainWindow& window, SecondaryWindows& windows);

private:
    void connectFileCommands();
    void connectListTools();
    void connectKeys();

    SecondaryWindows& m_windows;
    PlaylistKeyFilter* m_keys = nullptr;
};
