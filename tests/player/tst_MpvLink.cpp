#include "base/StatusLine.h"
#include "player/MpvLink.h"
#include "support/MpvTestPlayer.h"
#include "support/ScriptedDialogs.h"
#include "support/SilentMp3.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTimer>
#include <QtTest>

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
    std::unique_ptr<MpvLink> startedLink() {
        auto link = std::make_unique<MpvLink>(m_status, m_dialogs, m_env->socketPath());
        link->StartWinamp(MpvTestPlayer::mpvPath());
        return link;
    }
    int status(MpvLink& link) { return link.WinampGetInfo(PlayerLink::InfoStatus).toInt(); }

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
            QFile::copy(m_env->filePath(QStringLiteral("mpv.log")), QStringLiteral("/tmp/mpv-failed.log"));
        m_env.reset();
    }

    void startsOnceAndFindsTheRunningPlayer() {
        auto first = startedLink();
        QVERIFY(first->isConnected());
        const qint64 pid = m_env->pid();
        QVERIFY(pid > 0);
        QVERIFY(m_status.text().isEmpty());

        // Whatever the path says, a player that answers is used and none is started.
        for (const QString& path :
             {MpvTestPlayer::mpvPath(), QStringLiteral("/nonexistent/mpv"), QString()}) {
            MpvLink second(m_status, m_dialogs, m_env->socketPath());
            second.StartWinamp(path);
            QVERIFY(second.isConnected());
            QCOMPARE(m_env->pid(), pid);
        }
        QVERIFY(m_dialogs.questions.isEmpty());
    }

    void appendJumpPlayPauseStop() {
        auto link = startedLink();
        const QString a = song(QStringLiteral("a.mp3"), 3.0);
        const QString b = song(QStringLiteral("b.mp3"), 3.0);
        link->WinampPlayFile(a);
        link->WinampPlayFile(b);
        QCOMPARE(link->WinampGetInfo(PlayerLink::InfoListLength).toInt(), 2);
        QCOMPARE(status(*link), 0); // appending does not start anything
        QCOMPARE(link->WinampGetInfo(PlayerLink::InfoPosition).toInt(), -1);

        link->WinampCommand(PlayerLink::JumpToLastCommand);
        link->WinampCommand(PlayerLink::PlayCommand);
        QTRY_COMPARE(status(*link), 1);
        QCOMPARE(link->WinampGetInfo(PlayerLink::InfoListPos).toInt(), 1);
        // While the file loads the player already counts as playing; its data follows within moments.
        QTRY_COMPARE(m_env->property(QStringLiteral("path")).toString(), b);
        QTRY_COMPARE(link->WinampGetInfo(PlayerLink::InfoTitle).toString(), QStringLiteral("b.mp3"));
        QTRY_COMPARE(link->WinampGetInfo(PlayerLink::InfoLength).toInt(), 3);
        QTRY_COMPARE(link->WinampGetInfo(PlayerLink::InfoSampleRate).toInt(), 44);
        QTRY_COMPARE(link->WinampGetInfo(PlayerLink::InfoBitrate).toInt(), 128);
        QCOMPARE(link->WinampGetInfo(PlayerLink::InfoCode12).toInt(), 2);
        const int p1 = link->WinampGetInfo(PlayerLink::InfoPosition).toInt();
        QVERIFY(p1 >= 0);
        QTRY_VERIFY(link->WinampGetInfo(PlayerLink::InfoPosition).toInt() >= p1 + 300);

        link->WinampCommand(PlayerLink::PauseCommand);
        QTRY_COMPARE(status(*link), 3);
        // The output may still drain a few milliseconds after the pause; then the position stands.
        QTest::qWait(100);
        const int frozen = link->WinampGetInfo(PlayerLink::InfoPosition).toInt();
        QTest::qWait(400);
        QVERIFY(link->WinampGetInfo(PlayerLink::InfoPosition).toInt() - frozen < 50);
        QCOMPARE(link->WinampGetInfo(PlayerLink::InfoTitle).toString(), QStringLiteral("b.mp3"));
        link->WinampCommand(PlayerLink::PauseCommand);
        QTRY_COMPARE(status(*link), 1);

        link->WinampCommand(PlayerLink::StopCommand);
        QTRY_COMPARE(status(*link), 0);
        QCOMPARE(link->WinampGetInfo(PlayerLink::InfoListLength).toInt(), 2); // the list stays
        QCOMPARE(link->WinampGetInfo(PlayerLink::InfoPosition).toInt(), -1);

        // A pause left over from before does not hold the next Play.
        link->WinampCommand(PlayerLink::PlayCommand);
        QTRY_COMPARE(status(*link), 1);
        link->WinampCommand(PlayerLink::PauseCommand);
        QTRY_COMPARE(status(*link), 3);
        link->WinampPlayFile(a);
        link->WinampCommand(PlayerLink::JumpToLastCommand);
        link->WinampCommand(PlayerLink::PlayCommand);
        QTRY_COMPARE(status(*link), 1);
        QCOMPARE(link->WinampGetInfo(PlayerLink::InfoListPos).toInt(), 2);
        QVERIFY(m_status.text().isEmpty());
    }

    void infoCodesThatSendNothingAnswerEmpty_data() {
        QTest::addColumn<int>("code");
        QTest::newRow("5") << 5;
        QTest::newRow("7") << 7;
        QTest::newRow("14") << 14;
        QTest::newRow("255") << 255;
    }
    void infoCodesThatSendNothingAnswerEmpty() {
        QFETCH(int, code);
        auto link = startedLink();
        QVERIFY(!link->WinampGetInfo(quint8(code)).isValid());
        QCOMPARE(link->WinampGetInfo(PlayerLink::InfoVersion).toInt(), 0x0035);
    }

    void seekAndVolume() {
        auto link = startedLink();
        link->WinampPlayFile(song(QStringLiteral("long.mp3"), 6.0));
        QCOMPARE(link->WinampJumpToTime(1, 0), -1); // nothing playing
        link->WinampCommand(PlayerLink::JumpToLastCommand);
        link->WinampCommand(PlayerLink::PlayCommand);
        QTRY_COMPARE(status(*link), 1);
        QTRY_VERIFY(link->WinampGetInfo(PlayerLink::InfoLength).toInt() == 6);
        QCOMPARE(link->WinampJumpToTime(4, 500), 0);
        QTRY_VERIFY(link->WinampGetInfo(PlayerLink::InfoPosition).toInt() >= 4500);
        QCOMPARE(link->WinampJumpToTime(60, 0), 1); // past the end

        link->WinampSetVolume(255);
        QCOMPARE(m_env->property(QStringLiteral("volume")).toDouble(), 100.0);
        link->WinampSetVolume(0);
        QCOMPARE(m_env->property(QStringLiteral("volume")).toDouble(), 0.0);
        link->WinampSetVolume(51);
        QCOMPARE(m_env->property(QStringLiteral("volume")).toDouble(), 20.0);
    }

    void songEndStopsAtTheEndOfTheList() {
        auto link = startedLink();
        link->WinampPlayFile(song(QStringLiteral("short.mp3"), 0.5));
        link->WinampCommand(PlayerLink::JumpToLastCommand);
        link->WinampCommand(PlayerLink::PlayCommand);
        QTRY_COMPARE_WITH_TIMEOUT(status(*link), 0, 5000);
        QCOMPARE(link->WinampGetInfo(PlayerLink::InfoPosition).toInt(), -1);
    }

    void closeEndsThePlayerQuietly() {
        auto link = startedLink();
        const qint64 pid = m_env->pid();
        link->WinampCommand(PlayerLink::CloseCommand);
        QTRY_VERIFY(!MpvTestPlayer::alive(pid));
        QCOMPARE(status(*link), 0);
        link->WinampPlayFile(song(QStringLiteral("a.mp3"), 1.0));
        link->WinampCommand(PlayerLink::PlayCommand);
        QCOMPARE(status(*link), 0);
        QVERIFY(m_status.text().isEmpty());
    }

    void killedPlayerIsReportedAndAnswersZero() {
        auto link = startedLink();
        link->WinampPlayFile(song(QStringLiteral("a.mp3"), 3.0));
        link->WinampCommand(PlayerLink::JumpToLastCommand);
        link->WinampCommand(PlayerLink::PlayCommand);
        QTRY_COMPARE(status(*link), 1);
        QVERIFY(MpvTestPlayer::kill(m_env->pid()));

        QCOMPARE(status(*link), 0);
        QVERIFY2(m_status.text().startsWith(QStringLiteral("WinampModule Error: ")),
                 qPrintable(m_status.text()));
        QVERIFY(m_status.text().endsWith(QStringLiteral(" and number 57")));
        m_status.setText(QString());
        // From now on every message goes nowhere, every query answers 0, nothing is reported again.
        link->WinampPlayFile(song(QStringLiteral("b.mp3"), 1.0));
        link->WinampCommand(PlayerLink::PlayCommand);
        QCOMPARE(link->WinampSetVolume(100), 0);
        QCOMPARE(link->WinampJumpToTime(1, 0), 0);
        QCOMPARE(link->WinampGetInfo(PlayerLink::InfoPosition).toInt(), 0);
        QCOMPARE(link->WinampGetInfo(PlayerLink::InfoListLength).toInt(), 0);
        QVERIFY(m_status.text().isEmpty());

        // Another StartWinamp brings a new player.
        link->StartWinamp(MpvTestPlayer::mpvPath());
        QVERIFY(link->isConnected());
        QCOMPARE(link->WinampGetInfo(PlayerLink::InfoListLength).toInt(), 0);
    }

    void playerThatNeverAnswersEndsTheWaitWithAnError() {
        // A program that runs but never opens the socket.
        const QString fake = m_env->filePath(QStringLiteral("silent-player.sh"));
        QFile f(fake);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("#!/bin/sh\nexec sleep 3\n");
        f.close();
        f.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);

        MpvLink link(m_status, m_dialogs, m_env->socketPath());
        link.startWaitMs = 1200;
        int ticks = 0;
        QTimer tick;
        connect(&tick, &QTimer::timeout, [&] { ++ticks; });
        tick.start(100);
        QElapsedTimer waited;
        waited.start();
        link.StartWinamp(fake);
        QVERIFY(waited.elapsed() >= 1100);
        QVERIFY(waited.elapsed() < 5000);
        QVERIFY2(ticks >= 5, "the user interface kept running while the link waited");
        QVERIFY(!link.isConnected());
        QCOMPARE(m_status.text(), QStringLiteral("WinampModule Error: Überlauf and number 6"));
        QCOMPARE(link.WinampGetInfo(PlayerLink::InfoStatus).toInt(), 0);
    }

    void startedProgramThatEndsAtOnceEndsTheWaitEarly() {
        MpvLink link(m_status, m_dialogs, m_env->socketPath());
        link.startWaitMs = 20000;
        QElapsedTimer waited;
        waited.start();
        link.StartWinamp(QStringLiteral("/bin/false"));
        QVERIFY(waited.elapsed() < 10000);
        QVERIFY(!link.isConnected());
        QCOMPARE(m_status.text(), QStringLiteral("WinampModule Error: Überlauf and number 6"));
    }

    void missingPathAsksAndEmptyPathDoesNothing() {
        MpvLink link(m_status, m_dialogs, m_env->socketPath());
        link.StartWinamp(m_env->filePath(QStringLiteral("no-such-player")));
        QCOMPARE(m_dialogs.messageTexts(),
                 QStringList{QStringLiteral(
                     "The winamp path provided is incorrect.  Please specify a correct path")});
        QVERIFY(!link.isConnected());
        link.StartWinamp(QString());
        QCOMPARE(m_dialogs.questions.size(), 1);
        QVERIFY(!link.isConnected());
        QVERIFY(m_status.text().isEmpty());
        QCOMPARE(m_env->pid(), qint64(0));
    }
};

QTEST_GUILESS_MAIN(tst_MpvLink)
#include "tst_MpvLink.moc"
