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
#include <QSettings>
#include <QSlider>
#include <QTemporaryDir>
#include <QtTest>

// Start-up and close of the main window as a whole: what is written in which order, and when the
// "play" word starts playing.
class tst_MainLifecycle : public QObject {
    Q_OBJECT

    // The real INI store that also notes every write: single values and whole batches.
    struct RecordingSettings : TempSettings {
        QStringList writes;
        int batches = 0;
        void SaveSetting(const QString& section, const QString& key, const QString& value) override {
            writes << section + QLatin1Char('/') + key;
            TempSettings::SaveSetting(section, key, value);
        }
        void SaveSettings(const QList<Entry>& entries) override {
            ++batches;
            for (const Entry& e : entries)
                writes << e.section + QLatin1Char('/') + e.key;
            TempSettings::SaveSettings(entries);
        }
        QHash<QString, QString> fileValues() const {
            QSettings file(fileName(), QSettings::IniFormat);
            QHash<QString, QString> values;
            for (const QString& key : file.allKeys())
                values.insert(key, file.value(key).toString());
            return values;
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

    // The close writes its values in one batch and in order; a value the load could not read stops
    // the load, and the close then writes back none of the values the load did not get to, unless
    // the user changed them since.
    void closeWritesBackOnlyWhatTheLoadRead_data() {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("garbage");
        QTest::addColumn<QString>("loadError");
        QTest::addColumn<int>("userVolume");
        QTest::newRow("nothing damaged") << QString() << QString() << QString() << -1;
        QTest::newRow("volume out of range")
            << QStringLiteral("Settings/Volume") << QStringLiteral("300")
            << QStringLiteral("Fehler in Player Form Load in Zeile 7: Überlauf") << -1;
        QTest::newRow("position not a number")
            << QStringLiteral("Settings/CurrentPlaylistPosition") << QStringLiteral("abc")
            << QStringLiteral("Fehler in Player Form Load in Zeile 7: Typen unverträglich") << -1;
        QTest::newRow("history slot not a number")
            << QStringLiteral("PreviousSongs/Prev03") << QStringLiteral("abc")
            << QStringLiteral("Fehler in Player Form Load in Zeile 7: Typen unverträglich") << -1;
        QTest::newRow("volume damaged, then moved by the user")
            << QStringLiteral("Settings/Volume") << QStringLiteral("300")
            << QStringLiteral("Fehler in Player Form Load in Zeile 7: Überlauf") << 100;
    }
    void closeWritesBackOnlyWhatTheLoadRead() {
        QFETCH(QString, key);
        QFETCH(QString, garbage);
        QFETCH(QString, loadError);
        QFETCH(int, userVolume);
        TestServices t;
        RecordingSettings settings;
        FakePlayer player(t.status);
        Services s{settings, t.dialogs, t.clock, t.random, t.status, PathStyle::Posix, &t.power, &player};
        auto set = [&](const QString& id, const QString& value) {
            settings.SaveSetting(id.section(QLatin1Char('/'), 0, 0), id.section(QLatin1Char('/'), 1), value);
        };
        set(QStringLiteral("Settings/WinampPath"), QStringLiteral("/usr/bin/mpv"));
        set(QStringLiteral("Settings/UserMP3Directory"), QStringLiteral("/m\r\n/n"));
        set(QStringLiteral("Settings/PlaylistFile"), playlist(2));
        set(QStringLiteral("PreviousSongs/Prev01"), QStringLiteral("1"));
        if (!key.isEmpty())
            set(key, garbage);
        const QHash<QString, QString> before = settings.fileValues();
        TavoMP3PlayerMain w(s);
        w.load();
        QCOMPARE(t.dialogs.messageTexts(), loadError.isEmpty() ? QStringList() : QStringList{loadError});
        if (userVolume >= 0)
            w.sldVol->setValue(userVolume);
        settings.writes.clear();
        player.clearLog();

        w.close();

        QCOMPARE(settings.batches, 1);
        const QHash<QString, QString> after = settings.fileValues();
        for (auto it = before.begin(); it != before.end(); ++it)
            if (!(userVolume >= 0 && it.key() == key))
                QCOMPARE(after.value(it.key()), it.value());
        if (userVolume >= 0)
            QCOMPARE(after.value(key), QString::number(userVolume));
        if (key.isEmpty()) {
            QStringList expected{
                QStringLiteral("Settings/PlaylistFile"),   QStringLiteral("Settings/UserMP3Directory"),
                QStringLiteral("Screen/FormPositionLeft"), QStringLiteral("Screen/FormPositionTop"),
                QStringLiteral("Settings/ShuffleStatus"),  QStringLiteral("Settings/CurrentPlaylistPosition"),
                QStringLiteral("Settings/Volume"),         QStringLiteral("Settings/DialogLastpath")};
            for (int i = 1; i <= 20; ++i)
                expected << QStringLiteral("PreviousSongs/Prev%1").arg(i, 2, 10, QLatin1Char('0'));
            QCOMPARE(settings.writes, expected);
        }
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
