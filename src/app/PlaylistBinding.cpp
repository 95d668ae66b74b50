#include "app/PlaylistBinding.h"

#include "app/MainWindowUi.h"
#include "app/SecondaryWindows.h"
#include "base/StatusLine.h"
#include "playlist/widgets/PlaylistKeyFilter.h"
#include "playlist/widgets/PriorityFrame.h"
#include "playlist/widgets/PriorityMenu.h"
#include "program/ProgramCore.h"
#include "ui/DirectoryField.h"
#include "ui/SkinControl.h"

#include <QAction>
#include <QLabel>
#include <QListView>
#include <QMainWindow>
#include <QMenu>

PlaylistBinding::PlaylistBinding(ProgramCore& core, MainWindowUi& ui, QMainWindow& window,
                                 SecondaryWindows& windows)
    : Binding(core, ui, window), m_windows(windows) {
    setObjectName(QStringLiteral("PlaylistBinding"));
    PlaylistManager& playlists = m_core.playlists();
    m_ui.FPlaylist->setModel(&playlists.list(1));
    m_ui.FPlaylist->setSelectionModel(&playlists.list(1).selection());
    connect(&playlists.list(1).selection(), &QItemSelectionModel::currentChanged, m_ui.FPlaylist,
            [this](const QModelIndex& current) { m_ui.FPlaylist->scrollTo(current); });
    connectFileCommands();
    connectListTools();
    connectKeys();
}

void PlaylistBinding::connectFileCommands() {
    PlaylistManager& playlists = m_core.playlists();
    connect(&m_core.services().status, &StatusLine::textChanged, m_ui.FStatus, &QLabel::setText);
    connect(&playlists, &PlaylistManager::actPlaylistChanged, this, [this](int n, const QString& file) {
        if (n == 1)
            m_ui.FActPlaylist->setText(file);
    });
    auto open = command("OpenPlaylist", [&playlists] { playlists.OpenPlaylist(1); });
    auto save = command("SavePlaylist", [&playlists] { playlists.SavePlaylistCommand(1); });
    auto saveAs = [this, &playlists] {
        handle(QStringLiteral("SavePlaylistAs"), [&playlists](int& line) {
            line = 1;
            playlists.FuncSavePlaylistAs(1);
            line = 2;
            playlists.PlaylistChanged = false; // also after a cancelled dialog
        });
    };
    connect(m_ui.BPLOpen, &SkinControl::clicked, this, open);
    connect(m_ui.MenuDateiOpenPlaylist, &QAction::triggered, this, open);
    connect(m_ui.BPLSave, &SkinControl::clicked, this, save);
    connect(m_ui.MenuDateiSavePlaylist, &QAction::triggered, this, save);
    connect(m_ui.MenuDateiPlaylistSaveAs, &QAction::triggered, this, saveAs);
    connect(m_ui.MenuDateiBeenden, &QAction::triggered, &m_window, &QWidget::close);
}

void PlaylistBinding::connectListTools() {
    auto build = [this](const char* place, void (PlaylistBuilder::*run)()) {
        return [this, place, run] {
            handle(QLatin1String(place), [this, run](int& line) {
                line = 1;
                m_core.builder().MusicDirectories =
                    PlaylistBuilder::splitMusicDirectories(m_ui.FBrowsePath->text());
                line = 2;
                (m_core.builder().*run)();
            });
        };
    };
    connect(m_ui.BCreateList, &SkinControl::clicked, this,
            build("BCreateList_Click", &PlaylistBuilder::BCreateList));
    connect(m_ui.BUpdateList, &SkinControl::clicked, this,
            build("BUpdateList_Click", &PlaylistBuilder::BUpdateList));

    auto setPriority = [this](int priority) {
        handle(QStringLiteral("FPrio_Click"), [this, priority](int& line) {
            line = 1;
            m_core.editor().FPrioClick(priority);
        });
    };
    connect(m_ui.Frame1, &PriorityFrame::prioClicked, this, setPriority);
    connect(m_ui.MenuPlaylistSetPrio, &PriorityMenu::prioIndexTriggered, this,
            [setPriority](int index) { setPriority(5 - index); });
    for (QAction* item : m_ui.MenuSetPrio) // the tray's priority submenu
        connect(item, &QAction::triggered, this,
                [setPriority, item] { setPriority(5 - item->data().toInt()); });
    connect(m_ui.FPlaylist, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) {
        m_ui.MenuPlaylist->popup(m_ui.FPlaylist->viewport()->mapToGlobal(at));
    });
}

void PlaylistBinding::connectKeys() {
    m_keys = new PlaylistKeyFilter(m_ui.FPlaylist);
    m_ui.FPlaylist->installEventFilter(m_keys);
    connect(&m_windows, &SecondaryWindows::quickSearchOpened, m_keys,
            &PlaylistKeyFilter::setQuickSearchField);
    connect(m_keys, &PlaylistKeyFilter::deletePressed, this, [this] {
        handle(QStringLiteral("FPlaylist_KeyDown"), [this](int& line) {
            line = 1;
            m_core.editor().DeleteSelectedSongs(1);
        });
    });
    connect(m_keys, &PlaylistKeyFilter::selectAllPressed, this, [this] {
        handle(QStringLiteral("FPlaylist_KeyDown"), [this](int& line) {
            line = 3;
            m_core.playlists().list(1).selectAll();
        });
    });
    connect(m_keys, &PlaylistKeyFilter::searchAgainPressed, this, [this] {
        handle(QStringLiteral("FPlaylist_KeyDown"), [this](int& line) {
            line = 2;
            QuickSearch& search = m_core.quickSearch();
            search.PrcQuickSearch(search.LastSearchText, search.LastSearchMode, true);
        });
    });
    connect(m_keys, &PlaylistKeyFilter::quickSearchTyped, this, [this](const QString& typed) {
        handle(QStringLiteral("FPlaylist_KeyDown"), [this, &typed](int& line) {
            line = 4;
            m_windows.openQuickSearch(typed);
        });
    });
}
