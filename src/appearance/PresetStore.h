#pragma once

#include "appearance/ColorScheme.h"

#include <QStringList>

class SettingsStore;

// What the preset list of the settings window shows after a refill.
struct PresetListing {
    QStringList names;  // 99 entries: entry n-1 = PresetName of preset n, "" where it does not exist
    QStringList labels; // "0. - Default Preset -", then "<n>. <name>" for each existing preset
    QStringList items;  // the list entries: "- Default Preset -", then the names
    int selected = -1;  // entry of the active preset, -1 when none
};

// Colour presets in the settings store: sections "Preset<n>" with a name and the nine role keys.
// Preset 0 is the built-in scheme and is never read from the store.
class PresetStore {
public:
    static constexpr int MaxPresets = 99;

    struct Preset {
        QString name;
        ColorScheme scheme;
    };

    explicit PresetStore(SettingsStore& store) : m_store(store) {}

    // The section name is "Preset" followed by the number exactly as given ("7", not "07").
    static QString sectionName(const QString& number) { return QStringLiteral("Preset") + number; }

    // "0" = the built-in preset; any other number reads its section with the absent-key defaults.
    Preset read(const QString& number) const;
    // Writes ActivePreset first, then the name and the nine colours. Number 0 is not refused: it
    // writes a section Preset0 that nothing ever reads.
    void save(const QString& number, const QString& name, const ColorScheme& scheme);
    // Removes the section; a missing section raises the store's error.
    void remove(const QString& number);
    PresetListing listing(const QString& activePreset) const;

    // Number for "save as": one past the first free name entry, 100 when all 99 are taken.
    static int firstFreeNumber(const QStringList& names);

    static QString loadedText(const QString& name, const QString& number);
    static QString savedText(const QString& name, const QString& number);

private:
    SettingsStore& m_store;
};
