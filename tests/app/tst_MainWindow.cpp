// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "base/AppGlobals.h"
#include "support/MainWindowRig.h"
#include "ui/DirectoryField.h"
#include "ui/TavoMP3Settings.h"

#include <QSettings>
#include <QSlider>
#include <QtTest>

using namespace Qt::StringLiterals;

// Start-up from the stored settings and the close: what is read, what is written back, the prompt.
class tst_MainWindow : public QObject {
    Q_OBJECT

    struct RecordingSettings : TempSettings {
        int batches = 0;
        void SaveSettings(const QList<Entry>& entries) override {
            ++batches;
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
    static QString get(MainWindowRig& r, const char* key, const char* section = "Settings") {
        return r.t.settings.GetSetting(section, key, QStringLiteral("-"));
    }

private slots:
    void cleanup() { AppGlobals::PlayOnStart = false; }

    // Missing settings open the settings window and start nothing; "play" on the command line
    // starts playing only with a complete set-up and a list. The stored position selects its row.
    void startUpFromTheStoredSettings_data() {
        QTest::addColumn<QString>("winampPath"); // "-" = key missing
        QTest::addColumn<QString>("folders");
        QTest::addColumn<int>("songs");
        QTest::addColumn<int>("position");
        QTest::addColumn<bool>("playWord");
        QTest::addColumn<bool>("incomplete");
        const QString mpv = u"/usr/bin/mpv"_s;
        QTest::newRow("no player") << u"-"_s << u"/m"_s << 3 << 0 << true << true;
        QTest::newRow("folders never configured") << mpv << u"0"_s << 3 << 0 << true << true;
        QTest::newRow("folders empty") << mpv << u""_s << 3 << 0 << true << true;
        QTest::newRow("empty player path is accepted") << u""_s << u"/m"_s << 3 << 0 << false << false;
        QTest::newRow("play, list, complete") << mpv << u"/m\r\n/n"_s << 3 << 0 << true << false;
        QTest::newRow("without the word, last row") << mpv << u"/m"_s << 3 << 2 << false << false;
        QTest::newRow("position past the end") << mpv << u"/m"_s << 3 << 3 << false << false;
        QTest::newRow("negative position") << mpv << u"/m"_s << 3 << -1 << false << false;
        QTest::newRow("empty list") << mpv << u"/m"_s << 0 << 0 << true << false;
    }
    void startUpFromTheStoredSettings() {
        QFETCH(QString, winampPath);
        QFETCH(QString, folders);
        QFETCH(int, songs);
        QFETCH(int, position);
        QFETCH(bool, playWord);
        QFETCH(bool, incomplete);
        MainWindowRig r;
        const QString file = r.writeList(r.songs(songs));
        r.setting("PlaylistFile", file);
        r.setting("CurrentPlaylistPosition", QString::number(position));
        if (winampPath != "-")
            r.setting("WinampPath", winampPath);
        if (folders != "-")
            r.setting("UserMP3Directory", folders);
        AppGlobals::PlayOnStart = playWord;
        r.w.load();

        QCOMPARE(r.core.session().settingsIncomplete(), incomplete);
        QCOMPARE(r.core.playback().state().PlayMode, quint8(playWord && !incomplete && songs > 0 ? 1 : 0));
        QCOMPARE(r.player.startCount, incomplete ? 0 : 1);
        // The settings window always exists (it loads the colour preset); only shown when incomplete.
        QCOMPARE(r.w.windows().settingsWindow()->isVisible(), incomplete);
        if (incomplete)
            QCOMPARE(r.w.windows().settingsWindow()->FStatus->text(),
                     "Bitte füllen Sie alle Felder aus und speichen die Einstellungen!");
        QCOMPARE(r.w.ui().FBrowsePath->text() + '|' + r.w.ui().FActPlaylist->text() + '|' +
                     QString::number(r.w.ui().FPlaylist->model()->rowCount()),
                 incomplete ? "||0" : folders + '|' + file + '|' + QString::number(songs));
        QCOMPARE(r.core.playlists().list(1).selectedRows(),
                 !incomplete && position >= 0 && position < songs ? QList<int>{position} : QList<int>{});
        QCOMPARE(r.core.playback().state().PlaylistPosition, position);
    }

    // The load restores shuffle, volume and history; the close writes them and asks to save a changed list.
    void closeWritesSettingsAndAsksToSave_data() {
        QTest::addColumn<bool>("changed");
        QTest::addColumn<Dialogs::Answer>("answer");
        QTest::newRow("unchanged: no question") << false << Dialogs::Answer::Cancel;
        QTest::newRow("Ja saves") << true << Dialogs::Answer::Yes;
        QTest::newRow("Nein discards") << true << Dialogs::Answer::No;
        QTest::newRow("Abbrechen stays open") << true << Dialogs::Answer::Cancel;
    }
    void closeWritesSettingsAndAsksToSave() {
        QFETCH(bool, changed);
        QFETCH(Dialogs::Answer, answer);
        MainWindowRig r;
        r.setting("ShuffleStatus", "True");
        r.setting("Volume", "128");
        r.t.settings.SaveSetting("PreviousSongs", "Prev01", "1");
        r.t.settings.SaveSetting("PreviousSongs", "Prev02", "9");
        const QString file = r.load(r.songs(2));
        QVERIFY(r.core.playback().state().ShuffleStatus && r.w.ui().MenuShuffleStatus->isChecked());
        QCOMPARE(r.w.ui().sldVol->value(), 128);
        QCOMPARE(r.player.volume, -1); // not told until the slider moves
        // Shown: the stored entry and the empty slot after it.
        QCOMPARE(r.w.ui().MenuPrev[1]->text() + '|' + r.w.ui().MenuPrev[2]->text() + '|' +
                     QString::number(r.w.ui().MenuPrev[2]->isVisible()) +
                     QString::number(r.w.ui().MenuPrev[3]->isVisible()),
                 "1. Song01|2. ...|10");
        r.w.ui().sldVol->setValue(200);
        QCOMPARE(r.player.volume, 200);
        QTest::mouseClick(r.w.ui().lblShuffle, Qt::LeftButton);
        QVERIFY(!r.w.ui().MenuShuffleStatus->isChecked());
        // A change in memory that only a save writes to the file.
        r.core.playlists().PlaylistPaths[1] = "/m/Song01.mp3:1";
        r.core.playlists().PlaylistChanged = changed;
        r.core.playback().state().PlaylistPosition = 1;
        r.w.ui().FBrowsePath->setText("/m/a\r\n/m/b");
        r.t.dialogs.answers = {answer};

        QCOMPARE(r.w.close(), !changed || answer != Dialogs::Answer::Cancel);

        QCOMPARE(r.t.dialogs.messageTexts(),
                 changed
                     ? QStringList{"Möchten Sie die Änderungen in der Playliste \"" + file + "\" speichern?"}
                     : QStringList());
        if (changed)
            QCOMPARE(r.t.dialogs.questions[0].buttons, Dialogs::Buttons::YesNoCancel);
        QCOMPARE(PlaylistFile::readLines(file).value(1),
                 changed && answer == Dialogs::Answer::Yes ? "/m/Song01.mp3:1" : "/m/Song01.mp3:5");
        // Settings are written before the question, whatever the answer.
        QCOMPARE(QStringList({get(r, "PlaylistFile"), get(r, "CurrentPlaylistPosition"),
                              get(r, "UserMP3Directory"), get(r, "ShuffleStatus"), get(r, "Volume"),
                              get(r, "Prev01", "PreviousSongs")})
                     .join('|'),
                 file + "|1|/m/a\r\n/m/b|False|200|1");
    }

    // The close writes its values in one batch; a value the load could not read stops
    // the load, and the close then writes back none of the values the load did not get to, unless
    // the user changed them since.
    void closeWritesBackOnlyWhatTheLoadRead_data() {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("garbage");
        QTest::addColumn<QString>("loadError"); // after "Fehler in Player Form Load in Zeile 7: "
        QTest::addColumn<int>("userVolume");
        QTest::newRow("nothing damaged") << QString() << QString() << QString() << -1;
        QTest::newRow("volume out of range") << u"Settings/Volume"_s << u"300"_s << u"Überlauf"_s << -1;
        QTest::newRow("history slot not a number")
            << u"PreviousSongs/Prev03"_s << u"abc"_s << u"Typen unverträglich"_s << -1;
        QTest::newRow("volume damaged, then moved by the user")
            << u"Settings/Volume"_s << u"300"_s << u"Überlauf"_s << 100;
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
        QTemporaryDir dir;
        const QString file = dir.filePath("list.txt");
        PlaylistFile::writeLines(file, MainWindowRig::songs(2));
        auto set = [&](const QString& id, const QString& value) {
            settings.SaveSetting(id.section('/', 0, 0), id.section('/', 1), value);
        };
        set("Settings/WinampPath", "/usr/bin/mpv");
        set("Settings/UserMP3Directory", "/m\r\n/n");
        set("Settings/PlaylistFile", file);
        set("PreviousSongs/Prev01", "1");
        if (!key.isEmpty())
            set(key, garbage);
        const QHash<QString, QString> before = settings.fileValues();
        ProgramCore core(s);
        TavoMP3PlayerMain w(core);
        w.load();
        QCOMPARE(t.dialogs.messageTexts().join(""),
                 loadError.isEmpty() ? "" : "Fehler in Player Form Load in Zeile 7: " + loadError);
        if (userVolume >= 0)
            w.ui().sldVol->setValue(userVolume);
        player.clearLog();

        w.close();

        QCOMPARE(settings.batches, 1);
        const QHash<QString, QString> after = settings.fileValues();
        for (auto it = before.begin(); it != before.end(); ++it)
            if (!(userVolume >= 0 && it.key() == key))
                QCOMPARE(after.value(it.key()), it.value());
        if (userVolume >= 0)
            QCOMPARE(after.value(key), QString::number(userVolume));
        QCOMPARE(player.commands(), QList<qint32>{40001});
    }
};

QTEST_MAIN(tst_MainWindow)
#include "tst_MainWindow.moc"
