#include "appearance/PresetStore.h"

#include "base/Checked.h"
#include "base/SettingsStore.h"

PresetStore::Preset PresetStore::read(const QString& number) const {
    Preset p;
    if (number == QLatin1String("0")) {
        p.name = ColorRoles::builtInPresetName();
        p.scheme = ColorScheme::builtIn();
        return p;
    }
    const QString section = sectionName(number);
    p.name = m_store.GetSetting(section, QStringLiteral("PresetName"), ColorRoles::absentPresetName());
    for (const ColorRoles::Role& r : ColorRoles::all())
        p.scheme.setColourText(r.id, m_store.GetSetting(section, r.key, r.absentDefault));
    return p;
}

void PresetStore::save(const QString& number, const QString& name, const ColorScheme& scheme) {
    m_store.SaveSetting(QStringLiteral("Settings"), QStringLiteral("ActivePreset"), number);
    const QString section = sectionName(number);
    m_store.SaveSetting(section, QStringLiteral("PresetName"), name);
    for (const ColorRoles::Role& r : ColorRoles::all())
        m_store.SaveSetting(section, r.key, scheme.colourText(r.id));
}

void PresetStore::remove(const QString& number) {
    m_store.DeleteSetting(sectionName(number));
}

PresetListing PresetStore::listing(const QString& activePreset) const {
    PresetListing l;
    l.items.append(ColorRoles::builtInPresetName());
    l.labels.append(QStringLiteral("0. ") + ColorRoles::builtInPresetName());
    for (int n = 1; n <= MaxPresets; ++n) {
        const QString name =
            m_store.GetSetting(sectionName(QString::number(n)), QStringLiteral("PresetName"), QString());
        l.names.append(name);
        if (name.isEmpty())
            continue;
        l.items.append(name);
        l.labels.append(QString::number(n) + QStringLiteral(". ") + name);
        // Compared as numbers, so an active preset stored as "07" still finds preset 7.
        if (Checked::toNumber(activePreset) == n)
            l.selected = int(l.items.size()) - 1;
    }
    if (activePreset == QLatin1String("0"))
        l.selected = 0;
    return l;
}

int PresetStore::firstFreeNumber(const QStringList& names) {
    int i = 0;
    while (i < names.size() && !names.at(i).isEmpty())
        ++i;
    // With every entry taken the search ends one past the table: number 100, which no list shows.
    return i + 1;
}

QString PresetStore::loadedText(const QString& name, const QString& number) {
    return QStringLiteral("Preset \"") + name + QStringLiteral("\" (Preset") + number +
           QStringLiteral(") wurde geladen");
}

QString PresetStore::savedText(const QString& name, const QString& number) {
    return QStringLiteral("Preset \"") + name + QStringLiteral("\" wurde auf Preset") + number +
           QStringLiteral(" gespeichert");
}
