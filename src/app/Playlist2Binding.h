#pragma once

#include "app/Binding.h"

#include <QString>

// The second playlist window: the button that shows it, docking beside the main window, open and
// save, playing from it, the rows dropped on it from the main list and its shutdown box.
class Playlist2Binding : public Binding {
    Q_OBJECT
public:
    Playlist2Binding(ProgramCore& core, MainWindowUi& ui, QMainWindow& window);

    // Shows or hides the second playlist and makes it the active one or not.
    void BPlaylist2Click();
    // The main window was activated: a second playlist that is meant to be shown is shown again.
    void mainWindowActivated();
    // Loads the file of "PlaylistFile2" at start; the load text, "" when there is none.
    QString loadPlaylist2(const QString& file);

    // One docking step of the monitor tick: keep the visible second playlist at the right edge.
    void dockPlaylist2();

private:
    void connectWindow();
    void placePlaylist2();

    // The main window's left and top as text when the second playlist was last docked.
    QString m_lastDockedPosition;
};
