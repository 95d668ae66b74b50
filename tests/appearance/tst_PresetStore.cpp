// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "appearance/PresetStore.h"
#include "appearance/UpdateOptionTexts.h"
#include "support/TempSettings.h"

#include <QTest>

// Presets in the settings store, and the texts of the update options.
class tst_PresetStore : public QObject {
    Q_OBJECT

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
        s.SaveSetting(PresetStore::sectionName("2"), "PresetName", "Abend");
        s.SaveSetting(PresetStore::sectionName("5"), "PresetName", "Nacht");
        const PresetListing l = PresetStore(s).listing(active);
        QCOMPARE(l.items, (QStringList{"- Default Preset -", "Abend", "Nacht"}));
        QCOMPARE(l.names.at(4), "Nacht");
        QCOMPARE(l.selected, selected);
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

    void checkTimeTextWithoutABlank() {
        // The same p cuts both ends: the time loses nothing only when it is as long as the date.
        QCOMPARE(UpdateOptionTexts::checkTimeText("gestern"), " /  Uhr");
        QCOMPARE(UpdateOptionTexts::checkTimeText(" x"), "  / x Uhr");
    }
};

QTEST_GUILESS_MAIN(tst_PresetStore)
#include "tst_PresetStore.moc"
