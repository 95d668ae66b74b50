#include "base/SettingsStore.h"

#include "base/RuntimeError.h"

#include <QDir>
#include <QSettings>

void SettingsStore::SaveSettings(const QList<Entry>& entries) {
    for (const Entry& e : entries)
        SaveSetting(e.section, e.key, e.value);
}

namespace {
QSettings::Format formatOf([[maybe_unused]] const QString& fileName) {
#ifdef Q_OS_WIN
    // A registry branch (the default on Windows) is read through the registry; a file stays a file.
    if (fileName.startsWith(QLatin1String("HKEY_"), Qt::CaseInsensitive))
        return QSettings::NativeFormat;
#endif
    return QSettings::IniFormat;
}
} // namespace

IniSettingsStore::IniSettingsStore(const QString& fileName)
    : m_settings(std::make_unique<QSettings>(fileName, formatOf(fileName))) {
}

IniSettingsStore::~IniSettingsStore() = default;

QString IniSettingsStore::defaultFileName() {
#ifdef Q_OS_WIN
    // Existing installations keep their values in this registry branch.
    return QStringLiteral("HKEY_CURRENT_USER\\Software\\VB and VBA Program Settings\\") + applicationName();
#else
    QString base = qEnvironmentVariable("XDG_CONFIG_HOME");
    if (base.isEmpty())
        base = QDir::homePath() + QStringLiteral("/.config");
    return base + QLatin1Char('/') + applicationName() + QLatin1Char('/') + applicationName() +
           QStringLiteral(".ini");
#endif
}

QString IniSettingsStore::fileName() const {
    return m_settings->fileName();
}

static QString keyPath(const QString& section, const QString& key) {
    return section + QLatin1Char('/') + key;
}

QString IniSettingsStore::GetSetting(const QString& section, const QString& key,
                                     const QString& defaultValue) const {
    const QVariant v = m_settings->value(keyPath(section, key));
    return v.isValid() ? v.toString() : defaultValue;
}

void IniSettingsStore::SaveSetting(const QString& section, const QString& key, const QString& value) {
    m_settings->setValue(keyPath(section, key), value);
    sync(); // a crash must not lose what was already saved
}

void IniSettingsStore::SaveSettings(const QList<Entry>& entries) {
    for (const Entry& e : entries)
        m_settings->setValue(keyPath(e.section, e.key), e.value);
    sync();
}

void IniSettingsStore::sync() {
    // QSettings replaces the file in one atomic rename; a folder or file it cannot write leaves the
    // old file as it was, and the caller's handler says so instead of pretending it saved.
    m_settings->sync();
    if (m_settings->status() == QSettings::AccessError)
        throw RuntimeError(RuntimeError::PermissionDenied, QStringLiteral("Zugriff verweigert"));
}

void IniSettingsStore::DeleteSetting(const QString& section) {
    if (!hasSection(section))
        throw RuntimeError::invalidCall();
    m_settings->remove(section);
    sync();
}

bool IniSettingsStore::hasSection(const QString& section) const {
    return m_settings->childGroups().contains(section);
}
