// The main window's part of the online update: the menu entry, the minute counter of the timed
// check and the update window.
#include "app/TavoMP3PlayerMain.h"
#include "update/UpdateCheckSchedule.h"
#include "update/widgets/TavoMP3Update.h"

#include <QAction>
#include <QLabel>
#include <QMenuBar>
#include <QTimer>

void TavoMP3PlayerMain::buildUpdateMenus() {
    MenuUpdate = menuBar()->addAction(QStringLiteral("&Update"));
    MenuUpdate->setObjectName(QStringLiteral("MenuUpdate"));
}

void TavoMP3PlayerMain::connectUpdateHandlers() {
    connect(MenuUpdate, &QAction::triggered, this, [this] {
        handle(QStringLiteral("MenuUpdate_Click"), [this](int& line) {
            line = 1;
            TavoMP3Update& w = updateWindow();
            w.show();
            w.raise();
            w.activateWindow();
        });
    });
    connect(m_updateSchedule, &UpdateCheckSchedule::FCheckChanged, FCheck, &QLabel::setText);
    connect(m_updateSchedule, &UpdateCheckSchedule::checkDue, this, [this] {
        handle(QStringLiteral("TimerCheck_Timer"), [this](int& line) {
            line = 1;
            AutomaticUpdateCheck();
        });
    });
}

TavoMP3Update& TavoMP3PlayerMain::updateWindow() {
    if (!m_updateWindow) {
        m_updateWindow = new TavoMP3Update(m_services, UpdateSource, this);
        UpdateCheck& check = m_updateWindow->check();
        connect(&check, &UpdateCheck::versionListCompared, m_updateSchedule, &UpdateCheckSchedule::disable);
        connect(&check, &UpdateCheck::showWindowRequested, m_updateWindow, [w = m_updateWindow] {
            w->show();
            w->raise();
        });
        // Leaves the handler that recorded the hand-over before the window closes.
        connect(&check, &UpdateCheck::unloadMainWindowRequested, this, &QWidget::close, Qt::QueuedConnection);
    }
    return *m_updateWindow;
}

void TavoMP3PlayerMain::AutomaticUpdateCheck() {
    updateWindow().check().AutomaticCheck();
}
