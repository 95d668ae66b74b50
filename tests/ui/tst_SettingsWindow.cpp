// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "support/RecordingSettingsHost.h"
#include "support/TestServices.h"
#include "ui/TavoMP3Settings.h"
#include "ui/TavoMp3Tree.h"

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

    QTemporaryDir m_dir;
    const QString kSettings = QStringLiteral("Settings");

    QString existingFile(const QString& name) {
        const QString path = m_dir.filePath(name);
        QFile f(path);
        f.open(QIODevice::WriteOnly);
        f.write("x");
        return path;
    }

    static void storePreset(SettingsStore& s, int n, const QString& name, const QString& text) {
        const QString section = QStringLiteral("Preset") + QString::number(n);
        s.SaveSetting(section, QStringLiteral("PresetName"), name);
        s.SaveSetting(section, QStringLiteral("Text"), text);
    }

    // The window deletes itself when it closes, as an unloaded form goes away.
    static TavoMP3Settings* open(TestServices& t, RecordingSettingsHost& host) {
        return new TavoMP3Settings(t.services, host);
    }

private slots:
    void firstOpeningProposesDefaults() {
        TestServices t;
        RecordingSettingsHost host;
        QPointer<TavoMP3Settings> w = open(t, host);
        QCOMPARE(w->windowTitle(), QStringLiteral("Tavo MP3 Player! - Einstellungen"));
        QCOMPARE(w->tbOptions->tabText(0), QStringLiteral(" General Settings"));
        QCOMPARE(w->tbOptions->tabText(1), QStringLiteral("&Programm Oberfläche"));
        QCOMPARE(w->FWinampPath->text(), TavoMP3Settings::proposedPlayerPath());
        QCOMPARE(w->FUserMP3Directory->toPlainText(), TavoMP3Settings::proposedMusicFolder());
        QCOMPARE(w->FStatus->text(), TavoMP3Settings::firstTimeMessage());
        QCOMPARE(TavoMP3Settings::listText(w->FUpdateInterval), QStringLiteral("Fehler"));
        QCOMPARE(TavoMP3Settings::listText(w->FUpdateIntervalRemind), QStringLiteral("Fehler"));
        QVERIFY(w->RUpdateMode[3]->isChecked());
        QCOMPARE(w->FLastUpdateCheck->text(), QStringLiteral("---"));
        QCOMPARE(w->FNextUpdateCheck->text(), QStringLiteral("---"));
        QCOMPARE(w->FPresetList->count(), 1);
        QCOMPARE(w->FPresetList->currentRow(), 0);
        QVERIFY(t.dialogs.questions.isEmpty());
        delete w;
    }

    void loadShowsStoredValues() {
        TestServices t;
        RecordingSettingsHost host;
        t.settings.SaveSetting(kSettings, QStringLiteral("WinampPath"), QStringLiteral("/opt/mpv"));
        t.settings.SaveSetting(kSettings, QStringLiteral("UserMP3Directory"), QStringLiteral("/m/a\r\n/m/b"));
        t.settings.SaveSetting(kSettings, QStringLiteral("LastUpdateCheck"),
                               QStringLiteral("23.11.2026 14:05:00"));
        t.settings.SaveSetting(kSettings, QStringLiteral("UpdateMode"), 2);
        t.settings.SaveSetting(kSettings, QStringLiteral("UpdateInterval"), 120);
        t.settings.SaveSetting(kSettings, QStringLiteral("UpdateIntervalRemind"), 14);
        QPointer<TavoMP3Settings> w = open(t, host);
        QCOMPARE(w->FWinampPath->text(), QStringLiteral("/opt/mpv"));
        QCOMPARE(w->FUserMP3Directory->toPlainText(), QStringLiteral("/m/a\n/m/b"));
        QCOMPARE(w->FStatus->text(), QString());
        QCOMPARE(w->FLastUpdateCheck->text(), QStringLiteral("23.11.2026  / 26 14:05:00 Uhr"));
        QVERIFY(w->RUpdateMode[2]->isChecked());
        QCOMPARE(TavoMP3Settings::listText(w->FUpdateInterval), QStringLiteral("2 Stunden"));
        QCOMPARE(TavoMP3Settings::listText(w->FUpdateIntervalRemind), QStringLiteral("2 Wochen"));
        delete w;
    }

    void saveChecksFilesAndWritesInOrder_data() {
        QTest::addColumn<bool>("playerExists");
        QTest::addColumn<QString>("picture"); // "" none, "missing", "exists"
        QTest::addColumn<QString>("message");
        QTest::newRow("missing player stores nothing") << false << ""
                                                       << "Winamp.exe konnte nicht gefunden werden!!!";
        QTest::newRow("missing picture stores nothing") << true << "missing"
                                                        << "Hintergrundbild konnte nicht gefunden werden!";
        QTest::newRow("empty picture removes it") << true << ""
                                                  << "";
        QTest::newRow("existing picture") << true << "exists"
                                          << "";
    }
    void saveChecksFilesAndWritesInOrder() {
        QFETCH(bool, playerExists);
        QFETCH(QString, picture);
        QFETCH(QString, message);
        TestServices t;
        RecordingSettingsHost host;
        QPointer<TavoMP3Settings> w = open(t, host);
        const QString player = playerExists ? existingFile(QStringLiteral("mpv")) : m_dir.filePath("none");
        const QString picturePath = picture == QLatin1String("exists")
                                        ? existingFile(QStringLiteral("bg.png"))
                                    : picture == QLatin1String("missing") ? m_dir.filePath("fehlt.png")
                                                                          : QString();
        w->FWinampPath->setText(player);
        w->FBGImagePath->setText(picturePath);
        w->FUserMP3Directory->setPlainText(QStringLiteral("/m/a\n/m/b"));
        host.calls.clear();
        w->BSaveAndClose->click();

        if (!message.isEmpty()) {
            QCOMPARE(t.dialogs.messageTexts(), QStringList{message});
            QVERIFY(w); // stays open
            QVERIFY(host.calls.isEmpty());
            QVERIFY(!t.settings.hasSection(kSettings) ||
                    t.settings.GetSetting(kSettings, QStringLiteral("WinampPath"), QStringLiteral("-")) ==
                        QLatin1String("-"));
            QCOMPARE(t.settings.GetSetting(kSettings, QStringLiteral("BGImagePath"), QStringLiteral("-")),
                     QStringLiteral("-"));
            delete w;
            return;
        }
        QVERIFY(t.dialogs.questions.isEmpty());
        QVERIFY(!w->isVisible()); // unloaded
        QCOMPARE(t.settings.GetSetting(kSettings, QStringLiteral("WinampPath"), QString()), player);
        QCOMPARE(t.settings.GetSetting(kSettings, QStringLiteral("BGImagePath"), QStringLiteral("-")),
                 picturePath);
        QCOMPARE(t.settings.GetSetting(kSettings, QStringLiteral("UserMP3Directory"), QString()),
                 QStringLiteral("/m/a\r\n/m/b"));
        QCOMPARE(t.settings.GetSetting(kSettings, QStringLiteral("UpdateMode"), QString()),
                 QStringLiteral("3"));
        QCOMPARE(host.calls,
                 (QStringList{QStringLiteral("LoadBGImage:") + picturePath,
                              QStringLiteral("setBrowsePath:/m/a\r\n/m/b"), QStringLiteral("FuncSetEnv"),
                              QStringLiteral("startPlayer:") + player}));
        QCOMPARE(t.status.text(), QStringLiteral("Einstellungen gespeichert!"));
    }

    void unlistedIntervalShowsFehlerAndSavesZero_data() {
        QTest::addColumn<int>("pick"); // -1 = leave the list alone
        QTest::addColumn<QString>("saved");
        QTest::newRow("left as Fehler") << -1 << "0";
        QTest::newRow("user picks 40 Minuten") << 5 << "40";
    }
    void unlistedIntervalShowsFehlerAndSavesZero() {
        QFETCH(int, pick);
        QFETCH(QString, saved);
        TestServices t;
        RecordingSettingsHost host;
        t.settings.SaveSetting(kSettings, QStringLiteral("UpdateInterval"), 45);
        t.settings.SaveSetting(kSettings, QStringLiteral("UpdateIntervalRemind"), 7);
        QPointer<TavoMP3Settings> w = open(t, host);
        QCOMPARE(TavoMP3Settings::listText(w->FUpdateInterval), QStringLiteral("Fehler"));
        QCOMPARE(TavoMP3Settings::listText(w->FUpdateIntervalRemind), QStringLiteral("7 Tage"));
        if (pick >= 0)
            w->FUpdateInterval->setCurrentIndex(pick);
        w->FWinampPath->setText(existingFile(QStringLiteral("mpv")));
        w->BSaveAndClose->click();
        QVERIFY(!w->isVisible());
        QCOMPARE(t.settings.GetSetting(kSettings, QStringLiteral("UpdateInterval"), QString()), saved);
        QCOMPARE(t.settings.GetSetting(kSettings, QStringLiteral("UpdateIntervalRemind"), QString()),
                 QStringLiteral("7"));
    }

    void browsingPreviewsTheBackground() {
        TestServices t;
        RecordingSettingsHost host;
        QPointer<TavoMP3Settings> w = open(t, host);
        w->FBGImagePath->setText(QStringLiteral("/alt.png"));
        t.dialogs.openAnswers = {QStringLiteral("/neu.png")};
        w->BBrowseBGImage->click();
        QCOMPARE(t.dialogs.openRequests.first().fileName, QStringLiteral("/alt.png"));
        QCOMPARE(w->FBGImagePath->text(), QStringLiteral("/neu.png"));
        QCOMPARE(host.calls, QStringList{QStringLiteral("LoadBGImage:/neu.png")});
        // Cancelling the player dialog keeps the name.
        w->FWinampPath->setText(QStringLiteral("/usr/bin/x"));
        w->BBrowseWinamp->click();
        QCOMPARE(w->FWinampPath->text(), QStringLiteral("/usr/bin/x"));
        delete w;
    }

    void addDirOpensTheInertFolderTree() {
        TestServices t;
        RecordingSettingsHost host;
        QPointer<TavoMP3Settings> w = open(t, host);
        w->BAddDir->click();
        QVERIFY(w->folderTree());
        QVERIFY(w->folderTree()->isVisible());
        const QString before = w->FUserMP3Directory->toPlainText();
        w->folderTree()->BOK->click();
        QCOMPARE(w->FUserMP3Directory->toPlainText(), before);
        delete w;
    }

    void loadPresetPaintsAllRolesInOrder() {
        TestServices t;
        RecordingSettingsHost host;
        QPointer<TavoMP3Settings> w = open(t, host);
        w->LoadPreset(QStringLiteral("0"), QStringLiteral("PlayerMainSetColorAll"));
        QCOMPARE(
            host.colourCallNames(),
            (QStringList{"SetColorText", "SetColorBackground", "SetColorFieldText", "SetColorFieldBackground",
                         "SetColorButtonText", "SetColorButtonBackground", "SetColorDisplayTextBright",
                         "SetColorDisplayTextDark", "SetColorDisplayBackground"}));
        QCOMPARE(host.colourCalls.at(0).second, (Rgb{200, 200, 0}));
        QCOMPARE(host.colourCalls.at(1).second, (Rgb{38, 38, 38}));
        QCOMPARE(w->FStatus->text(), QStringLiteral("Preset \"- Default Preset -\" (Preset0) wurde geladen"));
        QCOMPARE(w->SliderRed->value(), 200);
        QCOMPARE(w->LBlue->text(), QStringLiteral("0"));
        const QStringList dump = w->FTest->toPlainText().split(QLatin1Char('\n'));
        QCOMPARE(dump.size(), 27);
        QCOMPARE(dump.at(2), QStringLiteral("TextBlue = 000"));
        delete w;
    }

    void unpaddedStoredColourFailsInTheHandler() {
        TestServices t;
        RecordingSettingsHost host;
        storePreset(t.settings, 1, QStringLiteral("Kaputt"), QStringLiteral("7 8 9"));
        QPointer<TavoMP3Settings> w = open(t, host);
        w->LoadPreset(QStringLiteral("1"), QStringLiteral("LoadPresetClick"));
        QCOMPARE(t.dialogs.messageTexts(),
                 QStringList{QStringLiteral("Fehler in LoadPreset in Zeile 3: Typen unverträglich")});
        QVERIFY(host.colourCalls.isEmpty());
        delete w;
    }

    void sliderRepaintsOnlyTheSelectedRole() {
        TestServices t;
        RecordingSettingsHost host;
        QPointer<TavoMP3Settings> w = open(t, host);
        w->LColorType->setCurrentRow(ColorRoles::FieldBackground);
        QCOMPARE(w->SliderGreen->value(), 125);
        host.colourCalls.clear();
        w->SliderGreen->setValue(7);
        QCOMPARE(w->LGreen->text(), QStringLiteral("7"));
        QCOMPARE(host.colourCallNames(), QStringList{QStringLiteral("SetColorFieldBackground")});
        QCOMPARE(host.colourCalls.first().second, (Rgb{106, 7, 192}));
        QVERIFY(w->FTest->toPlainText().contains(QStringLiteral("FieldBackgroundGreen = 7")));
        // Nothing is stored until a preset is saved.
        QVERIFY(!t.settings.hasSection(QStringLiteral("Preset0")));
        w->LColorType->setCurrentRow(-1);
        w->ColorChangeValue(QStringLiteral("Red"));
        QCOMPARE(t.dialogs.messageTexts().last(),
                 QStringLiteral("Mist programmiert in Funktion ColorChangeValue..."));
        w->ActualizeSliders();
        QCOMPARE(t.dialogs.messageTexts().last(),
                 QStringLiteral("Mist programmiert in Funktion ActualizeSliders..."));
        delete w;
    }

    void saveAsNumbersAndRefillsTheList() {
        TestServices t;
        RecordingSettingsHost host;
        storePreset(t.settings, 1, QStringLiteral("Eins"), QStringLiteral("001 001 001"));
        storePreset(t.settings, 3, QStringLiteral("Drei"), QStringLiteral("003 003 003"));
        QPointer<TavoMP3Settings> w = open(t, host);
        w->BPresetSaveAs->click();
        QCOMPARE(t.dialogs.messageTexts(),
                 QStringList{QStringLiteral("Bitte geben Sie einen Presetnamen ein!")});
        w->FPresetSaveAs->setText(QStringLiteral("Neu"));
        w->BPresetSaveAs->click();
        QCOMPARE(t.settings.GetSetting(QStringLiteral("Preset2"), QStringLiteral("PresetName"), QString()),
                 QStringLiteral("Neu"));
        QCOMPARE(t.settings.GetSetting(QStringLiteral("Preset2"), QStringLiteral("Text"), QString()),
                 QStringLiteral("200 200 000"));
        QCOMPARE(w->activePreset(), QStringLiteral("2"));
        QCOMPARE(w->FPresetSaveAs->text(), QString());
        QCOMPARE(w->FActivePreset->text(), QStringLiteral("Neu"));
        QCOMPARE(w->FStatus->text(), QStringLiteral("Preset \"Neu\" wurde auf Preset2 gespeichert"));
        QCOMPARE(w->presetLabels(), (QStringList{"0. - Default Preset -", "1. Eins", "2. Neu", "3. Drei"}));
        QCOMPARE(w->FPresetList->currentRow(), 2);
        // "Preset speichern" overwrites the active preset under the shown name.
        w->FActivePreset->setText(QStringLiteral("Umbenannt"));
        w->BPresetSave->click();
        QCOMPARE(t.settings.GetSetting(QStringLiteral("Preset2"), QStringLiteral("PresetName"), QString()),
                 QStringLiteral("Umbenannt"));
        delete w;
    }

    void saveAsWithAllPresetsTakenWritesPreset100() {
        TestServices t;
        RecordingSettingsHost host;
        for (int n = 1; n <= 99; ++n)
            storePreset(t.settings, n, QStringLiteral("P") + QString::number(n),
                        QStringLiteral("000 000 000"));
        QPointer<TavoMP3Settings> w = open(t, host);
        w->FPresetSaveAs->setText(QStringLiteral("Hundert"));
        w->BPresetSaveAs->click();
        QVERIFY(t.settings.hasSection(QStringLiteral("Preset100")));
        QCOMPARE(w->FPresetList->count(), 100);
        QVERIFY(w->FPresetList->findItems(QStringLiteral("Hundert"), Qt::MatchExactly).isEmpty());
        delete w;
    }

    void deletingAMiddlePresetShiftsLoadByPosition() {
        TestServices t;
        RecordingSettingsHost host;
        storePreset(t.settings, 1, QStringLiteral("Eins"), QStringLiteral("001 001 001"));
        storePreset(t.settings, 2, QStringLiteral("Zwei"), QStringLiteral("002 002 002"));
        storePreset(t.settings, 3, QStringLiteral("Drei"), QStringLiteral("003 003 003"));
        QPointer<TavoMP3Settings> w = open(t, host);
        w->FPresetList->setCurrentRow(2);
        t.dialogs.answers = {Dialogs::Answer::Yes};
        w->BPresetDelete->click();
        const ScriptedDialogs::Question q = t.dialogs.questions.first();
        QCOMPARE(q.text, QStringLiteral("Möchten Sie das Preset \"Zwei\" wirklich löschen?"));
        QCOMPARE(q.title, QStringLiteral("Achtung!"));
        QCOMPARE(q.buttons, Dialogs::Buttons::YesNoCancel);
        QVERIFY(!t.settings.hasSection(QStringLiteral("Preset2")));
        QCOMPARE(w->FStatus->text(), QStringLiteral("Preset \"- Default Preset -\" (Preset0) wurde geladen"));
        QCOMPARE(w->FPresetList->count(), 3);
        QCOMPARE(w->FPresetList->currentRow(), 0);

        // Position 2 now shows "Drei" but loads the deleted section 2: absent defaults, name "-".
        QCOMPARE(w->FPresetList->item(2)->text(), QStringLiteral("Drei"));
        w->FPresetList->setCurrentRow(2);
        host.colourCalls.clear();
        w->BPresetLoad->click();
        QCOMPARE(w->FStatus->text(), QStringLiteral("Preset \"-\" (Preset2) wurde geladen"));
        QCOMPARE(host.colourCalls.at(0).second, (Rgb{0, 0, 0}));
        QCOMPARE(host.colourCalls.at(1).second, (Rgb{128, 128, 128}));
        delete w;
    }

    void deleteIsRefusedOrCancelled_data() {
        QTest::addColumn<int>("row");
        QTest::addColumn<int>("answer");
        QTest::addColumn<QString>("lastMessage");
        QTest::newRow("default preset")
            << 0 << int(Dialogs::Answer::Yes) << "Das Default Preset kann nicht gelöscht werden!";
        QTest::newRow("Nein") << 1 << int(Dialogs::Answer::No)
                              << "Möchten Sie das Preset \"Eins\" wirklich löschen?";
        QTest::newRow("Abbrechen") << 1 << int(Dialogs::Answer::Cancel)
                                   << "Möchten Sie das Preset \"Eins\" wirklich löschen?";
    }
    void deleteIsRefusedOrCancelled() {
        QFETCH(int, row);
        QFETCH(int, answer);
        QFETCH(QString, lastMessage);
        TestServices t;
        RecordingSettingsHost host;
        storePreset(t.settings, 1, QStringLiteral("Eins"), QStringLiteral("001 001 001"));
        QPointer<TavoMP3Settings> w = open(t, host);
        w->FPresetList->setCurrentRow(row);
        t.dialogs.answers = {Dialogs::Answer(answer)};
        w->BPresetDelete->click();
        QCOMPARE(t.dialogs.messageTexts().last(), lastMessage);
        QVERIFY(t.settings.hasSection(QStringLiteral("Preset1")));
        QCOMPARE(w->FPresetList->count(), 2);
        delete w;
    }

    void inertControlsDoNothing() {
        TestServices t;
        RecordingSettingsHost host;
        QPointer<TavoMP3Settings> w = open(t, host);
        const QString dirs = w->FUserMP3Directory->toPlainText();
        w->BDelDir->click();
        w->BResetPreset->click();
        w->findChild<QCheckBox*>(QStringLiteral("LinkSliders"))->click();
        w->findChild<QCheckBox*>(QStringLiteral("FSpaceSkin"))->click();
        w->chkTelnetOn->click();
        QCOMPARE(w->FUserMP3Directory->toPlainText(), dirs);
        QVERIFY(host.colourCalls.isEmpty() && host.calls.isEmpty());
        QVERIFY(t.dialogs.questions.isEmpty());
        delete w;
    }

    void cancelClosesWithoutSaving() {
        TestServices t;
        RecordingSettingsHost host;
        QPointer<TavoMP3Settings> w = open(t, host);
        w->show();
        w->BCancel->click();
        QVERIFY(!w->isVisible());
        QVERIFY(!t.settings.hasSection(kSettings));
    }
};

QTEST_MAIN(tst_SettingsWindow)
#include "tst_SettingsWindow.moc"
