#include "base/AppGlobals.h"
#include "support/FileBytes.h"
#include "support/LocalHttpServer.h"
#include "support/ReleaseSigner.h"
#include "support/TestServices.h"
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

const QByteArray kOldPlayer = "old player";
const QByteArray kNewPlayer = "new player";
const QByteArray kNewUpdater = "new updater";

// Installed versions, listed versions, and what a check by hand makes of them.
struct Outcome {
    const char *player, *updater, *listedPlayer, *listedUpdater;
    const char* folder; // the program folder; empty = a writable one
    QString status;     // saved as the last check's result
    QString log;        // the end of the log; with a folder given, a part of it before the refusal
    int state;
    QStringList paths; // requested from the server
};
// A server answer put in place of the good release: another version list, or one path's reply.
struct Answer {
    QByteArray list;
    QString path;
    QByteArray raw;  // empty = never answered
    QString refusal; // part of the log's reason; empty = installed
};
} // namespace
Q_DECLARE_METATYPE(Outcome)
Q_DECLARE_METATYPE(Answer)

class tst_UpdateCheck : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    LocalHttpServer* m_server = nullptr;
    TestServices* m_t = nullptr;
    ReleaseSigner m_signer;

    QString program() const { return m_dir.filePath(QStringLiteral("program")); }
    QString cache() const { return m_dir.filePath(QStringLiteral("cache")); }
    QString inProgram(const QString& name) const { return program() + QLatin1Char('/') + name; }
    UpdateConfig config(const QString& player, const QString& updater) const {
        UpdateConfig c;
        c.server = m_server->hostPort();
        c.publicKey = m_signer.publicKey();
        c.programFolder = program();
        c.cacheFolder = cache();
        c.ownName = QStringLiteral("TavoMP3Player");
        c.playerVersion = player;
        c.updaterVersion = updater;
        c.updaterPath = inProgram(UpdateConfig::updaterFileName());
        return c;
    }
    void serve(const QByteArray& player, const QByteArray& updater,
               const QByteArray& newPlayer = kNewPlayer) {
        m_server->setBody(kList, m_signer.versionList(player, updater,
                                                      {{UpdateConfig::playerFileName(), newPlayer},
                                                       {UpdateConfig::updaterFileName(), kNewUpdater}}));
        m_server->setBody(kPlayer, newPlayer);
        m_server->setBody(kUpdater, kNewUpdater);
    }
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
        QDir(cache()).removeRecursively();
        QVERIFY(QDir().mkpath(program()));
        QVERIFY(FileBytes::write(inProgram(QStringLiteral("TavoMP3Player")), kOldPlayer, true));
        QVERIFY(FileBytes::write(inProgram(UpdateConfig::updaterFileName()), "old updater", true));
    }
    void cleanup() {
        delete m_server;
        delete m_t;
    }

    // Installed against listed versions (compared as texts: 1.9 is newer than 1.10), through the
    // real download: what is fetched, logged, saved and replaced.
    void versionOutcomes_data() {
        QTest::addColumn<Outcome>("o");
        const QString current = QStringLiteral("Aktuellste Version des Players bereits vorhanden.");
        const QString updaterCurrent =
            QStringLiteral("Aktuellste Version des Update-Programms bereits vorhanden.");
        const QString newPlayer = QStringLiteral("Neue Player Version (1.6) verfügbar");
        const QString older =
            QStringLiteral("Ihre Player Version ist neuer(!) als die neuste Version (1.10) !");
        QTest::newRow("both current") << Outcome(
            "0.160", "3", "0.160", "3", "", current,
            QStringLiteral("Überprüfe Player Version (aktuelle Version 0.160) ...\r\n") + current +
                QStringLiteral("\r\nÜberprüfe Update-Programm Version (aktuelle Version 3) ...\r\n") +
                updaterCurrent + crlf,
            UpdateCheck::PlayerCurrent, QStringList{kList});
        QTest::newRow("1.9 is newer than 1.10") << Outcome("1.9", "9", "1.10", "1", "", older, older + crlf,
                                                           UpdateCheck::ByHand, QStringList{kList});
        QTest::newRow("updater 9 is newer than 10")
            << Outcome("0.160", "9", "0.160", "10", "", current,
                       QStringLiteral("Ihre Update Version ist neuer(!) als die neuste Version (10) !\r\n"),
                       UpdateCheck::PlayerCurrent, QStringList{kList});
        // A player fetched while the updater is current stays in its .tmp file.
        QTest::newRow("new player, updater current")
            << Outcome("1.5", "8", "1.6", "8", "", newPlayer, updaterCurrent + crlf,
                       UpdateCheck::PlayerDownload, QStringList{kList, kPlayer});
        QTest::newRow("only the updater new")
            << Outcome("0.160", "4", "0.160", "5", "", current,
                       QStringLiteral("Neue Update-Programm Version (5) verfügbar - Starte Download ...\r\n"
                                      "Update-Programm wurde aktualisiert.\r\n\r\n"
                                      "Automatisches Update erfolgreich abgeschlossen.\r\n"),
                       UpdateCheck::UpdaterDownload, QStringList{kList, kUpdater});
        // Not even root can create a file there: the list goes to the cache, nothing is fetched.
        QTest::newRow("program folder not writable") << Outcome(
            "1.5", "8", "1.6", "9", "/proc/self", newPlayer,
            newPlayer +
                QStringLiteral("\r\nDas Programmverzeichnis \"/proc/self\" ist für Sie nicht beschreibbar"),
            UpdateCheck::ByHand, QStringList{kList});
    }
    void versionOutcomes() {
        QFETCH(Outcome, o);
        serve(o.listedPlayer, o.listedUpdater);
        UpdateConfig c = config(QString::fromLatin1(o.player), QString::fromLatin1(o.updater));
        const bool refused = *o.folder != 0;
        if (refused)
            c.programFolder = QString::fromLatin1(o.folder);
        UpdateCheck u(m_t->services, c);
        runCheck(u);
        QVERIFY2(refused ? u.FLog().contains(o.log) && u.FLog().endsWith(kAborted + crlf)
                         : u.FLog().endsWith(o.log),
                 qPrintable(u.FLog()));
        QCOMPARE(u.UpdateState, qint16(o.state));
        QCOMPARE(m_server->requestedPaths, o.paths);
        QCOMPARE(setting(QStringLiteral("Settings"), QStringLiteral("LastUpdateCheckStatus")) + crlf +
                     setting(QStringLiteral("Settings"), QStringLiteral("LastUpdateCheck")),
                 o.status + crlf + QStringLiteral("22.11.2026 10:00:00"));
        QVERIFY(QFile::exists((refused ? cache() : program()) + QStringLiteral("/TavoMP3Versions.txt")));
        QCOMPARE(FileBytes::read(c.newPlayerFile()) + '|' + FileBytes::read(c.updaterPath),
                 (o.paths.contains(kPlayer) ? kNewPlayer : QByteArray("<missing>")) + '|' +
                     (o.paths.contains(kUpdater) ? kNewUpdater : QByteArray("old updater")));
        QCOMPARE(setting(QStringLiteral("Update"), QStringLiteral("PlayerToUpdate")),
                 QStringLiteral("<none>"));
        QVERIFY(!AppGlobals::StartUpdaterOnExit);
        QVERIFY(m_t->dialogs.questions.isEmpty());
    }

    // Every answer of the server runs through the real download and the checks. Whatever is refused, the
    // installed programs stay as they were.
    void serverAnswers_data() {
        QTest::addColumn<Answer>("a");
        const QString player = UpdateConfig::playerFileName(), updater = UpdateConfig::updaterFileName();
        const QString refusedPlayer =
            QLatin1Char('"') + player + QStringLiteral("\" wurde nicht angenommen: ");
        const ReleaseSigner stranger;
        QTest::newRow("good") << Answer{};
        QTest::newRow("truncated player")
            << Answer("", kPlayer, LocalHttpServer::ok(kNewPlayer).chopped(5),
                      refusedPlayer + QStringLiteral("Die Übertragung ist unvollständig"));
        QTest::newRow("unsigned list")
            << Answer("TavoMP3Player: 1.6\r\nTavoMP3Update: 9\r\n", QString(), "",
                      QStringLiteral("Die Versionsliste ist nicht signiert. Es gibt kein Update."));
        QTest::newRow("list signed by another key")
            << Answer(stranger.versionList("1.6", "9", {{player, kNewPlayer}, {updater, kNewUpdater}}),
                      QString(), "", QStringLiteral("Die Signatur der Versionsliste ist ungültig"));
        QTest::newRow("player signed by another key") << Answer(
            m_signer.versionList(
                "1.6", "9", stranger.fileLine(player, kNewPlayer) + m_signer.fileLine(updater, kNewUpdater)),
            QString(), "", QStringLiteral("Die Signatur von ") + player);
        QTest::newRow("player not in the list")
            << Answer(m_signer.versionList("1.6", "9", {{updater, kNewUpdater}}), QString(), "",
                      QStringLiteral("nennt für ") + player + QStringLiteral(" keine"));
        QTest::newRow("captive portal")
            << Answer("", kList, LocalHttpServer::ok("<html><body>Bitte melden Sie sich an</body></html>"),
                      QStringLiteral("beginnt nicht mit den Zeilen"));
        QTest::newRow("player 404") << Answer(
            "", kPlayer, LocalHttpServer::kNotFound,
            refusedPlayer + QStringLiteral("Der Update-Server antwortete \"HTTP/1.0 404"));
        QTest::newRow("oversized header on the updater")
            << Answer("", kUpdater, QByteArray(256 * 1024, 'x'), QStringLiteral("keinen gültigen Kopf"));
        QTest::newRow("updater larger than announced")
            << Answer("", kUpdater, LocalHttpServer::ok(kNewUpdater) + QByteArray(100000, 'z'),
                      QStringLiteral("mehr als die angekündigten 11 Bytes"));
        QTest::newRow("updater larger than listed")
            << Answer("", kUpdater, LocalHttpServer::ok(kNewUpdater + "!"),
                      QStringLiteral("größer als erwartet (12 Bytes statt höchstens 11 Bytes)"));
        // The one body byte of a first piece is dropped, as it always was; the length check refuses it.
        QTest::newRow("one-byte updater") << Answer("", kUpdater, LocalHttpServer::ok("u"),
                                                    QStringLiteral("unvollständig (0 Bytes von 1 Bytes)"));
        QTest::newRow("list closed inside the header")
            << Answer("", kList, "HTTP/1.0 200 OK\r\nContent-Len", QStringLiteral("vor dem Ende"));
        QTest::newRow("list never answered")
            << Answer("", kList, "", QStringLiteral("Zeitüberschreitung beim Warten auf Antwort...\r\n"));
    }
    void serverAnswers() {
        QFETCH(Answer, a);
        serve("1.6", "9");
        if (!a.list.isEmpty())
            m_server->setBody(kList, a.list);
        if (!a.path.isEmpty())
            m_server->setReply(a.path, {a.raw, 16 * 1024, 1, a.raw.isEmpty()});
        const QString updater = inProgram(UpdateConfig::updaterFileName());
        UpdateCheck u(m_t->services, config(QStringLiteral("1.5"), QStringLiteral("8")));
        runCheck(u);
        QVERIFY(QDir(program()).entryList({QStringLiteral("*.part")}, QDir::Files).isEmpty());
        QVERIFY(m_t->dialogs.questions.isEmpty());
        QCOMPARE(AppGlobals::StartUpdaterOnExit, a.refusal.isEmpty());
        if (!a.refusal.isEmpty()) {
            QVERIFY2(u.FLog().contains(a.refusal) && u.FLog().trimmed().endsWith(kAborted),
                     qPrintable(u.FLog()));
            // Nor does a player fetched for an update whose updater did not arrive stay behind.
            QCOMPARE(FileBytes::read(inProgram(QStringLiteral("TavoMP3Player"))) + FileBytes::read(updater) +
                         FileBytes::read(config({}, {}).newPlayerFile()),
                     kOldPlayer + "old updater<missing>");
            return;
        }
        QVERIFY2(u.FLog().endsWith(
                     QStringLiteral("Einspielen der neuen Version und Neustart des Players ...") + crlf),
                 qPrintable(u.FLog()));
        QCOMPARE(FileBytes::read(updater), kNewUpdater);
        QVERIFY(QFile::permissions(updater) & QFileDevice::ExeOwner);
        // Handed over to the updater, which the desktop self-update test runs for real.
        QCOMPARE(setting(QStringLiteral("Update"), QStringLiteral("PlayerToUpdate")), QStringLiteral("1"));
        QCOMPARE(FileBytes::read(config({}, {}).newPlayerFile()), kNewPlayer);
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
        QVERIFY(FileBytes::write(blocker, "not a folder"));
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
        const QString shown = m_t->dialogs.messageTexts().first();
        QVERIFY2(shown.startsWith(message) && shown.contains(QStringLiteral("kann nicht geschrieben werden")),
                 qPrintable(shown));
        QCOMPARE(m_server->requests.size(), requests);
        QCOMPARE(FileBytes::read(inProgram(UpdateConfig::updaterFileName())), QByteArray("old updater"));
    }

    // The minute timer as loaded, then seven ticks (labels space-separated; empty = the timer does not
    // run); the settings window may switch the mode off meanwhile.
    void schedule_data() {
        QTest::addColumn<QString>("mode");
        QTest::addColumn<QString>("interval");
        QTest::addColumn<QString>("labels");
        QTest::newRow("interval mode") << QStringLiteral("1") << QStringLiteral("3")
                                       << QStringLiteral("0/3 1/3 2/3 0/3 1/3 2/3 0/3 1/3");
        QTest::newRow("interval 0") << QStringLiteral("1") << QStringLiteral("0") << QString();
        QTest::newRow("reminder mode") << QStringLiteral("2") << QStringLiteral("5") << QString();
    }
    void schedule() {
        QFETCH(QString, mode);
        QFETCH(QString, interval);
        QFETCH(QString, labels);
        m_t->settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("UpdateMode"), mode);
        m_t->settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("UpdateInterval"), interval);
        UpdateCheckSchedule s(m_t->settings);
        QSignalSpy due(&s, &UpdateCheckSchedule::checkDue);
        s.load();
        QCOMPARE(s.TimerCheck->interval(), 60000);
        QStringList shown{s.FCheck()};
        QCOMPARE(s.TimerCheck->isActive(), !labels.isEmpty());
        if (labels.isEmpty()) {
            QCOMPARE(s.FCheck(), QString());
            return;
        }
        for (int i = 0; i < 7; ++i) {
            s.TimerCheckTimer();
            shown << s.FCheck();
        }
        QCOMPARE(shown.join(QLatin1Char(' ')), labels);
        QCOMPARE(due.count(), 2);
        m_t->settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("UpdateMode"),
                                  QStringLiteral("3"));
        s.TimerCheckTimer();
        QVERIFY(!s.TimerCheck->isActive());
        QCOMPARE(due.count(), 2);
    }
};

QTEST_GUILESS_MAIN(tst_UpdateCheck)
#include "tst_UpdateCheck.moc"
