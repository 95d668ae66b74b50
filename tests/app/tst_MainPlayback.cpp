// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "playback/PlaybackMonitor.h"
#include "player/MpvLink.h"
#include "support/MainWindowRig.h"
#include "support/MpvTestPlayer.h"
#include "support/SilentMp3.h"

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
        QTest::mouseClick(w.ui().BNext, Qt::LeftButton);
        QCOMPARE(w.ui().MenuPrev[1]->text() + w.ui().MenuPrev[2]->text(), "1. Gamma2. Beta");
        r.core.playlists().list(1).selectOnly(0);
        QTest::keyClick(w.ui().FPlaylist, Qt::Key_Return);
        QCOMPARE(r.player.playedFiles(), (QStringList{"/m/Beta.mp3", "/m/Gamma.mp3", "/m/Alpha.mp3"}));
        r.player.advance(61000);
        r.core.playback().monitor().tmrTimeTick();
        QCOMPARE(w.ui().lblTime->text() + ' ' + w.ui().lblTrackName->text(), "1:01/3:00 Alpha");
        // The length the player reported, for an M3U save.
        QCOMPARE(r.core.playlists().SongSeconds.value("/m/Alpha.mp3"), 180);
    }

    void realPlayerPlaysThePlaylistBySongToSong() {
        if (MpvTestPlayer::mpvPath().isEmpty())
            QSKIP("mpv is not installed (README's test set-up installs it)");
        MpvTestPlayer env;
        QStringList songs;
        for (int i = 0; i < 4; ++i) {
            songs << env.filePath(QStringLiteral("Lied %1.mp3").arg(i + 1));
            QVERIFY(SilentMp3::write(songs.last(), 1.0) > 0);
        }
        TestServices t;
        MpvLink link(t.status, t.dialogs, env.socketPath());
        Services s = t.services;
        s.player = &link;
        const QString file = env.filePath("list.txt");
        PlaylistFile::writeLines(file, QStringList(songs).replaceInStrings(QRegularExpression("$"), ":5"));
        t.settings.SaveSetting("Settings", "WinampPath", MpvTestPlayer::mpvPath());
        t.settings.SaveSetting("Settings", "UserMP3Directory", env.filePath(""));
        t.settings.SaveSetting("Settings", "PlaylistFile", file);
        ProgramCore core(s);
        TavoMP3PlayerMain w(core);
        w.load();
        // The player started by the load is connected to in the background.
        QTRY_VERIFY_WITH_TIMEOUT(link.isConnected(), 10000);
        const qint64 pid = env.pid();

        core.playlists().list(1).selectOnly(0);
        QTest::mouseClick(w.ui().BPlay, Qt::LeftButton);
        QTRY_COMPARE_WITH_TIMEOUT(t.status.text(), "Playlistende erreicht - Playmodus gestoppt.", 20000);
        QCOMPARE(core.playback().state().PlayMode, quint8(0));
        QCOMPARE(core.playback().state().PlaylistPosition, 3);
        QStringList handed;
        for (const QVariant& entry : env.property("playlist").toList())
            handed << entry.toMap().value("filename").toString();
        QCOMPARE(handed, songs);
        QCOMPARE(w.ui().MenuPrev[1]->text() + '|' + w.ui().MenuPrev[3]->text(), "1. Lied 4|3. Lied 2");
        // Entry 0 reads as an empty slot, so the first song of a fresh history is not recorded.
        QVERIFY(!w.ui().MenuPrev[4]->isVisible());
        QCOMPARE(w.ui().LMP3Samplerate->text() + ' ' + w.ui().LMP3Bitrate->text(), "44 kHz 128 kbps");

        w.close();
        QTRY_VERIFY(!MpvTestPlayer::alive(pid));
    }
};

QTEST_MAIN(tst_MainPlayback)
#include "tst_MainPlayback.moc"
