#include "app/TavoMP3PlayerMain.h"
#include "player/MpvLink.h"
#include "player/PlaybackMonitor.h"
#include "playlist/PlaylistFile.h"
#include "playlist/PlaylistLine.h"
#include "support/FakePlayer.h"
#include "support/MpvTestPlayer.h"
#include "support/SilentMp3.h"
#include "support/TestServices.h"
#include "ui/SkinControl.h"

#include <QAction>
#include <QLabel>
#include <QListView>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTemporaryDir>
#include <QtTest>

// The main window's transport row, history menu and playback settings, on the fake player; and one
// run of the real mpv playing a whole playlist by itself.
class tst_MainPlayback : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;

    QString configure(TestServices& t, const QStringList& lines,
                      const QString& winampPath = QStringLiteral("/usr/bin/mpv")) {
        const QString file = m_dir.filePath(QStringLiteral("list.txt"));
        PlaylistFile::writeLines(file, lines);
        auto set = [&](const char* key, const QString& value) {
            t.settings.SaveSetting(QStringLiteral("Settings"), QLatin1String(key), value);
        };
        set("WinampPath", winampPath);
        set("UserMP3Directory", m_dir.path());
        set("PlaylistFile", file);
        return file;
    }
    static QStringList abc() {
        return {QStringLiteral("/m/Alpha.mp3:5"), QStringLiteral("/m/Beta.mp3:5"),
                QStringLiteral("/m/Gamma.mp3:5")};
    }

private slots:
    void controlsCarryTheirNamesAndCaptions() {
        TestServices t;
        FakePlayer player(t.status);
        Services s = t.services;
        s.player = &player;
        TavoMP3PlayerMain w(s);
        const QList<QPair<const char*, QString>> buttons{{"BLast", QStringLiteral("Previous")},
                                                         {"BStop", QStringLiteral("Stop")},
                                                         {"BPlay", QStringLiteral("Play")},
                                                         {"BPause", QStringLiteral("Pause")},
                                                         {"BNext", QStringLiteral("Next")}};
        for (const auto& [name, caption] : buttons) {
            auto* b = w.findChild<QAbstractButton*>(QLatin1String(name));
            QVERIFY2(b, name);
            QCOMPARE(b->text(), caption);
        }
        QCOMPARE(w.findChild<QLabel*>(QStringLiteral("Label3"))->text(), QStringLiteral("Volume"));
        QCOMPARE(w.findChild<QLabel*>(QStringLiteral("Label13"))->text(),
                 QStringLiteral("Aktive Playliste:"));
        QCOMPARE(w.sldVol->minimum(), 0);
        QCOMPARE(w.sldVol->maximum(), 255);
        QVERIFY(w.PL[1]->isChecked());
        QVERIFY(w.MenuPrevHead);
        QCOMPARE(w.MenuPrevHead->actions().size(), 20);
        QCOMPARE(w.findChild<QObject*>(QStringLiteral("tmrTime"))->property("interval").toInt(), 750);
    }

    void loadRestoresAndCloseWritesThePlaybackSettings() {
        TestServices t;
        FakePlayer player(t.status);
        Services s = t.services;
        s.player = &player;
        configure(t, abc());
        t.settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("ShuffleStatus"),
                               QStringLiteral("True"));
        t.settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("Volume"), QStringLiteral("128"));
        t.settings.SaveSetting(QStringLiteral("PreviousSongs"), QStringLiteral("Prev01"),
                               QStringLiteral("2"));
        t.settings.SaveSetting(QStringLiteral("PreviousSongs"), QStringLiteral("Prev02"),
                               QStringLiteral("9"));
        TavoMP3PlayerMain w(s);
        w.load();

        QCOMPARE(player.calls.first(), QStringLiteral("StartWinamp /usr/bin/mpv"));
        QVERIFY(w.ShuffleStatus);
        QVERIFY(w.MenuShuffleStatus->isChecked());
        QVERIFY(w.ShuffleOn);
        QCOMPARE(w.sldVol->value(), 128);
        QCOMPARE(player.volume, -1); // not told until the slider moves
        QCOMPARE(w.MenuPrev[1]->text(), QStringLiteral("1. Gamma"));
        QCOMPARE(w.MenuPrev[2]->text(), QStringLiteral("2. ..."));
        QVERIFY(w.MenuPrev[2]->isVisible());
        QVERIFY(!w.MenuPrev[3]->isVisible());

        w.sldVol->setValue(200);
        QCOMPARE(w.lblTrackName->text(), QStringLiteral("VOLUME: 78%"));
        QCOMPARE(player.volume, 200);
        QTest::mouseClick(w.lblShuffle, Qt::LeftButton);
        QVERIFY(!w.ShuffleStatus);
        QVERIFY(!w.MenuShuffleStatus->isChecked());

        w.PlaylistPosition = 1;
        QVERIFY(w.closeMainWindow());
        auto get = [&](const char* section, const char* key) {
            return t.settings.GetSetting(QLatin1String(section), QLatin1String(key),
                                         QStringLiteral("missing"));
        };
        QCOMPARE(get("Settings", "ShuffleStatus"), QStringLiteral("False"));
        QCOMPARE(get("Settings", "Volume"), QStringLiteral("200"));
        QCOMPARE(get("Settings", "CurrentPlaylistPosition"), QStringLiteral("1"));
        QCOMPARE(get("PreviousSongs", "Prev01"), QStringLiteral("2"));
        QCOMPARE(get("PreviousSongs", "Prev02"), QStringLiteral("9"));
        QCOMPARE(get("PreviousSongs", "Prev20"), QStringLiteral("0"));
        w.close();
        QCOMPARE(player.commands().last(), 40001);
    }

    void transportButtonsDriveThePlayer() {
        TestServices t;
        FakePlayer player(t.status);
        Services s = t.services;
        s.player = &player;
        configure(t, abc());
        TavoMP3PlayerMain w(s);
        w.load();
        w.playlists().list(1).selectOnly(1);
        QTest::mouseClick(w.BPlay, Qt::LeftButton);
        QCOMPARE(player.playedFiles(), QStringList{QStringLiteral("/m/Beta.mp3")});
        QCOMPARE(w.PlayMode, quint8(1));
        QCOMPARE(w.MenuPrev[1]->text(), QStringLiteral("1. Beta"));
        QTest::mouseClick(w.BNext, Qt::LeftButton);
        QCOMPARE(player.playedFiles().last(), QStringLiteral("/m/Gamma.mp3"));
        QCOMPARE(w.playlists().list(1).selectedRows(), QList<int>{2});
        QTest::mouseClick(w.BPause, Qt::LeftButton);
        QCOMPARE(int(player.status), int(FakePlayer::Paused));
        QTest::mouseClick(w.BStop, Qt::LeftButton);
        QCOMPARE(w.PlayMode, quint8(0));
        QTest::mouseClick(w.LAutoCue, Qt::LeftButton);
        QVERIFY(w.AutoCue);
        QVERIFY(w.AutoCueOn);
        QVERIFY(!w.ShuffleOn);

        // Enter on a line plays it.
        w.playlists().list(1).selectOnly(0);
        w.FPlaylist->setFocus();
        QTest::keyClick(w.FPlaylist, Qt::Key_Return);
        QCOMPARE(player.playedFiles().last(), QStringLiteral("/m/Alpha.mp3"));

        // The monitor fills the display.
        player.advance(61000);
        w.playback().tmrTimeTick();
        QCOMPARE(w.lblTime->text(), QStringLiteral("1:01/3:00"));
        QCOMPARE(w.lblTrackName->text(), QStringLiteral("Alpha"));
        QCOMPARE(w.FTest2->text(), QStringLiteral("Winamp Status = 1 / Playmode = 0"));
        // The length the player reported, for an M3U save.
        QCOMPARE(w.playlists().SongSeconds.value(QStringLiteral("/m/Alpha.mp3")), 180);

        w.resize(760, 600);
        w.grab().save(QStringLiteral("/tmp/tavo-main-playback.png"));
    }

    void realPlayerPlaysThePlaylistBySongToSong() {
        if (MpvTestPlayer::mpvPath().isEmpty())
            QSKIP("mpv is not installed (README's test set-up installs it)");
        MpvTestPlayer env;
        QStringList lines;
        for (int i = 0; i < 4; ++i) {
            const QString song = env.filePath(QStringLiteral("Lied %1.mp3").arg(i + 1));
            QVERIFY(SilentMp3::write(song, 1.0) > 0);
            lines << song + QStringLiteral(":5");
        }
        TestServices t;
        MpvLink link(t.status, t.dialogs, env.socketPath());
        Services s = t.services;
        s.player = &link;
        configure(t, lines, MpvTestPlayer::mpvPath());
        TavoMP3PlayerMain w(s);
        w.load();
        // The player started by the load is connected to in the background.
        QTRY_VERIFY_WITH_TIMEOUT(link.isConnected(), 10000);
        const qint64 pid = env.pid();

        w.playlists().list(1).selectOnly(0);
        QTest::mouseClick(w.BPlay, Qt::LeftButton);
        QTRY_COMPARE_WITH_TIMEOUT(t.status.text(),
                                  QStringLiteral("Playlistende erreicht - Playmodus gestoppt."), 20000);
        QCOMPARE(w.PlayMode, quint8(0));
        QCOMPARE(w.PlaylistPosition, 3);
        QCOMPARE(env.property(QStringLiteral("playlist-count")).toInt(), 4);
        const QVariantList playlist = env.property(QStringLiteral("playlist")).toList();
        for (int i = 0; i < 4; ++i)
            QCOMPARE(playlist.at(i).toMap().value(QStringLiteral("filename")).toString(),
                     PlaylistLine::path(lines.at(i)));
        QCOMPARE(w.MenuPrev[1]->text(), QStringLiteral("1. Lied 4"));
        QCOMPARE(w.MenuPrev[3]->text(), QStringLiteral("3. Lied 2"));
        // Entry 0 reads as an empty slot, so the first song of a fresh history is not recorded.
        QVERIFY(!w.MenuPrev[4]->isVisible());
        QCOMPARE(w.LMP3Samplerate->text(), QStringLiteral("44 kHz"));
        QCOMPARE(w.LMP3Bitrate->text(), QStringLiteral("128 kbps"));

        w.close();
        QTRY_VERIFY(!MpvTestPlayer::alive(pid));
    }
};

QTEST_MAIN(tst_MainPlayback)
#include "tst_MainPlayback.moc"
