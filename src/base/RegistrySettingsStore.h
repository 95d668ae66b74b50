#pragma once

#include "base/SettingsStore.h"

#include <memory>

class QSettings;

// The settings store of the Windows program: the registry branch
// HKCU\Software\VB and VBA Program Settings\TavoMP3Player, one key per section, where the settings of
// existing installations are. The registry writes each value whole, so it needs none of the INI file's
// checked writes.
class RegistrySettingsStore : public SettingsStore {
public:
    explicit RegistrySettingsStore(const QString& branch = defaultBranch());
    ~RegistrySettingsStore() override;

    static QString defaultBranch();

    QString GetSetting(const QString& section, const QString& key, const QString& defaultValue) const override;
    void SaveSetting(const QString& section, const QString& key, const QString& value) override;
    void SaveSettings(const QList<Entry>& entries) override;
    void DeleteSetting(const QString& section) override;
    bool hasSection(const QString& section) const override;
    using SettingsStore::GetSetting;
    using SettingsStore::SaveSetting;

private:
    void sync();

    std::unique_ptr<QSettings> m_settings;
};
