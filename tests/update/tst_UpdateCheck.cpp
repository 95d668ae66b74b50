#include "base/AppGlobals.h"
#include "base/RuntimeError.h"
#include "support/LocalHttpServer.h"
#include "support/TestServices.h"
#include "update/UpdateCheck.h"
#include "update/UpdateCheckSchedule.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

namespace {
const QString kList = QStringLiteral("/TavoMP3/Downloads/Versions.txt");
QString playerPath() {
    return QStringLiteral("/TavoMP3/Downloads/TavoMP3Player") + UpdateConfig::executableSuffix();
}
QString updaterPath() {
    return QStringLiteral("/TavoMP3/Downloads/TavoMP3Update") + UpdateConfig::executableSuffix();
}
QByteArray versionList(const QByteArray& player, const QByteArray& updater) {
    return "TavoMP3Player: " + player + "\r\nTavoMP3Update: " + updater + "\r\n";
}
QByteArray fileBytes(const QString& name) {
    QFile f(name);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
}
const QString crlf = QStringLiteral("\r\n");
} // namespace

class tst_UpdateCheck : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    LocalHttpServer* m_server = nullptr;
    TestServices* m_t = nullptr;

    UpdateConfig config(const QString& player, const QString& updater) const {
        UpdateConfig c;
        c.server = m_server->hostPort();
        c.programFolder = m_dir.path();
        c.ownName = QStringLiteral("TavoMP3Player");
        c.playerVersion = player;
        c.updaterVersion = updater;
        c.updaterPath = m_dir.filePath(QStringLiteral("TavoMP3Update"));
        return c;
    }
    // Waits until the chain has nothing more to download.
    static bool settle(UpdateCheck& u) {
        return QTest::qWaitFor([&] { return !u.download().TimerTimeout->isActive(); }, 10000);
    }
    QString setting(const QString& section, const QString& key) const {
        return m_t->settings.GetSetting(section, key, QStringLiteral("<none>"));
    }

private slots:
    void init() {
        m_server = new LocalHttpServer(this);
        QVERIFY(m_server->listen());
        m_t = new TestServices;
        AppGlobals::StartUpdaterOnExit = false;
        for (const QString& f : QDir(m_dir.path()).entryList(QDir::Files))
            QFile::remove(m_dir.filePath(f));
    }
    void cleanup() {
        delete m_server;
        delete m_t;
        AppGlobals::StartUpdaterOnExit = false;
    }

    void strRight_data() {
        QTest::addColumn<QString>("text1");
        QTest::addColumn<QString>("text2");
        QTest::addColumn<QString>("result");
        QTest::newRow("value") << "TavoMP3Player: 1.6"
                               << "TavoMP3Player: "
                               << "1.6";
        QTest::newRow("case-insensitive") << "tavomp3player: 1.6"
                                          << "TavoMP3Player: "
                                          << "1.6";
        QTest::newRow("last occurrence") << "a=1;a=2"
                                         << "a="
                                         << "2";
        QTest::newRow("overlapping hits") << "xaaab"
                                          << "aa"
                                          << "b";
        QTest::newRow("nothing after") << "TavoMP3Update: "
                                       << "TavoMP3Update: "
                                       << "";
        // Not found: the text from position len(Text2), one short of a value behind it.
        QTest::newRow("missing prefix") << "Release 1.6"
                                        << "Ver"
                                        << "lease 1.6";
        QTest::newRow("wrong line") << "TavoMP3Update: 7"
                                    << "TavoMP3Player: "
                                    << " 7";
    }
    void strRight() {
        QFETCH(QString, text1);
        QFETCH(QString, text2);
        QTEST(UpdateCheck::StrRight(text1, text2), "result");
    }

    void readVersionLines() {
        QFile f(m_dir.filePath(QStringLiteral("v.txt")));
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("a\r\nb\nc");
        f.close();
        QCOMPARE(UpdateCheck::readVersionLines(f.fileName()),
                 (QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(QByteArray("x\r\n").repeated(256));
        f.close();
        QCOMPARE(UpdateCheck::readVersionLines(f.fileName()).size(), 256);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(QByteArray("x\r\n").repeated(257));
        f.close();
        QVERIFY_THROWS_EXCEPTION(RuntimeError, UpdateCheck::readVersionLines(f.fileName()));
    }

    void bothCurrentDownloadsNothing() {
        m_server->setBody(kList, versionList("0.160", "3"));
        UpdateCheck u(m_t->services, config(QStringLiteral("0.160"), QStringLiteral("3")));
        QSignalSpy compared(&u, &UpdateCheck::versionListCompared);
        u.BStartClick();
        QVERIFY(compared.wait(10000));
        QVERIFY(settle(u));
        QCOMPARE(u.FLog(),
                 QStringLiteral("Überprüfe Player Version (aktuelle Version 0.160) ...") + crlf +
                     QStringLiteral("Aktuellste Version des Players bereits vorhanden.") + crlf +
                     QStringLiteral("Überprüfe Update-Programm Version (aktuelle Version 3) ...") + crlf +
                     QStringLiteral("Aktuellste Version des Update-Programms bereits vorhanden.") + crlf);
        QCOMPARE(m_server->requestedPaths, QStringList{kList});
        QCOMPARE(u.UpdateState, qint16(UpdateCheck::PlayerCurrent));
        QCOMPARE(setting(QStringLiteral("Settings"), QStringLiteral("LastUpdateCheckStatus")),
                 QStringLiteral("Aktuellste Version des Players bereits vorhanden."));
        QCOMPARE(setting(QStringLiteral("Settings"), QStringLiteral("LastUpdateCheck")),
                 QStringLiteral("22.11.2026 10:00:00"));
        QCOMPARE(setting(QStringLiteral("Update"), QStringLiteral("PlayerToUpdate")),
                 QStringLiteral("<none>"));
        QVERIFY(!AppGlobals::StartUpdaterOnExit);
        QVERIFY(m_t->dialogs.questions.isEmpty());
    }

    void versionsCompareAsText_data() {
        QTest::addColumn<QString>("current");
        QTest::addColumn<QByteArray>("listed");
        QTest::addColumn<QString>("status");
        QTest::newRow("1.9 is newer than 1.10")
            << "1.9" << QByteArray("1.10")
            << "Ihre Player Version ist neuer(!) als die neuste Version (1.10) !";
        QTest::newRow("0.160 is newer than 0.1599")
            << "0.160" << QByteArray("0.1599")
            << "Ihre Player Version ist neuer(!) als die neuste Version (0.1599) !";
        QTest::newRow("1.5 older than 1.6")
            << "1.5" << QByteArray("1.6") << "Neue Player Version (1.6) verfügbar";
    }
    void versionsCompareAsText() {
        QFETCH(QString, current);
        QFETCH(QByteArray, listed);
        QFETCH(QString, status);
        m_server->setBody(kList, versionList(listed, "1"));
        UpdateCheck u(m_t->services, config(current, QStringLiteral("1")));
        u.download().TimerTimeout->setInterval(5);
        QSignalSpy compared(&u, &UpdateCheck::versionListCompared);
        u.BStartClick();
        QVERIFY(compared.wait(10000));
        QCOMPARE(setting(QStringLiteral("Settings"), QStringLiteral("LastUpdateCheckStatus")), status);
        QVERIFY(u.FLog().contains(status));
        QVERIFY(settle(u));
    }

    void newPlayerAndNewUpdaterInstall() {
        const QByteArray newPlayer = QByteArray("\x7f"
                                                "ELF new player ")
                                         .repeated(500);
        const QByteArray newUpdater = QByteArray("\x7f"
                                                 "ELF new updater ")
                                          .repeated(300);
        m_server->setBody(kList, versionList("1.6", "9"));
        m_server->setReply(playerPath(),
                           LocalHttpServer::Reply{LocalHttpServer::ok(newPlayer), 1000, 2, false});
        m_server->setBody(updaterPath(), newUpdater);
        UpdateCheck u(m_t->services, config(QStringLiteral("1.5"), QStringLiteral("8")));
        QSignalSpy unload(&u, &UpdateCheck::unloadMainWindowRequested);
        QSignalSpy compared(&u, &UpdateCheck::versionListCompared);
        u.BStartClick();
        QVERIFY(unload.wait(10000));
        QCOMPARE(u.UpdateState, qint16(UpdateCheck::UpdaterAfterPlayer));
        QCOMPARE(compared.count(), 1);
        QCOMPARE(m_server->requestedPaths, (QStringList{kList, playerPath(), updaterPath()}));
        const UpdateConfig c = u.config();
        QCOMPARE(fileBytes(c.newPlayerFile()), newPlayer);
        QCOMPARE(fileBytes(c.updaterPath), newUpdater);
        QVERIFY(QFile::permissions(c.updaterPath) & QFileDevice::ExeOwner); // the player can start it
        QCOMPARE(setting(QStringLiteral("Update"), QStringLiteral("PlayerPath")), c.ownPath());
        QCOMPARE(setting(QStringLiteral("Update"), QStringLiteral("PlayerPathUpdated")),
                 m_dir.filePath(QStringLiteral("TavoMP3Player.tmp")));
        QCOMPARE(setting(QStringLiteral("Update"), QStringLiteral("PlayerToUpdate")), QStringLiteral("1"));
        QVERIFY(AppGlobals::StartUpdaterOnExit);
        QCOMPARE(u.FLog(),
                 QStringLiteral("Überprüfe Player Version (aktuelle Version 1.5) ...") + crlf +
                     QStringLiteral("Neue Player Version (1.6) verfügbar - Starte Download ...") + crlf +
                     QStringLiteral("Überprüfe Update-Programm Version (aktuelle Version 8) ...") + crlf +
                     QStringLiteral("Neue Update-Programm Version (9) verfügbar - Starte Download ...") +
                     crlf + QStringLiteral("Neue Version erfolgreich heruntergeladen.") + crlf + crlf +
                     QStringLiteral("Einspielen der neuen Version und Neustart des Players ...") + crlf);
        QCOMPARE(u.ProgressBar().Max(), qint64(newUpdater.size()));
    }

    void newPlayerWithCurrentUpdaterIsLeftInTmp() {
        m_server->setBody(kList, versionList("1.6", "8"));
        m_server->setBody(playerPath(), "\x7f"
                                        "ELF player");
        UpdateCheck u(m_t->services, config(QStringLiteral("1.5"), QStringLiteral("8")));
        QSignalSpy unload(&u, &UpdateCheck::unloadMainWindowRequested);
        u.BStartClick();
        QVERIFY(QTest::qWaitFor([&] { return u.FLog().contains(QStringLiteral("Update-Programms bereits")); },
                                10000));
        QCOMPARE(u.UpdateState, qint16(UpdateCheck::PlayerDownload));
        QCOMPARE(fileBytes(u.config().newPlayerFile()), QByteArray("\x7f"
                                                                   "ELF player"));
        QCOMPARE(unload.count(), 0);
        QVERIFY(!AppGlobals::StartUpdaterOnExit);
    }

    void onlyUpdaterNew() {
        m_server->setBody(kList, versionList("0.160", "5"));
        m_server->setBody(updaterPath(), "updater");
        UpdateCheck u(m_t->services, config(QStringLiteral("0.160"), QStringLiteral("4")));
        u.BStartClick();
        QVERIFY(
            QTest::qWaitFor([&] { return u.FLog().endsWith(QStringLiteral("abgeschlossen.\r\n")); }, 10000));
        QCOMPARE(u.UpdateState, qint16(UpdateCheck::UpdaterDownload));
        QVERIFY(u.FLog().endsWith(
            QStringLiteral("Neue Update-Programm Version (5) verfügbar - Starte Download ...") + crlf +
            QStringLiteral("Update-Programm wurde aktualisiert.") + crlf + crlf +
            QStringLiteral("Automatisches Update erfolgreich abgeschlossen.") + crlf));
        QCOMPARE(fileBytes(u.config().updaterPath), QByteArray("updater"));
        QVERIFY(QFile::permissions(u.config().updaterPath) & QFileDevice::ExeOwner);
        QVERIFY(!AppGlobals::StartUpdaterOnExit);
    }

    void updaterNewerThanListed() {
        m_server->setBody(kList, versionList("0.160", "10"));
        UpdateCheck u(m_t->services, config(QStringLiteral("0.160"), QStringLiteral("9")));
        QSignalSpy compared(&u, &UpdateCheck::versionListCompared);
        u.BStartClick();
        QVERIFY(compared.wait(10000));
        QVERIFY(u.FLog().endsWith(
            QStringLiteral("Ihre Update Version ist neuer(!) als die neuste Version (10) !") + crlf));
        QCOMPARE(m_server->requestedPaths.size(), 1);
    }

    void automaticCheckAsks_data() {
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("shown");
        QTest::newRow("yes") << int(Dialogs::Answer::Yes) << true;
        QTest::newRow("no") << int(Dialogs::Answer::No) << false;
        QTest::newRow("cancel") << int(Dialogs::Answer::Cancel) << false;
    }
    void automaticCheckAsks() {
        QFETCH(int, answer);
        QFETCH(bool, shown);
        m_server->setBody(kList, versionList("1.6", "9"));
        m_t->dialogs.answers << Dialogs::Answer(answer);
        UpdateCheck u(m_t->services, config(QStringLiteral("1.5"), QStringLiteral("8")));
        QSignalSpy show(&u, &UpdateCheck::showWindowRequested);
        QSignalSpy compared(&u, &UpdateCheck::versionListCompared);
        u.AutomaticCheck();
        QCOMPARE(u.UpdateState, qint16(UpdateCheck::Automatic));
        QVERIFY(compared.wait(10000));
        QCOMPARE(m_t->dialogs.questions.size(), 1);
        const auto& q = m_t->dialogs.questions.first();
        QCOMPARE(q.title, QStringLiteral("Neue Version"));
        QCOMPARE(q.text, QStringLiteral("Es ist eine neue Version (1.6) von TavoMP3 Player verfügbar!\r\n\r\n"
                                        "Möchten Sie den Updatevorgang starten?"));
        QCOMPARE(q.buttons, Dialogs::Buttons::YesNoCancel);
        QCOMPARE(show.count(), shown ? 1 : 0);
        QCOMPARE(u.FLog(), QString()); // the hidden window logged nothing
        QCOMPARE(setting(QStringLiteral("Settings"), QStringLiteral("LastUpdateCheckStatus")), QString());
        QCOMPARE(m_server->requestedPaths, QStringList{kList}); // nothing downloaded before the user agrees
        QVERIFY(QFile::exists(u.config().localVersionList()));
    }

    void timeoutEndsTheChain() {
        m_server->setReply(kList, LocalHttpServer::Reply{{}, 0, 0, true});
        UpdateCheck u(m_t->services, config(QStringLiteral("1.5"), QStringLiteral("8")));
        u.download().TimerTimeout->setInterval(5);
        QSignalSpy compared(&u, &UpdateCheck::versionListCompared);
        u.BStartClick();
        QVERIFY(QTest::qWaitFor([&] { return u.FLog().endsWith(QStringLiteral("abgebrochen!")); }, 10000));
        QCOMPARE(u.FLog(), QStringLiteral("Überprüfe Player Version (aktuelle Version 1.5) ...") + crlf +
                               QStringLiteral("Zeitüberschreitung beim Warten auf Antwort...") + crlf + crlf +
                               QStringLiteral("Automatisches Update abgebrochen!"));
        QCOMPARE(compared.count(), 0);
        QCOMPARE(setting(QStringLiteral("Settings"), QStringLiteral("LastUpdateCheck")),
                 QStringLiteral("<none>"));
    }

    void brokenVersionListReportsAndGoesOn_data() {
        QTest::addColumn<QByteArray>("body");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("one line") << QByteArray("TavoMP3Player: 1.6\r\n");
    }
    void brokenVersionListReportsAndGoesOn() {
        QFETCH(QByteArray, body);
        m_server->setBody(kList, body);
        UpdateCheck u(m_t->services, config(QStringLiteral("1.5"), QStringLiteral("8")));
        QSignalSpy compared(&u, &UpdateCheck::versionListCompared);
        u.BStartClick();
        QVERIFY(QTest::qWaitFor([&] { return !m_t->dialogs.questions.isEmpty(); }, 10000));
        QCOMPARE(
            m_t->dialogs.messageTexts().first(),
            QStringLiteral("Fehler in Winsock1_Close in Zeile 2: Index außerhalb des gültigen Bereichs"));
        QCOMPARE(compared.count(), 0);
    }

    void schedule_data() {
        QTest::addColumn<QString>("mode");
        QTest::addColumn<QString>("interval");
        QTest::addColumn<bool>("running");
        QTest::addColumn<QString>("label");
        QTest::newRow("interval mode") << "1"
                                       << "5" << true << "0/5";
        QTest::newRow("interval 0") << "1"
                                    << "0" << false << "";
        QTest::newRow("reminder mode") << "2"
                                       << "5" << false << "";
        QTest::newRow("nothing saved") << QString() << QString() << false << "";
    }
    void schedule() {
        QFETCH(QString, mode);
        QFETCH(QString, interval);
        if (!mode.isNull()) {
            m_t->settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("UpdateMode"), mode);
            m_t->settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("UpdateInterval"), interval);
        }
        UpdateCheckSchedule s(m_t->settings);
        s.load();
        QTEST(s.TimerCheck->isActive(), "running");
        QTEST(s.FCheck(), "label");
        QCOMPARE(s.TimerCheck->interval(), 60000);
    }

    void scheduleCountsMinutes() {
        m_t->settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("UpdateMode"),
                                  QStringLiteral("1"));
        m_t->settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("UpdateInterval"),
                                  QStringLiteral("3"));
        UpdateCheckSchedule s(m_t->settings);
        QSignalSpy due(&s, &UpdateCheckSchedule::checkDue);
        s.load();
        QStringList labels;
        for (int i = 0; i < 7; ++i) {
            s.TimerCheckTimer();
            labels << s.FCheck();
        }
        QCOMPARE(labels.join(QLatin1Char(' ')), QStringLiteral("1/3 2/3 0/3 1/3 2/3 0/3 1/3"));
        QCOMPARE(due.count(), 2);
        m_t->settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("UpdateMode"),
                                  QStringLiteral("3"));
        s.TimerCheckTimer();
        QVERIFY(!s.TimerCheck->isActive());
        QCOMPARE(due.count(), 2);
        QCOMPARE(s.FCheck(), QStringLiteral("1/3"));
    }
};

QTEST_GUILESS_MAIN(tst_UpdateCheck)
#include "tst_UpdateCheck.moc"
