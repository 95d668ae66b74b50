// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "appearance/ColorSchemeController.h"
#include "appearance/SettingsWindowHost.h"
#include "support/FileBytes.h"
#include "support/TestServices.h"
#include "ui/SchemePainter.h"
#include "ui/TavoMP3Settings.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QtTest>

// The settings window: its load, saving with the two checks, and the colour presets.
class tst_SettingsWindow : public QObject {
    Q_OBJECT

    // Stands in for the program behind the settings window: records every call in order.
    struct RecordingSettingsHost : SettingsWindowHost {
        QList<QPair<QString, Rgb>> colourCalls; // the colour controller's roles, as "SetColor<role>"
        QStringList calls; // "LoadBGImage:<path>", "setBrowsePath:<dirs>", "FuncSetEnv", "startPlayer:<path>"

        void LoadBGImage(const QString& path) override { calls << "LoadBGImage:" + path; }
        void setBrowsePath(const QString& dirs) override { calls << "setBrowsePath:" + dirs; }
        void FuncSetEnv() override { calls << "FuncSetEnv"; }
        void startPlayer(const QString& path) override { calls << "startPlayer:" + path; }
    };

    QTemporaryDir m_dir;

    QString existingFile(const QString& name) {
        return FileBytes::write(m_dir.filePath(name), "x") ? m_dir.filePath(name) : QString();
    }

    // The window deletes itself when it closes, as an unloaded form goes away.
    struct Rig {
        TestServices t;
        RecordingSettingsHost host;
        ColorSchemeController colours{t.settings};
        QPointer<TavoMP3Settings> w;
        // Presets 1.. get the names given (none for an empty name), with the colour text "00n 00n 00n".
        explicit Rig(const QStringList& presets = {}, const QStringList& settings = {}) {
            for (int n = 1; n <= presets.size(); ++n) {
                if (presets.at(n - 1).isEmpty())
                    continue;
                const QString section = "Preset" + QString::number(n);
                t.settings.SaveSetting(section, "PresetName", presets.at(n - 1));
                t.settings.SaveSetting(section, "Text", QString("00%1 00%1 00%1").arg(n % 10));
            }
            for (const QString& s : settings)
                t.settings.SaveSetting("Settings", s.section('=', 0, 0), s.section('=', 1));
            QObject::connect(
                &colours, &ColorSchemeController::roleColourChanged, [this](int role, const Rgb& c) {
                    host.colourCalls.append({"SetColor" + ColorRoles::role(ColorRoles::Id(role)).key, c});
                });
            w = new TavoMP3Settings(t.services, host, colours);
        }
        ~Rig() { delete w; }
        QString stored(const QString& section, const QString& key) const {
            return t.settings.GetSetting(section, key, QStringLiteral("-"));
        }
    };

private slots:
    void loadShowsStoredValues_data() {
        QTest::addColumn<QString>("settings"); // key=value|...
        QTest::addColumn<QString>("shown");    // player|folders|status|last check|interval|reminder
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("saved"); // interval|reminder|mode as a save writes them back
        QTest::newRow("first opening proposes defaults")
            << ""
            << QStringList{TavoMP3Settings::proposedPlayerPath(), TavoMP3Settings::proposedMusicFolder(),
                           TavoMP3Settings::firstTimeMessage(), "---|Fehler|Fehler"}
                   .join('|')
            << 3 << "0|0|3";
        QTest::newRow("stored values")
            << "WinampPath=/opt/mpv|UserMP3Directory=/m/a\r\n/m/b|UpdateMode=2|"
               "LastUpdateCheck=23.11.2026 14:05:00|UpdateInterval=120|"
               "UpdateIntervalRemind=14"
            << "/opt/mpv|/m/a\n/m/b||23.11.2026  / 26 14:05:00 Uhr|2 Stunden|2 Wochen" << 2 << "120|14|2";
        QTest::newRow("interval that is no list item")
            << "WinampPath=/x|UserMP3Directory=/m|UpdateInterval=45|UpdateIntervalRemind=7"
            << "/x|/m||---|Fehler|7 Tage" << 3 << "0|7|3";
    }
    void loadShowsStoredValues() {
        QFETCH(QString, settings);
        QFETCH(QString, shown);
        QFETCH(int, mode);
        QFETCH(QString, saved);
        Rig r({}, settings.split('|', Qt::SkipEmptyParts));
        QCOMPARE((QStringList{r.w->FWinampPath->text(), r.w->FUserMP3Directory->toPlainText(),
                              r.w->FStatus->text(), r.w->FLastUpdateCheck->text(),
                              TavoMP3Settings::listText(r.w->FUpdateInterval),
                              TavoMP3Settings::listText(r.w->FUpdateIntervalRemind)}),
                 shown.split('|'));
        QVERIFY(r.w->RUpdateMode[mode]->isChecked());
        QCOMPARE(r.w->FPresetList->currentRow(), 0);
        QVERIFY(r.t.dialogs.questions.isEmpty());
        r.w->FWinampPath->setText(existingFile("mpv"));
        r.w->BSaveAndClose->click();
        QCOMPARE(
            (QStringList{r.stored("Settings", "UpdateInterval"), r.stored("Settings", "UpdateIntervalRemind"),
                         r.stored("Settings", "UpdateMode")}),
            saved.split('|'));
    }

    void saveChecksFilesAndWritesInOrder_data() {
        QTest::addColumn<QString>("picture"); // "" none, "missing", "exists"
        QTest::addColumn<bool>("playerExists");
        QTest::addColumn<QString>("message");
        QTest::newRow("missing player stores nothing")
            << "" << false << "Winamp.exe konnte nicht gefunden werden!!!";
        QTest::newRow("missing picture stores nothing")
            << "missing" << true << "Hintergrundbild konnte nicht gefunden werden!";
        QTest::newRow("empty picture removes it") << "" << true << "";
        QTest::newRow("existing picture") << "exists" << true << "";
    }
    void saveChecksFilesAndWritesInOrder() {
        QFETCH(bool, playerExists);
        QFETCH(QString, picture);
        QFETCH(QString, message);
        Rig r;
        const QString player = playerExists ? existingFile("mpv") : m_dir.filePath("none");
        const QString picturePath = picture == "exists"    ? existingFile("bg.png")
                                    : picture == "missing" ? m_dir.filePath("fehlt.png")
                                                           : QString();
        r.w->FWinampPath->setText(player);
        r.w->FBGImagePath->setText(picturePath);
        r.w->FUserMP3Directory->setPlainText("/m/a\n/m/b");
        r.w->BSaveAndClose->click();
        if (!message.isEmpty()) {
            QCOMPARE(r.t.dialogs.messageTexts(), QStringList{message});
            QVERIFY(r.w && r.host.calls.isEmpty()); // stays open, the main window is told nothing
            QVERIFY(!r.t.settings.hasSection("Settings"));
            return;
        }
        QVERIFY(r.t.dialogs.questions.isEmpty());
        QVERIFY(!r.w || !r.w->isVisible()); // unloaded
        QCOMPARE((QStringList{r.stored("Settings", "WinampPath"), r.stored("Settings", "BGImagePath"),
                              r.stored("Settings", "UserMP3Directory"), r.stored("Settings", "UpdateMode")}),
                 (QStringList{player, picturePath, "/m/a\r\n/m/b", "3"}));
        QCOMPARE(r.host.calls, (QStringList{"LoadBGImage:" + picturePath, "setBrowsePath:/m/a\r\n/m/b",
                                            "FuncSetEnv", "startPlayer:" + player}));
        QCOMPARE(r.t.status.text(), "Einstellungen gespeichert!");
    }

    void browsingPreviewsTheBackground() {
        Rig r;
        r.w->FBGImagePath->setText("/alt.png");
        r.t.dialogs.openAnswers = {"/neu.png"};
        r.w->BBrowseBGImage->click();
        QCOMPARE(r.t.dialogs.openRequests.first().fileName, "/alt.png");
        QCOMPARE(r.w->FBGImagePath->text(), "/neu.png");
        QCOMPARE(r.host.calls, QStringList{"LoadBGImage:/neu.png"});
        // Cancelling the player dialog keeps the name.
        r.w->FWinampPath->setText("/usr/bin/x");
        r.w->BBrowseWinamp->click();
        QCOMPARE(r.w->FWinampPath->text(), "/usr/bin/x");
    }

    void unpaddedStoredColourFailsInTheHandler() {
        Rig r;
        r.t.settings.SaveSetting("Preset1", "Text", "7 8 9");
        r.w->LoadPreset("1", "LoadPresetClick");
        QCOMPARE(r.t.dialogs.messageTexts(),
                 QStringList{"Fehler in LoadPreset in Zeile 3: Typen unverträglich"});
        QVERIFY(r.host.colourCalls.isEmpty());
    }

    void sliderRepaintsOnlyTheSelectedRole() {
        Rig r;
        r.w->LColorType->setCurrentRow(ColorRoles::FieldBackground);
        QCOMPARE(r.w->SliderGreen->value(), 125);
        r.host.colourCalls.clear();
        r.w->SliderGreen->setValue(7);
        r.w->SliderBlue->setValue(9);
        QCOMPARE(r.w->LGreen->text() + r.w->LBlue->text(), "79");
        QCOMPARE(r.host.colourCalls,
                 (QList{qMakePair(QStringLiteral("SetColorFieldBackground"), Rgb{106, 7, 192}),
                        qMakePair(QStringLiteral("SetColorFieldBackground"), Rgb{106, 7, 9})}));
        QVERIFY(r.w->FTest->toPlainText().contains("FieldBackgroundGreen = 7"));
        // Nothing is stored until a preset is saved.
        QVERIFY(!r.t.settings.hasSection("Preset0"));
    }

    void saveAsNumbersAndRefillsTheList() {
        Rig r({"Eins", "", "Drei"});
        r.w->BPresetSaveAs->click();
        QCOMPARE(r.t.dialogs.messageTexts(), QStringList{"Bitte geben Sie einen Presetnamen ein!"});
        r.w->FPresetSaveAs->setText("Neu");
        r.w->BPresetSaveAs->click();
        QCOMPARE(
            (QStringList{r.stored("Preset2", "PresetName"), r.stored("Preset2", "Text"), r.w->activePreset(),
                         r.w->FPresetSaveAs->text(), r.w->FActivePreset->text(), r.w->FStatus->text()}),
            (QStringList{"Neu", "200 200 000", "2", "", "Neu",
                         "Preset \"Neu\" wurde auf Preset2 gespeichert"}));
        QCOMPARE(r.w->presetLabels(), (QStringList{"0. - Default Preset -", "1. Eins", "2. Neu", "3. Drei"}));
        QCOMPARE(r.w->FPresetList->currentRow(), 2);
        // "Preset speichern" overwrites the active preset under the shown name.
        r.w->FActivePreset->setText("Umbenannt");
        r.w->BPresetSave->click();
        QCOMPARE(r.stored("Preset2", "PresetName"), "Umbenannt");
    }

    void saveAsWithAllPresetsTakenWritesPreset100() {
        QStringList names;
        for (int n = 1; n <= 99; ++n)
            names << "P" + QString::number(n);
        Rig r(names);
        r.w->FPresetSaveAs->setText("Hundert");
        r.w->BPresetSaveAs->click();
        QVERIFY(r.t.settings.hasSection("Preset100"));
        QCOMPARE(r.w->FPresetList->count(), 100);
        QVERIFY(r.w->FPresetList->findItems("Hundert", Qt::MatchExactly).isEmpty());
    }

    void deleteAsksAndShiftsLoadByPosition_data() {
        QTest::addColumn<int>("row");
        QTest::addColumn<Dialogs::Answer>("answer");
        QTest::addColumn<QString>("lastMessage");
        const QString question = "Möchten Sie das Preset \"Zwei\" wirklich löschen?";
        QTest::newRow("default preset")
            << 0 << Dialogs::Answer::Yes << "Das Default Preset kann nicht gelöscht werden!";
        QTest::newRow("Nein") << 2 << Dialogs::Answer::No << question;
        QTest::newRow("Ja") << 2 << Dialogs::Answer::Yes << question;
    }
    void deleteAsksAndShiftsLoadByPosition() {
        QFETCH(int, row);
        QFETCH(Dialogs::Answer, answer);
        QFETCH(QString, lastMessage);
        Rig r({"Eins", "Zwei", "Drei"});
        r.w->FPresetList->setCurrentRow(row);
        r.t.dialogs.answers = {answer};
        r.w->BPresetDelete->click();
        QCOMPARE(r.t.dialogs.messageTexts().last(), lastMessage);
        const bool deleted = row > 0 && answer == Dialogs::Answer::Yes;
        QCOMPARE(r.t.settings.hasSection("Preset2"), !deleted);
        QCOMPARE(r.w->FPresetList->count(), deleted ? 3 : 4);
        if (!deleted)
            return;
        QCOMPARE(r.w->FStatus->text(), "Preset \"- Default Preset -\" (Preset0) wurde geladen");
        QCOMPARE(r.w->FPresetList->currentRow(), 0);
        // Position 2 shows "Drei" but loads the deleted preset 2 from the file: defaults, name "-".
        QCOMPARE(r.w->FPresetList->item(2)->text(), "Drei");
        r.w->FPresetList->setCurrentRow(2);
        r.host.colourCalls.clear();
        r.w->BPresetLoad->click();
        QCOMPARE(r.w->FStatus->text(), "Preset \"-\" (Preset2) wurde geladen");
        QCOMPARE(r.host.colourCalls.at(0).second, (Rgb{0, 0, 0}));
        QCOMPARE(r.host.colourCalls.at(1).second, (Rgb{128, 128, 128}));
    }

    void cancelClosesWithoutSaving() {
        Rig r;
        // Check boxes are captions: the button text colour is for push buttons only.
        SchemePainter::paintWindowRole(r.w, ColorRoles::ButtonText, QColor(1, 2, 3));
        QCOMPARE(r.w->BCancel->palette().color(QPalette::ButtonText), QColor(1, 2, 3));
        QVERIFY(r.w->LinkSliders->palette().color(QPalette::ButtonText) != QColor(1, 2, 3));
        r.w->tbOptions->setCurrentIndex(1);
        r.w->show();
        QVERIFY(QTest::qWaitForWindowExposed(r.w));
        // The two boxes under the sliders sit one below the other, not on top of each other.
        QVERIFY(r.w->FSpaceSkin->geometry().top() >= r.w->LinkSliders->geometry().bottom());
        r.w->BCancel->click();
        QVERIFY(!r.w || !r.w->isVisible());
        QVERIFY(!r.t.settings.hasSection("Settings"));
    }
};

QTEST_MAIN(tst_SettingsWindow)
#include "tst_SettingsWindow.moc"
