#include "app/TavoMP3PlayerMain.h"
#include "base/AppGlobals.h"
#include "player/PlaybackMonitor.h"
#include "playlist/PlaylistFile.h"
#include "playlist/widgets/TavoMP3QuickSearch.h"
#include "support/MainWindowRig.h"
#include "ui/SkinControl.h"
#include "ui/TavoMP3Settings.h"
#include "ui/TavoSlider.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QPushButton>
#include <QSlider>
#include <QTemporaryDir>
#include <QtTest>

// Ordinary paths that used to end the program or throw the user's work away, driven through the
// window, its timers and its controls.
class tst_MainFailures : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;

    // A loaded main window on a playlist file with the given lines.
    void loadWith(MainWindowRig& r, const QStringList& lines) {
        const QString file = m_dir.filePath(QStringLiteral("list.txt"));
        PlaylistFile::writeLines(file, lines);
        r.setting("WinampPath", QStringLiteral("/usr/bin/mpv"));
        r.setting("UserMP3Directory", m_dir.path());
        r.setting("PlaylistFile", file);
        r.w.load();
    }
    static QStringList songs(const QString& firstDigit = QStringLiteral("5")) {
        return {QStringLiteral("/m/Alpha.mp3:") + firstDigit, QStringLiteral("/m/Beta.mp3:5"),
                QStringLiteral("/m/Gamma.mp3:5")};
    }

private slots:
    void cleanup() { AppGlobals::PlayOnStart = false; }

    // The pick raises inside the monitor's tick; the tick reports it once and the program goes on.
    void tickReportsAFailingPickOnceAndGoesOn_data() {
        QTest::addColumn<QString>("scenario");
        QTest::newRow("second playlist shown while empty") << QStringLiteral("playlist2");
        QTest::newRow("every entry deleted under the song") << QStringLiteral("delete all");
        QTest::newRow("started with play, a line without a digit") << QStringLiteral("play word");
    }
    void tickReportsAFailingPickOnceAndGoesOn() {
        QFETCH(QString, scenario);
        MainWindowRig r;
        r.setting("ShuffleStatus", QStringLiteral("True"));
        AppGlobals::PlayOnStart = scenario == QLatin1String("play word");
        loadWith(r, scenario == QLatin1String("play word") ? songs(QStringLiteral("x")) : songs());
        if (scenario != QLatin1String("play word")) {
            r.w.FPlaylist->setCurrentIndex(r.w.playlists().list(1).index(0));
            QTest::mouseClick(r.w.BPlay, Qt::LeftButton);
            if (scenario == QLatin1String("playlist2")) {
                QTest::mouseClick(r.w.BPlaylist2, Qt::LeftButton);
            } else {
                QTest::keyClick(r.w.FPlaylist, Qt::Key_A, Qt::ControlModifier);
                QTest::keyClick(r.w.FPlaylist, Qt::Key_Delete);
            }
            r.player.finishSong();
        }
        // The real timer, quicker: a dozen ticks.
        r.w.playback().tmrTime.setInterval(10);
        QTest::qWait(150);
        QCOMPARE(r.t.dialogs.messageTexts(),
                 QStringList{QStringLiteral("Fehler in tmrTime_Timer in Zeile 4: Typen unverträglich")});
        // The window still answers its controls.
        QTest::mouseClick(r.w.BStop, Qt::LeftButton);
        QCOMPARE(int(r.w.PlayMode), 0);
    }

    // A save asked for at close that fails keeps the window and the list; a save elsewhere then closes.
    void closeAfterAFailedSaveKeepsWindowAndList_data() {
        QTest::addColumn<QString>("damage");
        QTest::newRow("folder gone") << QStringLiteral("folder");
        QTest::newRow("a folder in the file's place") << QStringLiteral("file");
    }
    void closeAfterAFailedSaveKeepsWindowAndList() {
        QFETCH(QString, damage);
        QTemporaryDir stick;
        const QString file = stick.filePath(QStringLiteral("list.txt"));
        PlaylistFile::writeLines(file, songs());
        MainWindowRig r;
        r.setting("WinampPath", QStringLiteral("/usr/bin/mpv"));
        r.setting("UserMP3Directory", m_dir.path());
        r.setting("PlaylistFile", file);
        r.w.load();
        r.w.show();
        QTest::keyClick(r.w.FPlaylist, Qt::Key_Delete); // marks the list as changed
        const QStringList before = r.w.playlists().PlaylistPaths;
        if (damage == QLatin1String("folder")) {
            QVERIFY(stick.remove());
        } else {
            QVERIFY(QFile::remove(file));
            QVERIFY(QDir().mkpath(file));
        }
        r.player.clearLog();
        r.t.dialogs.answers = {Dialogs::Answer::Yes};

        QVERIFY(!r.w.close());

        QVERIFY(r.w.isVisible());
        QCOMPARE(r.w.playlists().PlaylistPaths, before);
        QVERIFY(r.t.dialogs.messageTexts().last().startsWith(
            QStringLiteral("Fehler in Player Form QueryUnload in Zeile 2: ")));
        QCOMPARE(r.player.commands(), QList<qint32>{}); // the player keeps playing

        const QString elsewhere = m_dir.filePath(QStringLiteral("saved.txt"));
        r.t.dialogs.answers = {Dialogs::Answer::Yes};
        r.t.dialogs.saveAnswers = {elsewhere};
        r.w.MenuDateiPlaylistSaveAs->trigger();
        QCOMPARE(PlaylistFile::readLines(elsewhere), before);
        QVERIFY(r.w.close());
        QCOMPARE(r.player.commands(), QList<qint32>{40001});
    }

    // Closing the settings window keeps the working scheme and the active preset it shows.
    void settingsWindowKeepsTheActivePresetAcrossCloseAndReopen() {
        MainWindowRig r;
        const QString preset = QStringLiteral("Preset1");
        r.t.settings.SaveSetting(preset, QStringLiteral("PresetName"), QStringLiteral("Rot"));
        r.t.settings.SaveSetting(preset, QStringLiteral("Background"), QStringLiteral("200 010 020"));
        r.setting("ActivePreset", QStringLiteral("1"));
        loadWith(r, songs());
        r.w.MenuEinstellungen->trigger();
        r.w.settingsWindow()->BCancel->click();
        r.w.MenuEinstellungen->trigger();
        TavoMP3Settings* w = r.w.settingsWindow();
        QVERIFY(w->isVisible());
        QCOMPARE(w->FActivePreset->text(), QStringLiteral("Rot"));
        w->BPresetSave->click();
        QCOMPARE(r.t.settings.GetSetting(preset, QStringLiteral("PresetName"), QString()),
                 QStringLiteral("Rot"));
        QCOMPARE(r.t.settings.GetSetting(preset, QStringLiteral("Background"), QString()),
                 QStringLiteral("200 010 020"));
        w->BCancel->click();

        QTest::keyClick(r.w.FPlaylist, Qt::Key_B); // opens the quick search
        auto* search = r.w.findChild<TavoMP3QuickSearch*>();
        QVERIFY(search);
        QCOMPARE(search->palette().color(QPalette::Window), QColor(200, 10, 20));
    }

    // Questions whose answer Yes overwrites or deletes something have Cancel as their default.
    void riskyQuestionsDefaultToCancel_data() {
        QTest::addColumn<QString>("question");
        QTest::newRow("priority report") << QStringLiteral("Die Liedprioritätsreport");
        QTest::newRow("bitrate report") << QStringLiteral("Die Analyse kann");
        QTest::newRow("preset delete") << QStringLiteral("Möchten Sie das Preset");
    }
    void riskyQuestionsDefaultToCancel() {
        QFETCH(QString, question);
        MainWindowRig r;
        r.t.settings.SaveSetting(QStringLiteral("Preset1"), QStringLiteral("PresetName"),
                                 QStringLiteral("Rot"));
        QStringList lines;
        for (int i = 0; i < 5; ++i)
            lines << QStringLiteral("/m/Song%1.mp3:5").arg(i);
        loadWith(r, lines);
        if (question.contains(QLatin1String("Preset"))) {
            TavoMP3Settings* w = r.w.settingsWindow();
            w->FPresetList->setCurrentRow(1);
            w->BPresetDelete->click();
        } else {
            (question.contains(QLatin1String("Analyse")) ? r.w.BReportBitrate : r.w.BReportPrio)->click();
        }
        const auto& asked = r.t.dialogs.questions;
        QVERIFY(!asked.isEmpty());
        QVERIFY2(asked.first().text.startsWith(question), qPrintable(asked.first().text));
        QCOMPARE(int(asked.first().buttons), int(Dialogs::Buttons::YesNoCancel));
        QCOMPARE(asked.first().defaultButton, 3);
    }

    // Letting the position knob go beyond either end of the track jumps to that end, not past it.
    void positionKnobLetGoBeyondTheTrackStaysInTheSong_data() {
        QTest::addColumn<int>("x");
        QTest::addColumn<QString>("jump");
        QTest::newRow("left of the start") << -40 << QStringLiteral("JumpToTime 0");
        QTest::newRow("right of the end") << 4000 << QStringLiteral("JumpToTime 180000");
    }
    void positionKnobLetGoBeyondTheTrackStaysInTheSong() {
        QFETCH(int, x);
        QFETCH(QString, jump);
        MainWindowRig r;
        loadWith(r, songs());
        r.w.show();
        r.w.FPlaylist->setCurrentIndex(r.w.playlists().list(1).index(0));
        QTest::mouseClick(r.w.BPlay, Qt::LeftButton);
        r.w.playback().tmrTimeTick(); // the slider learns the song's length
        r.player.clearLog();
        QTest::mousePress(r.w.TavoSlider1, Qt::LeftButton, {}, QPoint(10, 5));
        QTest::mouseRelease(r.w.TavoSlider1, Qt::LeftButton, {}, QPoint(x, 5));
        QCOMPARE(r.player.calls.filter(QStringLiteral("JumpToTime")), QStringList{jump});
    }

    // A click into the volume slider's groove moves the volume and gives the title back on release.
    void volumeClickInTheGrooveRestoresTheTitle() {
        MainWindowRig r;
        loadWith(r, songs());
        r.w.show();
        r.w.FPlaylist->setCurrentIndex(r.w.playlists().list(1).index(0));
        QTest::mouseClick(r.w.BPlay, Qt::LeftButton);
        r.w.playback().tmrTimeTick();
        QCOMPARE(r.w.lblTrackName->text(), QStringLiteral("Alpha"));
        {
            const QSignalBlocker quiet(r.w.sldVol);
            r.w.sldVol->setValue(0);
        }
        const QPoint groove(r.w.sldVol->width() - 3, r.w.sldVol->height() / 2);
        QTest::mousePress(r.w.sldVol, Qt::LeftButton, {}, groove);
        QVERIFY(r.w.lblTrackName->text().startsWith(QLatin1String("VOLUME:")));
        QTest::mouseRelease(r.w.sldVol, Qt::LeftButton, {}, groove);
        QCOMPARE(r.w.lblTrackName->text(), QStringLiteral("Alpha"));
        QVERIFY(r.player.volume > 0);
    }
};

QTEST_MAIN(tst_MainFailures)
#include "tst_MainFailures.moc"
