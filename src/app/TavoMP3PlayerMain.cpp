#include "app/TavoMP3PlayerMain.h"
#include "app/TrayModule.h"
#include "ui/AccessibleFactory.h"
#include "ui/AppIcon.h"
#include "ui/AutomationIds.h"
#include "ui/DirectoryField.h"
#include "ui/TavoMP3Settings.h"
#include "ui/TavoSlider.h"

#include "base/AppGlobals.h"
#include "base/Checked.h"
#include "base/ErrorReport.h"
#include "base/SettingsStore.h"
#include "base/StatusLine.h"
#include "ui/SkinControl.h"
#include "update/UpdateCheckSchedule.h"

#include <QAction>
#include <QCloseEvent>
#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QKeyEvent>
#include <QLabel>
#include <QListView>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>

namespace {
const QString kSettings = QStringLiteral("Settings");
}

TavoMP3PlayerMain::TavoMP3PlayerMain(Services& services, QWidget* parent)
    : QMainWindow(parent), m_services(services), m_playlists(services, this),
      m_builder(services, m_playlists, m_lister, this), m_editor(services, m_playlists),
      m_search(services, m_playlists), m_updateSchedule(new UpdateCheckSchedule(services.settings, this)) {
    AccessibleFactory::install();
    m_updateSchedule->setErrorReport(services.dialogs);
    setObjectName(QStringLiteral("TavoMP3PlayerMain"));
    setWindowTitle(QStringLiteral("Tavo MP3 Player!"));
    setWindowIcon(AppIcon::make());
    setMouseTracking(true);
    buildLayout();
    buildMenus();
    buildTrayMenu();
    buildUpdateMenus();
    buildAppearance();
    connectHandlers();
    connectSleepControls();
    connectPlaylistTools();
    connectUpdateHandlers(); // after the list's context menu exists
    connectReports();
    setUpPlayback();
    connectPositionSlider();
    connectPlayback();
    connectPlaylist2();
    rememberSongLengths();
    AutomationIds::apply(this);
}

TavoMP3PlayerMain::~TavoMP3PlayerMain() = default;

void TavoMP3PlayerMain::handle(const QString& place, const std::function<void(int& line)>& body) {
    ErrorReport::guard(m_services.dialogs, place, body);
}

void TavoMP3PlayerMain::connectHandlers() {
    connect(&m_services.status, &StatusLine::textChanged, FStatus, &QLabel::setText);
    connect(&m_playlists, &PlaylistManager::actPlaylistChanged, this, [this](int n, const QString& file) {
        if (n == 1)
            FActPlaylist->setText(file);
    });

    auto open = [this] {
        handle(QStringLiteral("OpenPlaylist"), [this](int& line) {
            line = 1;
            m_playlists.OpenPlaylist(1);
        });
    };
    auto save = [this] {
        handle(QStringLiteral("SavePlaylist"), [this](int& line) {
            line = 1;
            m_playlists.SavePlaylistCommand(1);
        });
    };
    auto saveAs = [this] {
        handle(QStringLiteral("SavePlaylistAs"), [this](int& line) {
            line = 1;
            m_playlists.FuncSavePlaylistAs(1);
            line = 2;
            m_playlists.PlaylistChanged = false; // also after a cancelled dialog
        });
    };
    connect(BPLOpen, &QPushButton::clicked, this, open);
    connect(MenuDateiOpenPlaylist, &QAction::triggered, this, open);
    connect(BPLSave, &QPushButton::clicked, this, save);
    connect(MenuDateiSavePlaylist, &QAction::triggered, this, save);
    connect(MenuDateiPlaylistSaveAs, &QAction::triggered, this, saveAs);
    connect(MenuDateiBeenden, &QAction::triggered, this, &QWidget::close);
}

void TavoMP3PlayerMain::load() {
    m_readOnLoad = {QStringLiteral("Screen/FormPositionLeft"), QStringLiteral("Screen/FormPositionTop")};
    handle(QStringLiteral("Player Form Load"), [this](int& line) {
        line = 2;
        Version->setText(QStringLiteral("Version ") + QString::number(TAVO_VERSION_MAJOR) + QLatin1Char('.') +
                         QString::number(TAVO_VERSION_MINOR));
        line = 3;
        // The built-in frame reader replaces the optional classic library, so the bitrate
        // report and the diagram always stay visible.
        MP3InfoAvailable = true;
        line = 5;
        for (QLabel* l : {lblTrackName, lblTime, LMP3Bitrate, LMP3Samplerate})
            l->clear();
        m_sleep.clearLabel();
        m_sleep.SleepTimeChoice = FSleepmodeTime->currentText();

        line = 6;
        LoadActivePreset();
        LoadBGImage(m_services.settings.GetSetting(kSettings, QStringLiteral("BGImagePath"), QString()));
        TavoSlider1->SetValue(QStringLiteral("SliderWidth"), 5860);

        line = 7;
        SettingsStore& s = m_services.settings;
        const QString playlistFile =
            s.GetSetting(kSettings, QStringLiteral("PlaylistFile"), QStringLiteral("0"));
        const QString playlistFile2 =
            s.GetSetting(kSettings, QStringLiteral("PlaylistFile2"), QStringLiteral("0"));
        UserMP3Directory = s.GetSetting(kSettings, QStringLiteral("UserMP3Directory"), QStringLiteral("0"));
        PlaylistPosition =
            Checked::textToInt32(s.GetSetting(kSettings, QStringLiteral("CurrentPlaylistPosition"), 0));
        markRead(kSettings, QStringLiteral("CurrentPlaylistPosition"));
        WinampPath = s.GetSetting(kSettings, QStringLiteral("WinampPath"), QStringLiteral("0"));
        m_playlists.DialogLastpath =
            s.GetSetting(kSettings, QStringLiteral("DialogLastpath"),
                         QDir::toNativeSeparators(QDir::homePath() + QLatin1Char('/')));
        markRead(kSettings, QStringLiteral("DialogLastpath"));
        readPlaybackSettings();
        UpdateColors();

        line = 9;
        // An empty player path is accepted; only a never-configured one ("0") is incomplete.
        SettingsIncomplete = WinampPath == QLatin1String("0") || UserMP3Directory == QLatin1String("0") ||
                             UserMP3Directory.isEmpty();
        QString lastLoad;
        if (SettingsIncomplete) {
            showSettingsWindow(
                QStringLiteral("Bitte füllen Sie alle Felder aus und speichen die Einstellungen!"));
        } else {
            line = 10;
            // A player that has to be started first is connected to in the background (MpvLink), so
            // the window is not held back by it.
            startPlayer();
            FBrowsePath->setText(UserMP3Directory);
            markRead(kSettings, QStringLiteral("UserMP3Directory"));
            if (playlistFile != QLatin1String("0") && !playlistFile.isEmpty()) {
                m_playlists.setActPlaylist(1, playlistFile);
                lastLoad = m_playlists.FuncReadPlaylistAndDisplay(playlistFile, true, 1);
                if (PlaylistPosition >= 0 && PlaylistPosition < m_playlists.list(1).count())
                    m_playlists.list(1).selectOnly(PlaylistPosition);
            } else {
                m_playlists.setActPlaylist(1, QString());
            }
            markRead(kSettings, QStringLiteral("PlaylistFile"));
            PL[1]->setChecked(true);
            // The status shows the last load: that of the second playlist when it has one.
            if (const QString text2 = loadPlaylist2(playlistFile2); !text2.isEmpty())
                lastLoad = text2;
        }

        line = 11;
        m_updateSchedule->load();
        line = 12;
        show();
        line = 13;
        m_tray->add(TrayModule::idleTip());
        line = 14;
        m_services.status.setText(lastLoad);
        show();
        FPlaylist->setFocus();
        line = 15;
        finishPlaybackLoad();
        line = 17;
        SetupSkins();
    });
    rememberUnreadSettings();
}

QList<SettingsStore::Entry> TavoMP3PlayerMain::settingsOnClose() const {
    const QString screen = QStringLiteral("Screen");
    QList<SettingsStore::Entry> entries{
        {kSettings, QStringLiteral("PlaylistFile"), FActPlaylist->text()},
        {kSettings, QStringLiteral("UserMP3Directory"), FBrowsePath->text()},
        // Written for compatibility only; the window always opens at its design position.
        {screen, QStringLiteral("FormPositionLeft"), QString::number(x())},
        {screen, QStringLiteral("FormPositionTop"), QString::number(y())},
        {kSettings, QStringLiteral("ShuffleStatus"), Checked::boolText(ShuffleStatus)},
        {kSettings, QStringLiteral("CurrentPlaylistPosition"), QString::number(PlaylistPosition)},
        {kSettings, QStringLiteral("Volume"), QString::number(sldVol->value())},
        {kSettings, QStringLiteral("DialogLastpath"), m_playlists.DialogLastpath}};
    entries << m_history.entries();
    return entries;
}

void TavoMP3PlayerMain::markRead(const QString& section, const QString& key) {
    m_readOnLoad.insert(section + QLatin1Char('/') + key);
}

void TavoMP3PlayerMain::rememberUnreadSettings() {
    // A value the load did not get to (a garbage volume stops it early) is only a default in the
    // window: writing it back at close would replace the user's playlist path or music folders
    // with nothing. Such a value is written again once the user has changed it.
    m_unreadOnLoad.clear();
    for (const SettingsStore::Entry& e : settingsOnClose()) {
        const QString id = e.section + QLatin1Char('/') + e.key;
        if (!m_readOnLoad.contains(id))
            m_unreadOnLoad.insert(id, e.value);
    }
}

void TavoMP3PlayerMain::writeSettingsOnClose() {
    QList<SettingsStore::Entry> entries;
    for (const SettingsStore::Entry& e : settingsOnClose()) {
        const auto unread = m_unreadOnLoad.constFind(e.section + QLatin1Char('/') + e.key);
        if (unread == m_unreadOnLoad.constEnd() || unread.value() != e.value)
            entries.append(e);
    }
    m_services.settings.SaveSettings(entries);
}

bool TavoMP3PlayerMain::closeMainWindow() {
    // A store that cannot be written is reported and the close goes on: its old file is kept whole.
    handle(QStringLiteral("Player Form QueryUnload"), [this](int& line) {
        line = 1;
        writeSettingsOnClose();
    });
    // A save the user asked for that fails (folder gone, read-only disk, stick pulled) keeps the
    // window open with the list as it is, so that it can be saved elsewhere.
    bool proceed = false;
    handle(QStringLiteral("Player Form QueryUnload"), [this, &proceed](int& line) {
        line = 2;
        proceed = m_playlists.AskSaveBeforeClose();
    });
    return proceed;
}

void TavoMP3PlayerMain::closeEvent(QCloseEvent* event) {
    if (m_closing) {
        event->accept();
        return;
    }
    if (!closeMainWindow()) {
        event->ignore();
        return;
    }
    m_closing = true;
    m_tray->remove();
    closePlayer();
    event->accept();
    if (AppGlobals::StartUpdaterOnExit)
        QProcess::startDetached(AppGlobals::UpdaterPath, {});
    QCoreApplication::exit(0);
}

TavoMP3Settings* TavoMP3PlayerMain::showSettingsWindow(const QString& hint) {
    TavoMP3Settings* w = settingsWindow();
    w->open();
    if (!hint.isEmpty())
        w->FStatus->setText(hint);
    return w;
}

void TavoMP3PlayerMain::FuncSetEnv() {
    SettingsStore& s = m_services.settings;
    WinampPath = s.GetSetting(kSettings, QStringLiteral("WinampPath"), QStringLiteral("0"));
    UserMP3Directory = s.GetSetting(kSettings, QStringLiteral("UserMP3Directory"), QStringLiteral("0"));
}

void TavoMP3PlayerMain::keyPressEvent(QKeyEvent* event) {
    // Remembered as the classic 16-bit key code (Escape = 27), which the bitrate report polls.
    const int key = event->key() == Qt::Key_Escape ? 27 : event->key();
    LastKeyCode = static_cast<qint16>(key & 0x7FFF);
    QMainWindow::keyPressEvent(event);
}
