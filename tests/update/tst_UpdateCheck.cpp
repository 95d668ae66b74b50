#include "base/AppGlobals.h"
#include "base/RuntimeError.h"
#include "support/LocalHttpServer.h"
#include "support/ReleaseSigner.h"
#include "support/TestServices.h"
#include "update/PlayerReplacement.h"
#include "update/UpdateCheck.h"
#include "update/UpdateCheckSchedule.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

namespace {
const QString kList = QStringLiteral("/TavoMP3/Downloads/Versions.txt");
const QString kPlayer = QStringLiteral("/TavoMP3/Downloads/") + UpdateConfig::playerFileName();
const QString kUpdater = QStringLiteral("/TavoMP3/Downloads/") + UpdateConfig::updaterFileName();
const QString crlf = QStringLiteral("\r\n");
const QString kAborted = QStringLiteral("Automatisches Update abgebrochen!");

// A "player" that notes its start beside itself and keeps running a while, as a real one would.
QByteArray playerScript(const QByteArray& word) {
    return "#!/bin/sh\necho " + word + " > \"$(dirname \"$0\")/started.txt\"\nexec sleep 3\n";
}
QByteArray fileBytes(const QString& name) {
    QFile f(name);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
}
void writeFile(const QString& name, const QByteArray& bytes) {
    QFile f(name);
    QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(bytes);
    f.close();
    QVERIFY(f.setPermissions(f.permissions() | QFileDevice::ExeOwner));
}
} // namespace

class tst_UpdateCheck : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    LocalHttpServer* m_server = nullptr;
    TestServices* m_t = nullptr;
    ReleaseSigner m_signer;

    QString program() const { return m_dir.filePath(QStringLiteral("program")); }
    QString inProgram(const QString& name) const { return program() + QLatin1Char('/') + name; }
    UpdateConfig config(const QString& player, const QString& updater) const {
        UpdateConfig c;
        c.server = m_server->hostPort();
        c.publicKey = m_signer.publicKey();
        c.programFolder = program();
        c.cacheFolder = m_dir.filePath(QStringLiteral("cache"));
        c.ownName = QStringLiteral("TavoMP3Player");
        c.playerVersion = player;
        c.updaterVersion = updater;
        c.updaterPath = inProgram(UpdateConfig::updaterFileName());
        return c;
    }
    // A release of a player and an updater, signed and served as they are.
    void serve(const QByteArray& player, const QByteArray& updater, const QByteArray& newPlayer = "player",
               const QByteArray& newUpdater = "updater") {
        m_server->setBody(kList, m_signer.versionList(player, updater,
                                                      {{UpdateConfig::playerFileName(), newPlayer},
                                                       {UpdateConfig::updaterFileName(), newUpdater}}));
        m_server->setBody(kPlayer, newPlayer);
        m_server->setBody(kUpdater, newUpdater);
    }
    // Runs a check by hand until nothing more is downloaded.
    void runCheck(UpdateCheck& u) {
        u.download().TimerTimeout->setInterval(5);
        u.BStartClick();
        QVERIFY(QTest::qWaitFor([&] { return !u.download().TimerTimeout->isActive(); }, 10000));
        QTest::qWait(20);
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
        QDir(program()).removeRecursively();
        QDir(m_dir.filePath(QStringLiteral("cache"))).removeRecursively();
        QVERIFY(QDir().mkpath(program()));
        writeFile(inProgram(QStringLiteral("TavoMP3Player")), playerScript("old"));
        writeFile(inProgram(UpdateConfig::updaterFileName()), "old updater");
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
    }
    void strRight() {
        QFETCH(QString, text1);
        QFETCH(QString, text2);
        QTEST(UpdateCheck::StrRight(text1, text2), "result");
    }

    void readVersionLines() {
        const QString name = m_dir.filePath(QStringLiteral("v.txt"));
        writeFile(name, "a\r\nb\nc");
        QCOMPARE(UpdateCheck::readVersionLines(name),
                 (QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
        writeFile(name, QByteArray("x\r\n").repeated(256));
        QCOMPARE(UpdateCheck::readVersionLines(name).size(), 256);
        writeFile(name, QByteArray("x\r\n").repeated(257));
        QVERIFY_THROWS_EXCEPTION(RuntimeError, UpdateCheck::readVersionLines(name));
    }

    void bothCurrentDownloadsNothing() {
        serve("0.160", "3");
        UpdateCheck u(m_t->services, config(QStringLiteral("0.160"), QStringLiteral("3")));
        QSignalSpy compared(&u, &UpdateCheck::versionListCompared);
        runCheck(u);
        QCOMPARE(compared.count(), 1);
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
        QVERIFY(QFile::exists(inProgram(QStringLiteral("TavoMP3Versions.txt"))));
        QVERIFY(!AppGlobals::StartUpdaterOnExit);
        QVERIFY(m_t->dialogs.questions.isEmpty());
    }

    void versionsCompareAsText_data() {
        QTest::addColumn<QString>("current");
        QTest::addColumn<QByteArray>("listed");
        QTest::addColumn<QByteArray>("listedUpdater");
        QTest::addColumn<QString>("logEnd");
        QTest::newRow("1.9 is newer than 1.10")
            << "1.9" << QByteArray("1.10") << QByteArray("1")
            << "Ihre Player Version ist neuer(!) als die neuste Version (1.10) !\r\n";
        QTest::newRow("0.160 is newer than 0.1599")
            << "0.160" << QByteArray("0.1599") << QByteArray("1")
            << "Ihre Player Version ist neuer(!) als die neuste Version (0.1599) !\r\n";
        QTest::newRow("updater 9 is newer than 10")
            << "0.160" << QByteArray("0.160") << QByteArray("10")
            << "Ihre Update Version ist neuer(!) als die neuste Version (10) !\r\n";
    }
    void versionsCompareAsText() {
        QFETCH(QString, current);
        QFETCH(QByteArray, listed);
        QFETCH(QByteArray, listedUpdater);
        QFETCH(QString, logEnd);
        serve(listed, listedUpdater);
        UpdateCheck u(m_t->services, config(current, QStringLiteral("9")));
        runCheck(u);
        QVERIFY2(u.FLog().endsWith(logEnd), qPrintable(u.FLog()));
        QCOMPARE(m_server->requestedPaths, QStringList{kList});
    }

    void newPlayerWithCurrentUpdaterIsLeftInTmp() {
        serve("1.6", "8", "new player");
        UpdateCheck u(m_t->services, config(QStringLiteral("1.5"), QStringLiteral("8")));
        runCheck(u);
        QVERIFY(u.FLog().endsWith(
            QStringLiteral("Aktuellste Version des Update-Programms bereits vorhanden.") + crlf));
        QCOMPARE(u.UpdateState, qint16(UpdateCheck::PlayerDownload));
        QCOMPARE(fileBytes(u.config().newPlayerFile()), QByteArray("new player"));
        QVERIFY(!AppGlobals::StartUpdaterOnExit);
    }

    void onlyUpdaterNew() {
        serve("0.160", "5", "player", "new updater");
        UpdateCheck u(m_t->services, config(QStringLiteral("0.160"), QStringLiteral("4")));
        runCheck(u);
        QCOMPARE(u.UpdateState, qint16(UpdateCheck::UpdaterDownload));
        QVERIFY2(u.FLog().endsWith(
                     QStringLiteral("Neue Update-Programm Version (5) verfügbar - Starte Download ...") +
                     crlf + QStringLiteral("Update-Programm wurde aktualisiert.") + crlf + crlf +
                     QStringLiteral("Automatisches Update erfolgreich abgeschlossen.") + crlf),
                 qPrintable(u.FLog()));
        QCOMPARE(fileBytes(u.config().updaterPath), QByteArray("new updater"));
        QVERIFY(QFile::permissions(u.config().updaterPath) & QFileDevice::ExeOwner);
        QVERIFY(!AppGlobals::StartUpdaterOnExit);
    }

    // Every answer of the server runs through the real download, the checks and, when all is
    // well, the real replacement. Whatever is refused, the installed programs stay as they were.
    void serverAnswers_data() {
        QTest::addColumn<QString>("refusal"); // part of the log's reason; empty = installed
        QTest::newRow("good") << QString();
        QTest::newRow("truncated player") << "unvollständig";
        QTest::newRow("unsigned list") << "Die Versionsliste ist nicht signiert. Es gibt kein Update.";
        QTest::newRow("list signed by another key") << "Die Signatur der Versionsliste ist ungültig";
        QTest::newRow("player signed by another key")
            << QStringLiteral("Die Signatur von ") + UpdateConfig::playerFileName();
        QTest::newRow("player not in the list")
            << QStringLiteral("nennt für ") + UpdateConfig::playerFileName() + QStringLiteral(" keine");
        QTest::newRow("captive portal") << "beginnt nicht mit den Zeilen";
        QTest::newRow("player 404") << "antwortete \"HTTP/1.0 404 Not Found\"";
        QTest::newRow("oversized header on the updater") << "keinen gültigen Kopf";
        QTest::newRow("updater larger than announced") << "mehr als die angekündigten";
        QTest::newRow("updater larger than listed") << "größer als erwartet";
    }
    void serverAnswers() {
        QFETCH(QString, refusal);
        const QString tag = QString::fromLatin1(QTest::currentDataTag());
        const QByteArray newPlayer = playerScript("new"), newUpdater = "new updater";
        const QString player = UpdateConfig::playerFileName(), updater = UpdateConfig::updaterFileName();
        serve("1.6", "9", newPlayer, newUpdater);
        const ReleaseSigner stranger;
        const QByteArray portal = LocalHttpServer::ok("<html><body>Bitte melden Sie sich an</body></html>");
        if (tag == QLatin1String("truncated player"))
            m_server->setReply(kPlayer, {LocalHttpServer::ok(newPlayer).chopped(20), 0, 0, false});
        else if (tag == QLatin1String("unsigned list"))
            m_server->setBody(kList, "TavoMP3Player: 1.6\r\nTavoMP3Update: 9\r\n");
        else if (tag == QLatin1String("list signed by another key"))
            m_server->setBody(kList,
                              stranger.versionList("1.6", "9", {{player, newPlayer}, {updater, newUpdater}}));
        else if (tag == QLatin1String("player signed by another key"))
            m_server->setBody(kList, m_signer.versionList("1.6", "9",
                                                          stranger.fileLine(player, newPlayer) +
                                                              m_signer.fileLine(updater, newUpdater)));
        else if (tag == QLatin1String("player not in the list"))
            m_server->setBody(kList, m_signer.versionList("1.6", "9", {{updater, newUpdater}}));
        else if (tag == QLatin1String("captive portal"))
            for (const QString& path : {kList, kPlayer, kUpdater})
                m_server->setReply(path, {portal, 0, 0, false});
        else if (tag == QLatin1String("player 404"))
            m_server->setReply(kPlayer, m_server->fallback);
        else if (tag == QLatin1String("oversized header on the updater"))
            m_server->setReply(kUpdater, {QByteArray(256 * 1024, 'x'), 16 * 1024, 1, false});
        else if (tag == QLatin1String("updater larger than announced"))
            m_server->setReply(kUpdater,
                               {LocalHttpServer::ok(newUpdater) + QByteArray(100000, 'z'), 0, 0, false});
        else if (tag == QLatin1String("updater larger than listed"))
            m_server->setBody(kUpdater, newUpdater + "!");

        const QStringList files = {QStringLiteral("TavoMP3Player"), updater};
        QList<QByteArray> before;
        for (const QString& f : files)
            before << fileBytes(inProgram(f));
        UpdateCheck u(m_t->services, config(QStringLiteral("1.5"), QStringLiteral("8")));
        runCheck(u);
        QVERIFY(!u.FLog().contains(QStringLiteral("Update-Programm wurde aktualisiert.")));
        QVERIFY(!u.FLog().contains(QStringLiteral("erfolgreich abgeschlossen")));
        QVERIFY(QDir(program()).entryList({QStringLiteral("*.part")}, QDir::Files).isEmpty());
        QVERIFY(m_t->dialogs.questions.isEmpty());
        if (!refusal.isEmpty()) {
            QVERIFY2(u.FLog().contains(refusal) && u.FLog().endsWith(kAborted + crlf), qPrintable(u.FLog()));
            QVERIFY(!AppGlobals::StartUpdaterOnExit);
            for (int i = 0; i < files.size(); ++i)
                QCOMPARE(fileBytes(inProgram(files.at(i))), before.at(i));
            return;
        }
        QVERIFY(AppGlobals::StartUpdaterOnExit);
        QVERIFY2(u.FLog().endsWith(
                     QStringLiteral("Einspielen der neuen Version und Neustart des Players ...") + crlf),
                 qPrintable(u.FLog()));
        QCOMPARE(fileBytes(inProgram(updater)), newUpdater);
        QVERIFY(QFile::permissions(inProgram(updater)) & QFileDevice::ExeOwner);
        PlayerReplacement replacement(m_t->settings, m_t->dialogs, m_signer.publicKey());
        replacement.confirmStartMs = 500;
        QCOMPARE(replacement.run(), PlayerReplacement::Outcome::Replaced);
        QCOMPARE(fileBytes(inProgram(QStringLiteral("TavoMP3Player"))), newPlayer);
        QVERIFY(QTest::qWaitFor(
            [&] { return fileBytes(inProgram(QStringLiteral("started.txt"))) == "new\n"; }, 5000));
    }

    void unwritableProgramFolderInstallsNothing() {
        serve("1.6", "9");
        UpdateConfig c = config(QStringLiteral("1.5"), QStringLiteral("8"));
        c.programFolder = QStringLiteral("/proc/self"); // not even root can create a file there
        UpdateCheck u(m_t->services, c);
        runCheck(u);
        QVERIFY2(
            u.FLog().contains(QStringLiteral("Neue Player Version (1.6) verfügbar\r\nDas Programmverzeichnis "
                                             "\"/proc/self\" ist für Sie nicht beschreibbar")),
            qPrintable(u.FLog()));
        QVERIFY(u.FLog().endsWith(kAborted + crlf));
        QCOMPARE(m_server->requestedPaths, QStringList{kList});
        QVERIFY(QFile::exists(c.cacheFolder + QStringLiteral("/TavoMP3Versions.txt")));
        QVERIFY(!AppGlobals::StartUpdaterOnExit);
    }

    // A destination that cannot be written is reported in the handler where it happens, and the
    // chain goes no further.
    void unwritableDestinationStopsTheChain_data() {
        QTest::addColumn<QString>("message");
        QTest::addColumn<int>("requests");
        QTest::newRow("version list") << "Fehler in BStart_Click in Zeile 2: Die Datei" << 0;
        QTest::newRow("updater") << "Fehler in Winsock1_Close in Zeile 2: Die Datei" << 1;
    }
    void unwritableDestinationStopsTheChain() {
        QFETCH(QString, message);
        QFETCH(int, requests);
        serve("0.160", "9");
        const QString blocker = m_dir.filePath(QStringLiteral("plain-file"));
        writeFile(blocker, "not a folder");
        UpdateConfig c = config(QStringLiteral("0.160"), QStringLiteral("8"));
        if (requests == 0) {
            c.programFolder = QStringLiteral("/proc/self");
            c.cacheFolder = blocker + QStringLiteral("/cache");
        } else {
            c.updaterPath = blocker + QStringLiteral("/TavoMP3Update");
        }
        UpdateCheck u(m_t->services, c);
        runCheck(u);
        QCOMPARE(m_t->dialogs.questions.size(), 1);
        QVERIFY2(m_t->dialogs.messageTexts().first().startsWith(message),
                 qPrintable(m_t->dialogs.messageTexts().first()));
        QVERIFY(
            m_t->dialogs.messageTexts().first().contains(QStringLiteral("kann nicht geschrieben werden")));
        QCOMPARE(m_server->requests.size(), requests);
        QCOMPARE(fileBytes(inProgram(UpdateConfig::updaterFileName())), QByteArray("old updater"));
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
        serve("1.6", "9");
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
    }

    void timeoutEndsTheChain() {
        m_server->setReply(kList, LocalHttpServer::Reply{{}, 0, 0, true});
        UpdateCheck u(m_t->services, config(QStringLiteral("1.5"), QStringLiteral("8")));
        QSignalSpy compared(&u, &UpdateCheck::versionListCompared);
        runCheck(u);
        QCOMPARE(u.FLog(), QStringLiteral("Überprüfe Player Version (aktuelle Version 1.5) ...") + crlf +
                               QStringLiteral("Zeitüberschreitung beim Warten auf Antwort...") + crlf + crlf +
                               kAborted);
        QCOMPARE(compared.count(), 0);
        QCOMPARE(setting(QStringLiteral("Settings"), QStringLiteral("LastUpdateCheck")),
                 QStringLiteral("<none>"));
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
