// The transport row, the history menu and the wiring of the playback core: song selection,
// transport commands, the monitor timers and the player link.
#include "app/TavoMP3PlayerMain.h"
#include "app/TrayModule.h"
#include "base/AppGlobals.h"
#include "base/Checked.h"
#include "base/SettingsStore.h"
#include "base/StatusLine.h"
#include "player/MpvLink.h"
#include "playback/PlaybackMonitor.h"
#include "playback/Transport.h"
#include "playback/SongSelection.h"
#include "playlist/widgets/PriorityFrame.h"
#include "ui/SkinControl.h"

#include <QAction>
#include <QCursor>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>

namespace {

const QString kSettings = QStringLiteral("Settings");

SkinControl* transportButton(QWidget* parent, const char* name, const QString& caption) {
    auto* b = new SkinControl(caption, parent);
    b->setObjectName(QLatin1String(name));
    b->setMinimumSize(86, 24);
    // Reached with Tab; a click leaves the focus on the playlist.
    b->setFocusPolicy(Qt::TabFocus);
    return b;
}

// Mouse buttons on a control, wherever on it they go down and come up. The volume slider's own
// pressed/released signals only come for its handle; a click into the groove moves the volume too.
class MouseButtons : public QObject {
public:
    MouseButtons(QWidget* control, std::function<void()> onPress, std::function<void()> onRelease)
        : QObject(control), m_onPress(std::move(onPress)), m_onRelease(std::move(onRelease)) {
        control->installEventFilter(this);
    }
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonPress)
            m_onPress();
        else if (event->type() == QEvent::MouseButtonRelease)
            m_onRelease();
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<void()> m_onPress;
    std::function<void()> m_onRelease;
};

// Clicks on the indicator labels, which are plain labels of the display panel.
class LabelClicks : public QObject {
public:
    LabelClicks(QLabel* label, std::function<void()> onClick)
        : QObject(label), m_onClick(std::move(onClick)) {
        label->installEventFilter(this);
        label->setCursor(Qt::PointingHandCursor);
    }
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonRelease &&
            static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton)
            m_onClick();
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<void()> m_onClick;
};

} // namespace

QBoxLayout* TavoMP3PlayerMain::buildTransportControls(QWidget* parent) {
    auto* row = new QHBoxLayout;
    row->setObjectName(QStringLiteral("transportRow"));
    BLast = transportButton(parent, "BLast", QStringLiteral("Previous"));
    BStop = transportButton(parent, "BStop", QStringLiteral("Stop"));
    BPlay = transportButton(parent, "BPlay", QStringLiteral("Play"));
    BPause = transportButton(parent, "BPause", QStringLiteral("Pause"));
    BNext = transportButton(parent, "BNext", QStringLiteral("Next"));
    for (SkinControl* b : {BLast, BStop, BPlay, BPause, BNext})
        row->addWidget(b);
    row->addSpacing(12);
    Label3 = new QLabel(QStringLiteral("Volume"), parent);
    Label3->setObjectName(QStringLiteral("Label3"));
    sldVol = new QSlider(Qt::Horizontal, parent);
    sldVol->setObjectName(QStringLiteral("sldVol"));
    sldVol->setRange(0, 255);
    sldVol->setValue(200);
    sldVol->setMinimumWidth(110);
    sldVol->setAccessibleName(QStringLiteral("Lautstärke"));
    Label3->setBuddy(sldVol);
    row->addWidget(Label3);
    row->addWidget(sldVol, 1);
    row->addSpacing(12);
    Label13 = new QLabel(QStringLiteral("Aktive Playliste:"), parent);
    Label13->setObjectName(QStringLiteral("Label13"));
    row->addWidget(Label13);
    for (int i = 1; i <= 2; ++i) {
        PL[i] = new QRadioButton(QString::number(i), parent);
        PL[i]->setObjectName(QStringLiteral("PL(%1)").arg(i));
        PL[i]->setFocusPolicy(Qt::TabFocus);
        PL[i]->setAccessibleName(QStringLiteral("Playliste %1 aktiv").arg(i));
        row->addWidget(PL[i]);
    }
    PL[1]->setChecked(true);
    return row;
}

void TavoMP3PlayerMain::setUpPlayback() {
    // The display labels the monitor fills must not be squeezed below their widest text.
    const QFontMetrics metrics(LMP3Bitrate->font());
    LMP3Bitrate->setMinimumWidth(metrics.horizontalAdvance(QStringLiteral("320 kbps")) + 6);
    LMP3Samplerate->setMinimumWidth(metrics.horizontalAdvance(QStringLiteral("48 kHz")) + 6);
    FTest2->setMinimumWidth(metrics.horizontalAdvance(QStringLiteral("Winamp Status = 3 / Playmode = 1")) +
                            6);
    m_player = m_services.player;
    if (!m_player) // only where no player was provided (tests of other parts): a link never started
        m_player = new MpvLink(m_services.status, m_services.dialogs, QString(), this);
    m_selection = new SongSelection(m_services, m_playlists, *m_player, *this, m_history, this);
    m_transport = new Transport(m_playlists, *m_player, *this, m_history, *m_selection, this);
    m_monitor = new PlaybackMonitor(m_playlists, *m_player, *this, *m_selection, m_services.status,
                                    m_services.dialogs, this);
    // A hit of the quick search is marked like any other chosen song.
    m_search.SelectSong = [this](qint32 position) { m_selection->SelectSong(position, 1); };

    // The hidden history menu, popped up by BLast.
    MenuPrevHead = new QMenu(QStringLiteral("Prev"), this);
    MenuPrevHead->setObjectName(QStringLiteral("MenuPrevHead"));
    for (int i = 1; i <= PrevSongs::kSlots; ++i) {
        MenuPrev[i] = MenuPrevHead->addAction(QStringLiteral("..."));
        MenuPrev[i]->setObjectName(QStringLiteral("MenuPrev(%1)").arg(i));
        MenuPrev[i]->setVisible(i == 1);
        connect(MenuPrev[i], &QAction::triggered, this, [this, i] {
            handle(QStringLiteral("MenuPrev_Click"), [this, i](int& line) {
                line = 1;
                m_transport->PlayPrevious(i);
            });
        });
    }
}

void TavoMP3PlayerMain::connectPlayback() {
    auto command = [this](const char* place, std::function<void()> body) {
        return [this, place, body] {
            handle(QLatin1String(place), [&body](int& line) {
                line = 1;
                body();
            });
        };
    };
    auto play = command("BPlay_Click", [this] {
        // The selected line of the active list: its current row, -1 when there is none.
        m_transport->Play(m_playlists.list(mainPlaylistActive ? 1 : 2).currentRow());
    });
    auto pause = command("BPause_Click", [this] { m_transport->Pause(); });
    auto stop = command("BStop_Click", [this] { m_transport->Stop(); });
    auto next = command("BNext_Click", [this] { m_transport->Next(); });
    auto shuffle = command("lblShuffle_Click", [this] { m_transport->ShuffleClick(); });
    connect(BPlay, &SkinControl::clicked, this, play);
    connect(BPause, &SkinControl::clicked, this, pause);
    connect(BStop, &SkinControl::clicked, this, stop);
    connect(BNext, &SkinControl::clicked, this, next);
    connect(MenuPlay, &QAction::triggered, this, play);
    connect(MenuPause, &QAction::triggered, this, pause);
    connect(MenuStop, &QAction::triggered, this, stop);
    connect(MenuNext, &QAction::triggered, this, next);
    connect(MenuShuffleStatus, &QAction::triggered, this, shuffle);
    connect(MenuPrevious, &QAction::triggered, this,
            command("MenuPrevious_Click", [this] { m_transport->Previous(); }));
    connect(BLast, &SkinControl::clicked, this,
            command("BLast_Click", [this] { MenuPrevHead->popup(QCursor::pos()); }));
    new LabelClicks(lblShuffle, shuffle);
    new LabelClicks(LAutoCue, command("LAutoCue_Click", [this] { m_transport->AutoCueClick(); }));
    // Double click or Enter on a line plays it.
    connect(FPlaylist, &QAbstractItemView::activated, this, command("FPlaylist_DblClick", [this] {
                PL[1]->setChecked(true);
                m_transport->Play(m_playlists.list(1).currentRow());
            }));
    connect(&m_playlists.list(1).selection(), &QItemSelectionModel::currentChanged, FPlaylist,
            [this](const QModelIndex& current) { FPlaylist->scrollTo(current); });

    connect(PL[1], &QRadioButton::toggled, this, [this](bool on) { mainPlaylistActive = on; });

    connect(sldVol, &QSlider::valueChanged, this,
            command("sldVol_Change", [this] { m_transport->VolumeMoved(sldVol->value()); }));
    new MouseButtons(sldVol, command("sldVol_MouseDown", [this] { m_transport->VolumePressed(); }),
                     command("sldVol_MouseUp", [this] {
                         m_transport->VolumeReleased();
                         m_monitor->VolumeReleased();
                     }));
    connect(m_transport, &Transport::volumeCaption, this,
            [this](const QString& text) { m_monitor->setText(PlaybackMonitor::TrackName, text); });

    connect(m_transport, &Transport::focusPlaylistRequested, this, [this] {
        if (FPlaylist->isVisible())
            FPlaylist->setFocus();
    });
    connect(m_transport, &Transport::indicatorsChanged, this, &TavoMP3PlayerMain::showModeIndicators);
    connect(m_selection, &SongSelection::indicatorsChanged, this, &TavoMP3PlayerMain::showModeIndicators);
    connect(m_monitor, &PlaybackMonitor::indicatorsChanged, this, &TavoMP3PlayerMain::showModeIndicators);
    connect(m_selection, &SongSelection::historyChanged, m_transport, &Transport::UpdatePreviousMenu);
    connect(m_selection, &SongSelection::testTextChanged, FTest, &QLabel::setText);
    connect(m_selection, &SongSelection::songStarted, this,
            [this](const QString& name) { m_tray->modify(TrayModule::songTip(name)); });
    connect(m_transport, &Transport::previousMenuChanged, this,
            [this](const QStringList& captions, const QList<bool>& visible) {
                for (int i = 1; i <= PrevSongs::kSlots; ++i) {
                    MenuPrev[i]->setText(captions.at(i - 1));
                    MenuPrev[i]->setVisible(visible.at(i - 1));
                }
            });
    connect(&m_playlists, &PlaylistManager::historyResetRequested, m_transport, &Transport::ResetPrevSongs);
    connect(m_transport, &Transport::priorityDisplayRefreshRequested, Frame1, &PriorityFrame::clearChoice);

    QLabel* labels[] = {lblTrackName, lblTime, LMP3Bitrate, LMP3Samplerate, FTest2};
    connect(m_monitor, &PlaybackMonitor::textChanged, this,
            [labels](PlaybackMonitor::Label label, const QString& text) { labels[label]->setText(text); });
    connect(m_monitor, &PlaybackMonitor::shutdownRequested, this, [this] { ShutdownComputer(); });
    m_monitor->tmrTime.start();
}

void TavoMP3PlayerMain::showModeIndicators() {
    ShuffleOn = ShuffleStatus;
    AutoCueOn = AutoCue;
    MenuShuffleStatus->setChecked(ShuffleStatus);
    UpdateColors();
}

void TavoMP3PlayerMain::readPlaybackSettings() {
    SettingsStore& s = m_services.settings;
    ShuffleStatus = Checked::textToBool(
        s.GetSetting(kSettings, QStringLiteral("ShuffleStatus"), QStringLiteral("False")));
    markRead(kSettings, QStringLiteral("ShuffleStatus"));
    const QSignalBlocker quiet(sldVol); // the player hears the volume only when the slider moves
    sldVol->setValue(
        Checked::textToByte(s.GetSetting(kSettings, QStringLiteral("Volume"), QStringLiteral("200"))));
    markRead(kSettings, QStringLiteral("Volume"));
    showModeIndicators();
    m_history.read(s);
    for (const SettingsStore::Entry& e : m_history.entries())
        markRead(e.section, e.key);
}

void TavoMP3PlayerMain::startPlayer() {
    if (!m_services.player)
        return;
    // mpv starts at its own 100 %: one this program starts begins at the slider's volume instead.
    m_player->setStartVolume(quint8(sldVol->value()));
    m_player->StartWinamp(WinampPath);
}

void TavoMP3PlayerMain::finishPlaybackLoad() {
    m_transport->UpdatePreviousMenu();
    if (AppGlobals::PlayOnStart && m_playlists.list(1).count() > 0 && !SettingsIncomplete)
        PlayMode = 1;
}

void TavoMP3PlayerMain::closePlayer() {
    m_player->WinampCommand(PlayerLink::CloseCommand);
}
