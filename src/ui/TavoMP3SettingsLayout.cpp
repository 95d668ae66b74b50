// Building the settings window's controls. Behaviour lives in TavoMP3Settings.cpp and
// TavoMP3SettingsPresets.cpp.
#include "appearance/ColorRoles.h"
#include "appearance/UpdateOptionTexts.h"
#include "ui/TavoMP3Settings.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

template <typename W> W* named(W* widget, const char* name) {
    widget->setObjectName(QLatin1String(name));
    return widget;
}

QLabel* label(QWidget* parent, const char* name, const QString& text) {
    return named(new QLabel(text, parent), name);
}

QPushButton* button(QWidget* parent, const char* name, const QString& text) {
    return named(new QPushButton(text, parent), name);
}

QLineEdit* readOnlyField(QWidget* parent, const char* name) {
    auto* f = named(new QLineEdit(parent), name);
    f->setReadOnly(true);
    return f;
}

QComboBox* dropDown(QWidget* parent, const char* name, const QStringList& items, const QString& shown) {
    auto* c = named(new QComboBox(parent), name);
    c->addItems(items);
    c->setCurrentText(shown);
    c->setMinimumWidth(120);
    return c;
}

QSlider* colourSlider(QWidget* parent, const char* name) {
    auto* s = named(new QSlider(Qt::Horizontal, parent), name);
    s->setRange(0, 255);
    s->setValue(128);
    s->setPageStep(16);
    s->setMinimumWidth(200);
    return s;
}

} // namespace

void TavoMP3Settings::buildLayout() {
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(10, 10, 10, 10);
    tbOptions = named(new QTabWidget(this), "tbOptions");
    tbOptions->setAccessibleName(QStringLiteral("Einstellungen"));
    tbOptions->addTab(buildGeneralTab(), QStringLiteral(" General Settings"));
    tbOptions->addTab(buildAppearanceTab(), QStringLiteral("&Programm Oberfläche"));
    tbOptions->addTab(buildUpdateTab(), QStringLiteral("Update Options"));
    outer->addWidget(tbOptions, 1);

    // Diagnostic dump of the working colours; kept out of sight like a developer's field.
    FTest = named(new QPlainTextEdit(this), "FTest");
    FTest->setReadOnly(true);
    FTest->setAccessibleName(QStringLiteral("Farbwerte"));
    FTest->setVisible(false);

    FStatus = label(this, "FStatus", QString());
    FStatus->setFrameShape(QFrame::Panel);
    FStatus->setFrameShadow(QFrame::Sunken);
    FStatus->setWordWrap(true);
    FStatus->setMinimumHeight(36);
    // No fixed name: a label's name is its text, so a screen reader reads the message itself.
    outer->addWidget(FStatus);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    BCancel = button(this, "BCancel", QStringLiteral("&Abbrechen"));
    BSaveAndClose = button(this, "BSaveAndClose", QStringLiteral("&Speichern && Schliessen"));
    BSaveAndClose->setDefault(true);
    buttons->addWidget(BCancel);
    buttons->addWidget(BSaveAndClose);
    outer->addLayout(buttons);
    resize(600, 470);
}

QWidget* TavoMP3Settings::buildGeneralTab() {
    auto* tab = new QWidget;
    tab->setObjectName(QStringLiteral("tabGeneral"));
    auto* grid = new QGridLayout(tab);
    grid->setVerticalSpacing(4);
    Label1 = label(tab, "Label1", QStringLiteral("Vollständiger Pfad zu \"Winamp.exe\":"));
    FWinampPath = named(new QLineEdit(tab), "FWinampPath");
    BBrowseWinamp = button(tab, "BBrowseWinamp", QStringLiteral("Durchsuchen..."));
    grid->addWidget(Label1, 0, 0, 1, 2);
    grid->addWidget(FWinampPath, 1, 0);
    grid->addWidget(BBrowseWinamp, 1, 1);

    Label2 = label(tab, "Label2", QStringLiteral("Standard MP3 Verzeichnisse:"));
    FUserMP3Directory = named(new QPlainTextEdit(tab), "FUserMP3Directory");
    FUserMP3Directory->setLineWrapMode(QPlainTextEdit::NoWrap);
    FUserMP3Directory->setTabChangesFocus(true);
    FUserMP3Directory->setAccessibleName(QStringLiteral("Standard MP3 Verzeichnisse"));
    Label16 = label(tab, "Label16", QStringLiteral("(mehrere Pfade in Zeilen trennen)"));
    BAddDir = button(tab, "BAddDir", QStringLiteral("hinzufügen..."));
    BDelDir = button(tab, "BDelDir", QStringLiteral("entfernen..."));
    auto* dirButtons = new QVBoxLayout;
    dirButtons->addWidget(BAddDir);
    dirButtons->addWidget(BDelDir);
    dirButtons->addStretch(1);
    grid->addItem(new QSpacerItem(1, 8), 2, 0);
    grid->addWidget(Label2, 3, 0, 1, 2);
    grid->addWidget(FUserMP3Directory, 4, 0);
    grid->addLayout(dirButtons, 4, 1);
    grid->addWidget(Label16, 5, 0, 1, 2);

    Label12 = label(tab, "Label12", QStringLiteral("Player Hintergrundbild:"));
    FBGImagePath = named(new QLineEdit(tab), "FBGImagePath");
    BBrowseBGImage = button(tab, "BBrowseBGImage", QStringLiteral("Durchsuchen..."));
    Label14 = label(tab, "Label14", QStringLiteral("(Optimale Größe 680 x 536 Pixel)"));
    grid->addItem(new QSpacerItem(1, 8), 6, 0);
    grid->addWidget(Label12, 7, 0, 1, 2);
    grid->addWidget(FBGImagePath, 8, 0);
    grid->addWidget(BBrowseBGImage, 8, 1);
    grid->addWidget(Label14, 9, 0, 1, 2);

    chkTelnetOn = named(new QCheckBox(QStringLiteral("Enable Telnet Control"), tab), "chkTelnetOn");
    grid->addItem(new QSpacerItem(1, 8), 10, 0);
    grid->addWidget(chkTelnetOn, 11, 0, 1, 2);
    grid->setRowStretch(4, 1);
    grid->setColumnStretch(0, 1);
    Label1->setBuddy(FWinampPath);
    Label2->setBuddy(FUserMP3Directory);
    Label12->setBuddy(FBGImagePath);
    return tab;
}

QWidget* TavoMP3Settings::buildAppearanceTab() {
    auto* tab = new QWidget;
    tab->setObjectName(QStringLiteral("tabAppearance"));
    auto* columns = new QHBoxLayout(tab);

    // Left: the role list and its three colour sliders.
    auto* left = new QGridLayout;
    Label6 = label(tab, "Label6", QStringLiteral("Einstellungen für:"));
    LColorType = named(new QListWidget(tab), "LColorType");
    for (const ColorRoles::Role& r : ColorRoles::all())
        LColorType->addItem(r.caption);
    LColorType->setCurrentRow(0);
    LColorType->setAccessibleName(QStringLiteral("Einstellungen für"));
    left->addWidget(Label6, 0, 0, 1, 3);
    left->addWidget(LColorType, 1, 0, 1, 3);
    Label8 = label(tab, "Label8", QStringLiteral("Rot:"));
    Label9 = label(tab, "Label9", QStringLiteral("Grün:"));
    Label10 = label(tab, "Label10", QStringLiteral("Blau:"));
    SliderRed = colourSlider(tab, "SliderRed");
    SliderGreen = colourSlider(tab, "SliderGreen");
    SliderBlue = colourSlider(tab, "SliderBlue");
    SliderRed->setAccessibleName(QStringLiteral("Rot"));
    SliderGreen->setAccessibleName(QStringLiteral("Grün"));
    SliderBlue->setAccessibleName(QStringLiteral("Blau"));
    LRed = label(tab, "LRed", QStringLiteral("128"));
    LGreen = label(tab, "LGreen", QStringLiteral("128"));
    LBlue = label(tab, "LBlue", QStringLiteral("128"));
    int row = 2;
    for (auto [caption, slider, value] :
         {std::tuple{Label8, SliderRed, LRed}, std::tuple{Label9, SliderGreen, LGreen},
          std::tuple{Label10, SliderBlue, LBlue}}) {
        value->setMinimumWidth(value->fontMetrics().horizontalAdvance(QStringLiteral("2550")));
        value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        caption->setBuddy(slider);
        left->addWidget(caption, row, 0);
        left->addWidget(slider, row, 1);
        left->addWidget(value, row, 2);
        ++row;
    }
    LinkSliders = named(new QCheckBox(QStringLiteral("Link Sliders"), tab), "LinkSliders");
    FSpaceSkin = named(new QCheckBox(QStringLiteral("Space Skin"), tab), "FSpaceSkin");
    left->addWidget(LinkSliders, row, 0, 1, 3);
    left->addWidget(FSpaceSkin, row + 1, 0, 1, 3);
    left->setRowStretch(1, 1);
    columns->addLayout(left, 3);

    // Right: the presets.
    auto* right = new QVBoxLayout;
    Label5 = label(tab, "Label5", QStringLiteral("Aktives Preset:"));
    FActivePreset = named(new QLineEdit(tab), "FActivePreset");
    FActivePreset->setAccessibleName(QStringLiteral("Aktives Preset"));
    Label7 = label(tab, "Label7", QStringLiteral("Vorhandene Presets:"));
    FPresetList = named(new QListWidget(tab), "FPresetList");
    FPresetList->setAccessibleName(QStringLiteral("Vorhandene Presets"));
    FPresetSaveAs = named(new QLineEdit(tab), "FPresetSaveAs");
    FPresetSaveAs->setAccessibleName(QStringLiteral("Presetname"));
    BPresetSave = button(tab, "BPresetSave", QStringLiteral("Preset speichern"));
    BPresetSaveAs = button(tab, "BPresetSaveAs", QStringLiteral("Preset speichern unter..."));
    BPresetLoad = button(tab, "BPresetLoad", QStringLiteral("Preset laden"));
    BPresetDelete = button(tab, "BPresetDelete", QStringLiteral("Preset löschen"));
    BResetPreset = button(tab, "BResetPreset", QStringLiteral("Preset zurücksetzen"));
    Label5->setBuddy(FActivePreset);
    Label7->setBuddy(FPresetList);
    right->addWidget(Label5);
    right->addWidget(FActivePreset);
    right->addWidget(BPresetSave);
    right->addSpacing(6);
    right->addWidget(Label7);
    right->addWidget(FPresetList, 1);
    auto* listButtons = new QGridLayout;
    listButtons->addWidget(BPresetLoad, 0, 0);
    listButtons->addWidget(BPresetDelete, 0, 1);
    listButtons->addWidget(BResetPreset, 1, 0, 1, 2);
    right->addLayout(listButtons);
    right->addSpacing(6);
    right->addWidget(FPresetSaveAs);
    right->addWidget(BPresetSaveAs);
    columns->addLayout(right, 2);
    return tab;
}

QWidget* TavoMP3Settings::buildUpdateTab() {
    auto* tab = new QWidget;
    tab->setObjectName(QStringLiteral("tabUpdate"));
    auto* grid = new QGridLayout(tab);
    grid->setVerticalSpacing(5);
    Label11 = label(tab, "Label11", QStringLiteral("Update Verhalten:"));
    grid->addWidget(Label11, 0, 0, 1, 3);

    RUpdateMode[1] =
        named(new QRadioButton(QStringLiteral("Automatisches Prüfen auf neue Version, wenn online "
                                              "(max. eine erfolgreiche Prüfung täglich)"),
                               tab),
              "RUpdateMode(1)");
    Label13 = label(tab, "Label13", QStringLiteral("Automatischer Verbindungsversuch alle"));
    FUpdateInterval =
        dropDown(tab, "FUpdateInterval", UpdateOptionTexts::intervalItems(), QStringLiteral("30 Minuten"));
    RUpdateMode[2] =
        named(new QRadioButton(QStringLiteral("Aufforderung zum Update alle"), tab), "RUpdateMode(2)");
    FUpdateIntervalRemind =
        dropDown(tab, "FUpdateIntervalRemind", UpdateOptionTexts::remindItems(), QStringLiteral("7 Tage"));
    RUpdateMode[3] =
        named(new QRadioButton(QStringLiteral("keine Auforderung zum Update"), tab), "RUpdateMode(3)");
    Label13->setBuddy(FUpdateInterval);
    // The reminder interval has no label of its own; the option before it says what it is.
    FUpdateIntervalRemind->setAccessibleName(QStringLiteral("Aufforderung zum Update alle"));
    grid->addWidget(RUpdateMode[1], 1, 0, 1, 3);
    grid->addItem(new QSpacerItem(22, 1), 2, 0);
    grid->addWidget(Label13, 2, 1);
    grid->addWidget(FUpdateInterval, 2, 2);
    grid->addWidget(RUpdateMode[2], 3, 0, 1, 2);
    grid->addWidget(FUpdateIntervalRemind, 3, 2);
    grid->addWidget(RUpdateMode[3], 4, 0, 1, 3);

    Label3 = label(tab, "Label3", QStringLiteral("Letzte erfolgreiche Überprüfung auf neue Version:"));
    FLastUpdateCheck = readOnlyField(tab, "FLastUpdateCheck");
    Label4 = label(tab, "Label4", QStringLiteral("Nächste geplante Überprüfung auf neue Version:"));
    FNextUpdateCheck = readOnlyField(tab, "FNextUpdateCheck");
    Label15 = label(tab, "Label15", QStringLiteral("Letzter Status:"));
    FLastUpdateCheckStatus = readOnlyField(tab, "FLastUpdateCheckStatus");
    Label3->setBuddy(FLastUpdateCheck);
    Label4->setBuddy(FNextUpdateCheck);
    Label15->setBuddy(FLastUpdateCheckStatus);
    grid->addItem(new QSpacerItem(1, 12), 5, 0);
    grid->addWidget(Label3, 6, 0, 1, 3);
    grid->addWidget(FLastUpdateCheck, 7, 0, 1, 3);
    grid->addWidget(Label4, 8, 0, 1, 3);
    grid->addWidget(FNextUpdateCheck, 9, 0, 1, 3);
    grid->addWidget(Label15, 10, 0, 1, 3);
    grid->addWidget(FLastUpdateCheckStatus, 11, 0, 1, 3);
    grid->setRowStretch(12, 1);
    grid->setColumnStretch(1, 1);
    return tab;
}
