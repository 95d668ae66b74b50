// The notification-area icon, its menu and the window's minimize/restore behaviour.
#include "app/TavoMP3PlayerMain.h"
#include "app/TrayModule.h"

#include <QAction>
#include <QCursor>
#include <QEvent>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>

namespace {
constexpr int WM_LBUTTONDOWN = 513;
constexpr int WM_LBUTTONDBLCLK = 515;
constexpr int WM_RBUTTONUP = 517;
} // namespace

void TavoMP3PlayerMain::buildTrayMenu() {
    // Hidden in the menu bar like the classic window's "SysTray" menu; it only pops up.
    MenuPopupSys = new QMenu(QStringLiteral("SysTray"), this);
    MenuPopupSys->setObjectName(QStringLiteral("MenuPopupSys"));
    auto action = [this](const char* name, const QString& caption) {
        QAction* a = MenuPopupSys->addAction(caption);
        a->setObjectName(QLatin1String(name));
        return a;
    };
    MenuPopRestore = action("MenuPopRestore", QStringLiteral("&Open"));
    MenuShuffleStatus = action("MenuShuffleStatus", QStringLiteral("Shu&ffle"));
    MenuShuffleStatus->setCheckable(true);
    // The blanks line the symbols up in the menu's font; they are part of the captions.
    MenuNext = action("MenuNext", QStringLiteral("&Next          >>"));
    MenuPause = action("MenuPause", QStringLiteral("P&ause         ||"));
    MenuPlay = action("MenuPlay", QStringLiteral("&Play            >"));
    MenuStop = action("MenuStop", QStringLiteral("&Stop            -"));
    MenuPrevious = action("MenuPrevious", QStringLiteral("P&revious    <<"));
    MenuSetPrioHead = MenuPopupSys->addMenu(QStringLiteral("Priorität &setzen"));
    MenuSetPrioHead->setObjectName(QStringLiteral("MenuSetPrioHead"));
    const QString prioCaptions[] = {QStringLiteral("&5 = normal"), QStringLiteral("&4"),
                                    QStringLiteral("&3"),          QStringLiteral("&2 = selten"),
                                    QStringLiteral("&1"),          QStringLiteral("&0 = nie")};
    for (int index = 0; index < 6; ++index) {
        QAction* a = MenuSetPrioHead->addAction(prioCaptions[index]);
        a->setObjectName(QStringLiteral("MenuSetPrio(%1)").arg(index));
        a->setData(index);
        MenuSetPrio << a;
    }
    MenuPopExit = action("MenuPopExit", QStringLiteral("&Exit"));
    MenuPopupSys->setDefaultAction(MenuPopRestore);

    m_tray = new TrayModule(this, MenuPopupSys, this);
    connect(m_tray, &TrayModule::restoreRequested, this, [this] {
        handle(QStringLiteral("TrayIcon_MouseDown"), [this](int& line) {
            line = 1;
            TrayNotification(WM_LBUTTONDOWN, 0);
        });
    });
    connect(MenuPopRestore, &QAction::triggered, this, [this] {
        handle(QStringLiteral("MenuPopRestore_Click"), [this](int& line) {
            line = 1;
            restoreWindow(false);
        });
    });
    connect(MenuPopExit, &QAction::triggered, this, &QWidget::close);
}

void TavoMP3PlayerMain::showAfterStart(bool showWindow) {
    if (showWindow)
        show();
    else if (m_tray->canHideWindow())
        hide();
    else
        showMinimized();
}

void TavoMP3PlayerMain::restoreWindow(bool focusList) {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    if (focusList)
        FPlaylist->setFocus();
}

void TavoMP3PlayerMain::TrayNotification(int x, int y) {
    if (x == WM_LBUTTONDOWN || x == WM_LBUTTONDBLCLK) {
        restoreWindow(true);
    } else if (x == WM_RBUTTONUP && y == 0) {
        activateWindow();
        MenuPopupSys->popup(QCursor::pos(), MenuPopRestore);
    }
}

void TavoMP3PlayerMain::mouseMoveEvent(QMouseEvent* event) {
    // The classic window received the icon's notifications as mouse moves, the code in X; a real
    // movement at those coordinates acts the same, and the window keeps that behaviour.
    ResetSkinHover();
    const QPoint at = event->position().toPoint();
    TrayNotification(at.x(), at.y());
    QMainWindow::mouseMoveEvent(event);
}

void TavoMP3PlayerMain::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        mainWindowActivated();
    // Minimized, only the notification-area icon is left; without a notification area the window
    // stays minimized in the task bar, the only way back to it.
    // Queued, because showMinimized() makes the window visible again right after the state change.
    if (event->type() == QEvent::WindowStateChange && isMinimized())
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (isMinimized() && m_tray->canHideWindow())
                    hide();
            },
            Qt::QueuedConnection);
    QMainWindow::changeEvent(event);
}
