#include "app/TrayBinding.h"

#include "app/MainWindowUi.h"
#include "app/TrayModule.h"
#include "program/ProgramCore.h"

#include <QAction>
#include <QCursor>
#include <QListView>
#include <QMainWindow>
#include <QMenu>

namespace {
constexpr int WM_LBUTTONDOWN = 513;
constexpr int WM_LBUTTONDBLCLK = 515;
constexpr int WM_RBUTTONUP = 517;
} // namespace

TrayBinding::TrayBinding(ProgramCore& core, MainWindowUi& ui, QMainWindow& window)
    : Binding(core, ui, window) {
    setObjectName(QStringLiteral("TrayBinding"));
    m_tray = new TrayModule(&window, m_ui.MenuPopupSys, this);
    connect(m_tray, &TrayModule::restoreRequested, this,
            command("TrayIcon_MouseDown", [this] { TrayNotification(WM_LBUTTONDOWN, 0); }));
    connect(m_ui.MenuPopRestore, &QAction::triggered, this,
            command("MenuPopRestore_Click", [this] { restoreWindow(false); }));
    connect(m_ui.MenuPopExit, &QAction::triggered, &window, &QWidget::close);
    connect(&core.playback(), &PlaybackController::songStarted, this,
            [this](const QString& name) { m_tray->modify(TrayModule::songTip(name)); });
}

void TrayBinding::showAfterStart(bool showWindow) {
    if (showWindow)
        m_window.show();
    else if (m_tray->canHideWindow())
        m_window.hide();
    else
        m_window.showMinimized();
}

void TrayBinding::restoreWindow(bool focusList) {
    m_window.setWindowState(m_window.windowState() & ~Qt::WindowMinimized);
    m_window.show();
    m_window.raise();
    m_window.activateWindow();
    if (focusList)
        m_ui.FPlaylist->setFocus();
}

void TrayBinding::TrayNotification(int x, int y) {
    if (x == WM_LBUTTONDOWN || x == WM_LBUTTONDBLCLK) {
        restoreWindow(true);
    } else if (x == WM_RBUTTONUP && y == 0) {
        m_window.activateWindow();
        m_ui.MenuPopupSys->popup(QCursor::pos(), m_ui.MenuPopRestore);
    }
}

void TrayBinding::windowMinimized() {
    // Queued, because showMinimized() makes the window visible again right after the state change.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (m_window.isMinimized() && m_tray->canHideWindow())
                m_window.hide();
        },
        Qt::QueuedConnection);
}
