#pragma once

#include <QString>
#include <memory>

class QSettings;

// The per-user store of the application "TavoMP3Player": sections of text keys. Readers pass
// their own default at every call; there is no central settings object.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;
    virtual QString GetSetting(const QString& section, const QString& key,
                               const QString& defaultValue) const = 0;
    virtual void SaveSetting(const QString& section, const QString& key, const QString& value) = 0;
    // Removes a whole section; a missing section raises the invalid-call error.
    virtual void DeleteSetting(const QString& section) = 0;
    virtual bool hasSection(const QString& section) const = 0;

    QString GetSetting(const QString& section, const QString& key, int defaultValue) const {
        return GetSetting(section, key, QString::number(defaultValue));
    }
    QString GetSetting(const QString& section, const QString& key, const char*) const = delete;
    void SaveSetting(const QString& section, const QString& key, qint64 value) {
        SaveSetting(section, key, QString::number(value));
    }

    static QString applicationName() { return QStringLiteral("TavoMP3Player"); }
};

// INI file, one group per section. Linux: $XDG_CONFIG_HOME/TavoMP3Player/TavoMP3Player.ini.
class IniSettingsStore : public SettingsStore {
public:
    explicit IniSettingsStore(const QString& fileName = defaultFileName());
    ~IniSettingsStore() override;

    static QString defaultFileName();
    QString fileName() const;

    QString GetSetting(const QString& section, const QString& key,
                       const QString& defaultValue) const override;
    void SaveSetting(const QString& section, const QString& key, const QString& value) override;
    void DeleteSetting(const QString& section) override;
    bool hasSection(const QString& section) const override;
    using SettingsStore::GetSetting;
    using SettingsStore::SaveSetting;

private:
    std::unique_ptr<QSettings> m_settings;
};
