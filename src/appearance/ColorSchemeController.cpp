#include "appearance/ColorSchemeController.h"

ColorSchemeController::ColorSchemeController(SettingsStore& settings, QObject* parent)
    : QObject(parent), m_settings(settings) {
}

PresetStore::Preset ColorSchemeController::readPreset(const QString& number) const {
    return PresetStore(m_settings).read(number);
}

void ColorSchemeController::takePreset(const QString& number, const PresetStore::Preset& preset) {
    m_scheme = preset.scheme;
    m_activePreset = number;
    m_activePresetName = preset.name;
}

void ColorSchemeController::paintAll() {
    for (const ColorRoles::Role& r : ColorRoles::all())
        emit roleColourChanged(r.id, m_scheme.rgb(r.id));
}

void ColorSchemeController::setComponent(ColorRoles::Id role, ColorScheme::Component component,
                                         const QString& text) {
    m_scheme.setComponent(role, component, text);
    emit roleColourChanged(role, m_scheme.rgb(role));
}

void ColorSchemeController::savePreset(const QString& number, const QString& name) {
    PresetStore(m_settings).save(number, name, m_scheme);
    m_activePreset = number;
    m_activePresetName = name;
}
