#include "base/SettingsStore.h"

#include "base/AtomicFileWriter.h"
#include "base/RuntimeError.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>

void SettingsStore::SaveSettings(const QList<Entry>& entries) {
    for (const Entry& e : entries)
        SaveSetting(e.section, e.key, e.value);
}

IniSettingsStore::IniSettingsStore(const QString& fileName) : m_fileName(fileName) {
    const QSettings file(fileName, QSettings::IniFormat);
    for (const QString& path : file.allKeys()) {
        const qsizetype slash = path.indexOf(QLatin1Char('/'));
        const QString section = slash < 0 ? QStringLiteral("General") : path.left(slash);
        m_sections[section][path.mid(slash + 1)] = file.value(path).toString();
    }
}

QString IniSettingsStore::defaultFileName() {
    QString base = qEnvironmentVariable("XDG_CONFIG_HOME");
    if (base.isEmpty())
        base = QDir::homePath() + QStringLiteral("/.config");
    return base + QLatin1Char('/') + applicationName() + QLatin1Char('/') + applicationName() +
           QStringLiteral(".ini");
}

QString IniSettingsStore::fileName() const {
    return m_fileName;
}

QString IniSettingsStore::GetSetting(const QString& section, const QString& key,
                                     const QString& defaultValue) const {
    const auto found = m_sections.constFind(section);
    if (found == m_sections.constEnd())
        return defaultValue;
    return found->value(key, defaultValue);
}

void IniSettingsStore::SaveSetting(const QString& section, const QString& key, const QString& value) {
    m_sections[section][key] = value;
    writeFile(); // a crash must not lose what was already saved
}

void IniSettingsStore::SaveSettings(const QList<Entry>& entries) {
    for (const Entry& e : entries)
        m_sections[e.section][e.key] = e.value;
    writeFile();
}

void IniSettingsStore::writeFile() {
    // On failure the old file stays whole and the values stay in memory: the next save that
    // succeeds (once space is freed) writes them too.
    try {
        if (!QDir().mkpath(QFileInfo(m_fileName).absolutePath()))
            throw RuntimeError(RuntimeError::PermissionDenied, QStringLiteral("Zugriff verweigert"));
        AtomicFileWriter::writeFile(m_fileName, IniText::write(m_sections));
    } catch (const RuntimeError& e) {
        // A folder or file that cannot be written counts as the store's own access error.
        if (e.number() == RuntimeError::DiskFull || e.number() == RuntimeError::DeviceIo)
            throw;
        throw RuntimeError(RuntimeError::PermissionDenied, QStringLiteral("Zugriff verweigert"));
    }
}

void IniSettingsStore::DeleteSetting(const QString& section) {
    if (!hasSection(section))
        throw RuntimeError::invalidCall();
    m_sections.remove(section);
    writeFile();
}

bool IniSettingsStore::hasSection(const QString& section) const {
    const auto found = m_sections.constFind(section);
    return found != m_sections.constEnd() && !found->isEmpty();
}
