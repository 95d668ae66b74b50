#include "base/StatusLine.h"
#include "player/MpvLink.h"
#include "player/SocketFolder.h"
#include "support/MpvTestPlayer.h"
#include "support/PlaybackRig.h"
#include "support/ScriptedDialogs.h"
#include "support/SilentMp3.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTimer>
#include <QtTest>

#include <csignal>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

// The Linux player link against the real mpv, headless (ao=null), with synthesized silent MP3s.
class tst_MpvLink : public QObject {
    Q_OBJECT

    std::unique_ptr<MpvTestPlayer> m_env;
    StatusLine m_status;
    ScriptedDialogs m_dialogs;

    QString song(const QString& name, double seconds) {
        const QString path = m_env->filePath(name);
        if (!QFile::exists(path))
            SilentMp3::write(path, seconds);
        return path;
    }
    int status(MpvLink& link) { return link.WinampGetInfo(PlayerLink::InfoStatus).toInt(); }
    void playLast(MpvLink& link) {
        link.WinampCommand(PlayerLink::JumpToLastCommand);
        link.WinampCommand(PlayerLink::PlayCommand);
        QTRY_COMPARE(status(link), 1);
    }
    // The files of mpv's own list, in order.
    QStringList playerList() const {
        QStringList files;
        for (const QVariant& entry : m_env->property(u"playlist"_s).toList())
            files << entry.toMap().value(u"filename"_s).toString();
        return files;
    }

private slots:
    void init() {
        if (MpvTestPlayer::mpvPath().isEmpty())
            QSKIP("mpv is not installed (README's test set-up installs it)");
        m_env = std::make_unique<MpvTestPlayer>();
        m_status.setText(QString());
        m_dialogs.questions.clear();
    }
    void cleanup() {
        if (QTest::currentTestFailed())
            QFile::copy(m_env->filePath(u"mpv.log"_s), u"/tmp/mpv-failed.log"_s);
        m_env.reset();
    }

    // One player serves every link, whatever path they are given; it is driven through play, pause,
    // stop and seek, and when it is killed under the link that is reported once, every later message
    // goes nowhere and answers 0, and another start brings a new player.
    void drivesTheOnePlayerUntilItIsKilled() {
        auto link = std::make_unique<MpvLink>(m_status, m_dialogs, m_env->socketPath());
        link->StartWinamp(MpvTestPlayer::mpvPath());
        QTRY_VERIFY_WITH_TIMEOUT(link->isConnected(), 10000); // in the background
        const qint64 pid = m_env->pid();
        for (const QString& path : {MpvTestPlayer::mpvPath(), u"/nonexistent/mpv"_s, QString()}) {
            MpvLink second(m_status, m_dialogs, m_env->socketPath());
            second.StartWinamp(path);
            QVERIFY(second.isConnected() && pid > 0 && m_env->pid() == pid);
        }
        QVERIFY(m_dialogs.questions.isEmpty());
        auto info = [&](quint8 code) { return link->WinampGetInfo(code).toInt(); };
        const QString a = song(u"a6.mp3"_s, 6.0), b = song(u"b.mp3"_s, 3.0);
        link->WinampPlayFile(a);
        link->WinampPlayFile(b);
        QCOMPARE(info(PlayerLink::InfoListLength), 2);
        QCOMPARE(status(*link), 0); // appending does not start anything
        QCOMPARE(info(PlayerLink::InfoPosition), -1);
        QCOMPARE(link->WinampJumpToTime(1, 0), -1); // nothing playing
        playLast(*link);
        QTRY_COMPARE(info(PlayerLink::InfoListPos), 1);
        // While the file loads the player already counts as playing; its data follows within moments.
        QTRY_COMPARE(m_env->property(u"path"_s).toString(), b);
        QTRY_COMPARE(u"%1 %2 %3"_s.arg(link->WinampGetInfo(PlayerLink::InfoTitle).toString())
                         .arg(info(PlayerLink::InfoLength))
                         .arg(info(PlayerLink::InfoCode12)),
                     u"b.mp3 3 2"_s);
        const int p1 = info(PlayerLink::InfoPosition);
        QVERIFY(p1 >= 0);
        QTRY_VERIFY(info(PlayerLink::InfoPosition) >= p1 + 300);

        link->WinampCommand(PlayerLink::PauseCommand);
        QTRY_COMPARE(status(*link), 3);
        // The output may still drain a few milliseconds after the pause; then the position stands.
        QTest::qWait(100);
        const int frozen = info(PlayerLink::InfoPosition);
        QTest::qWait(400);
        QVERIFY(info(PlayerLink::InfoPosition) - frozen < 50);
        link->WinampCommand(PlayerLink::PauseCommand);
        QTRY_COMPARE(status(*link), 1);
        link->WinampCommand(PlayerLink::StopCommand);
        QTRY_COMPARE(status(*link), 0);
        QCOMPARE(info(PlayerLink::InfoListLength), 2); // the list stays
        QCOMPARE(info(PlayerLink::InfoPosition), -1);
        // A pause left over from before does not hold the next Play.
        link->WinampCommand(PlayerLink::PlayCommand);
        QTRY_COMPARE(status(*link), 1);
        link->WinampCommand(PlayerLink::PauseCommand);
        QTRY_COMPARE(status(*link), 3);
        link->WinampPlayFile(a);
        playLast(*link);
        QTRY_COMPARE(info(PlayerLink::InfoListPos), 2);
        QTRY_COMPARE(info(PlayerLink::InfoLength), 6); // a seek needs the length
        QVERIFY(info(PlayerLink::InfoPosition) < 1500);
        QCOMPARE(link->WinampJumpToTime(4, 500), 0);
        // Sooner than playing on would get there.
        QTRY_VERIFY_WITH_TIMEOUT(info(PlayerLink::InfoPosition) >= 4500, 2000);
        QCOMPARE(link->WinampJumpToTime(60, 0), 1); // past the end
        for (auto [volume, mpv] : {std::pair{255, 100.0}, {51, 20.0}}) {
            link->WinampSetVolume(quint8(volume));
            QCOMPARE(m_env->property(u"volume"_s).toDouble(), mpv);
        }
        QVERIFY(m_status.text().isEmpty());

        QVERIFY(MpvTestPlayer::kill(pid));
        QCOMPARE(status(*link), 0);
        QVERIFY2(m_status.text().startsWith(u"WinampModule Error: "_s) &&
                     m_status.text().endsWith(u" and number 57"_s),
                 qPrintable(m_status.text()));
        m_status.setText(QString());
        link->WinampPlayFile(b);
        link->WinampCommand(PlayerLink::PlayCommand);
        QCOMPARE(link->WinampSetVolume(100) + link->WinampJumpToTime(1, 0), 0);
        QCOMPARE(info(PlayerLink::InfoPosition) + info(PlayerLink::InfoListLength), 0);
        QVERIFY(m_status.text().isEmpty());
        link->StartWinamp(MpvTestPlayer::mpvPath());
        QTRY_VERIFY_WITH_TIMEOUT(link->isConnected(), 10000);
        QCOMPARE(info(PlayerLink::InfoListLength), 0);
    }

    // Songs end by mpv's events. A player that hangs (SIGSTOP for 3 s) keeps its link: the monitor
    // neither takes it for stopped nor waits for it, an unanswered request is reported until the player
    // answers again, and Stop and Beenden reach it when it goes on.
    void songEndsAndAStalledPlayer() {
        PlaybackCore<MpvLink> r(m_env->socketPath());
        r.player.StartWinamp(MpvTestPlayer::mpvPath());
        QTRY_VERIFY_WITH_TIMEOUT(r.player.isConnected(), 10000);
        const QStringList songs{song(u"s1.mp3"_s, 2.0), song(u"s2.mp3"_s, 0.5)};
        const QString end = u"Playlistende erreicht - Playmodus gestoppt."_s;
        // A queued file the player cannot open is a song change that fails as it always did: the next
        // entry follows.
        const QStringList first{songs.at(0), m_env->filePath(u"fehlt.mp3"_s), songs.at(1)};
        r.setFiles(1, first);
        int ticks = 0;
        connect(&r.monitor, &PlaybackMonitor::textChanged,
                [&ticks](PlaybackMonitor::Label label) { ticks += label == PlaybackMonitor::Test2; });
        // With a poll of an hour only the events bring the ticks that play the list through, in order.
        const int poll = r.monitor.tmrTime.interval();
        r.monitor.tmrTime.start(3600 * 1000);
        r.transport.Play(0);
        QTRY_COMPARE_WITH_TIMEOUT(r.statusText(), end, 10000);
        QCOMPARE(playerList(), first);
        QCOMPARE(r.state.PlaylistPosition, 2);
        r.setFiles(1, songs);
        r.t.status.setText(QString());
        r.monitor.tmrTime.start(poll);
        const qint64 pid = m_env->pid();
        QVERIFY(pid > 0); // kill(0, SIGSTOP) would stop this test itself
        auto hang = [&](int ms) {
            QTRY_VERIFY(r.player.WinampGetInfo(PlayerLink::InfoPosition).toInt() >= 300);
            ::kill(pid_t(pid), SIGSTOP);
            ticks = 0;
            QTest::qWait(ms);
        };

        r.transport.Play(0);
        hang(3000);
        QVERIFY2(ticks >= 3, "the monitor went on ticking while the player hung");
        QCOMPARE(r.state.WinampStatus, quint8(1));
        QCOMPARE(r.state.PlaylistPosition, 0);
        ::kill(pid_t(pid), SIGCONT);
        QTRY_COMPARE_WITH_TIMEOUT(r.statusText(), end, 10000);
        QCOMPARE(playerList(), first + songs); // the hung song went on, nothing was skipped

        r.transport.Play(0);
        hang(500);
        r.transport.VolumeMoved(255); // goes unanswered
        QCOMPARE(r.statusText(), u"WinampModule Error: Der Player antwortet nicht and number 57"_s);
        QVERIFY(r.player.isStalled());
        r.playback.stop();
        ::kill(pid_t(pid), SIGCONT);
        QTRY_VERIFY(!r.player.isStalled());
        QVERIFY(r.statusText().isEmpty());
        QTRY_COMPARE(m_env->property(u"idle-active"_s).toBool(), true);
        QCOMPARE(m_env->property(u"volume"_s).toDouble(), 100.0);
        QCOMPARE(playerList().size(), 6);

        r.transport.Play(0);
        hang(300);
        r.monitor.tmrTime.stop();
        r.player.WinampCommand(PlayerLink::CloseCommand); // Beenden
        ::kill(pid_t(pid), SIGCONT);
        QTRY_VERIFY(!MpvTestPlayer::alive(pid));
        QCOMPARE(status(r.player), 0);
        QVERIFY(r.statusText().isEmpty());

        // A player that is gone is started again by the next pick, at the program's volume; one that
        // cannot be started stops shuffle instead of drawing songs that never play.
        r.transport.VolumeMoved(51);
        r.state.ShuffleStatus = true;
        r.state.PlayMode = 1;
        r.monitor.tmrTimeTick();
        QTRY_COMPARE(status(r.player), 1);
        const qint64 second = m_env->pid();
        QVERIFY(second > 0 && second != pid);
        QCOMPARE(m_env->property(u"volume"_s).toDouble(), 20.0);
        QVERIFY(MpvTestPlayer::kill(second));
        r.player.StartWinamp(song(u"broken.mp3"_s, 0.1)); // a file that is no player
        QTRY_VERIFY(!r.statusText().isEmpty());
        const int picks = r.historyChanges;
        r.monitor.tmrTimeTick();
        QCOMPARE(r.statusText(), u"Der Player konnte nicht gestartet werden - Playmodus gestoppt."_s);
        QCOMPARE(int(r.state.PlayMode) * 100 + r.historyChanges - picks, 0);
    }

    void socketFolderRules_data() {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("verdict");
        using V = SocketFolder::Verdict;
        QTest::newRow("missing: created private") << "missing" << 0 << int(V::Private);
        QTest::newRow("ours, 0700") << "folder" << 0700 << int(V::Private);
        QTest::newRow("group may read") << "folder" << 0750 << int(V::OpenToOthers);
        QTest::newRow("link to a private folder") << "link" << 0700 << int(V::NotDirectory);
        QTest::newRow("a file") << "file" << 0600 << int(V::NotDirectory);
        QTest::newRow("another user's") << "foreign" << 0700 << int(V::NotOurs);
    }
    void socketFolderRules() {
        QFETCH(QString, kind);
        QFETCH(int, mode);
        QFETCH(int, verdict);
        if (kind == QLatin1String("foreign") && ::geteuid() != 0)
            QSKIP("only root can hand a folder to another user");
        const QString folder = m_env->filePath(u"sockets"_s);
        const QByteArray name = QFile::encodeName(folder);
        const QByteArray target = QFile::encodeName(m_env->filePath(u"elsewhere"_s));
        if (kind == QLatin1String("folder") || kind == QLatin1String("foreign"))
            QVERIFY(::mkdir(name.constData(), 0700) == 0 && ::chmod(name.constData(), mode_t(mode)) == 0);
        if (kind == QLatin1String("foreign"))
            QVERIFY(::chown(name.constData(), 65534, 65534) == 0);
        if (kind == QLatin1String("link"))
            QVERIFY(::mkdir(target.constData(), 0700) == 0 &&
                    ::symlink(target.constData(), name.constData()) == 0);
        if (kind == QLatin1String("file"))
            QVERIFY(QFile(folder).open(QIODevice::WriteOnly) && ::chmod(name.constData(), mode_t(mode)) == 0);
        QCOMPARE(int(SocketFolder::makePrivate(folder)), verdict);
        // What was there is judged, never changed.
        struct stat info {};
        QVERIFY(::stat(kind == QLatin1String("link") ? target.constData() : name.constData(), &info) == 0);
        QCOMPARE(int(info.st_mode & 0777), kind == QLatin1String("missing") ? 0700 : mode);
    }

    void socketPathLiesInAPrivateFolder_data() {
        QTest::addColumn<QString>("runtime"); // "", "private" or "open"
        QTest::addColumn<bool>("fallbackOpen");
        QTest::addColumn<QString>("expected"); // "runtime", "fallback" or "" (refused)
        QTest::newRow("runtime folder") << "private" << false << "runtime";
        QTest::newRow("no runtime folder") << "" << false << "fallback";
        QTest::newRow("runtime folder open to others") << "open" << false << "fallback";
        QTest::newRow("fallback taken and open: refused") << "" << true << "";
    }
    void socketPathLiesInAPrivateFolder() {
        QFETCH(QString, runtime);
        QFETCH(bool, fallbackOpen);
        QFETCH(QString, expected);
        const QByteArray oldRuntime = qgetenv("XDG_RUNTIME_DIR");
        const QByteArray oldTmp = qgetenv("TMPDIR");
        const QString runtimeFolder = m_env->filePath(u"run"_s);
        const QString tmp = m_env->filePath(u"tmp"_s);
        QDir().mkpath(tmp);
        QDir().mkpath(runtimeFolder);
        QFile::setPermissions(runtimeFolder, runtime == QLatin1String("open")
                                                 ? QFile::Permissions(0x7755)
                                                 : QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        if (runtime.isEmpty())
            qunsetenv("XDG_RUNTIME_DIR");
        else
            qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtimeFolder));
        qputenv("TMPDIR", QFile::encodeName(tmp));
        const QString fallback = SocketFolder::fallbackFolder();
        QVERIFY(fallback.startsWith(tmp));
        if (fallbackOpen)
            QVERIFY(::mkdir(QFile::encodeName(fallback).constData(), 0777) == 0 &&
                    ::chmod(QFile::encodeName(fallback).constData(), 0777) == 0);

        const QString path = MpvLink::defaultSocketPath();
        MpvLink link(m_status, m_dialogs, path);
        link.StartWinamp(MpvTestPlayer::mpvPath());
        qputenv("XDG_RUNTIME_DIR", oldRuntime);
        qputenv("TMPDIR", oldTmp);
        if (expected.isEmpty()) {
            QVERIFY(path.isEmpty());
            QCOMPARE(m_status.text(), u"Player nicht gestartet: der Ordner "_s + fallback +
                                          u" ist für andere Benutzer zugänglich."_s);
            QVERIFY(!link.isConnected());
            return;
        }
        QCOMPARE(QFileInfo(path).path(), expected == QLatin1String("runtime") ? runtimeFolder : fallback);
        QTRY_VERIFY_WITH_TIMEOUT(link.isConnected(), 10000); // mpv takes the socket there
        link.WinampCommand(PlayerLink::CloseCommand);
    }

    // A socket of another user's process is refused before anything is sent to it.
    void foreignSocketIsRefused() {
        if (::geteuid() != 0)
            QSKIP("only root can listen as another user");
        QTemporaryDir shared; // a folder the other user can enter too
        const QString folder = shared.path();
        QVERIFY(::chmod(QFile::encodeName(folder).constData(), 0777) == 0);
        const QString socketPath = folder + u"/tavomp3-mpv.sock"_s;
        const QByteArray socketName = QFile::encodeName(socketPath);
        int ready[2], result[2];
        QVERIFY(::pipe(ready) == 0 && ::pipe(result) == 0);
        const pid_t child = ::fork();
        if (child == 0) { // another user listens and counts what it receives
            if (::setgid(65534) != 0 || ::setuid(65534) != 0)
                ::_exit(1);
            sockaddr_un address{};
            address.sun_family = AF_UNIX;
            ::strncpy(address.sun_path, QFile::encodeName(socketPath).constData(),
                      sizeof address.sun_path - 1);
            const int server = ::socket(AF_UNIX, SOCK_STREAM, 0);
            if (::bind(server, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
                ::listen(server, 4) != 0)
                ::_exit(2);
            (void)!::write(ready[1], "r", 1);
            const int client = ::accept(server, nullptr, nullptr);
            qint64 received = 0;
            char buffer[4096];
            for (ssize_t n; (n = ::read(client, buffer, sizeof buffer)) > 0;)
                received += n;
            (void)!::write(result[1], &received, sizeof received);
            ::_exit(0);
        }
        ::close(ready[1]);
        ::close(result[1]);
        char r = 0;
        QCOMPARE(::read(ready[0], &r, 1), ssize_t(1));
        MpvLink link(m_status, m_dialogs, socketPath);
        link.StartWinamp(MpvTestPlayer::mpvPath());
        link.WinampPlayFile(song(u"geheim.mp3"_s, 0.2));
        qint64 received = -1;
        QCOMPARE(::read(result[0], &received, sizeof received), ssize_t(sizeof received));
        ::waitpid(child, nullptr, 0);
        QCOMPARE(received, qint64(0));
        QVERIFY(!link.isConnected());
        QCOMPARE(m_status.text(),
                 u"Player nicht verbunden: "_s + socketPath + u" gehört einem anderen Benutzer."_s);
        QCOMPARE(m_env->pid(), qint64(0)); // and no player of ours was started in its place
    }

    // A player path that leads nowhere: a missing file asks for a correct path, a file that cannot be
    // run is reported, an empty path does nothing. A started program that never opens the socket, or
    // ends at once, does not hold up the load: the background wait ends with the report, and what has
    // to reach the player meanwhile waits with it instead of being lost or sent nowhere.
    void unusablePlayer_data() {
        QTest::addColumn<QString>("script"); // "-" = no file, "" = empty path, "x:" = may be run
        QTest::addColumn<int>("minimumMs");
        QTest::addColumn<QString>("status");
        const QString overflow = u"WinampModule Error: Überlauf and number 6"_s;
        QTest::newRow("missing") << "-" << 0 << "";
        QTest::newRow("not a program")
            << "exit 0" << 0 << "WinampModule Error: Datei nicht gefunden and number 53";
        QTest::newRow("empty path") << "" << 0 << "";
        QTest::newRow("runs silently") << "x:exec sleep 3" << 1100 << overflow;
        QTest::newRow("ends at once") << "x:exit 1" << 0 << overflow;
    }
    void unusablePlayer() {
        QFETCH(QString, script);
        QFETCH(int, minimumMs);
        QFETCH(QString, status);
        const QString path = script.isEmpty() ? QString() : m_env->filePath(u"player.sh"_s);
        QFile f(path);
        if (script.size() > 1 && f.open(QIODevice::WriteOnly)) {
            f.write("#!/bin/sh\n" + script.section(u':', -1).toUtf8() + "\n");
            f.close();
            f.setPermissions(script.startsWith(u"x:"_s) ? QFile::ReadOwner | QFile::ExeOwner
                                                        : QFile::ReadOwner);
        }
        MpvLink link(m_status, m_dialogs, m_env->socketPath());
        link.startWaitMs = 1200;
        int ticks = 0;
        QTimer tick;
        connect(&tick, &QTimer::timeout, [&] { ++ticks; });
        tick.start(100);
        QElapsedTimer waited;
        waited.start();
        link.StartWinamp(path);
        QVERIFY2(waited.elapsed() < 250, "starting the player does not hold up the load");
        link.WinampSetVolume(100);
        QVERIFY(waited.elapsed() >= minimumMs && waited.elapsed() < 5000);
        QVERIFY2(ticks >= minimumMs / 200, "the user interface kept running while the link waited");
        QVERIFY(!link.isConnected());
        QCOMPARE(m_status.text(), status);
        QCOMPARE(m_dialogs.messageTexts().join(QString()),
                 script == u"-"_s ? u"The winamp path provided is incorrect.  Please specify a correct path"_s
                                  : QString());
        QCOMPARE(link.WinampGetInfo(PlayerLink::InfoStatus).toInt() + m_env->pid(), 0);
    }
};

QTEST_GUILESS_MAIN(tst_MpvLink)
#include "tst_MpvLink.moc"
