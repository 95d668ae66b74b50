// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "desktop/MprisPlayerAdaptor.h"
#include "playback/PlaybackController.h"
#include "playlist/PlaylistManager.h"
#include "support/FakePlayer.h"
#include "support/SilentMp3.h"
#include "support/TestServices.h"

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QUrl>
#include <QtTest>

using namespace Qt::StringLiterals;

// The desktop's player controls on the playback controller, without a window and without a bus: the
// adaptor's slots are called directly and what it would announce is collected.
class tst_Mpris : public QObject {
    Q_OBJECT

    struct Rig {
        QTemporaryDir dir;
        TestServices t;
        FakePlayer player{t.status};
        PlaylistManager playlists{t.services};
        PlaybackController playback{t.services, playlists, player};
        QObject exported;
        MprisPlayerAdaptor mpris{&exported, playback, playlists, t.services, QDBusConnection(u"none"_s)};
        QList<QVariantMap> announced;

        Rig() {
            mpris.send = [this](const QDBusMessage& m) { announced << m.arguments().at(1).toMap(); };
            QStringList lines;
            for (const char* name : {"Eins", "Zwei", "Drei"}) {
                lines << dir.filePath(name + u".mp3"_s) + u":5"_s;
                SilentMp3::write(lines.last().chopped(2), 2.0);
            }
            playlists.paths(1) = lines;
            playlists.FuncDisplayPlaylist(true, 1);
        }
        // A command as the bus delivers it; it runs once the caller has its answer.
        void call(void (MprisPlayerAdaptor::*slot)(const QDBusMessage&)) {
            (mpris.*slot)(QDBusMessage());
            QCoreApplication::processEvents();
        }
    };

private slots:
    // The player's pause is a toggle: Pause only pauses a playing song, Play only resumes a paused one
    // and starts the marked line from a stop.
    void playAndPauseFollowThePlayersStatus_data() {
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("reaches"); // what reaches the player
        const QString play = "PlayFile,Command 40158,Command 40045";
        QTest::newRow("Play from a stop") << 0 << "Play" << play;
        QTest::newRow("Play while playing") << 1 << "Play"
                                            << "";
        QTest::newRow("Play while paused") << 3 << "Play"
                                           << "Command 40046";
        QTest::newRow("Pause from a stop") << 0 << "Pause"
                                           << "";
        QTest::newRow("Pause while playing") << 1 << "Pause"
                                             << "Command 40046";
        QTest::newRow("Pause while paused") << 3 << "Pause"
                                            << "";
        QTest::newRow("PlayPause from a stop") << 0 << "PlayPause" << play;
        QTest::newRow("PlayPause while playing") << 1 << "PlayPause"
                                                 << "Command 40046";
        QTest::newRow("PlayPause while paused") << 3 << "PlayPause"
                                                << "Command 40046";
    }
    void playAndPauseFollowThePlayersStatus() {
        QFETCH(int, status);
        QFETCH(QString, command);
        QFETCH(QString, reaches);
        Rig r;
        r.playlists.list(1).selectOnly(1);
        r.playback.transport().Play(1);
        r.player.status = FakePlayer::Status(status);
        r.player.clearLog();
        r.call(command == "Play"    ? &MprisPlayerAdaptor::Play
               : command == "Pause" ? &MprisPlayerAdaptor::Pause
                                    : &MprisPlayerAdaptor::PlayPause);
        QCOMPARE(r.player.calls.filter(QRegularExpression("^(PlayFile|Command)"))
                     .replaceInStrings(QRegularExpression("^PlayFile .*"), "PlayFile"),
                 reaches.isEmpty() ? QStringList() : reaches.split(','));
    }

    // Without a player that runs or can be started every command is refused with the reason in the
    // status line, and nothing reaches the playback.
    void commandsWithoutAPlayerAreRefused_data() {
        QTest::addColumn<QString>("command");
        for (const char* c : {"Play", "Pause", "PlayPause", "Stop", "Next", "Previous"})
            QTest::newRow(c) << QString(c);
    }
    void commandsWithoutAPlayerAreRefused() {
        QFETCH(QString, command);
        Rig r;
        r.player.close();
        r.playback.setPlayMode(1);
        const QMetaMethod slot = r.mpris.metaObject()->method(r.mpris.metaObject()->indexOfMethod(
            QMetaObject::normalizedSignature(qPrintable(command + "(QDBusMessage)"))));
        QVERIFY(slot.invoke(&r.mpris, Q_ARG(QDBusMessage, QDBusMessage())));
        QCoreApplication::processEvents();
        QCOMPARE(r.t.status.text(),
                 "Mediensteuerung: \"" + command +
                     "\" nicht ausgeführt - es läuft kein Player. Bitte den Player-Pfad in den "
                     "Einstellungen prüfen oder das Programm neu starten.");
        QCOMPARE(r.player.calls.filter(QRegularExpression("^(PlayFile|Command)")), QStringList());
        QCOMPARE(int(r.playback.state().PlayMode), 1);
    }

    // Volume and shuffle are the program's own; a song's metadata comes in one announcement with its
    // exact length, and empties when the player is gone.
    void volumeShuffleAndMetadata() {
        Rig r;
        r.mpris.setVolume(0.5);
        QCoreApplication::processEvents();
        QCOMPARE(r.announced.first().keys(), QStringList{"Volume"}); // only what changed since the start
        r.mpris.setShuffle(true);
        QCoreApplication::processEvents();
        QCOMPARE(r.playback.volume(), quint8(128));
        QCOMPARE(r.player.volume, 128);
        QVERIFY(r.playback.state().ShuffleStatus);
        QCOMPARE(r.mpris.volume(), 128 / 255.0);
        QCOMPARE(r.announced.last().value("Shuffle").toBool(), true);

        r.playback.selection().PlaySong(2, 1);
        QTRY_VERIFY(r.announced.last().contains("Metadata"));
        const QVariantMap m = r.announced.last().value("Metadata").toMap();
        QCOMPARE(m.value("mpris:trackid").value<QDBusObjectPath>().path(),
                 "/example/tavomp3/player/track/1_2");
        QCOMPARE(m.value("xesam:title").toString(), "Drei");
        QCOMPARE(m.value("xesam:url").toString(), QUrl::fromLocalFile(r.dir.filePath("Drei.mp3")).toString());
        QCOMPARE(m.value("mpris:length").toLongLong(), 2011429); // 77 frames of 1152 samples at 44.1 kHz
        // A file without MPEG frames: the length is the player's.
        QFile noFrames(r.dir.filePath("Vier.mp3"));
        QVERIFY(noFrames.open(QIODevice::WriteOnly) && noFrames.write("kein MPEG") == 9);
        noFrames.close();
        r.playlists.paths(1) << noFrames.fileName() + ":5";
        r.playback.selection().PlaySong(3, 1);
        QTRY_COMPARE(r.announced.last().value("Metadata").toMap().value("mpris:length").toLongLong(),
                     qlonglong(r.player.defaultLengthSeconds) * 1000000);
        r.player.close();
        r.playback.monitor().tmrTime.start(5); // the next tick announces it
        QTRY_COMPARE(r.announced.last()
                         .value("Metadata")
                         .toMap()
                         .value("mpris:trackid")
                         .value<QDBusObjectPath>()
                         .path(),
                     "/org/mpris/MediaPlayer2/TrackList/NoTrack");
    }
};

QTEST_GUILESS_MAIN(tst_Mpris)
#include "tst_Mpris.moc"
