#include "base/RuntimeError.h"
#include "base/RegistrySettingsStore.h"

#include <QTest>

#include <windows.h>

using namespace Qt::StringLiterals;

// The settings store of the Windows program: registry values where earlier installations keep theirs,
// one key per section under HKCU\Software\VB and VBA Program Settings\<application>. The test writes
// to a branch of its own, so that it can never touch a real user's settings.
class tst_RegistrySettings : public QObject {
    Q_OBJECT

    static inline const QString kBranch = u"Software\\VB and VBA Program Settings\\TavoMP3PlayerTest"_s;

    static std::wstring wide(const QString& text) { return text.toStdWString(); }
    // The value as the registry holds it (a string value, REG_SZ), or "<none>".
    static QString registryValue(const QString& section, const QString& key) {
        wchar_t buffer[512];
        DWORD size = sizeof buffer;
        if (RegGetValueW(HKEY_CURRENT_USER, wide(kBranch + u'\\' + section).c_str(), wide(key).c_str(),
                         RRF_RT_REG_SZ, nullptr, buffer, &size) != ERROR_SUCCESS)
            return u"<none>"_s;
        return QString::fromWCharArray(buffer, int(size / sizeof(wchar_t)) - 1);
    }

private slots:
    void cleanup() { RegDeleteTreeW(HKEY_CURRENT_USER, wide(kBranch).c_str()); }

    void defaultIsTheRegistryBranch() {
        QCOMPARE(RegistrySettingsStore::defaultBranch(),
                 u"HKEY_CURRENT_USER\\Software\\VB and VBA Program Settings\\TavoMP3Player"_s);
    }

    void values_data() {
        QTest::addColumn<QString>("section");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");
        QTest::newRow("path") << u"Settings"_s << u"WinampPath"_s << u"C:\\Programme\\Winamp\\Winamp.exe"_s;
        QTest::newRow("multi-line") << u"Settings"_s << u"UserMP3Directory"_s << u"C:\\Musik\r\nD:\\Mehr"_s;
        QTest::newRow("umlauts, edge blanks") << u"Preset7"_s << u"PresetName"_s << u"  Grüße  "_s;
        QTest::newRow("empty") << u"Settings"_s << u"BGImagePath"_s << u""_s;
    }
    void values() {
        QFETCH(QString, section);
        QFETCH(QString, key);
        QFETCH(QString, value);
        RegistrySettingsStore store(u"HKEY_CURRENT_USER\\"_s + kBranch);
        store.SaveSetting(section, key, value);
        QCOMPARE(registryValue(section, key), value);
        QCOMPARE(RegistrySettingsStore(u"HKEY_CURRENT_USER\\"_s + kBranch).GetSetting(section, key, u"-"_s),
                 value);
        store.DeleteSetting(section);
        QCOMPARE(registryValue(section, key), u"<none>"_s);
        QVERIFY(!store.hasSection(section));
        try {
            store.DeleteSetting(section);
            QFAIL("a missing section was deleted");
        } catch (const RuntimeError& e) {
            QCOMPARE(e.number(), int(RuntimeError::InvalidCall));
        }
    }
};

QTEST_GUILESS_MAIN(tst_RegistrySettings)
#include "tst_RegistrySettings.moc"
