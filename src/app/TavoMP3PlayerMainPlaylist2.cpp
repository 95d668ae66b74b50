// The second playlist window: the button that shows it, docking beside the main window, open and
// save, playing from it and the rows dropped on it from the main list.
#include "app/TavoMP3PlayerMain.h"
#include "playback/PlaybackMonitor.h"
#include "player/PlayerLink.h"
#include "playback/SongSelection.h"
#include "playlist/widgets/PlaylistDropView.h"
#include "playlist/widgets/TavoMP3Playlist2.h"
#include "ui/SkinControl.h"

#include <QCheckBox>
#include <QLabel>
#include <QListView>
#include <QRadioButton>
#include <QVBoxLayout>

void TavoMP3PlayerMain::buildPlaylist2(QWidget* parent, QVBoxLayout* commands) {
    BPlaylist2 = new SkinControl(QStringLiteral("Playliste 2 anzeigen"), parent);
    BPlaylist2->setObjectName(QStringLiteral("BPlaylist2"));
    BPlaylist2->setMinimumSize(129, 24);
    commands->addWidget(BPlaylist2);

    Playlist2 = new TavoMP3Playlist2(this);
    Playlist2->FPlaylist->setModel(&m_playlists.list(2));
    Playlist2->FPlaylist->setSelectionModel(&m_playlists.list(2).selection());
    addSchemeWindow([this]() -> QWidget* { return Playlist2; });
}

void TavoMP3PlayerMain::connectPlaylist2() {
    connect(BPlaylist2, &SkinControl::clicked, this, [this] {
        handle(QStringLiteral("BPlaylist2_Click"), [this](int& line) {
            line = 1;
            BPlaylist2Click();
        });
    });
    connect(&m_playlists, &PlaylistManager::actPlaylistChanged, this, [this](int n, const QString& file) {
        if (n != 1)
            Playlist2->FActPlaylist->setText(file);
    });
    connect(Playlist2, &TavoMP3Playlist2::openClicked, this, [this] {
        handle(QStringLiteral("BPLOpen_Click"), [this](int& line) {
            line = 1;
            m_playlists.OpenPlaylist(2);
            Playlist2->FPlaylist->viewport()->update();
        });
    });
    connect(Playlist2, &TavoMP3Playlist2::saveClicked, this, [this] {
        handle(QStringLiteral("BPLSave_Click"), [this](int& line) {
            line = 1;
            m_playlists.SavePlaylistCommand(2);
        });
    });
    connect(Playlist2, &TavoMP3Playlist2::rowClicked, this, [this](int row) {
        handle(QStringLiteral("FPlaylist_Click"), [this, row](int& line) {
            line = 1;
            if (!PL[2]->isChecked())
                PL[2]->setChecked(true); // PL(1) goes off with it: the second playlist is active
            line = 2;
            m_selection->PlaySong(row, 2);
        });
    });
    connect(Playlist2, &TavoMP3Playlist2::enterPressed, this, [this](int row) {
        handle(QStringLiteral("FPlaylist_KeyDown"), [this, row](int& line) {
            line = 1;
            m_selection->PlaySong(row, 2);
        });
    });
    connect(Playlist2, &TavoMP3Playlist2::deletePressed, this, [this] {
        handle(QStringLiteral("FPlaylist_KeyDown"), [this](int& line) {
            line = 2;
            m_editor.DeleteSelectedSongs(2);
        });
    });
    connect(Playlist2, &TavoMP3Playlist2::spacePressed, this, [this] {
        handle(QStringLiteral("FPlaylist_KeyDown"), [this](int& line) {
            line = 3;
            // The position slider's maximum and value: what the monitor gave it on its last tick.
            const qint32 value = m_monitor->lastPosition();
            if (m_monitor->songLength() - value > 25)
                m_player->WinampJumpToTime(value + 20, 0);
        });
    });
    connect(Playlist2, &TavoMP3Playlist2::textDropped, this,
            [this](const QString& text, qint32 row, int effect) {
                handle(QStringLiteral("FPlaylist_OLEDragDrop"), [&](int& line) {
                    line = 1;
                    m_playlists.AddDragDropToPL2(text, row, effect);
                    line = 2;
                    m_playlists.FuncDisplayPlaylist(true, 2);
                });
            });
    connect(Playlist2->ShutdownOnPL2End, &QCheckBox::toggled, this,
            [this](bool on) { shutdownOnPL2End = on; });
    connect(m_monitor, &PlaybackMonitor::dockRequested, this, &TavoMP3PlayerMain::dockPlaylist2);
}

void TavoMP3PlayerMain::BPlaylist2Click() {
    if (!Playlist2->isVisible()) {
        PL[2]->setChecked(true);
        placePlaylist2();
        Playlist2->show();
        Playlist2->PL2Visible = true;
    } else {
        Playlist2->hide();
        Playlist2->PL2Visible = false;
        PL[1]->setChecked(true);
    }
    FPlaylist->viewport()->update();
}

void TavoMP3PlayerMain::dockPlaylist2() {
    if (!Playlist2->isVisible())
        return;
    const QString position = QString::number(x()) + QString::number(y());
    if (position != LastDockedPosition)
        placePlaylist2();
    LastDockedPosition = position;
    if (isMinimized())
        Playlist2->hide();
}

void TavoMP3PlayerMain::placePlaylist2() {
    // Its left edge touches the main window's right edge, outer frames included.
    const QRect frame = frameGeometry();
    Playlist2->move(frame.x() + frame.width(), frame.y());
}

void TavoMP3PlayerMain::mainWindowActivated() {
    if (isVisible())
        FPlaylist->setFocus();
    if (Playlist2->PL2Visible)
        Playlist2->setVisible(true);
}

QString TavoMP3PlayerMain::loadPlaylist2(const QString& file) {
    if (file == QLatin1String("0") || file.isEmpty())
        return QString();
    m_playlists.setActPlaylist(2, file);
    return m_playlists.FuncReadPlaylistAndDisplay(file, true, 2);
}
