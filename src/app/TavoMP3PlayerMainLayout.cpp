// Building the main window's controls. Behaviour lives in TavoMP3PlayerMain.cpp.
#include "app/TavoMP3PlayerMain.h"
#include "ui/DirectoryField.h"
#include "ui/ElidedLabel.h"
#include "ui/SkinControl.h"

#include <QAction>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListView>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

template <typename W> W* named(W* widget, const char* name) {
    widget->setObjectName(QLatin1String(name));
    return widget;
}

QLabel* displayLabel(QWidget* parent, const char* name, const QString& text = QString()) {
    // No accessible name: a label's text is what assistive technology reads. A long song name or
    // test text is cut short rather than widening the window.
    return named(new ElidedLabel(Qt::ElideRight, parent, text), name);
}

SkinControl* commandButton(QWidget* parent, const char* name, const QString& caption, int width) {
    auto* b = named(new SkinControl(caption, parent), name);
    b->setMinimumWidth(width);
    b->setMinimumHeight(24);
    return b;
}

} // namespace

void TavoMP3PlayerMain::buildLayout() {
    auto* central = new QWidget(this);
    central->setObjectName(QStringLiteral("centralWidget"));
    setCentralWidget(central);
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
    lblTrackName = displayLabel(Picture1, "lblTrackName");
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
    FTest = displayLabel(Picture1, "FTest");
    FTest2 = displayLabel(Picture1, "FTest2");
    display->addWidget(lblTrackName, 0, 0, 1, 6);
    display->addWidget(lblTime, 1, 0);
    display->addWidget(LMP3Bitrate, 1, 1);
    display->addWidget(LMP3Samplerate, 1, 2);
    display->addWidget(LAutoCue, 1, 3);
    display->addWidget(lblRepeat, 1, 4);
    display->addWidget(lblShuffle, 1, 5);
    display->addWidget(FTest, 2, 0, 1, 3);
    display->addWidget(FTest2, 2, 3, 1, 3);
    display->addWidget(buildMiniDiagram(Picture1), 0, 6, 3, 1, Qt::AlignRight | Qt::AlignVCenter);
    display->setColumnStretch(0, 2);
    outer->addWidget(Picture1);
    outer->addLayout(buildTransportControls(central));

    // Playlist with its commands beside it.
    auto* middle = new QHBoxLayout;
    FPlaylist = named(new QListView(central), "FPlaylist");
    FPlaylist->setModel(&m_playlists.list(1));
    FPlaylist->setSelectionModel(&m_playlists.list(1).selection());
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
    addPlaylistCommands(central, commands);
    buildPlaylist2(central, commands);
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

    resize(720, 560);
}

void TavoMP3PlayerMain::buildMenus() {
    MenuDatei = menuBar()->addMenu(QStringLiteral("&Datei"));
    MenuDatei->setObjectName(QStringLiteral("MenuDatei"));
    auto action = [this](const char* name, const QString& caption) {
        QAction* a = MenuDatei->addAction(caption);
        a->setObjectName(QLatin1String(name));
        return a;
    };
    MenuDateiOpenPlaylist = action("MenuDateiOpenPlaylist", QStringLiteral("Playliste &öffnen..."));
    MenuDateiSavePlaylist = action("MenuDateiSavePlaylist", QStringLiteral("Playliste &speichern..."));
    MenuDateiPlaylistSaveAs =
        action("MenuDateiPlaylistSaveAs", QStringLiteral("Playliste speichern &unter..."));
    MenuDatei->addSeparator();
    MenuDateiBeenden = action("MenuDateiBeenden", QStringLiteral("&Beenden"));
}
