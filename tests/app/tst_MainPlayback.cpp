// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "player/MpvLink.h"
#include "player/PlaybackMonitor.h"
#include "playlist/PlaylistLine.h"
#include "support/MainWindowRig.h"
#include "support/MpvTestPlayer.h"
#include "support/SilentMp3.h"

#include <QMenu>
#include <QtTest>

// The main window's transport row on the fake player, and one run of the real mpv playing a whole
// playlist by itself.
class tst_MainPlayback : public QObject {
    Q_OBJECT

private slots:
    // Next after Play, and Enter on a line; the monitor fills the display from the player.
    void transportDrivesThePlayerAndTheDisplay() {
        MainWindowRig r;
        r.load({"/m/Alpha.mp3:5", "/m/Beta.mp3:5", "/m/Gamma.mp3:5"});
        TavoMP3PlayerMain& w = r.w;
        r.play(1);
        QTest::mouseClick(w.BNext, Qt::LeftButton);
        QCOMPARE(w.MenuPrev[1]->text() + w.MenuPrev[2]->text(), "1. Gamma2. Beta");
        w.playlists().list(1).selectOnly(0);
        QTest::keyClick(w.FPlaylist, Qt::Key_Return);
        QCOMPARE(r.player.playedFiles(), (QStringList{"/m/Beta.mp3", "/m/Gamma.mp3", "/m/Alpha.mp3"}));
        r.player.advance(61000);
        w.playback().tmrTimeTick();
        QCOMPARE(w.lblTime->text() + ' ' + w.lblTrackName->text(), "1:01/3:00 Alpha");
        // The length the player reported, for an M3U save.
        QCOMPARE(w.playlists().SongSeconds.value("/m/Alpha.mp3"), 180);
    }

    void realPlayerPlaysThePlaylistBySongToSong() {
        if (MpvTestPlayer::mpvPath().isEmpty())
            QSKIP("mpv is not installed (README's test set-up installs it)");
        MpvTestPlayer env;
        QStringList lines;
        for (int i = 0; i < 4; ++i) {
            const QString song = env.filePath(QStringLiteral("Lied %1.mp3").arg(i + 1));
            QVERIFY(SilentMp3::write(song, 1.0) > 0);
            lines << song + ":5";
        }
        TestServices t;
        MpvLink link(t.status, t.dialogs, env.socketPath());
        Services s = t.services;
        s.player = &link;
        const QString file = env.filePath("list.txt");
        PlaylistFile::writeLines(file, lines);
        t.settings.SaveSetting("Settings", "WinampPath", MpvTestPlayer::mpvPath());
        t.settings.SaveSetting("Settings", "UserMP3Directory", QFileInfo(file).path());
        t.settings.SaveSetting("Settings", "PlaylistFile", file);
        TavoMP3PlayerMain w(s);
        w.load();
        // The player started by the load is connected to in the background.
        QTRY_VERIFY_WITH_TIMEOUT(link.isConnected(), 10000);
        const qint64 pid = env.pid();

        w.playlists().list(1).selectOnly(0);
        QTest::mouseClick(w.BPlay, Qt::LeftButton);
        QTRY_COMPARE_WITH_TIMEOUT(t.status.text(), "Playlistende erreicht - Playmodus gestoppt.", 20000);
        QCOMPARE(w.PlayMode, quint8(0));
        QCOMPARE(w.PlaylistPosition, 3);
        QCOMPARE(env.property("playlist-count").toInt(), 4);
        const QVariantList playlist = env.property("playlist").toList();
        for (int i = 0; i < 4; ++i)
            QCOMPARE(playlist.at(i).toMap().value("filename").toString(), PlaylistLine::path(lines.at(i)));
        QCOMPARE(w.MenuPrev[1]->text(), "1. Lied 4");
        QCOMPARE(w.MenuPrev[3]->text(), "3. Lied 2");
        // Entry 0 reads as an empty slot, so the first song of a fresh history is not recorded.
        QVERIFY(!w.MenuPrev[4]->isVisible());
        QCOMPARE(w.LMP3Samplerate->text(), "44 kHz");
        QCOMPARE(w.LMP3Bitrate->text(), "128 kbps");

        w.close();
        QTRY_VERIFY(!MpvTestPlayer::alive(pid));
    }
};

QTEST_MAIN(tst_MainPlayback)
#include "tst_MainPlayback.moc"
