#include "app/TavoMP3PlayerMain.h"
#include "app/TrayModule.h"
#include "base/AppGlobals.h"
#include "player/PlaybackMonitor.h"
#include "playlist/PlaylistFile.h"
#include "playlist/widgets/PriorityFrame.h"
#include "support/FakePlayer.h"
#include "support/MainWindowRig.h"
#include "support/TestServices.h"
#include "ui/SkinControl.h"

#include <QAction>
#include <QLabel>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QtTest>

// Start-up and close of the main window as a whole: what is written in which order, and when the
// "play" word starts playing.
class tst_MainLifecycle : public QObject {
    Q_OBJECT

    // The real INI store that also notes the order of every write.
    struct RecordingSettings : TempSettings {
        QStringList writes;
        void SaveSetting(const QString& section, const QString& key, const QString& value) override {
            writes << section + QLatin1Char('/') + key;
            TempSettings::SaveSetting(section, key, value);
        }
    };

    QTemporaryDir m_dir;

    QString playlist(int songs) {
        QStringList lines;
        for (int i = 0; i < songs; ++i)
            lines << QStringLiteral("/m/Song%1.mp3:5").arg(i);
        const QString file = m_dir.filePath(QStringLiteral("list%1.txt").arg(songs));
        PlaylistFile::writeLines(file, lines);
        return file;
    }

private slots:
    void cleanup() { AppGlobals::PlayOnStart = false; }

    void closeWritesTheSettingsInOrderThenClosesThePlayer() {
        TestServices t;
        RecordingSettings settings;
        FakePlayer player(t.status);
        Services s{settings, t.dialogs, t.clock, t.random, t.status, PathStyle::Posix, &t.power, &player};
        settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("WinampPath"),
                             QStringLiteral("/usr/bin/mpv"));
        settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("UserMP3Directory"),
                             QStringLiteral("/m"));
        settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("PlaylistFile"), playlist(2));
        TavoMP3PlayerMain w(s);
        w.load();
        QVERIFY(w.tray().isAdded());
        settings.writes.clear();
        player.clearLog();

        w.close();

        QStringList expected{
            QStringLiteral("Settings/PlaylistFile"),   QStringLiteral("Settings/UserMP3Directory"),
            QStringLiteral("Screen/FormPositionLeft"), QStringLiteral("Screen/FormPositionTop"),
            QStringLiteral("Settings/ShuffleStatus"),  QStringLiteral("Settings/CurrentPlaylistPosition"),
            QStringLiteral("Settings/Volume"),         QStringLiteral("Settings/DialogLastpath")};
        for (int i = 1; i <= 20; ++i)
            expected << QStringLiteral("PreviousSongs/Prev%1").arg(i, 2, 10, QLatin1Char('0'));
        QCOMPARE(settings.writes, expected);
        QVERIFY(!w.tray().isAdded());
        QCOMPARE(player.commands(), QList<qint32>{40001});
    }

    void playWordStartsPlayingOnlyWithAListAndComplete_data() {
        QTest::addColumn<bool>("playWord");
        QTest::addColumn<int>("songs");
        QTest::addColumn<bool>("complete");
        QTest::addColumn<int>("playMode");
        QTest::newRow("play, list, complete") << true << 3 << true << 1;
        QTest::newRow("without the word") << false << 3 << true << 0;
        QTest::newRow("empty list") << true << 0 << true << 0;
        QTest::newRow("settings incomplete") << true << 3 << false << 0;
    }
    void playWordStartsPlayingOnlyWithAListAndComplete() {
        QFETCH(bool, playWord);
        QFETCH(int, songs);
        QFETCH(bool, complete);
        QFETCH(int, playMode);
        MainWindowRig r;
        if (complete) {
            r.setting("WinampPath", QStringLiteral("/usr/bin/mpv"));
            r.setting("UserMP3Directory", QStringLiteral("/m"));
        }
        r.setting("PlaylistFile", playlist(songs));
        AppGlobals::PlayOnStart = playWord;
        r.w.load();
        QCOMPARE(int(r.w.PlayMode), playMode);
        // Incomplete settings start no player at all.
        QCOMPARE(r.player.startCount, complete ? 1 : 0);
    }

    void songOfLengthZeroRaisesNoBoxOnTheTick() {
        MainWindowRig r;
        r.setting("WinampPath", QStringLiteral("/usr/bin/mpv"));
        r.setting("UserMP3Directory", QStringLiteral("/m"));
        r.setting("PlaylistFile", playlist(1));
        r.player.lengthSeconds.insert(QStringLiteral("/m/Song0.mp3"), 0);
        r.w.load();
        QTest::mouseClick(r.w.BPlay, Qt::LeftButton);
        r.w.playback().tmrTimeTick();
        r.w.playback().tmrTimeTick();
        QCOMPARE(r.t.dialogs.messageTexts(), QStringList());
        // The steps after the failing slider feed still ran.
        QCOMPARE(r.w.lblTime->text(), QStringLiteral("0:00/0:00"));
        QCOMPARE(r.w.tray().tip(), QStringLiteral("Tavo MP3 Player!: Song0"));
    }

    void historyEntryTakesThePriorityMarkAway() {
        MainWindowRig r;
        r.setting("WinampPath", QStringLiteral("/usr/bin/mpv"));
        r.setting("UserMP3Directory", QStringLiteral("/m"));
        r.setting("PlaylistFile", playlist(3));
        r.w.load();
        r.w.Frame1->FPrio[3]->click();
        QVERIFY(r.w.Frame1->FPrio[3]->isChecked());
        r.w.MenuPrev[1]->trigger();
        for (QRadioButton* option : r.w.Frame1->FPrio)
            QVERIFY(!option->isChecked());
        QCOMPARE(r.player.playedFiles(), QStringList{QStringLiteral("/m/Song0.mp3")});
    }
};

QTEST_MAIN(tst_MainLifecycle)
#include "tst_MainLifecycle.moc"
