// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "app/TrayModule.h"
#include "base/AppGlobals.h"
#include "playback/PlaybackMonitor.h"
#include "playlist/widgets/PriorityFrame.h"
#include "playlist/widgets/TavoMP3QuickSearch.h"
#include "support/FileBytes.h"
#include "support/FullDisk.h"
#include "support/MainWindowRig.h"
#include "ui/TavoMP3Settings.h"
#include "ui/TavoSlider.h"

#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QtTest>

using namespace Qt::StringLiterals;

// Ordinary paths that used to end the program or throw the user's work away, driven through the
// window, its timers and its controls.
class tst_MainFailures : public QObject {
    Q_OBJECT

    static QStringList songs(const QString& firstDigit = "5") {
        return {"/m/Alpha.mp3:" + firstDigit, "/m/Beta.mp3:5", "/m/Gamma.mp3:5"};
    }

private slots:
    void cleanup() { AppGlobals::PlayOnStart = false; }

    // The pick raises inside the monitor's tick; the tick reports it once and the program goes on.
    void tickReportsAFailingPickOnceAndGoesOn_data() {
        QTest::addColumn<QString>("scenario");
        QTest::newRow("second playlist shown while empty") << u"playlist2"_s;
        QTest::newRow("every entry deleted under the song") << u"delete all"_s;
        QTest::newRow("started with play, a line without a digit") << u"play word"_s;
    }
    void tickReportsAFailingPickOnceAndGoesOn() {
        QFETCH(QString, scenario);
        MainWindowRig r;
        r.setting("ShuffleStatus", "True");
        AppGlobals::PlayOnStart = scenario == "play word";
        r.load(scenario == "play word" ? songs("x") : songs());
        if (scenario != "play word") {
            r.play(0);
            if (scenario == "playlist2") {
                QTest::mouseClick(r.w.ui().BPlaylist2, Qt::LeftButton);
            } else {
                QTest::keyClick(r.w.ui().FPlaylist, Qt::Key_A, Qt::ControlModifier);
                QTest::keyClick(r.w.ui().FPlaylist, Qt::Key_Delete);
            }
            r.player.finishSong();
        }
        // The real timer, quicker: a dozen ticks.
        r.core.playback().monitor().tmrTime.setInterval(10);
        QTest::qWait(150);
        QCOMPARE(r.t.dialogs.messageTexts(),
                 QStringList{"Fehler in tmrTime_Timer in Zeile 4: Typen unverträglich"});
        // The window still answers its controls.
        QTest::mouseClick(r.w.ui().BStop, Qt::LeftButton);
        QCOMPARE(int(r.core.playback().state().PlayMode), 0);
    }

    // A song of length 0 (a player that has not started yet) raises no box on the tick, and the
    // steps after the failing slider feed still run.
    void songOfLengthZeroRaisesNoBoxOnTheTick() {
        MainWindowRig r;
        r.player.lengthSeconds.insert("/m/Song00.mp3", 0);
        r.load(r.songs(1));
        r.play(0);
        r.core.playback().monitor().tmrTimeTick();
        r.core.playback().monitor().tmrTimeTick();
        QCOMPARE(r.t.dialogs.messageTexts(), QStringList());
        QCOMPARE(r.w.ui().lblTime->text(), "0:00/0:00");
        QCOMPARE(r.binding<TrayBinding>().tray().tip(), "Tavo MP3 Player!: Song00");
    }

    void historyEntryTakesThePriorityMarkAway() {
        MainWindowRig r;
        r.load(r.songs(3));
        r.w.ui().Frame1->FPrio[3]->click();
        QVERIFY(r.w.ui().Frame1->FPrio[3]->isChecked());
        r.w.ui().MenuPrev[1]->trigger();
        for (QRadioButton* option : r.w.ui().Frame1->FPrio)
            QVERIFY(!option->isChecked());
        QCOMPARE(r.player.playedFiles(), QStringList{"/m/Song00.mp3"});
    }

    // A save asked for at close that fails keeps the window and the list, and the file as it was; a save
    // elsewhere then closes.
    void closeAfterAFailedSaveKeepsWindowAndList_data() {
        QTest::addColumn<QString>("stickProblem");
        QTest::addColumn<QString>("error");
        QTest::newRow("folder gone") << "folder gone"
                                     << "Pfad nicht gefunden";
        QTest::newRow("a folder in the file's place") << "folder"
                                                      << "Fehler beim Zugriff auf Pfad/Datei";
        QTest::newRow("full disk") << "full"
                                   << "Datenträger voll";
    }
    void closeAfterAFailedSaveKeepsWindowAndList() {
        QFETCH(QString, stickProblem);
        QFETCH(QString, error);
        QTemporaryDir folder;
        FullDisk disk;
        if (stickProblem == "full" && !disk.ready())
            QSKIP(FullDisk::whyNot());
        const QString file = stickProblem == "full" ? disk.path("list.txt") : folder.filePath("list.txt");
        PlaylistFile::writeLines(file, songs());
        const QByteArray bytes = FileBytes::read(file);
        MainWindowRig r;
        r.setting("PlaylistFile", file);
        r.load();
        QTest::keyClick(r.w.ui().FPlaylist, Qt::Key_Delete); // marks the list as changed
        const QStringList before = r.core.playlists().PlaylistPaths;
        if (stickProblem == "folder gone") {
            QVERIFY(folder.remove());
        } else if (stickProblem == "folder") {
            QVERIFY(QFile::remove(file));
            QVERIFY(QDir().mkpath(file));
        } else {
            disk.fill();
        }
        r.player.clearLog();
        r.t.dialogs.answers = {Dialogs::Answer::Yes};

        QVERIFY(!r.w.close());

        QCOMPARE(r.t.dialogs.messageTexts().last(), "Fehler in Player Form QueryUnload in Zeile 2: " + error);
        if (stickProblem == "full")
            QCOMPARE(FileBytes::read(file), bytes);
        QVERIFY(r.w.isVisible());
        QCOMPARE(r.core.playlists().PlaylistPaths, before);
        QCOMPARE(r.player.commands(), QList<qint32>{}); // the player keeps playing

        const QString elsewhere = r.dir.filePath("saved.txt");
        r.t.dialogs.answers = {Dialogs::Answer::Yes};
        r.t.dialogs.saveAnswers = {elsewhere};
        r.w.ui().MenuDateiPlaylistSaveAs->trigger();
        QCOMPARE(PlaylistFile::readLines(elsewhere), before);
        QVERIFY(r.w.close());
        QCOMPARE(r.player.commands(), QList<qint32>{40001});
    }

    // Closing the settings window keeps the working scheme and the active preset it shows.
    void settingsWindowKeepsTheActivePresetAcrossCloseAndReopen() {
        MainWindowRig r;
        r.t.settings.SaveSetting("Preset1", "PresetName", "Rot");
        r.t.settings.SaveSetting("Preset1", "Background", "200 010 020");
        r.setting("ActivePreset", "1");
        r.load(songs());
        r.w.ui().MenuEinstellungen->trigger();
        r.w.windows().settingsWindow()->BCancel->click();
        r.w.ui().MenuEinstellungen->trigger();
        TavoMP3Settings* w = r.w.windows().settingsWindow();
        QVERIFY(w->isVisible());
        QCOMPARE(w->FActivePreset->text(), "Rot");
        w->BPresetSave->click();
        QCOMPARE(r.t.settings.GetSetting("Preset1", "PresetName", QString()) + '|' +
                     r.t.settings.GetSetting("Preset1", "Background", QString()),
                 "Rot|200 010 020");
        w->BCancel->click();

        QTest::keyClick(r.w.ui().FPlaylist, Qt::Key_B); // opens the quick search
        auto* search = r.w.findChild<TavoMP3QuickSearch*>();
        QVERIFY(search);
        QCOMPARE(search->palette().color(QPalette::Window), QColor(200, 10, 20));
        // The menu shows the same window again, and a slider edit there repaints the main window at once.
        r.w.ui().MenuEinstellungen->trigger();
        QCOMPARE(r.w.windows().settingsWindow(), w);
        w->LColorType->setCurrentRow(ColorRoles::Background);
        w->SliderRed->setValue(90);
        QCOMPARE(r.w.centralWidget()->palette().color(QPalette::Window), QColor(90, 10, 20));
    }

    // Questions whose answer Yes overwrites or deletes something have Cancel as their default.
    void riskyQuestionsDefaultToCancel_data() {
        QTest::addColumn<QString>("question");
        QTest::newRow("priority report") << u"Die Liedprioritätsreport"_s;
        QTest::newRow("bitrate report") << u"Die Analyse kann"_s;
        QTest::newRow("preset delete") << u"Möchten Sie das Preset"_s;
    }
    void riskyQuestionsDefaultToCancel() {
        QFETCH(QString, question);
        MainWindowRig r;
        r.t.settings.SaveSetting("Preset1", "PresetName", "Rot");
        r.load(r.songs(5));
        if (question.contains("Preset")) {
            r.w.windows().settingsWindow()->FPresetList->setCurrentRow(1);
            r.w.windows().settingsWindow()->BPresetDelete->click();
        } else {
            (question.contains("Analyse") ? r.w.ui().BReportBitrate : r.w.ui().BReportPrio)->click();
        }
        const auto& asked = r.t.dialogs.questions;
        QVERIFY(!asked.isEmpty());
        QVERIFY2(asked.first().text.startsWith(question), qPrintable(asked.first().text));
        QCOMPARE(int(asked.first().buttons), int(Dialogs::Buttons::YesNoCancel));
        QCOMPARE(asked.first().defaultButton, 3);
    }

    // Letting the position knob go beyond either end of the track jumps to that end, not past it; a click
    // into the volume slider's groove moves the volume and gives the title back on release.
    void knobsLetGoStayInRange_data() {
        QTest::addColumn<int>("x");
        QTest::addColumn<QString>("jump");
        QTest::newRow("left of the start") << -40 << u"JumpToTime 0"_s;
        QTest::newRow("right of the end") << 4000 << u"JumpToTime 180000"_s;
    }
    void knobsLetGoStayInRange() {
        QFETCH(int, x);
        QFETCH(QString, jump);
        MainWindowRig r;
        r.load(songs());
        r.play(0);
        r.core.playback().monitor().tmrTimeTick(); // tells the display and the sliders about the song
        r.player.clearLog();
        QTest::mousePress(r.w.ui().TavoSlider1, Qt::LeftButton, {}, QPoint(10, 5));
        QTest::mouseRelease(r.w.ui().TavoSlider1, Qt::LeftButton, {}, QPoint(x, 5));
        QCOMPARE(r.player.calls.filter("JumpToTime"), QStringList{jump});
        QCOMPARE(r.w.ui().lblTrackName->text(), "Alpha");
        {
            const QSignalBlocker quiet(r.w.ui().sldVol);
            r.w.ui().sldVol->setValue(0);
        }
        const QPoint groove(r.w.ui().sldVol->width() - 3, r.w.ui().sldVol->height() / 2);
        QTest::mousePress(r.w.ui().sldVol, Qt::LeftButton, {}, groove);
        QVERIFY(r.w.ui().lblTrackName->text().startsWith("VOLUME:"));
        QTest::mouseRelease(r.w.ui().sldVol, Qt::LeftButton, {}, groove);
        QCOMPARE(r.w.ui().lblTrackName->text(), "Alpha");
        QVERIFY(r.player.volume > 0);
    }
};

QTEST_MAIN(tst_MainFailures)
#include "tst_MainFailures.moc"
