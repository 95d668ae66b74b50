#include "app/MainWindowUi.h"

#include "playlist/widgets/PriorityFrame.h"
#include "playlist/widgets/PriorityMenu.h"
#include "playlist/widgets/TavoMP3Playlist2.h"
#include "power/SleepMode.h"
#include "ui/BackgroundPicture.h"
#include "ui/ClickLabel.h"
#include "ui/DirectoryField.h"
#include "ui/ElidedLabel.h"
#include "ui/SkinControl.h"
#include "ui/TavoSlider.h"
#include "ui/TavoxMiniDiagram.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListView>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QRadioButton>
#include <QSlider>
#include <QVBoxLayout>

namespace {

template <typename W> W* named(W* widget, const char* name) {
    widget->setObjectName(QLatin1String(name));
    return widget;
}

QLabel* displayLabel(QWidget* parent, const char* name, const QString& text = QString()) {
    // No accessible name: a label's text is what assistive technology reads.
    return named(new QLabel(text, parent), name);
}

// A display label whose text can be of any length (a song name, the test texts): cut short rather
// than widening the window.
QLabel* longDisplayLabel(QWidget* parent, const char* name) {
    return named(new ElidedLabel(Qt::ElideRight, parent), name);
}

SkinControl* commandButton(QWidget* parent, const char* name, const QString& caption, int width) {
    auto* b = named(new SkinControl(caption, parent), name);
    b->setMinimumWidth(width);
    b->setMinimumHeight(24);
    return b;
}

SkinControl* transportButton(QWidget* parent, const char* name, const QString& caption) {
    auto* b = named(new SkinControl(caption, parent), name);
    b->setMinimumSize(86, 24);
    // Reached with Tab; a click leaves the focus on the playlist.
    b->setFocusPolicy(Qt::TabFocus);
    return b;
}

} // namespace

void MainWindowUi::setupUi(QMainWindow* window) {
    buildLayout(window);
    buildMenus(window);
    buildTrayMenu(window);
    buildAppearance(window);
    buildListMenus(window);
    // The display labels the monitor fills must not be squeezed below their widest text.
    const QFontMetrics metrics(LMP3Bitrate->font());
    LMP3Bitrate->setMinimumWidth(metrics.horizontalAdvance(QStringLiteral("320 kbps")) + 6);
    LMP3Samplerate->setMinimumWidth(metrics.horizontalAdvance(QStringLiteral("48 kHz")) + 6);
    FTest2->setMinimumWidth(metrics.horizontalAdvance(QStringLiteral("Winamp Status = 3 / Playmode = 1")) +
                            6);
}

void MainWindowUi::buildLayout(QMainWindow* window) {
    auto* central = new QWidget(window);
    central->setObjectName(QStringLiteral("centralWidget"));
    window->setCentralWidget(central);
    auto* outer = new QVBoxLayout(central);
    outer->setContentsMargins(8, 8, 8, 6);
    outer->setSpacing(6);

    // Display panel: song name, time, stream data and the mode indicators.
    Picture1 = named(new QFrame(central), "Picture1");
    Picture1->setFrameShape(QFrame::StyledPanel);
    Picture1->setAutoFillBackground(true);
    Picture1->setMinimumHeight(86);
    auto* display = new QGridLayout(Picture1);
    display->setContentsMargins(10, 6, 10, 6);
    lblTrackName = longDisplayLabel(Picture1, "lblTrackName");
    QFont big = lblTrackName->font();
    big.setPointSizeF(big.pointSizeF() * 1.4);
    big.setBold(true);
    lblTrackName->setFont(big);
    lblTime = displayLabel(Picture1, "lblTime");
    LMP3Bitrate = displayLabel(Picture1, "LMP3Bitrate");
    LMP3Samplerate = displayLabel(Picture1, "LMP3Samplerate");
    LAutoCue = displayLabel(Picture1, "LAutoCue", QStringLiteral("AUTOCUE"));
    lblRepeat = displayLabel(Picture1, "lblRepeat", QStringLiteral("REPEAT"));
    lblShuffle = displayLabel(Picture1, "lblShuffle", QStringLiteral("SHUFFLE"));
    FTest = longDisplayLabel(Picture1, "FTest");
    FTest2 = longDisplayLabel(Picture1, "FTest2");
    display->addWidget(lblTrackName, 0, 0, 1, 6);
    display->addWidget(lblTime, 1, 0);
    display->addWidget(LMP3Bitrate, 1, 1);
    display->addWidget(LMP3Samplerate, 1, 2);
    display->addWidget(LAutoCue, 1, 3);
    display->addWidget(lblRepeat, 1, 4);
    display->addWidget(lblShuffle, 1, 5);
    display->addWidget(FTest, 2, 0, 1, 3);
    display->addWidget(FTest2, 2, 3, 1, 3);
    TavoxMiniDiagram1 = named(new TavoxMiniDiagram(Picture1), "TavoxMiniDiagram1");
    display->addWidget(TavoxMiniDiagram1, 0, 6, 3, 1, Qt::AlignRight | Qt::AlignVCenter);
    display->setColumnStretch(0, 2);
    outer->addWidget(Picture1);
    outer->addLayout(buildTransportControls(central));

    // Playlist with its commands beside it.
    auto* middle = new QHBoxLayout;
    FPlaylist = named(new QListView(central), "FPlaylist");
    FPlaylist->setSelectionMode(QAbstractItemView::ExtendedSelection);
    FPlaylist->setUniformItemSizes(true); // lets a 30 000-row list show at once
    FPlaylist->setAccessibleName(QStringLiteral("Playliste 1"));
    // Rows are dragged into the second playlist; the list itself takes no drops.
    FPlaylist->setDragEnabled(true);
    FPlaylist->setDragDropMode(QAbstractItemView::DragOnly);
    FPlaylist->setDefaultDropAction(Qt::CopyAction);
    FPlaylist->setMinimumSize(380, 300);
    middle->addWidget(FPlaylist, 1);

    auto* commands = new QVBoxLayout;
    commands->setObjectName(QStringLiteral("commandColumn"));
    BPLOpen = commandButton(central, "BPLOpen", QStringLiteral("Playliste öffnen"), 129);
    BPLSave = commandButton(central, "BPLSave", QStringLiteral("Playliste speichern"), 129);
    commands->addWidget(BPLOpen);
    commands->addWidget(BPLSave);
    addPlaylistCommands(central, commands, window);
    commands->addStretch(1);
    commands->addLayout(buildReportButtons(central));
    middle->addLayout(commands);
    outer->addLayout(middle, 1);

    auto* folderRow = new QHBoxLayout;
    Label2 = named(new QLabel(QStringLiteral("MP3s suchen in..."), central), "Label2");
    Label2->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    FBrowsePath = named(new DirectoryField(central), "FBrowsePath");
    FBrowsePath->setAccessibleName(QStringLiteral("MP3s suchen in..."));
    Label2->setBuddy(FBrowsePath);
    folderRow->addWidget(Label2);
    folderRow->addWidget(FBrowsePath, 1);
    outer->addLayout(folderRow);

    auto* playlistRow = new QHBoxLayout;
    Label1 = named(new QLabel(QStringLiteral("Aktuelle Playliste:"), central), "Label1");
    FActPlaylist = named(new ElidedLabel(Qt::ElideMiddle, central), "FActPlaylist");
    FActPlaylist->setTextInteractionFlags(Qt::TextSelectableByMouse);
    playlistRow->addWidget(Label1);
    playlistRow->addWidget(FActPlaylist, 1);
    outer->addLayout(playlistRow);

    outer->addLayout(buildSleepControls(central));

    auto* statusRow = new QHBoxLayout;
    // Appended texts (every shuffle pick adds its time) keep their newest end in view.
    FStatus = named(new ElidedLabel(Qt::ElideLeft, central), "FStatus");
    FStatus->setFrameShape(QFrame::Panel);
    FStatus->setFrameShadow(QFrame::Sunken);
    FStatus->setMinimumHeight(22);
    Version = named(new QLabel(QStringLiteral("Version x"), central), "Version");
    FCheck = named(new QLabel(central), "FCheck");
    statusRow->addWidget(FStatus, 1);
    statusRow->addWidget(FCheck);
    statusRow->addWidget(Version);
    outer->addLayout(statusRow);

    window->resize(720, 560);
}

QBoxLayout* MainWindowUi::buildTransportControls(QWidget* parent) {
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
    Label3 = named(new QLabel(QStringLiteral("Volume"), parent), "Label3");
    sldVol = named(new QSlider(Qt::Horizontal, parent), "sldVol");
    sldVol->setRange(0, 255);
    sldVol->setValue(200);
    sldVol->setMinimumWidth(110);
    sldVol->setAccessibleName(QStringLiteral("Lautstärke"));
    Label3->setBuddy(sldVol);
    row->addWidget(Label3);
    row->addWidget(sldVol, 1);
    row->addSpacing(12);
    Label13 = named(new QLabel(QStringLiteral("Aktive Playliste:"), parent), "Label13");
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

void MainWindowUi::addPlaylistCommands(QWidget* parent, QVBoxLayout* commands, QMainWindow* window) {
    BUpdateList = commandButton(parent, "BUpdateList", QStringLiteral("Playliste aktualisieren"), 129);
    BCreateList = commandButton(parent, "BCreateList", QStringLiteral("Playliste erstellen"), 129);
    commands->addWidget(BUpdateList);
    commands->addWidget(BCreateList);
    Frame1 = new PriorityFrame(parent);
    commands->addWidget(Frame1);
    BPlaylist2 = commandButton(parent, "BPlaylist2", QStringLiteral("Playliste 2 anzeigen"), 129);
    commands->addWidget(BPlaylist2);
    Playlist2 = new TavoMP3Playlist2(window);
}

QBoxLayout* MainWindowUi::buildReportButtons(QWidget* parent) {
    auto* column = new QVBoxLayout;
    column->setObjectName(QStringLiteral("reportColumn"));
    BReportPrio = commandButton(parent, "BReportPrio", QStringLiteral("Liedprio Report"), 129);
    BReportBitrate = commandButton(parent, "BReportBitrate", QStringLiteral("Bitrate Report"), 129);
    column->addWidget(BReportPrio);
    column->addWidget(BReportBitrate);
    return column;
}

QBoxLayout* MainWindowUi::buildSleepControls(QWidget* parent) {
    auto* row = new QHBoxLayout;
    row->setObjectName(QStringLiteral("sleepRow"));
    FSleepmode = named(new QCheckBox(parent), "FSleepmode");
    FSleepmode->setAccessibleName(QStringLiteral("Sleepmode"));
    LabelSleep = named(new ClickLabel(QStringLiteral("Sleepmode"), parent), "LabelSleep");
    LabelSleep->setBuddy(FSleepmode);
    FSleepmodeTime = named(new QComboBox(parent), "FSleepmodeTime");
    FSleepmodeTime->setAccessibleName(QStringLiteral("Sleepmode Zeit"));
    FSleepmodeTime->addItems(SleepMode::timeItems());
    FSleepmodeTime->setCurrentText(SleepMode::defaultItem());
    LSleepmode = named(new QLabel(parent), "LSleepmode");
    row->addWidget(FSleepmode);
    row->addWidget(LabelSleep);
    row->addWidget(FSleepmodeTime);
    row->addWidget(LSleepmode, 1);
    return row;
}

void MainWindowUi::buildMenus(QMainWindow* window) {
    MenuDatei = window->menuBar()->addMenu(QStringLiteral("&Datei"));
    MenuDatei->setObjectName(QStringLiteral("MenuDatei"));
    auto action = [this](const char* name, const QString& caption) {
        return named(MenuDatei->addAction(caption), name);
    };
    MenuDateiOpenPlaylist = action("MenuDateiOpenPlaylist", QStringLiteral("Playliste &öffnen..."));
    MenuDateiSavePlaylist = action("MenuDateiSavePlaylist", QStringLiteral("Playliste &speichern..."));
    MenuDateiPlaylistSaveAs =
        action("MenuDateiPlaylistSaveAs", QStringLiteral("Playliste speichern &unter..."));
    MenuDatei->addSeparator();
    MenuDateiBeenden = action("MenuDateiBeenden", QStringLiteral("&Beenden"));
}

void MainWindowUi::buildTrayMenu(QMainWindow* window) {
    // Hidden in the menu bar like the classic window's "SysTray" menu; it only pops up.
    MenuPopupSys = named(new QMenu(QStringLiteral("SysTray"), window), "MenuPopupSys");
    auto action = [this](const char* name, const QString& caption) {
        return named(MenuPopupSys->addAction(caption), name);
    };
    MenuPopRestore = action("MenuPopRestore", QStringLiteral("&Open"));
    MenuShuffleStatus = action("MenuShuffleStatus", QStringLiteral("Shu&ffle"));
    MenuShuffleStatus->setCheckable(true);
    // The blanks line the symbols up in the menu's font; they are part of the captions.
    MenuNext = action("MenuNext", QStringLiteral("&Next          >>"));
    MenuPause = action("MenuPause", QStringLiteral("P&ause         ||"));
    MenuPlay = action("MenuPlay", QStringLiteral("&Play            >"));
    MenuStop = action("MenuStop", QStringLiteral("&Stop            -"));
    MenuPrevious = action("MenuPrevious", QStringLiteral("P&revious    <<"));
    MenuSetPrioHead = named(MenuPopupSys->addMenu(QStringLiteral("Priorität &setzen")), "MenuSetPrioHead");
    const QString prioCaptions[] = {QStringLiteral("&5 = normal"), QStringLiteral("&4"),
                                    QStringLiteral("&3"),          QStringLiteral("&2 = selten"),
                                    QStringLiteral("&1"),          QStringLiteral("&0 = nie")};
    for (int index = 0; index < 6; ++index) {
        QAction* a = MenuSetPrioHead->addAction(prioCaptions[index]);
        a->setObjectName(QStringLiteral("MenuSetPrio(%1)").arg(index));
        a->setData(index);
        MenuSetPrio << a;
    }
    MenuPopExit = action("MenuPopExit", QStringLiteral("&Exit"));
    MenuPopupSys->setDefaultAction(MenuPopRestore);

    auto topEntry = [window](const char* name, const QString& caption) {
        return named(window->menuBar()->addAction(caption), name);
    };
    MenuUpdate = topEntry("MenuUpdate", QStringLiteral("&Update"));
    MenuNews = topEntry("MenuNews", QStringLiteral("&News"));
    MenuAbout = topEntry("MenuAbout", QStringLiteral("&About"));
}

void MainWindowUi::buildAppearance(QMainWindow* window) {
    QWidget* central = window->centralWidget();
    background = new BackgroundPicture(central);
    TavoSlider1 = new TavoSlider(Picture1);
    // Below the display texts, across the panel's text columns.
    if (auto* grid = qobject_cast<QGridLayout*>(Picture1->layout()))
        grid->addWidget(TavoSlider1, grid->rowCount(), 0, 1, 6);
    central->setAutoFillBackground(true);
    MenuEinstellungen =
        named(window->menuBar()->addAction(QStringLiteral("&Einstellungen")), "MenuEinstellungen");
}

void MainWindowUi::buildListMenus(QMainWindow* window) {
    MenuPlaylist = named(new QMenu(QStringLiteral("MenuPlaylist"), window), "MenuPlaylist");
    MenuPlaylistSetPrio = new PriorityMenu(MenuPlaylist);
    MenuPlaylist->addMenu(MenuPlaylistSetPrio);
    MenuPlaylistID3 = named(MenuPlaylist->addAction(QStringLiteral("ID3 Tag bearbeiten")), "MenuPlaylistID3");
    FPlaylist->setContextMenuPolicy(Qt::CustomContextMenu);

    // The hidden history menu, popped up by BLast.
    MenuPrevHead = named(new QMenu(QStringLiteral("Prev"), window), "MenuPrevHead");
    for (int i = 1; i <= PrevSongs::kSlots; ++i) {
        MenuPrev[i] = MenuPrevHead->addAction(QStringLiteral("..."));
        MenuPrev[i]->setObjectName(QStringLiteral("MenuPrev(%1)").arg(i));
        MenuPrev[i]->setVisible(i == 1);
    }
}
