#include "app/SecondaryWindows.h"

#include "app/MainWindowUi.h"
#include "app/SettingsApplier.h"
#include "app/WindowSkins.h"
#include "appearance/ColorSchemeController.h"
#include "base/RuntimeError.h"
#include "playlist/widgets/TavoMP3Playlist2.h"
#include "playlist/widgets/TavoMP3QuickSearch.h"
#include "program/ProgramCore.h"
#include "ui/AutomationIds.h"
#include "ui/SchemePainter.h"
#include "ui/TavoMP3ID3.h"
#include "ui/TavoMP3Settings.h"
#include "update/widgets/TavoMP3About.h"
#include "update/widgets/TavoMP3News.h"
#include "update/widgets/TavoMP3Update.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMainWindow>

namespace {
void bringUp(QWidget& w) {
    w.show();
    w.raise();
    w.activateWindow();
}
} // namespace

SecondaryWindows::SecondaryWindows(ProgramCore& core, MainWindowUi& ui, QMainWindow& window,
                                   SettingsApplier& applier, WindowSkins& skins)
    : Binding(core, ui, window), m_applier(applier), m_skins(skins) {
    setObjectName(QStringLiteral("SecondaryWindows"));
    addSchemeWindow([this]() -> QWidget* { return m_ui.Playlist2; });
    addSchemeWindow([this]() -> QWidget* { return &newsWindow(); });
    addSchemeWindow([this]() -> QWidget* { return &aboutWindow(); });
    addSchemeWindow([this]() -> QWidget* { return &id3Window(); });
    connectMenus();
}

void SecondaryWindows::connectMenus() {
    connect(m_ui.MenuEinstellungen, &QAction::triggered, this,
            command("MenuEinstellungen_Click", [this] { settingsWindow()->open(); }));
    connect(m_ui.MenuUpdate, &QAction::triggered, this,
            command("MenuUpdate_Click", [this] { bringUp(updateWindow()); }));
    connect(m_ui.MenuNews, &QAction::triggered, this,
            command("MenuNews_Click", [this] { bringUp(newsWindow()); }));
    connect(m_ui.MenuAbout, &QAction::triggered, this,
            command("MenuAbout_Click", [this] { bringUp(aboutWindow()); }));
    connect(m_ui.MenuPlaylistID3, &QAction::triggered, this, &SecondaryWindows::MenuPlaylistID3Click);
    UpdateCheckSchedule& schedule = m_core.updateSchedule();
    connect(&schedule, &UpdateCheckSchedule::FCheckChanged, m_ui.FCheck, &QLabel::setText);
    connect(&schedule, &UpdateCheckSchedule::checkDue, this,
            command("TimerCheck_Timer", [this] { updateWindow().check().AutomaticCheck(); }));
}

TavoMP3Settings* SecondaryWindows::settingsWindow() {
    if (!m_settingsWindow) {
        m_settingsWindow = new TavoMP3Settings(m_core.services(), m_applier, m_core.colours(), &m_window);
        AutomationIds::apply(m_settingsWindow);
    }
    return m_settingsWindow;
}

TavoMP3Settings* SecondaryWindows::showSettingsWindow(const QString& hint) {
    TavoMP3Settings* w = settingsWindow();
    w->open();
    if (!hint.isEmpty())
        w->FStatus->setText(hint);
    return w;
}

TavoMP3Update& SecondaryWindows::updateWindow() {
    if (!m_updateWindow) {
        m_updateWindow = new TavoMP3Update(m_core.services(), m_core.UpdateSource, &m_window);
        AutomationIds::apply(m_updateWindow);
        UpdateCheck& check = m_updateWindow->check();
        connect(&check, &UpdateCheck::versionListCompared, &m_core.updateSchedule(),
                &UpdateCheckSchedule::disable);
        connect(&check, &UpdateCheck::showWindowRequested, m_updateWindow,
                [w = m_updateWindow] { bringUp(*w); });
        // Leaves the handler that recorded the hand-over before the window closes.
        connect(&check, &UpdateCheck::unloadMainWindowRequested, &m_window, &QWidget::close,
                Qt::QueuedConnection);
    }
    return *m_updateWindow;
}

TavoMP3News& SecondaryWindows::newsWindow() {
    if (!m_newsWindow) {
        m_newsWindow = new TavoMP3News(&m_window);
        AutomationIds::apply(m_newsWindow);
    }
    return *m_newsWindow;
}

TavoMP3About& SecondaryWindows::aboutWindow() {
    if (!m_aboutWindow) {
        m_aboutWindow = new TavoMP3About(&m_window);
        AutomationIds::apply(m_aboutWindow);
    }
    return *m_aboutWindow;
}

TavoMP3ID3& SecondaryWindows::id3Window() {
    if (!m_id3Window) {
        m_id3Window = new TavoMP3ID3(&m_window);
        AutomationIds::apply(m_id3Window);
    }
    return *m_id3Window;
}

void SecondaryWindows::addSchemeWindow(std::function<QWidget*()> ensureWindow) {
    m_schemeWindows.append(std::move(ensureWindow));
}

QList<QWidget*> SecondaryWindows::schemeWindows() {
    QList<QWidget*> windows;
    for (const auto& ensure : m_schemeWindows)
        windows << ensure();
    return windows;
}

TavoMP3QuickSearch* SecondaryWindows::openQuickSearch(const QString& typed) {
    // There is one quick search: a letter that still reached the list goes into the open one.
    if (m_quickSearch) {
        m_quickSearch->FSearchtext->insert(typed);
        m_quickSearch->activateWindow();
        return m_quickSearch;
    }
    auto* window = new TavoMP3QuickSearch(&m_window);
    m_quickSearch = window;
    window->setAttribute(Qt::WA_DeleteOnClose);
    connect(window, &TavoMP3QuickSearch::searchRequested, this,
            [this](const QString& text, const QString& mode) {
                handle(QStringLiteral("TavoMP3QuickSearch OKButton_Click"), [&](int& line) {
                    line = 1;
                    m_core.quickSearch().PrcQuickSearch(text, mode, false);
                });
                m_ui.FPlaylist->setFocus(); // so that F3 continues from here
            });
    AutomationIds::apply(window);
    m_skins.dress(window);
    // The window is created at each opening, so it takes the working scheme now.
    const ColorScheme& scheme = m_core.colours().scheme();
    for (ColorRoles::Id role : {ColorRoles::Text, ColorRoles::Background, ColorRoles::FieldText,
                                ColorRoles::FieldBackground, ColorRoles::ButtonText}) {
        try {
            SchemePainter::paintWindowRole(window, role, SchemePainter::toColor(scheme.rgb(role)));
        } catch (const RuntimeError&) {
            // A malformed scheme was already reported when it was loaded.
        }
    }
    emit quickSearchOpened(window->FSearchtext);
    window->show();
    window->startWith(typed);
    return window;
}

void SecondaryWindows::MenuPlaylistID3Click() {
    handle(QStringLiteral("MenuPlaylistID3_Click"), [this](int& line) {
        line = 1;
        PlaylistListModel& list = m_core.playlists().list(1);
        const QStringList& paths = m_core.playlists().PlaylistPaths;
        int row = list.currentRow();
        const QList<int> marked = list.selectedRows();
        if (!marked.contains(row))
            row = marked.isEmpty() ? -1 : marked.first();
        line = 2;
        QString path;
        if (row >= 0 && row < paths.size())
            path = paths.at(row).chopped(qMin<qsizetype>(2, paths.at(row).size()));
        line = 3;
        TavoMP3ID3& w = id3Window();
        w.showFile(path);
        bringUp(w);
    });
}

TavoMP3QuickSearch* SecondaryWindows::quickSearch() const {
    return m_quickSearch;
}
