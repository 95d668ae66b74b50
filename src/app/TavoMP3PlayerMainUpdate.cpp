// The main window's part of the online update (menu entry, the minute counter of the timed check,
// the update window) and the menu entries of the news, about and ID3 windows.
#include "app/TavoMP3PlayerMain.h"
#include "ui/AutomationIds.h"
#include "ui/TavoMP3ID3.h"
#include "update/UpdateCheckSchedule.h"
#include "update/widgets/TavoMP3About.h"
#include "update/widgets/TavoMP3News.h"
#include "update/widgets/TavoMP3Update.h"

#include <QAction>
#include <QLabel>
#include <QListView>
#include <QMenu>
#include <QMenuBar>

namespace {
void bringUp(QWidget& w) {
    w.show();
    w.raise();
    w.activateWindow();
}
} // namespace

void TavoMP3PlayerMain::buildUpdateMenus() {
    auto topEntry = [this](const char* name, const QString& caption) {
        QAction* a = menuBar()->addAction(caption);
        a->setObjectName(QLatin1String(name));
        return a;
    };
    MenuUpdate = topEntry("MenuUpdate", QStringLiteral("&Update"));
    MenuNews = topEntry("MenuNews", QStringLiteral("&News"));
    MenuAbout = topEntry("MenuAbout", QStringLiteral("&About"));
}

void TavoMP3PlayerMain::connectUpdateHandlers() {
    connect(MenuUpdate, &QAction::triggered, this, [this] {
        handle(QStringLiteral("MenuUpdate_Click"), [this](int& line) {
            line = 1;
            bringUp(updateWindow());
        });
    });
    connect(MenuNews, &QAction::triggered, this, [this] {
        handle(QStringLiteral("MenuNews_Click"), [this](int& line) {
            line = 1;
            bringUp(newsWindow());
        });
    });
    connect(MenuAbout, &QAction::triggered, this, [this] {
        handle(QStringLiteral("MenuAbout_Click"), [this](int& line) {
            line = 1;
            bringUp(aboutWindow());
        });
    });
    connect(MenuPlaylistID3, &QAction::triggered, this, &TavoMP3PlayerMain::MenuPlaylistID3Click);

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
        AutomationIds::apply(m_updateWindow);
        UpdateCheck& check = m_updateWindow->check();
        connect(&check, &UpdateCheck::versionListCompared, m_updateSchedule, &UpdateCheckSchedule::disable);
        connect(&check, &UpdateCheck::showWindowRequested, m_updateWindow,
                [w = m_updateWindow] { bringUp(*w); });
        // Leaves the handler that recorded the hand-over before the window closes.
        connect(&check, &UpdateCheck::unloadMainWindowRequested, this, &QWidget::close, Qt::QueuedConnection);
    }
    return *m_updateWindow;
}

void TavoMP3PlayerMain::AutomaticUpdateCheck() {
    updateWindow().check().AutomaticCheck();
}

TavoMP3News& TavoMP3PlayerMain::newsWindow() {
    if (!m_newsWindow) {
        m_newsWindow = new TavoMP3News(this);
        AutomationIds::apply(m_newsWindow);
    }
    return *m_newsWindow;
}

TavoMP3About& TavoMP3PlayerMain::aboutWindow() {
    if (!m_aboutWindow) {
        m_aboutWindow = new TavoMP3About(this);
        AutomationIds::apply(m_aboutWindow);
    }
    return *m_aboutWindow;
}

TavoMP3ID3& TavoMP3PlayerMain::id3Window() {
    if (!m_id3Window) {
        m_id3Window = new TavoMP3ID3(this);
        AutomationIds::apply(m_id3Window);
    }
    return *m_id3Window;
}

void TavoMP3PlayerMain::MenuPlaylistID3Click() {
    handle(QStringLiteral("MenuPlaylistID3_Click"), [this](int& line) {
        line = 1;
        PlaylistListModel& list = m_playlists.list(1);
        int row = list.currentRow();
        const QList<int> marked = list.selectedRows();
        if (!marked.contains(row))
            row = marked.isEmpty() ? -1 : marked.first();
        line = 2;
        QString path;
        if (row >= 0 && row < m_playlists.PlaylistPaths.size())
            path = m_playlists.PlaylistPaths.at(row).chopped(
                qMin<qsizetype>(2, m_playlists.PlaylistPaths.at(row).size()));
        line = 3;
        TavoMP3ID3& w = id3Window();
        w.showFile(path);
        bringUp(w);
    });
}
