#include "base/RuntimeError.h"
#include "base/SettingsStore.h"
#include "support/TempSettings.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class TestSettingsStore : public QObject {
    Q_OBJECT
private slots:
    void roundTrip_data() {
        QTest::addColumn<QString>("section");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");
        QTest::newRow("multi-line directories")
            << QStringLiteral("Settings") << QStringLiteral("UserMP3Directory")
            << QStringLiteral("/music/a\r\n/music/b\r\n/music/c");
        QTest::newRow("commas") << QStringLiteral("Settings") << QStringLiteral("LastUpdateCheckStatus")
                                << QStringLiteral("ok, neu, alt");
        QTest::newRow("edge blanks") << QStringLiteral("Preset7") << QStringLiteral("PresetName")
                                     << QStringLiteral("  Abend  ");
        QTest::newRow("backslashes") << QStringLiteral("Settings") << QStringLiteral("DialogLastpath")
                                     << QStringLiteral("C:\\Musik\\");
        QTest::newRow("umlauts and quotes") << QStringLiteral("Settings") << QStringLiteral("PlaylistFile")
                                            << QStringLiteral("/home/jü/\"Liste\"; x=1.txt");
        QTest::newRow("empty") << QStringLiteral("Settings") << QStringLiteral("BGImagePath") << QString();
        QTest::newRow("colour text") << QStringLiteral("Preset12") << QStringLiteral("Text")
                                     << QStringLiteral("000 064 000");
    }
    void roundTrip() {
        QFETCH(QString, section);
        QFETCH(QString, key);
        QFETCH(QString, value);
        TempSettings store;
        store.SaveSetting(section, key, value);
        QCOMPARE(store.GetSetting(section, key, QStringLiteral("default")), value);
        // A second store on the same file (the next program start) reads the same text.
        IniSettingsStore reopened(store.fileName());
        QCOMPARE(reopened.GetSetting(section, key, QStringLiteral("default")), value);
    }

    void missingKeysGiveTheCallersDefault() {
        TempSettings store;
        QCOMPARE(
            store.GetSetting(QStringLiteral("Settings"), QStringLiteral("Volume"), QStringLiteral("200")),
            QStringLiteral("200"));
        QCOMPARE(store.GetSetting(QStringLiteral("PreviousSongs"), QStringLiteral("Prev07"), 0),
                 QStringLiteral("0"));
        store.SaveSetting(QStringLiteral("Settings"), QStringLiteral("Other"), QStringLiteral("x"));
        QCOMPARE(store.GetSetting(QStringLiteral("Settings"), QStringLiteral("Volume"), QStringLiteral("7")),
                 QStringLiteral("7"));
    }

    void sectionsAndKeysKeepTheirExactNames() {
        TempSettings store;
        store.SaveSetting(QStringLiteral("Preset7"), QStringLiteral("Text"), QStringLiteral("001 002 003"));
        store.SaveSetting(QStringLiteral("PreviousSongs"), QStringLiteral("Prev07"), 12);
        QFile file(store.fileName());
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray ini = file.readAll();
        QVERIFY(ini.contains("[Preset7]"));
        QVERIFY(!ini.contains("Preset07"));
        QVERIFY(ini.contains("Prev07=12"));
        QCOMPARE(store.GetSetting(QStringLiteral("PreviousSongs"), QStringLiteral("prev07"), 0),
                 QStringLiteral("0"));
    }

    void deleteSetting() {
        TempSettings store;
        store.SaveSetting(QStringLiteral("Preset3"), QStringLiteral("PresetName"), QStringLiteral("Nacht"));
        store.SaveSetting(QStringLiteral("Preset3"), QStringLiteral("Text"), QStringLiteral("000 000 000"));
        store.SaveSetting(QStringLiteral("Preset4"), QStringLiteral("PresetName"), QStringLiteral("Tag"));
        store.DeleteSetting(QStringLiteral("Preset3"));
        QVERIFY(!store.hasSection(QStringLiteral("Preset3")));
        QCOMPARE(
            store.GetSetting(QStringLiteral("Preset3"), QStringLiteral("PresetName"), QStringLiteral("-")),
            QStringLiteral("-"));
        QCOMPARE(
            store.GetSetting(QStringLiteral("Preset4"), QStringLiteral("PresetName"), QStringLiteral("-")),
            QStringLiteral("Tag"));
        try {
            store.DeleteSetting(QStringLiteral("Preset3"));
            QFAIL("deleting a missing section must raise an error");
        } catch (const RuntimeError& e) {
            QCOMPARE(e.number(), int(RuntimeError::InvalidCall));
        }
    }

    void defaultFileFollowsXdgConfigHome() {
        QTemporaryDir dir;
        qputenv("XDG_CONFIG_HOME", dir.path().toLocal8Bit());
        QCOMPARE(IniSettingsStore::defaultFileName(),
                 dir.path() + QStringLiteral("/TavoMP3Player/TavoMP3Player.ini"));
        {
            IniSettingsStore store;
            store.SaveSetting(QStringLiteral("Settings"), QStringLiteral("Volume"), 150);
        }
        QVERIFY(QFile::exists(dir.path() + QStringLiteral("/TavoMP3Player/TavoMP3Player.ini")));
        qunsetenv("XDG_CONFIG_HOME");
    }
};

QTEST_GUILESS_MAIN(TestSettingsStore)
#include "tst_SettingsStore.moc"
