#include "base/RuntimeError.h"
#include "base/SettingsStore.h"
#include "support/FileBytes.h"
#include "support/FullDisk.h"
#include "support/TempSettings.h"

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TestSettingsStore : public QObject {
    Q_OBJECT
private slots:
    // What is saved comes back, also in the next program start.
    void roundTrip_data() {
        QTest::addColumn<QString>("section");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");
        QTest::newRow("multi-line directories")
            << u"Settings"_s << u"UserMP3Directory"_s << u"/music/a\r\n/music/b"_s;
        QTest::newRow("commas") << u"Settings"_s << u"LastUpdateCheckStatus"_s << u"ok, neu, alt"_s;
        QTest::newRow("edge blanks") << u"Preset7"_s << u"PresetName"_s << u"  Abend  "_s;
        QTest::newRow("backslashes") << u"Settings"_s << u"DialogLastpath"_s << u"C:\\Musik\\"_s;
        QTest::newRow("umlauts and quotes")
            << u"Settings"_s << u"PlaylistFile"_s << u"/home/jü/\"Liste\"; x=1.txt"_s;
        QTest::newRow("empty") << u"Settings"_s << u"BGImagePath"_s << u""_s;
        // A hex digit right behind an escaped control character is escaped too.
        QTest::newRow("typed-value marker, controls, emoji") << u"Preset12"_s << u"PresetName"_s
                                                             << u"@Variant(\t\x01"
                                                                u"1\x02"
                                                                u"b)\u00e9\U0001F3B5"_s;
    }
    void roundTrip() {
        QFETCH(QString, section);
        QFETCH(QString, key);
        QFETCH(QString, value);
        TempSettings store;
        QCOMPARE(store.GetSetting(section, key, u"default"_s), u"default"_s);
        store.SaveSetting(section, key, value);
        QCOMPARE(store.GetSetting(section, key, u"default"_s), value);
        QCOMPARE(IniSettingsStore(store.fileName()).GetSetting(section, key, u"default"_s), value);
        // Written as Qt writes it: older versions of the program read it the same.
        {
            QSettings qt(store.folder() + u"/qt.ini"_s, QSettings::IniFormat);
            qt.setValue(section + u'/' + key, value);
        }
        QCOMPARE(FileBytes::read(store.fileName()), FileBytes::read(store.folder() + u"/qt.ini"_s));
    }

    // Names are kept exactly and compared with case; a deleted section is gone, deleting it again raises.
    void sectionsKeysAndDeletion() {
        TempSettings store;
        store.SaveSetting(u"Preset7"_s, u"Text"_s, u"001 002 003"_s);
        store.SaveSetting(u"PreviousSongs"_s, u"Prev07"_s, 12);
        store.SaveSetting(u"Preset4"_s, u"PresetName"_s, u"Tag"_s);
        const QByteArray ini = FileBytes::read(store.fileName());
        QVERIFY(ini.contains("[Preset7]") && !ini.contains("Preset07") && ini.contains("Prev07=12"));
        QCOMPARE(store.GetSetting(u"PreviousSongs"_s, u"prev07"_s, 0), u"0"_s);
        store.DeleteSetting(u"Preset7"_s);
        QVERIFY(!store.hasSection(u"Preset7"_s));
        QCOMPARE(store.GetSetting(u"Preset7"_s, u"Text"_s, u"-"_s) +
                     store.GetSetting(u"Preset4"_s, u"PresetName"_s, u"-"_s),
                 u"-Tag"_s);
        QVERIFY_THROWS_EXCEPTION(RuntimeError, store.DeleteSetting(u"Preset7"_s));
    }

    // A file that cannot be written is reported, not silently dropped, and the old file stays whole;
    // the value is kept for the next save that succeeds.
    void unwritableFileIsReported_data() {
        QTest::addColumn<bool>("fullDisk"); // else a file where the store's folder would have to be
        QTest::addColumn<QString>("error");
        QTest::newRow("folder blocked") << false << u"70 Zugriff verweigert"_s;
        QTest::newRow("full disk") << true << u"61 Datenträger voll"_s;
    }
    void unwritableFileIsReported() {
        QFETCH(bool, fullDisk);
        QFETCH(QString, error);
        FullDisk disk;
        TempSettings blocker;
        if (fullDisk && !disk.ready())
            QSKIP(FullDisk::whyNot());
        QFile(blocker.folder() + u"/file"_s).open(QIODevice::WriteOnly);
        const QString file =
            fullDisk ? disk.path(u"TavoMP3Player.ini"_s) : blocker.folder() + u"/file/x.ini"_s;
        IniSettingsStore store(file);
        if (fullDisk) {
            store.SaveSetting(u"Settings"_s, u"PlaylistFile"_s, u"/home/jü/liste.txt"_s);
            disk.fill();
        }
        const QByteArray before = FileBytes::read(file);
        try {
            store.SaveSetting(u"Settings"_s, u"Volume"_s, 150);
            QFAIL("saving must fail");
        } catch (const RuntimeError& e) {
            QCOMPARE(QString::number(e.number()) + u' ' + e.description(), error);
        }
        QCOMPARE(FileBytes::read(file), before);
        if (fullDisk) {
            disk.drain();
            store.SaveSetting(u"Settings"_s, u"ShuffleStatus"_s, u"True"_s);
            const IniSettingsStore reread(file);
            QCOMPARE(reread.GetSetting(u"Settings"_s, u"PlaylistFile"_s, QString()) + u'|' +
                         reread.GetSetting(u"Settings"_s, u"Volume"_s, QString()),
                     u"/home/jü/liste.txt|150"_s);
        }
    }

    void defaultFileFollowsXdgConfigHome_data() {
        QTest::addColumn<bool>("xdg");
        QTest::newRow("XDG_CONFIG_HOME") << true;
        QTest::newRow("unset: ~/.config") << false;
    }
    void defaultFileFollowsXdgConfigHome() {
        QFETCH(bool, xdg);
#ifdef Q_OS_WIN
        QSKIP("Windows keeps the settings in the registry (windows/tst_RegistrySettings)");
#endif
        QTemporaryDir dir;
        const QByteArray oldHome = qgetenv("HOME");
        qputenv(xdg ? "XDG_CONFIG_HOME" : "HOME", dir.path().toLocal8Bit());
        if (!xdg)
            qunsetenv("XDG_CONFIG_HOME");
        const QString expected =
            dir.path() + (xdg ? u""_s : u"/.config"_s) + u"/TavoMP3Player/TavoMP3Player.ini"_s;
        const QString name = IniSettingsStore::defaultFileName();
        IniSettingsStore(name).SaveSetting(u"Settings"_s, u"Volume"_s, 150);
        qunsetenv("XDG_CONFIG_HOME");
        qputenv("HOME", oldHome);
        QCOMPARE(name, expected);
        QVERIFY(QFile::exists(expected));
    }
};

QTEST_GUILESS_MAIN(TestSettingsStore)
#include "tst_SettingsStore.moc"
