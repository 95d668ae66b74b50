#include "app/TavoMP3PlayerMain.h"

#include "app/MainWindowColours.h"
#include "app/Playlist2Binding.h"
#include "app/PlaylistBinding.h"
#include "app/ReportsBinding.h"
#include "app/SecondaryWindows.h"
#include "app/SleepBinding.h"
#include "app/TransportBinding.h"
#include "app/TrayBinding.h"
#include "app/TrayModule.h"
#include "base/AppGlobals.h"
#include "base/ErrorReport.h"
#include "base/StatusLine.h"
#include "player/PlayerLink.h"
#include "program/ProgramCore.h"
#include "ui/AccessibleFactory.h"
#include "ui/AppIcon.h"
#include "ui/AutomationIds.h"
#include "ui/BackgroundPicture.h"
#include "ui/DirectoryField.h"
#include "ui/TavoMP3Settings.h"
#include "ui/TavoSlider.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QCoreApplication>
#include <QLabel>
#include <QListView>
#include <QMouseEvent>
#include <QProcess>
#include <QRadioButton>

namespace {
const QString kSettings = QStringLiteral("Settings");
}

TavoMP3PlayerMain::TavoMP3PlayerMain(ProgramCore& core, QWidget* parent)
    : QMainWindow(parent), m_core(core), m_skins(m_ui, *this, core.services().status), m_applier(core, m_ui) {
    AccessibleFactory::install();
    setObjectName(QStringLiteral("TavoMP3PlayerMain"));
    setWindowTitle(QStringLiteral("Tavo MP3 Player!"));
    setWindowIcon(AppIcon::make());
    setMouseTracking(true);
    m_ui.setupUi(this);
    // The order of the bindings is the order of their slots on shared signals: the playlist label of
    // the main window before the second playlist's, the position slider before the song lengths.
    m_windows = new SecondaryWindows(core, m_ui, *this, m_applier, m_skins);
    m_tray = new TrayBinding(core, m_ui, *this);
    m_colours = new MainWindowColours(core, m_ui, *this, *m_windows);
    m_playlist = new PlaylistBinding(core, m_ui, *this, *m_windows);
    m_sleep = new SleepBinding(core, m_ui, *this);
    m_reports = new ReportsBinding(core, m_ui, *this);
    m_transport = new TransportBinding(core, m_ui, *this);
    m_playlist2 = new Playlist2Binding(core, m_ui, *this);
    AutomationIds::apply(this);
}

TavoMP3PlayerMain::~TavoMP3PlayerMain() = default;

void TavoMP3PlayerMain::LoadActivePreset() {
    const QString active =
        m_core.services().settings.GetSetting(kSettings, QStringLiteral("ActivePreset"), QStringLiteral("0"));
    m_windows->settingsWindow()->LoadPreset(active, QStringLiteral("PlayerMainSetColorAll"));
}

void TavoMP3PlayerMain::load() {
    SavedSession& session = m_core.session();
    ErrorReport::guard(
        m_core.services().dialogs, QStringLiteral("Player Form Load"), [this, &session](int& line) {
            line = 2;
            m_ui.Version->setText(QStringLiteral("Version ") + QString::number(TAVO_VERSION_MAJOR) +
                                  QLatin1Char('.') + QString::number(TAVO_VERSION_MINOR));
            line = 3;
            // The built-in frame reader replaces the optional classic library, so the bitrate report
            // and the diagram always stay visible.
            line = 5;
            for (QLabel* l : {m_ui.lblTrackName, m_ui.lblTime, m_ui.LMP3Bitrate, m_ui.LMP3Samplerate})
                l->clear();
            m_core.sleepMode().clearLabel();
            m_core.sleepMode().SleepTimeChoice = m_ui.FSleepmodeTime->currentText();

            line = 6;
            LoadActivePreset();
            m_ui.background->load(
                m_core.services().settings.GetSetting(kSettings, QStringLiteral("BGImagePath"), QString()));
            m_ui.TavoSlider1->SetValue(QStringLiteral("SliderWidth"), 5860);

            line = 7;
            session.readFilesAndPaths();
            session.readShuffle();
            session.readVolume(); // shown; the player hears it only when the volume moves
            m_colours->showModeIndicators();
            session.readHistory();
            m_colours->UpdateColors();

            line = 9;
            session.setIncomplete(session.isIncomplete());
            QString lastLoad;
            if (session.settingsIncomplete()) {
                m_windows->showSettingsWindow(
                    QStringLiteral("Bitte füllen Sie alle Felder aus und speichen die Einstellungen!"));
            } else {
                line = 10;
                lastLoad = loadPlayerAndPlaylists();
            }

            line = 11;
            m_core.updateSchedule().load();
            line = 12;
            show();
            line = 13;
            m_tray->tray().add(TrayModule::idleTip());
            line = 14;
            m_core.services().status.setText(lastLoad);
            show();
            m_ui.FPlaylist->setFocus();
            line = 15;
            m_core.playback().transport().UpdatePreviousMenu();
            if (AppGlobals::PlayOnStart)
                m_core.requestPlayMode();
            line = 17;
            m_skins.SetupSkins();
        });
    session.rememberUnread(m_ui.FBrowsePath->text());
}

QString TavoMP3PlayerMain::loadPlayerAndPlaylists() {
    SavedSession& session = m_core.session();
    PlaylistManager& playlists = m_core.playlists();
    // A player that has to be started first is connected to in the background (MpvLink), so the
    // window is not held back by it.
    m_core.startPlayer(session.WinampPath);
    m_ui.FBrowsePath->setText(session.UserMP3Directory);
    session.markRead(kSettings, QStringLiteral("UserMP3Directory"));
    QString lastLoad;
    const QString& file = session.PlaylistFile;
    if (file != QLatin1String("0") && !file.isEmpty()) {
        playlists.setActPlaylist(1, file);
        lastLoad = playlists.FuncReadPlaylistAndDisplay(file, true, 1);
        const qint32 position = m_core.playback().state().PlaylistPosition;
        if (position >= 0 && position < playlists.list(1).count())
            playlists.list(1).selectOnly(position);
    } else {
        playlists.setActPlaylist(1, QString());
    }
    session.markRead(kSettings, QStringLiteral("PlaylistFile"));
    m_ui.PL[1]->setChecked(true);
    // The status shows the last load: that of the second playlist when it has one.
    if (const QString text2 = m_playlist2->loadPlaylist2(session.PlaylistFile2); !text2.isEmpty())
        lastLoad = text2;
    return lastLoad;
}

void TavoMP3PlayerMain::showAfterStart(bool showWindow) {
    m_tray->showAfterStart(showWindow);
}

void TavoMP3PlayerMain::restoreFromDesktop() {
    m_tray->restoreWindow(true);
}

bool TavoMP3PlayerMain::closeMainWindow() {
    Dialogs& dialogs = m_core.services().dialogs;
    // A store that cannot be written is reported and the close goes on: its old file is kept whole.
    ErrorReport::guard(dialogs, QStringLiteral("Player Form QueryUnload"), [this](int& line) {
        line = 1;
        m_core.session().writeOnClose(x(), y(), m_ui.FBrowsePath->text());
    });
    // A save the user asked for that fails (folder gone, read-only disk, stick pulled) keeps the
    // window open with the list as it is, so that it can be saved elsewhere.
    bool proceed = false;
    ErrorReport::guard(dialogs, QStringLiteral("Player Form QueryUnload"), [this, &proceed](int& line) {
        line = 2;
        proceed = m_core.playlists().AskSaveBeforeClose();
    });
    return proceed;
}

void TavoMP3PlayerMain::closeEvent(QCloseEvent* event) {
    if (m_closing) {
        event->accept();
        return;
    }
    // A close that arrives while a long build paints the window waits for the new list, so that the
    // save question is about the list the user will keep.
    PlaylistBuilder& builder = m_core.builder();
    if (builder.isRunning()) {
        event->ignore();
        connect(&builder, &PlaylistBuilder::finished, this, &QWidget::close,
                Qt::ConnectionType(Qt::QueuedConnection | Qt::UniqueConnection | Qt::SingleShotConnection));
        return;
    }
    if (!closeMainWindow()) {
        event->ignore();
        return;
    }
    m_closing = true;
    m_tray->tray().remove();
    m_core.playback().player().WinampCommand(PlayerLink::CloseCommand);
    event->accept();
    if (AppGlobals::StartUpdaterOnExit)
        QProcess::startDetached(AppGlobals::UpdaterPath, {});
    QCoreApplication::exit(0);
}

void TavoMP3PlayerMain::mouseMoveEvent(QMouseEvent* event) {
    // The classic window received the icon's notifications as mouse moves, the code in X; a real
    // movement at those coordinates acts the same, and the window keeps that behaviour.
    m_skins.ResetSkinHover();
    const QPoint at = event->position().toPoint();
    m_tray->TrayNotification(at.x(), at.y());
    QMainWindow::mouseMoveEvent(event);
}

void TavoMP3PlayerMain::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        if (isVisible())
            m_ui.FPlaylist->setFocus();
        m_playlist2->mainWindowActivated();
    }
    // Minimized, only the notification-area icon is left; without a notification area the window
    // stays minimized in the task bar, the only way back to it.
    if (event->type() == QEvent::WindowStateChange && isMinimized())
        m_tray->windowMinimized();
    QMainWindow::changeEvent(event);
}
