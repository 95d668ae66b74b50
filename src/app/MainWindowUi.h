#pragma once

#include "playback/PrevSongs.h"

#include <QList>
#include <array>

class BackgroundPicture;
class ClickLabel;
class DirectoryField;
class PriorityFrame;
class PriorityMenu;
class QAction;
class QBoxLayout;
class QCheckBox;
class QComboBox;
class QFrame;
class QLabel;
class QListView;
class QMainWindow;
class QMenu;
class QRadioButton;
class QSlider;
class QVBoxLayout;
class QWidget;
class SkinControl;
class TavoMP3Playlist2;
class TavoSlider;
class TavoxMiniDiagram;

// The main window's controls under their design names, built the way the window always built them
// (the same parents and order, so that the accessibility tree and the automation names stay). No
// behaviour: the bindings connect the controls to the program.
class MainWindowUi {
public:
    void setupUi(QMainWindow* window);

    // Playlist commands and the playlist.
    QListView* FPlaylist = nullptr;
    SkinControl* BPLOpen = nullptr;
    SkinControl* BPLSave = nullptr;
    SkinControl* BUpdateList = nullptr;
    SkinControl* BCreateList = nullptr;
    PriorityFrame* Frame1 = nullptr;
    QLabel* Label2 = nullptr;
    DirectoryField* FBrowsePath = nullptr;
    QLabel* Label1 = nullptr;
    QLabel* FActPlaylist = nullptr;
    QLabel* FStatus = nullptr;
    QLabel* FCheck = nullptr;
    QLabel* Version = nullptr;

    // Display panel.
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
    TavoxMiniDiagram* TavoxMiniDiagram1 = nullptr;
    TavoSlider* TavoSlider1 = nullptr;
    BackgroundPicture* background = nullptr;

    // Transport row and the history menu.
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

    // Second playlist, reports, sleep mode.
    SkinControl* BPlaylist2 = nullptr;
    TavoMP3Playlist2* Playlist2 = nullptr;
    SkinControl* BReportPrio = nullptr;
    SkinControl* BReportBitrate = nullptr;
    QCheckBox* FSleepmode = nullptr;
    ClickLabel* LabelSleep = nullptr;
    QComboBox* FSleepmodeTime = nullptr;
    QLabel* LSleepmode = nullptr;

    // Menus.
    QMenu* MenuDatei = nullptr;
    QAction* MenuDateiOpenPlaylist = nullptr;
    QAction* MenuDateiSavePlaylist = nullptr;
    QAction* MenuDateiPlaylistSaveAs = nullptr;
    QAction* MenuDateiBeenden = nullptr;
    QAction* MenuUpdate = nullptr;
    QAction* MenuNews = nullptr;
    QAction* MenuAbout = nullptr;
    QAction* MenuEinstellungen = nullptr;
    QMenu* MenuPlaylist = nullptr;
    PriorityMenu* MenuPlaylistSetPrio = nullptr;
    QAction* MenuPlaylistID3 = nullptr;

    // The notification-area icon's menu.
    QMenu* MenuPopupSys = nullptr;
    QAction* MenuPopRestore = nullptr;
    QAction* MenuShuffleStatus = nullptr;
    QAction* MenuNext = nullptr;
    QAction* MenuPause = nullptr;
    QAction* MenuPlay = nullptr;
    QAction* MenuStop = nullptr;
    QAction* MenuPrevious = nullptr;
    QMenu* MenuSetPrioHead = nullptr;
    QList<QAction*> MenuSetPrio; // index 0..5 sets priority 5 - index
    QAction* MenuPopExit = nullptr;

private:
    void buildLayout(QMainWindow* window);
    QBoxLayout* buildTransportControls(QWidget* parent);
    QBoxLayout* buildSleepControls(QWidget* parent);
    void addPlaylistCommands(QWidget* parent, QVBoxLayout* commands, QMainWindow* window);
    QBoxLayout* buildReportButtons(QWidget* parent);
    void buildMenus(QMainWindow* window);
    void buildTrayMenu(QMainWindow* window);
    void buildAppearance(QMainWindow* window);
    void buildListMenus(QMainWindow* window);
};
