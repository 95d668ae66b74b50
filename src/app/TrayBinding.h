#pragma once

#include "app/Binding.h"

class TrayModule;

// The notification-area icon, its menu's own entries, the song in its tip, and the window's
// minimize/restore behaviour.
class TrayBinding : public Binding {
    Q_OBJECT
public:
    TrayBinding(ProgramCore& core, MainWindowUi& ui, QMainWindow& window);

    TrayModule& tray() { return *m_tray; }
    // The "start" word hides the window in the notification area; where the desktop has none, the
    // window starts minimized instead, so that it can be reached at all.
    void showAfterStart(bool showWindow);
    void restoreWindow(bool focusList);
    // A notification of the tray icon: the mouse message code in x, y 0.
    void TrayNotification(int x, int y);
    // Minimized, only the notification-area icon is left (where there is one).
    void windowMinimized();

private:
    TrayModule* m_tray = nullptr;
};
