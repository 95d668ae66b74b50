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
        s.SaveSetting(PresetStore::sectionName(QString::number(n)), "PresetName", name);
    }

private slots:
    void listingSelectsTheActivePresetsEntry_data() {
        QTest::addColumn<QString>("active");
        QTest::addColumn<int>("selected");
        QTest::newRow("built-in") << "0" << 0;
        QTest::newRow("compared as number") << "05" << 2;
        QTest::newRow("missing preset") << "4" << -1;
    }
    void listingSelectsTheActivePresetsEntry() {
        QFETCH(QString, active);
        QFETCH(int, selected);
        TempSettings s;
        storeNamed(s, 2, "Abend");
        storeNamed(s, 5, "Nacht");
        const PresetListing l = PresetStore(s).listing(active);
        QCOMPARE(l.items, (QStringList{"- Default Preset -", "Abend", "Nacht"}));
        QCOMPARE(l.names.at(4), "Nacht");
        QCOMPARE(l.selected, selected);
    }

    void saveWritesThePaddedSchemeUnderThePlainNumber() {
        TempSettings s;
        ColorScheme scheme = ColorScheme::builtIn();
        scheme.setComponent(ColorRoles::FieldText, ColorScheme::Blue, "9");
        PresetStore(s).save("7", "Sieben", scheme);
        QCOMPARE(s.GetSetting("Settings", "ActivePreset", QString()), "7");
        QVERIFY(s.hasSection("Preset7"));
        QVERIFY(!s.hasSection("Preset07"));
        QCOMPARE(s.GetSetting("Preset7", "PresetName", QString()), "Sieben");
        QCOMPARE(s.GetSetting("Preset7", "FieldText", QString()), "000 000 009");
        const PresetStore::Preset back = PresetStore(s).read("7");
        QCOMPARE(back.name, "Sieben");
        for (const auto& r : ColorRoles::all())
            QCOMPARE(back.scheme.colourText(r.id), scheme.colourText(r.id));
    }

    void savingTheBuiltInPresetWritesPreset0ThatIsNeverRead() {
        TempSettings s;
        ColorScheme changed = ColorScheme::builtIn();
        changed.setComponent(ColorRoles::Text, ColorScheme::Red, "1");
        PresetStore(s).save("0", "Null", changed);
        QVERIFY(s.hasSection("Preset0"));
        QCOMPARE(PresetStore(s).read("0").scheme.rgb(ColorRoles::Text), (Rgb{200, 200, 0}));
        QCOMPARE(PresetStore(s).listing("0").items.size(), 1);
    }

    void missingKeysGiveTheAbsentDefaults() {
        TempSettings s;
        s.SaveSetting("Preset3", "Text", "010 020 030");
        const PresetStore::Preset p = PresetStore(s).read("3");
        QCOMPARE(p.name, "-");
        QCOMPARE(p.scheme.rgb(ColorRoles::Text), (Rgb{10, 20, 30}));
        QCOMPARE(p.scheme.rgb(ColorRoles::Background), (Rgb{128, 128, 128}));
        QCOMPARE(p.scheme.rgb(ColorRoles::DisplayTextBright), (Rgb{0, 192, 0}));
    }

    void removingAMissingPresetRaises() {
        TempSettings s;
        QVERIFY_THROWS_EXCEPTION(RuntimeError, PresetStore(s).remove("4"));
    }

    void checkTimeText_data() {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("shown");
        // The same p cuts both ends: the time loses nothing only when it is as long as the date.
        QTest::newRow("date and time") << "23.11.2026 14:05:00"
                                       << "23.11.2026  / 26 14:05:00 Uhr";
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
        QCOMPARE(UpdateOptionTexts::remindItemFor(14), "2 Wochen");
        QCOMPARE(UpdateOptionTexts::daysFor("8 Wochen"), 56);
        QCOMPARE(UpdateOptionTexts::remindItemFor(5), "Fehler");
        QCOMPARE(UpdateOptionTexts::daysFor("Fehler"), 0);
    }
};

QTEST_GUILESS_MAIN(tst_PresetStore)
#include "tst_PresetStore.moc"
