#include "app/Playlist2Binding.h"

#include "app/MainWindowUi.h"
#include "playlist/widgets/PlaylistDropView.h"
#include "playlist/widgets/TavoMP3Playlist2.h"
#include "program/ProgramCore.h"
#include "ui/SkinControl.h"

#include <QCheckBox>
#include <QLabel>
#include <QListView>
#include <QMainWindow>
#include <QRadioButton>

Playlist2Binding::Playlist2Binding(ProgramCore& core, MainWindowUi& ui, QMainWindow& window)
    : Binding(core, ui, window) {
    setObjectName(QStringLiteral("Playlist2Binding"));
    m_ui.Playlist2->FPlaylist->setModel(&core.playlists().list(2));
    m_ui.Playlist2->FPlaylist->setSelectionModel(&core.playlists().list(2).selection());
    connectWindow();
}

void Playlist2Binding::connectWindow() {
    TavoMP3Playlist2* window = m_ui.Playlist2;
    PlaylistManager& playlists = m_core.playlists();
    PlaybackController& playback = m_core.playback();
    connect(m_ui.BPlaylist2, &SkinControl::clicked, this,
            command("BPlaylist2_Click", [this] { BPlaylist2Click(); }));
    connect(&playlists, &PlaylistManager::actPlaylistChanged, this, [window](int n, const QString& file) {
        if (n != 1)
            window->FActPlaylist->setText(file);
    });
    connect(window, &TavoMP3Playlist2::openClicked, this, command("BPLOpen_Click", [window, &playlists] {
                playlists.OpenPlaylist(2);
                window->FPlaylist->viewport()->update();
            }));
    connect(window, &TavoMP3Playlist2::saveClicked, this,
            command("BPLSave_Click", [&playlists] { playlists.SavePlaylistCommand(2); }));
    connect(window, &TavoMP3Playlist2::rowClicked, this, [this, &playback](int row) {
        handle(QStringLiteral("FPlaylist_Click"), [this, &playback, row](int& line) {
            line = 1;
            if (!m_ui.PL[2]->isChecked())
                m_ui.PL[2]->setChecked(true); // PL(1) goes off with it: the second playlist is active
            line = 2;
            playback.playFromList2(row);
        });
    });
    connect(window, &TavoMP3Playlist2::enterPressed, this, [this, &playback](int row) {
        handle(QStringLiteral("FPlaylist_KeyDown"), [&playback, row](int& line) {
            line = 1;
            playback.playFromList2(row);
        });
    });
    connect(window, &TavoMP3Playlist2::deletePressed, this, [this] {
        handle(QStringLiteral("FPlaylist_KeyDown"), [this](int& line) {
            line = 2;
            m_core.editor().DeleteSelectedSongs(2);
        });
    });
    connect(window, &TavoMP3Playlist2::spacePressed, this, [this, &playback] {
        handle(QStringLiteral("FPlaylist_KeyDown"), [&playback](int& line) {
            line = 3;
            playback.skipAhead();
        });
    });
    connect(window, &TavoMP3Playlist2::textDropped, this,
            [this, &playlists](const QString& text, qint32 row, int effect) {
                handle(QStringLiteral("FPlaylist_OLEDragDrop"), [&](int& line) {
                    line = 1;
                    playlists.AddDragDropToPL2(text, row, effect);
                    line = 2;
                    playlists.FuncDisplayPlaylist(true, 2);
                });
            });
    connect(window->ShutdownOnPL2End, &QCheckBox::toggled, this,
            [&playback](bool on) { playback.setShutdownOnList2End(on); });
    connect(&playback, &PlaybackController::dockRequested, this, &Playlist2Binding::dockPlaylist2);
}

void Playlist2Binding::BPlaylist2Click() {
    TavoMP3Playlist2* window = m_ui.Playlist2;
    if (!window->isVisible()) {
        m_ui.PL[2]->setChecked(true);
        placePlaylist2();
        window->show();
        window->PL2Visible = true;
    } else {
        window->hide();
        window->PL2Visible = false;
        m_ui.PL[1]->setChecked(true);
    }
    m_ui.FPlaylist->viewport()->update();
}

void Playlist2Binding::dockPlaylist2() {
    if (!m_ui.Playlist2->isVisible())
        return;
    const QString position = QString::number(m_window.x()) + QString::number(m_window.y());
    if (position != m_lastDockedPosition)
        placePlaylist2();
    m_lastDockedPosition = position;
    if (m_window.isMinimized())
        m_ui.Playlist2->hide();
}

void Playlist2Binding::placePlaylist2() {
    // Its left edge touches the main window's right edge, outer frames included.
    const QRect frame = m_window.frameGeometry();
    m_ui.Playlist2->move(frame.x() + frame.width(), frame.y());
}

void Playlist2Binding::mainWindowActivated() {
    if (m_ui.Playlist2->PL2Visible)
        m_ui.Playlist2->setVisible(true);
}

QString Playlist2Binding::loadPlaylist2(const QString& file) {
    if (file == QLatin1String("0") || file.isEmpty())
        return QString();
    m_core.playlists().setActPlaylist(2, file);
    return m_core.playlists().FuncReadPlaylistAndDisplay(file, true, 2);
}
