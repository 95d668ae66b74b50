// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "appearance/PresetStore.h"
#include "appearance/UpdateOptionTexts.h"
#include "base/RuntimeError.h"
#include "support/TempSettings.h"

#include <QFile>
#include <QTest>

// Presets in the settings store, and the texts of the update options.
class tst_PresetStore : public QObject {
    Q_OBJECT

    static void storeNamed(SettingsStore& s, int n, const QString& name) {
        s.SaveSetting(PresetStore::sectionName(QString::number(n)), QStringLiteral("PresetName"), name);
    }

private slots:
    void freshStoreListsOnlyTheBuiltInPreset() {
        TempSettings s;
        const PresetListing l = PresetStore(s).listing(QStringLiteral("0"));
        QCOMPARE(l.items, QStringList{"- Default Preset -"});
        QCOMPARE(l.labels, QStringList{"0. - Default Preset -"});
        QCOMPARE(l.names.size(), 99);
        QCOMPARE(l.names.count(QString()), 99);
        QCOMPARE(l.selected, 0);
        const PresetStore::Preset p = PresetStore(s).read(QStringLiteral("0"));
        QCOMPARE(p.name, QStringLiteral("- Default Preset -"));
        QCOMPARE(p.scheme.rgb(ColorRoles::Text), (Rgb{200, 200, 0}));
        QCOMPARE(p.scheme.rgb(ColorRoles::Background), (Rgb{38, 38, 38}));
    }

    void listingSelectsTheActivePresetsEntry_data() {
        QTest::addColumn<QString>("active");
        QTest::addColumn<int>("selected");
        QTest::newRow("built-in") << "0" << 0;
        QTest::newRow("second stored") << "5" << 2;
        QTest::newRow("compared as number") << "05" << 2;
        QTest::newRow("missing preset") << "4" << -1;
    }
    void listingSelectsTheActivePresetsEntry() {
        QFETCH(QString, active);
        QFETCH(int, selected);
        TempSettings s;
        storeNamed(s, 2, QStringLiteral("Abend"));
        storeNamed(s, 5, QStringLiteral("Nacht"));
        const PresetListing l = PresetStore(s).listing(active);
        QCOMPARE(l.items, (QStringList{"- Default Preset -", "Abend", "Nacht"}));
        QCOMPARE(l.labels, (QStringList{"0. - Default Preset -", "2. Abend", "5. Nacht"}));
        QCOMPARE(l.names.at(1), QStringLiteral("Abend"));
        QCOMPARE(l.names.at(4), QStringLiteral("Nacht"));
        QCOMPARE(l.selected, selected);
    }

    void firstFreeNumber_data() {
        QTest::addColumn<QList<int>>("taken");
        QTest::addColumn<int>("number");
        QTest::newRow("empty store") << QList<int>{} << 1;
        QTest::newRow("contiguous") << QList<int>{1, 2, 3} << 4;
        QTest::newRow("gap is reused") << QList<int>{1, 3} << 2;
        QList<int> all;
        for (int i = 1; i <= 99; ++i)
            all.append(i);
        QTest::newRow("all 99 taken gives 100") << all << 100;
    }
    void firstFreeNumber() {
        QFETCH(QList<int>, taken);
        QFETCH(int, number);
        TempSettings s;
        for (int n : taken)
            storeNamed(s, n, QStringLiteral("P") + QString::number(n));
        QCOMPARE(PresetStore::firstFreeNumber(PresetStore(s).listing(QStringLiteral("0")).names), number);
    }

    void saveWritesThePaddedSchemeUnderThePlainNumber() {
        TempSettings s;
        ColorScheme scheme = ColorScheme::builtIn();
        scheme.setComponent(ColorRoles::FieldText, ColorScheme::Blue, QStringLiteral("9"));
        PresetStore(s).save(QStringLiteral("7"), QStringLiteral("Sieben"), scheme);
        QCOMPARE(s.GetSetting(QStringLiteral("Settings"), QStringLiteral("ActivePreset"), QString()),
                 QStringLiteral("7"));
        QVERIFY(s.hasSection(QStringLiteral("Preset7")));
        QVERIFY(!s.hasSection(QStringLiteral("Preset07")));
        QCOMPARE(s.GetSetting(QStringLiteral("Preset7"), QStringLiteral("PresetName"), QString()),
                 QStringLiteral("Sieben"));
        QCOMPARE(s.GetSetting(QStringLiteral("Preset7"), QStringLiteral("FieldText"), QString()),
                 QStringLiteral("000 000 009"));
        const PresetStore::Preset back = PresetStore(s).read(QStringLiteral("7"));
        QCOMPARE(back.name, QStringLiteral("Sieben"));
        for (const auto& r : ColorRoles::all())
            QCOMPARE(back.scheme.colourText(r.id), scheme.colourText(r.id));
    }

    void savingTheBuiltInPresetWritesPreset0ThatIsNeverRead() {
        TempSettings s;
        ColorScheme changed = ColorScheme::builtIn();
        changed.setComponent(ColorRoles::Text, ColorScheme::Red, QStringLiteral("1"));
        PresetStore(s).save(QStringLiteral("0"), QStringLiteral("Null"), changed);
        QVERIFY(s.hasSection(QStringLiteral("Preset0")));
        QCOMPARE(PresetStore(s).read(QStringLiteral("0")).scheme.rgb(ColorRoles::Text), (Rgb{200, 200, 0}));
        QCOMPARE(PresetStore(s).listing(QStringLiteral("0")).items.size(), 1);
    }

    void missingKeysGiveTheAbsentDefaults() {
        TempSettings s;
        s.SaveSetting(QStringLiteral("Preset3"), QStringLiteral("Text"), QStringLiteral("010 020 030"));
        const PresetStore::Preset p = PresetStore(s).read(QStringLiteral("3"));
        QCOMPARE(p.name, QStringLiteral("-"));
        QCOMPARE(p.scheme.rgb(ColorRoles::Text), (Rgb{10, 20, 30}));
        QCOMPARE(p.scheme.rgb(ColorRoles::Background), (Rgb{128, 128, 128}));
        QCOMPARE(p.scheme.rgb(ColorRoles::DisplayTextBright), (Rgb{0, 192, 0}));
    }

    void removingAMissingPresetRaises() {
        TempSettings s;
        QVERIFY_THROWS_EXCEPTION(RuntimeError, PresetStore(s).remove(QStringLiteral("4")));
    }

    void statusTexts() {
        QCOMPARE(PresetStore::loadedText(QStringLiteral("Abend"), QStringLiteral("2")),
                 QStringLiteral("Preset \"Abend\" (Preset2) wurde geladen"));
        QCOMPARE(PresetStore::savedText(QStringLiteral("Abend"), QStringLiteral("2")),
                 QStringLiteral("Preset \"Abend\" wurde auf Preset2 gespeichert"));
    }

    void checkTimeText_data() {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("shown");
        // The same p cuts both ends: the time loses nothing only when it is as long as the date.
        QTest::newRow("date and time") << "23.11.2026 14:05:00"
                                       << "23.11.2026  / 26 14:05:00 Uhr";
        QTest::newRow("short date") << "1.2.26 9:30"
                                    << "1.2.26  / 26 9:30 Uhr";
        QTest::newRow("no blank") << "gestern"
                                  << " /  Uhr";
        QTest::newRow("leading blank") << " x"
                                       << "  / x Uhr";
    }
    void checkTimeText() {
        QFETCH(QString, stored);
        QFETCH(QString, shown);
        QCOMPARE(UpdateOptionTexts::checkTimeText(stored), shown);
    }

    void intervalItems_data() {
        QTest::addColumn<int>("minutes");
        QTest::addColumn<QString>("item");
        QTest::newRow("1") << 1 << "1 Minute";
        QTest::newRow("60") << 60 << "1 Stunde";
        QTest::newRow("300") << 300 << "5 Stunden";
        QTest::newRow("45 is no item") << 45 << "Fehler";
        QTest::newRow("0 is no item") << 0 << "Fehler";
    }
    void intervalItems() {
        QFETCH(int, minutes);
        QFETCH(QString, item);
        QCOMPARE(UpdateOptionTexts::intervalItemFor(minutes), item);
        QCOMPARE(UpdateOptionTexts::minutesFor(item), item == QLatin1String("Fehler") ? 0 : minutes);
    }

    void reminderItems() {
        QCOMPARE(UpdateOptionTexts::remindItems().size(), 9);
        QCOMPARE(UpdateOptionTexts::remindItemFor(14), QStringLiteral("2 Wochen"));
        QCOMPARE(UpdateOptionTexts::daysFor(QStringLiteral("8 Wochen")), 56);
        QCOMPARE(UpdateOptionTexts::remindItemFor(5), QStringLiteral("Fehler"));
        QCOMPARE(UpdateOptionTexts::daysFor(QStringLiteral("Fehler")), 0);
    }
};

QTEST_GUILESS_MAIN(tst_PresetStore)
#include "tst_PresetStore.moc"
