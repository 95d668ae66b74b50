#pragma once

#include <QList>
#include <QString>
#include <memory>

class QSettings;

// The per-user store of the application "TavoMP3Player": sections of text keys. Readers pass
// their own default at every call; there is no central settings object.
class SettingsStore {
public:
    struct Entry {
        QString section;
        QString key;
        QString value;
    };

    virtual ~SettingsStore() = default;
    virtual QString GetSetting(const QString& section, const QString& key,
                               const QString& defaultValue) const = 0;
    // Raises the permission error when the store cannot be written.
    virtual void SaveSetting(const QString& section, const QString& key, const QString& value) = 0;
    // Several values as one write, in the given order: a store that fails keeps all of its old values.
    virtual void SaveSettings(const QList<Entry>& entries);
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

// INI file, one group per section. Linux: $XDG_CONFIG_HOME/TavoMP3Player/TavoMP3Player.ini. Windows:
// the registry branch HKCU\Software\VB and VBA Program Settings\TavoMP3Player, one key per section,
// where the settings of existing installations are; a file name given there is an INI file too.
class IniSettingsStore : public SettingsStore {
public:
    explicit IniSettingsStore(const QString& fileName = defaultFileName());
    ~IniSettingsStore() override;

    static QString defaultFileName();
    QString fileName() const;

    QString GetSetting(const QString& section, const QString& key,
                       const QString& defaultValue) const override;
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
