#pragma once

#include "base/Services.h"

#include <QWidget>
#include <array>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QSlider;
class QTabWidget;
class ColorSchemeController;
class SettingsWindowHost;
class TavoMp3Tree;

// The settings window: player path, music directories, background picture, colour scheme with
// its presets, and the update behaviour. Creating it runs its load (the stored values are read
// once per creation); the main window also keeps it unshown to load the active preset at start.
class TavoMP3Settings : public QWidget {
    Q_OBJECT
public:
    // The scheme and its presets are edited in the colour controller; the host is told of paths.
    TavoMP3Settings(Services& services, SettingsWindowHost& host, ColorSchemeController& colours,
                    QWidget* parent = nullptr);
    ~TavoMP3Settings() override;

    // Shows the window; after it was closed, the values it shows are read from the store again.
    void open();

    // Colour scheme and presets (TavoMP3SettingsPresets.cpp).
    void LoadPreset(const QString& presetNumber, const QString& caller);
    void SavePreset(const QString& presetNumber, const QString& presetName);
    void FillPresetList();
    void PlayerMainSetColorAll();
    void ActualizeSliders();
    void ColorChangeValue(const QString& component);
    void ShowColorValues();

    const QString& activePreset() const;
    const QStringList& presetNames() const { return m_presetNames; }
    const QStringList& presetLabels() const { return m_presetLabels; }
    TavoMp3Tree* folderTree() const { return m_tree; }

    QTabWidget* tbOptions = nullptr;
    QLabel* FStatus = nullptr;
    QPushButton* BCancel = nullptr;
    QPushButton* BSaveAndClose = nullptr;
    QPlainTextEdit* FTest = nullptr;
    QCheckBox* chkTelnetOn = nullptr;

    // " General Settings"
    QLabel* Label1 = nullptr;
    QLineEdit* FWinampPath = nullptr;
    QPushButton* BBrowseWinamp = nullptr;
    QLabel* Label2 = nullptr;
    QPlainTextEdit* FUserMP3Directory = nullptr;
    QLabel* Label16 = nullptr;
    QPushButton* BAddDir = nullptr;
    QPushButton* BDelDir = nullptr;
    QLabel* Label12 = nullptr;
    QLineEdit* FBGImagePath = nullptr;
    QPushButton* BBrowseBGImage = nullptr;
    QLabel* Label14 = nullptr;

    // "&Programm Oberfläche"
    QLabel* Label6 = nullptr;
    QListWidget* LColorType = nullptr;
    QLabel* Label8 = nullptr;
    QLabel* Label9 = nullptr;
    QLabel* Label10 = nullptr;
    QSlider* SliderRed = nullptr;
    QSlider* SliderGreen = nullptr;
    QSlider* SliderBlue = nullptr;
    QLabel* LRed = nullptr;
    QLabel* LGreen = nullptr;
    QLabel* LBlue = nullptr;
    QLabel* Label5 = nullptr;
    QLineEdit* FActivePreset = nullptr;
    QLabel* Label7 = nullptr;
    QListWidget* FPresetList = nullptr;
    QLineEdit* FPresetSaveAs = nullptr;
    QPushButton* BPresetSave = nullptr;
    QPushButton* BPresetSaveAs = nullptr;
    QPushButton* BPresetLoad = nullptr;
    QPushButton* BPresetDelete = nullptr;
    QPushButton* BResetPreset = nullptr;
    QCheckBox* LinkSliders = nullptr;
    QCheckBox* FSpaceSkin = nullptr;

    // "Update Options"
    QLabel* Label11 = nullptr;
    std::array<QRadioButton*, 4> RUpdateMode{}; // 1..3 as in the layout; 0 unused
    QLabel* Label13 = nullptr;
    QComboBox* FUpdateInterval = nullptr;
    QComboBox* FUpdateIntervalRemind = nullptr;
    QLabel* Label3 = nullptr;
    QLineEdit* FLastUpdateCheck = nullptr;
    QLabel* Label4 = nullptr;
    QLineEdit* FNextUpdateCheck = nullptr;
    QLabel* Label15 = nullptr;
    QLineEdit* FLastUpdateCheckStatus = nullptr;

    // The text a list shows, "Fehler" included (it is shown without being an item).
    static QString listText(const QComboBox* list);
    static QString firstTimeMessage();
    // Linux counterparts of the classic first-time proposals.
    static QString proposedPlayerPath();
    static QString proposedMusicFolder();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildLayout();
    QWidget* buildGeneralTab();
    QWidget* buildAppearanceTab();
    QWidget* buildUpdateTab();
    void connectHandlers();
    void connectPresetHandlers();
    void loadWindow();
    // Load steps 1 to 8: the paths and update options the window shows of the store.
    void readStoredValues(int& line);
    void showInList(QComboBox* list, const QString& text);

    void BBrowseWinamp_Click();
    void BBrowseBGImage_Click();
    void BAddDir_Click();
    void BSaveAndClose_Click();
    void BPresetSaveAs_Click();
    void BPresetSave_Click();
    void BPresetLoad_Click(const QString& caller);
    void BPresetDelete_Click();
    void slider_Change(QSlider* slider, QLabel* label, const QString& component);

    // Runs an event handler under the classic error report.
    bool handle(const QString& place, const std::function<void(int& line)>& body);
    int selectedRole() const;

    Services& m_services;
    SettingsWindowHost& m_host;
    ColorSchemeController& m_colours;
    QStringList m_presetNames;
    QStringList m_presetLabels;
    bool m_settingSliders = false;
    bool m_unloaded = false;
    TavoMp3Tree* m_tree = nullptr;
};
