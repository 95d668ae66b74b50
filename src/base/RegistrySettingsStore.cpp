#include "base/RegistrySettingsStore.h"

#include "base/RuntimeError.h"

#include <QSettings>

namespace {
QString keyPath(const QString& section, const QString& key) {
    return section + QLatin1Char('/') + key;
}
} // namespace

RegistrySettingsStore::RegistrySettingsStore(const QString& branch)
    : m_settings(std::make_unique<QSettings>(branch, QSettings::NativeFormat)) {
}

RegistrySettingsStore::~RegistrySettingsStore() = default;

QString RegistrySettingsStore::defaultBranch() {
    return QStringLiteral("HKEY_CURRENT_USER\\Software\\VB and VBA Program Settings\\") + applicationName();
}

QString RegistrySettingsStore::GetSetting(const QString& section, const QString& key,
                                          const QString& defaultValue) const {
    const QVariant v = m_settings->value(keyPath(section, key));
    return v.isValid() ? v.toString() : defaultValue;
}

void RegistrySettingsStore::SaveSetting(const QString& section, const QString& key, const QString& value) {
    m_settings->setValue(keyPath(section, key), value);
    sync(); // a crash must not lose what was already saved
}

void RegistrySettingsStore::SaveSettings(const QList<Entry>& entries) {
    for (const Entry& e : entries)
        m_settings->setValue(keyPath(e.section, e.key), e.value);
    sync();
}

void RegistrySettingsStore::sync() {
    m_settings->sync();
    if (m_settings->status() == QSettings::AccessError)
        throw RuntimeError(RuntimeError::PermissionDenied, QStringLiteral("Zugriff verweigert"));
}

void RegistrySettingsStore::DeleteSetting(const QString& section) {
    if (!hasSection(section))
        throw RuntimeError::invalidCall();
    m_settings->remove(section);
    sync();
}

bool RegistrySettingsStore::hasSection(const QString& section) const {
    return m_settings->childGroups().contains(section, Qt::CaseInsensitive);
}
