#pragma once

#include "appearance/ColorScheme.h"
#include "appearance/PresetStore.h"

#include <QObject>

class SettingsStore;

// The working colour scheme and the active preset. The settings window edits them here; every window
// that shows the scheme listens to roleColourChanged, so the scheme no longer lives in a window.
class ColorSchemeController : public QObject {
    Q_OBJECT
public:
    explicit ColorSchemeController(SettingsStore& settings, QObject* parent = nullptr);

    const ColorScheme& scheme() const { return m_scheme; }
    const QString& activePreset() const { return m_activePreset; }
    const QString& activePresetName() const { return m_activePresetName; }

    // Reads preset n from the store (0 = the built-in one); raises the store's errors.
    PresetStore::Preset readPreset(const QString& number) const;
    // Makes a preset read before the working scheme and the active one; nothing is painted yet.
    void takePreset(const QString& number, const PresetStore::Preset& preset);
    // Every role in role order; raises the conversion error at the first role that has a component
    // that is no number (the roles before it are painted).
    void paintAll();
    // One component of one role, as the sliders edit it; paints that role.
    void setComponent(ColorRoles::Id role, ColorScheme::Component component, const QString& text);
    // The preset the store names active (the settings window's load); the scheme stays.
    void setActivePreset(const QString& number) { m_activePreset = number; }
    // Stores the working scheme as preset n under the name, and makes it the active one.
    void savePreset(const QString& number, const QString& name);

signals:
    void roleColourChanged(int role, const Rgb& colour);

private:
    SettingsStore& m_settings;
    ColorScheme m_scheme = ColorScheme::builtIn();
    QString m_activePreset = QStringLiteral("0");
    QString m_activePresetName;
};
