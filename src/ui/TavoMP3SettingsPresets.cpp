// The colour scheme side of the settings window: presets, the role list and the three sliders.
#include "appearance/ColorRoles.h"
#include "appearance/ColorSchemeController.h"
#include "appearance/PresetStore.h"
#include "base/Checked.h"
#include "base/Dialogs.h"
#include "ui/TavoMP3Settings.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSlider>

void TavoMP3Settings::connectPresetHandlers() {
    connect(LColorType, &QListWidget::currentRowChanged, this, [this] {
        handle(QStringLiteral("LColorType_Click"), [this](int& line) {
            line = 1;
            ActualizeSliders();
        });
    });
    connect(SliderRed, &QSlider::valueChanged, this,
            [this] { slider_Change(SliderRed, LRed, QStringLiteral("Red")); });
    connect(SliderGreen, &QSlider::valueChanged, this,
            [this] { slider_Change(SliderGreen, LGreen, QStringLiteral("Green")); });
    connect(SliderBlue, &QSlider::valueChanged, this,
            [this] { slider_Change(SliderBlue, LBlue, QStringLiteral("Blue")); });
    connect(BPresetSaveAs, &QPushButton::clicked, this, [this] { BPresetSaveAs_Click(); });
    connect(BPresetSave, &QPushButton::clicked, this, [this] { BPresetSave_Click(); });
    connect(BPresetLoad, &QPushButton::clicked, this,
            [this] { BPresetLoad_Click(QStringLiteral("LoadPresetClick")); });
    connect(FPresetList, &QListWidget::itemDoubleClicked, this,
            [this] { BPresetLoad_Click(QStringLiteral("ListDblClick")); });
    connect(BPresetDelete, &QPushButton::clicked, this, [this] { BPresetDelete_Click(); });
    // BResetPreset, LinkSliders and FSpaceSkin are part of the layout without any behaviour.
}

int TavoMP3Settings::selectedRole() const {
    const QListWidgetItem* item = LColorType->currentItem();
    return ColorRoles::indexOfCaption(item ? item->text() : QString());
}

void TavoMP3Settings::LoadPreset(const QString& presetNumber, const QString& caller) {
    Q_UNUSED(caller) // tells who asked; it does not change what happens
    handle(QStringLiteral("LoadPreset"), [&](int& line) {
        line = 1;
        const PresetStore::Preset preset = m_colours.readPreset(presetNumber);
        line = 2;
        m_colours.takePreset(presetNumber, preset);
        FActivePreset->setText(preset.name);
        line = 3;
        ActualizeSliders();
        line = 4;
        PlayerMainSetColorAll();
        line = 5;
        ShowColorValues();
        line = 6;
        FStatus->setText(PresetStore::loadedText(preset.name, presetNumber));
    });
}

void TavoMP3Settings::SavePreset(const QString& presetNumber, const QString& presetName) {
    handle(QStringLiteral("SavePreset"), [&](int& line) {
        line = 1;
        m_colours.savePreset(presetNumber, presetName);
        line = 3;
        // The name alone, so that "Preset speichern" can save under the shown text again.
        FActivePreset->setText(presetName);
        FStatus->setText(PresetStore::savedText(presetName, presetNumber));
    });
}

void TavoMP3Settings::FillPresetList() {
    handle(QStringLiteral("FillPresetList"), [this](int& line) {
        line = 1;
        const PresetListing l = PresetStore(m_services.settings).listing(m_colours.activePreset());
        line = 2;
        FPresetList->clear();
        FPresetList->addItems(l.items);
        m_presetNames = l.names;
        m_presetLabels = l.labels;
        line = 3;
        if (l.selected >= 0)
            FPresetList->setCurrentRow(l.selected);
    });
}

void TavoMP3Settings::PlayerMainSetColorAll() {
    m_colours.paintAll();
}

void TavoMP3Settings::ActualizeSliders() {
    const int role = selectedRole();
    if (role < 0) {
        m_services.dialogs.message(QStringLiteral("Mist programmiert in Funktion ActualizeSliders..."));
        return;
    }
    const auto id = ColorRoles::Id(role);
    const ColorScheme& scheme = m_colours.scheme();
    const int red = Checked::textToInt16(scheme.component(id, ColorScheme::Red));
    const int green = Checked::textToInt16(scheme.component(id, ColorScheme::Green));
    const int blue = Checked::textToInt16(scheme.component(id, ColorScheme::Blue));
    // Moving the sliders here shows the role; it must not write the values back as an edit.
    m_settingSliders = true;
    SliderRed->setValue(red);
    SliderGreen->setValue(green);
    SliderBlue->setValue(blue);
    m_settingSliders = false;
    LRed->setText(QString::number(SliderRed->value()));
    LGreen->setText(QString::number(SliderGreen->value()));
    LBlue->setText(QString::number(SliderBlue->value()));
}

void TavoMP3Settings::slider_Change(QSlider* slider, QLabel* label, const QString& component) {
    if (m_settingSliders)
        return;
    handle(QStringLiteral("Slider") + component + QStringLiteral("_Change"), [&](int& line) {
        line = 1;
        label->setText(QString::number(slider->value()));
        line = 2;
        ColorChangeValue(component);
    });
}

void TavoMP3Settings::ColorChangeValue(const QString& component) {
    const int role = selectedRole();
    const int c = ColorScheme::componentOf(component);
    if (role < 0 || c < 0) {
        m_services.dialogs.message(QStringLiteral("Mist programmiert in Funktion ColorChangeValue..."));
        return;
    }
    const QSlider* slider = c == ColorScheme::Red     ? SliderRed
                            : c == ColorScheme::Green ? SliderGreen
                                                      : SliderBlue;
    m_colours.setComponent(ColorRoles::Id(role), ColorScheme::Component(c), QString::number(slider->value()));
    ShowColorValues();
}

void TavoMP3Settings::ShowColorValues() {
    FTest->setPlainText(m_colours.scheme().valueLines().join(QLatin1Char('\n')));
}

void TavoMP3Settings::BPresetSaveAs_Click() {
    handle(QStringLiteral("BPresetSaveAs_Click"), [this](int& line) {
        line = 1;
        if (FPresetSaveAs->text().isEmpty()) {
            m_services.dialogs.message(QStringLiteral("Bitte geben Sie einen Presetnamen ein!"));
            return;
        }
        line = 2;
        const int number = PresetStore::firstFreeNumber(m_presetNames);
        line = 3;
        SavePreset(QString::number(number), FPresetSaveAs->text());
        FillPresetList();
        FPresetSaveAs->clear();
    });
}

void TavoMP3Settings::BPresetSave_Click() {
    SavePreset(m_colours.activePreset(), FActivePreset->text());
}

void TavoMP3Settings::BPresetLoad_Click(const QString& caller) {
    // The list position is the preset number; after a gap in the numbers the two part ways.
    LoadPreset(QString::number(FPresetList->currentRow()), caller);
}

void TavoMP3Settings::BPresetDelete_Click() {
    handle(QStringLiteral("BPresetDelete_Click"), [this](int& line) {
        line = 1;
        const int position = FPresetList->currentRow();
        if (position == 0) {
            m_services.dialogs.message(QStringLiteral("Das Default Preset kann nicht gelöscht werden!"));
            return;
        }
        line = 2;
        const QString name = FPresetList->currentItem() ? FPresetList->currentItem()->text() : QString();
        const auto answer = m_services.dialogs.message(
            QStringLiteral("Möchten Sie das Preset \"") + name + QStringLiteral("\" wirklich löschen?"),
            QStringLiteral("Achtung!"), Dialogs::Buttons::YesNoCancel, Dialogs::Icon::Exclamation, 3);
        if (answer != Dialogs::Answer::Yes)
            return;
        line = 3;
        PresetStore(m_services.settings).remove(QString::number(position));
        line = 4;
        LoadPreset(QStringLiteral("0"), QStringLiteral("PresetDelete"));
        line = 5;
        FillPresetList();
    });
}
