#pragma once

#include "appearance/ColorRoles.h"
#include "appearance/SettingsWindowHost.h"
#include "base/Services.h"
#include "base/SettingsStore.h"
#include "playback/PlaybackState.h"
#include "playback/PrevSongs.h"
#include "playlist/FolderLister.h"
#include "playlist/PlaylistBuilder.h"
#include "playlist/PlaylistEntryEditor.h"
#include "playlist/PlaylistManager.h"
#include "playlist/QuickSearch.h"
#include "power/SleepMode.h"
#include "ui/SliderHost.h"
#include "update/UpdateConfig.h"

#include <QHash>
#include <QMainWindow>
#include <QPointer>
#include <QSet>

class BackgroundPicture;
class ClickLabel;
class PlaybackMonitor;
class PlayerLink;
class QRadioButton;
class SongSelection;
class Transport;
class DirectoryField;
class QAction;
class TrayModule;
class TavoMP3Settings;
class QCheckBox;
class QComboBox;
class QBoxLayout;
class QFrame;
class QLabel;
class QListView;
class QMenu;
class QPushButton;
class SkinControl;
class TavoSlider;
class QSlider;
class TavoMP3About;
class TavoMP3ID3;
class TavoMP3News;
class TavoMP3Update;
class UpdateCheckSchedule;
class QVBoxLayout;
class PriorityFrame;
class PriorityMenu;
class TavoMP3QuickSearch;
class PlaylistKeyFilter;
class TavoxMiniDiagram;
class TavoMP3Playlist2;

// The program's main window. The playlists and other state live in core objects it owns; the
// window builds the controls under their design names and forwards events to the core.
// The playback fields of the window (PlayMode, PlaylistPosition, ShuffleStatus, ...) come from
// PlaybackState, which the playback core works on.
class TavoMP3PlayerMain : public QMainWindow,
                          public SettingsWindowHost,
                          public PlaybackState,
                          public SliderHost {
    Q_OBJECT
public:
    explicit TavoMP3PlayerMain(Services& services, QWidget* parent = nullptr);
    ~TavoMP3PlayerMain() override;

    // The load sequence: settings, playlists, and finally the window shown.
    void load();

    Services& services() { return m_services; }
    PlaylistManager& playlists() { return m_playlists; }

    // Runs the close sequence as the close box does; false when the user cancelled.
    bool closeMainWindow();

    QListView* FPlaylist = nullptr;
    QLabel* FStatus = nullptr;
    QLabel* Label1 = nullptr;
    QLabel* FActPlaylist = nullptr;
    QLabel* Version = nullptr;
    SkinControl* BPLOpen = nullptr;
    SkinControl* BPLSave = nullptr;
    QLabel* Label2 = nullptr;
    DirectoryField* FBrowsePath = nullptr;

    // Display panel and transport row.
    QFrame* Picture1 = nullptr;
    QLabel* lblTrackName = nullptr;
    QLabel* lblTime = nullptr;
    QLabel* LMP3Bitrate = nullptr;
    QLabel* LMP3Samplerate = nullptr;
    QLabel* LAutoCue = nullptr;
    QLabel* lblRepeat = nullptr;
    QLabel* lblShuffle = nullptr;
    QLabel* FTest = nullptr;
    QLabel* FTest2 = nullptr;

    // Transport row, history menu and the playback core (TavoMP3PlayerMainPlayback.cpp).
    SkinControl* BLast = nullptr;
    SkinControl* BStop = nullptr;
    SkinControl* BPlay = nullptr;
    SkinControl* BPause = nullptr;
    SkinControl* BNext = nullptr;
    QLabel* Label3 = nullptr;
    QSlider* sldVol = nullptr;
    QLabel* Label13 = nullptr;
    std::array<QRadioButton*, 3> PL{}; // PL[1] = playlist 1 drives Play, Next and the pick
    QMenu* MenuPrevHead = nullptr;
    std::array<QAction*, PrevSongs::kSlots + 1> MenuPrev{}; // MenuPrev[1..20]
    PlayerLink& player() { return *m_player; }
    PlaybackMonitor& playback() { return *m_monitor; }
    Transport& transport() { return *m_transport; }
    SongSelection& songSelection() { return *m_selection; }
    PrevSongs& prevSongs() { return m_history; }

    QMenu* MenuDatei = nullptr;
    QAction* MenuDateiOpenPlaylist = nullptr;
    QAction* MenuDateiSavePlaylist = nullptr;
    QAction* MenuDateiPlaylistSaveAs = nullptr;
    QAction* MenuDateiBeenden = nullptr;

    // Notification-area icon and its menu.
    QMenu* MenuPopupSys = nullptr;
    QAction* MenuPopRestore = nullptr;
    QAction* MenuShuffleStatus = nullptr;
    QAction* MenuNext = nullptr;
    QAction* MenuPause = nullptr;
    QAction* MenuPlay = nullptr;
    QAction* MenuStop = nullptr;
    QAction* MenuPrevious = nullptr;
    QMenu* MenuSetPrioHead = nullptr;
    QList<QAction*> MenuSetPrio; // Index 0..5 sets priority 5 - Index
    QAction* MenuPopExit = nullptr;
    TrayModule& tray() { return *m_tray; }
    // The "start" word hides the window in the notification area; where the desktop has none, the
    // window starts minimized instead, so that it can be reached at all.
    void showAfterStart(bool showWindow);
    // A notification of the tray icon: the mouse message code in x, y 0.
    void TrayNotification(int x, int y);
    // A later start of the program or the desktop's player controls: show brings the window to the
    // front (also from the notification area), play means the "play" word of the command line.
    void activateFromDesktop(bool show, bool play);

    // Sleep mode.
    QCheckBox* FSleepmode = nullptr;
    ClickLabel* LabelSleep = nullptr;
    QComboBox* FSleepmodeTime = nullptr;
    QLabel* LSleepmode = nullptr;
    SleepMode& sleepMode() { return m_sleep; }

    // Building, updating, priorities, deletion and quick search (TavoMP3PlayerMainPlaylistTools.cpp).
    SkinControl* BUpdateList = nullptr;
    SkinControl* BCreateList = nullptr;
    PriorityFrame* Frame1 = nullptr;
    QMenu* MenuPlaylist = nullptr;
    PriorityMenu* MenuPlaylistSetPrio = nullptr;
    QAction* MenuPlaylistID3 = nullptr;
    PlaylistBuilder& builder() { return m_builder; }
    PlaylistEntryEditor& entryEditor() { return m_editor; }
    QuickSearch& quickSearch() { return m_search; }
    // Opens the quick-search window with the typed character, without waiting for it.
    TavoMP3QuickSearch* openQuickSearch(const QString& typed);

    // The second playlist window (TavoMP3PlayerMainPlaylist2.cpp), created hidden with the window.
    SkinControl* BPlaylist2 = nullptr;
    TavoMP3Playlist2* Playlist2 = nullptr;
    // The main window's left and top as text when the second playlist was last docked.
    QString LastDockedPosition;
    // Shows or hides the second playlist and makes it the active one or not.
    void BPlaylist2Click();
    // One docking step of the monitor tick: keep the visible second playlist at the right edge.
    void dockPlaylist2();

    // Switches the computer off (forced); used by the sleep mode and the second playlist's end.
    void ShutdownComputer();

    // Online update (TavoMP3PlayerMainUpdate.cpp).
    QAction* MenuUpdate = nullptr;
    QLabel* FCheck = nullptr;
    UpdateConfig UpdateSource = UpdateConfig::forThisProgram();
    UpdateCheckSchedule& updateSchedule() { return *m_updateSchedule; }
    // The update window, created hidden on first use.
    TavoMP3Update& updateWindow();
    // The timed check: the hidden update window fetches the version list and asks before updating.
    void AutomaticUpdateCheck();

    // Reports and the bit-rate histogram of the clicked song.
    SkinControl* BReportPrio = nullptr;
    SkinControl* BReportBitrate = nullptr;
    TavoxMiniDiagram* TavoxMiniDiagram1 = nullptr;
    void BReportBitrate_Click();
    void BReportPrio_Click();
    // Report files; tests point them elsewhere (empty = the platform's report path).
    QString BitrateReportPath;
    QString PriorityReportPath;

    // News, about and ID3 windows (TavoMP3PlayerMainUpdate.cpp); each is created hidden on first
    // use, so that colours can be applied before it is shown.
    QAction* MenuNews = nullptr;
    QAction* MenuAbout = nullptr;
    TavoMP3News& newsWindow();
    TavoMP3About& aboutWindow();
    TavoMP3ID3& id3Window();
    // Shows the ID3 window for the marked entry of the main list.
    void MenuPlaylistID3Click();

    QString UserMP3Directory;
    QString WinampPath;
    // The last key pressed in the window; the bitrate report stops when it reads 27 (Escape).
    qint16 LastKeyCode = 0;
    // The built-in frame reader stands in for the classic MP3 information library: always there.
    bool MP3InfoAvailable = true;

    // Opens the settings window (created on first use), with a hint in its status line.
    TavoMP3Settings* showSettingsWindow(const QString& hint = QString());
    // True when step "settings incomplete" of the load sequence applied: no player, no playlist.
    bool SettingsIncomplete = false;

    // Re-reads the player path and the music directories after the settings were saved.
    void FuncSetEnv() override;

    // Colour scheme, background picture and the settings window (TavoMP3PlayerMainColors.cpp).
    QAction* MenuEinstellungen = nullptr;
    void SetColorText(const Rgb& colour) override;
    void SetColorBackground(const Rgb& colour) override;
    void SetColorFieldText(const Rgb& colour) override;
    void SetColorFieldBackground(const Rgb& colour) override;
    void SetColorButtonText(const Rgb& colour) override;
    void SetColorButtonBackground(const Rgb& colour) override;
    void SetColorDisplayTextBright(const Rgb& colour) override;
    void SetColorDisplayTextDark(const Rgb& colour) override;
    void SetColorDisplayBackground(const Rgb& colour) override;
    void UpdateColors();
    void LoadBGImage(const QString& path) override;
    void LoadActivePreset();
    void setBrowsePath(const QString& directories) override;
    void startPlayer(const QString& playerPath) override;
    // The settings window, created unshown when it does not exist yet.
    TavoMP3Settings* settingsWindow();
    // Secondary windows that share the scheme register a function that creates them (unshown)
    // when needed; every role operation then paints them too.
    void addSchemeWindow(std::function<QWidget*()> ensureWindow);
    const BackgroundPicture* backgroundPicture() const { return m_background; }
    // Skin buttons (TavoMP3PlayerMainSkins.cpp): the four face bitmaps beside the program, given to
    // every skin button of the window at the end of the load.
    QString SkinWide, SkinWideOver, SkinNarrow, SkinNarrowOver;
    void SetupSkins();
    // The buttons do not notice the mouse leaving; moves over the window's own area reset them.
    void ResetSkinHover();
    // Faces, captions and scheme colours of a freshly opened quick search.
    void dressQuickSearch(TavoMP3QuickSearch* window);
    // Position slider (TavoMP3PlayerMainSlider.cpp) and the flags it sets while the knob is held.
    TavoSlider* TavoSlider1 = nullptr;
    bool HideScroll = false;
    bool AllowTimeChange = false;
    void setMonitorEnabled(bool enabled) override;
    void setHideScroll(bool on) override;
    void setAllowTimeChange(bool on) override;
    void jumpToTime(qint32 seconds) override;
    void focusPlaylist() override;
    void clearShownTitle() override;
    // Mode indicators (16-bit flags of the transport): bright when on, dark when off.
    bool ShuffleOn = false;
    bool RepeatOn = false;
    bool AutoCueOn = false;

protected:
    void closeEvent(QCloseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void buildLayout();
    QBoxLayout* buildTransportControls(QWidget* parent);
    void setUpPlayback();
    void connectPlayback();
    void showModeIndicators();
    void readPlaybackSettings();
    void startPlayer();
    void finishPlaybackLoad();
    void closePlayer();
    void buildMenus();
    void buildTrayMenu();
    void restoreWindow(bool focusList);
    QBoxLayout* buildSleepControls(QWidget* parent);
    void connectSleepControls();
    void addPlaylistCommands(QWidget* parent, QVBoxLayout* commands);
    void connectPlaylistTools();
    QBoxLayout* buildReportButtons(QWidget* parent);
    QWidget* buildMiniDiagram(QWidget* parent);
    void connectReports();
    void showSongHistogram(int row);
    void connectHandlers();
    void buildAppearance();
    void buildPositionSlider();
    void connectPositionSlider();
    void paintSchemeWindows(ColorRoles::Id role, const Rgb& colour);
    // The values the close sequence writes, in its order.
    QList<SettingsStore::Entry> settingsOnClose() const;
    void markRead(const QString& section, const QString& key);
    void rememberUnreadSettings();
    void writeSettingsOnClose();
    void buildUpdateMenus();
    void connectUpdateHandlers();
    void buildPlaylist2(QWidget* parent, QVBoxLayout* commands);
    void connectPlaylist2();
    void mainWindowActivated();
    // Keeps the length the player reports for each song played, for the "#EXTINF" lines of an M3U save.
    void rememberSongLengths();
    void placePlaylist2();
    // Loads the file of "PlaylistFile2" at start; the load text, "" when there is none.
    QString loadPlaylist2(const QString& file);
    // Runs an event handler under the classic error report.
    void handle(const QString& place, const std::function<void(int& line)>& body);

    Services& m_services;
    PlaylistManager m_playlists;
    SleepMode m_sleep{m_services.dialogs};
    PrevSongs m_history;
    PlayerLink* m_player = nullptr;
    SongSelection* m_selection = nullptr;
    Transport* m_transport = nullptr;
    PlaybackMonitor* m_monitor = nullptr;
    TrayModule* m_tray = nullptr;
    DiskFolderLister m_lister;
    PlaylistBuilder m_builder;
    PlaylistEntryEditor m_editor;
    QuickSearch m_search;
    bool m_closing = false;
    // "Section/Key" of the close sequence's values that the load read, and those it did not get to
    // with the default the window holds for them.
    QSet<QString> m_readOnLoad;
    QHash<QString, QString> m_unreadOnLoad;
    UpdateCheckSchedule* m_updateSchedule = nullptr;
    QPointer<TavoMP3Update> m_updateWindow;
    QPointer<TavoMP3News> m_newsWindow;
    QPointer<TavoMP3About> m_aboutWindow;
    QPointer<TavoMP3ID3> m_id3Window;
    QPointer<TavoMP3Settings> m_settingsWindow;
    QPointer<TavoMP3QuickSearch> m_quickSearch;
    PlaylistKeyFilter* m_playlistKeys = nullptr;
    BackgroundPicture* m_background = nullptr;
    QList<std::function<QWidget*()>> m_schemeWindows;
};
