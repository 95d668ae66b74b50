#pragma once

#include "app/MainWindowUi.h"
#include "app/SettingsApplier.h"
#include "app/WindowSkins.h"

#include <QMainWindow>

class MainWindowColours;
class Playlist2Binding;
class PlaylistBinding;
class ProgramCore;
class ReportsBinding;
class SecondaryWindows;
class SleepBinding;
class TransportBinding;
class TrayBinding;

// The program's main window: a view of the program core. It places the controls (MainWindowUi) and
// lets small bindings connect them to the core; it runs the load sequence and the close sequence.
class TavoMP3PlayerMain : public QMainWindow {
    Q_OBJECT
public:
    explicit TavoMP3PlayerMain(ProgramCore& core, QWidget* parent = nullptr);
    ~TavoMP3PlayerMain() override;

    // The load sequence: settings, playlists, and finally the window shown.
    void load();
    // After the load: shown, or hidden behind the notification-area icon for the "start" word.
    void showAfterStart(bool showWindow);
    // A later start of the program or the desktop's player controls bring the window to the front.
    void restoreFromDesktop();
    MainWindowUi& ui() { return m_ui; }
    // The windows it opens (settings, update, news, about, ID3, quick search).
    SecondaryWindows& windows() { return *m_windows; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    // Steps 1 and 2 of the close sequence; false when the window must stay open.
    bool closeMainWindow();
    // Load step 10: the player, the music folders and the playlists; the status text of the last load.
    QString loadPlayerAndPlaylists();
    void LoadActivePreset();

    ProgramCore& m_core;
    MainWindowUi m_ui;
    WindowSkins m_skins;
    SettingsApplier m_applier;
    SecondaryWindows* m_windows = nullptr;
    TrayBinding* m_tray = nullptr;
    MainWindowColours* m_colours = nullptr;
    PlaylistBinding* m_playlist = nullptr;
    SleepBinding* m_sleep = nullptr;
    ReportsBinding* m_reports = nullptr;
    TransportBinding* m_transport = nullptr;
    Playlist2Binding* m_playlist2 = nullptr;
    bool m_closing = false;
};
