// Building and updating playlist 1 from the music directories, song priorities, deleting entries
// and the quick search: the main window's controls for them and their wiring to the core.
#include "app/TavoMP3PlayerMain.h"
#include "base/StatusLine.h"
#include "playlist/widgets/PlaylistKeyFilter.h"
#include "playlist/widgets/PriorityFrame.h"
#include "playlist/widgets/PriorityMenu.h"
#include "playlist/widgets/TavoMP3QuickSearch.h"
#include "ui/AutomationIds.h"
#include "ui/DirectoryField.h"
#include "ui/SkinControl.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>

void TavoMP3PlayerMain::addPlaylistCommands(QWidget* parent, QVBoxLayout* commands) {
    auto button = [parent](const char* name, const QString& caption) {
        auto* b = new SkinControl(caption, parent);
        b->setObjectName(QLatin1String(name));
        b->setMinimumSize(129, 24);
        return b;
    };
    BUpdateList = button("BUpdateList", QStringLiteral("Playliste aktualisieren"));
    BCreateList = button("BCreateList", QStringLiteral("Playliste erstellen"));
    commands->addWidget(BUpdateList);
    commands->addWidget(BCreateList);
    Frame1 = new PriorityFrame(parent);
    commands->addWidget(Frame1);
}

TavoMP3QuickSearch* TavoMP3PlayerMain::openQuickSearch(const QString& typed) {
    // There is one quick search: a letter that still reached the list goes into the open one.
    if (m_quickSearch) {
        m_quickSearch->FSearchtext->insert(typed);
        m_quickSearch->activateWindow();
        return m_quickSearch;
    }
    auto* window = new TavoMP3QuickSearch(this);
    m_quickSearch = window;
    m_playlistKeys->setQuickSearchField(window->FSearchtext);
    window->setAttribute(Qt::WA_DeleteOnClose);
    connect(window, &TavoMP3QuickSearch::searchRequested, this,
            [this](const QString& text, const QString& mode) {
                handle(QStringLiteral("TavoMP3QuickSearch OKButton_Click"), [&](int& line) {
                    line = 1;
                    m_search.PrcQuickSearch(text, mode, false);
                });
                FPlaylist->setFocus(); // so that F3 continues from here
            });
    AutomationIds::apply(window);
    dressQuickSearch(window);
    window->show();
    window->startWith(typed);
    return window;
}

void TavoMP3PlayerMain::connectPlaylistTools() {
    connect(&m_builder, &PlaylistBuilder::statusPaintRequested, FStatus, [this] { FStatus->repaint(); });

    connect(BCreateList, &QPushButton::clicked, this, [this] {
        handle(QStringLiteral("BCreateList_Click"), [this](int& line) {
            line = 1;
            m_builder.MusicDirectories = PlaylistBuilder::splitMusicDirectories(FBrowsePath->text());
            line = 2;
            m_builder.BCreateList();
        });
    });
    connect(BUpdateList, &QPushButton::clicked, this, [this] {
        handle(QStringLiteral("BUpdateList_Click"), [this](int& line) {
            line = 1;
            m_builder.MusicDirectories = PlaylistBuilder::splitMusicDirectories(FBrowsePath->text());
            line = 2;
            m_builder.BUpdateList();
        });
    });

    auto setPriority = [this](int priority) {
        handle(QStringLiteral("FPrio_Click"), [this, priority](int& line) {
            line = 1;
            m_editor.FPrioClick(priority);
        });
    };
    connect(Frame1, &PriorityFrame::prioClicked, this, setPriority);

    MenuPlaylist = new QMenu(QStringLiteral("MenuPlaylist"), this);
    MenuPlaylist->setObjectName(QStringLiteral("MenuPlaylist"));
    MenuPlaylistSetPrio = new PriorityMenu(MenuPlaylist);
    MenuPlaylist->addMenu(MenuPlaylistSetPrio);
    MenuPlaylistID3 = MenuPlaylist->addAction(QStringLiteral("ID3 Tag bearbeiten"));
    MenuPlaylistID3->setObjectName(QStringLiteral("MenuPlaylistID3"));
    connect(MenuPlaylistSetPrio, &PriorityMenu::prioIndexTriggered, this,
            [setPriority](int index) { setPriority(5 - index); });
    for (QAction* item : MenuSetPrio) // the tray's priority submenu
        connect(item, &QAction::triggered, this,
                [setPriority, item] { setPriority(5 - item->data().toInt()); });
    FPlaylist->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(FPlaylist, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& at) { MenuPlaylist->popup(FPlaylist->viewport()->mapToGlobal(at)); });

    auto* keys = new PlaylistKeyFilter(FPlaylist);
    m_playlistKeys = keys;
    FPlaylist->installEventFilter(keys);
    connect(keys, &PlaylistKeyFilter::deletePressed, this, [this] {
        handle(QStringLiteral("FPlaylist_KeyDown"), [this](int& line) {
            line = 1;
            m_editor.DeleteSelectedSongs(1);
        });
    });
    connect(keys, &PlaylistKeyFilter::selectAllPressed, this, [this] {
        handle(QStringLiteral("FPlaylist_KeyDown"), [this](int& line) {
            line = 3;
            m_playlists.list(1).selectAll();
        });
    });
    connect(keys, &PlaylistKeyFilter::searchAgainPressed, this, [this] {
        handle(QStringLiteral("FPlaylist_KeyDown"), [this](int& line) {
            line = 2;
            m_search.PrcQuickSearch(m_search.LastSearchText, m_search.LastSearchMode, true);
        });
    });
    connect(keys, &PlaylistKeyFilter::quickSearchTyped, this, [this](const QString& typed) {
        handle(QStringLiteral("FPlaylist_KeyDown"), [this, &typed](int& line) {
            line = 4;
            openQuickSearch(typed);
        });
    });
}
