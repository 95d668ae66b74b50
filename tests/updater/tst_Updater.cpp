#include "support/FileBytes.h"
#include "support/ReleaseSigner.h"
#include "support/TestServices.h"
#include "update/PlayerReplacement.h"
#include "update/UpdateConfig.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

// A "player" that notes its start beside itself and keeps running a while, as a real one would.
QByteArray script(const QByteArray& word) {
    return "#!/bin/sh\necho " + word + " > \"$(dirname \"$0\")/started.txt\"\nexec sleep 5\n";
}

// The exit code standing for an updater that still waits, in its message box, for the user.
constexpr int kWaitsForTheUser = -2;

} // namespace

class tst_Updater : public QObject {
    Q_OBJECT

private:
    // A program folder as the player leaves it for the updater: the old player, the downloaded
    // one beside it, the version list that signs the download, and the hand-over keys.
    struct Setup {
        QTemporaryDir dir;
        ReleaseSigner signer;
        QString player = dir.filePath(QStringLiteral("TavoMP3Player"));
        QString updated = dir.filePath(QStringLiteral("TavoMP3Player.tmp"));
        QString marker = dir.filePath(QStringLiteral("started.txt"));
        QString list = dir.filePath(QStringLiteral("TavoMP3Versions.txt"));
        QString configFile = dir.filePath(QStringLiteral("config/TavoMP3Player/TavoMP3Player.ini"));
        void prepare(const QByteArray& download, SettingsStore& s,
                     const QString& toUpdate = QStringLiteral("1")) {
            QVERIFY(FileBytes::write(player, script("old"), true));
            QVERIFY(FileBytes::write(updated, download)); // downloaded files carry no execute bit
            QVERIFY(FileBytes::write(
                list, signer.versionList("9.9", "99", {{UpdateConfig::playerFileName(), download}})));
            s.SaveSetting(QStringLiteral("Update"), QStringLiteral("PlayerPath"), player);
            s.SaveSetting(QStringLiteral("Update"), QStringLiteral("PlayerPathUpdated"), updated);
            s.SaveSetting(QStringLiteral("Update"), QStringLiteral("PlayerToUpdate"), toUpdate);
        }
    };

    // Runs the real updater program with its settings and key in the setup's folder. Without
    // "--silent" its messages are boxes on the screen: one that is still open is closed here.
    static int runUpdater(const Setup& s, bool silent, QByteArray* errors) {
        QProcess p;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("XDG_CONFIG_HOME"), s.dir.filePath(QStringLiteral("config")));
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        env.insert(QStringLiteral("TAVOMP3_UPDATE_PUBLIC_KEY"), s.signer.publicKey());
        p.setProcessEnvironment(env);
        p.start(qEnvironmentVariable("TAVO_BUILD_DIR") + QStringLiteral("/TavoMP3Update"),
                silent ? QStringList{QStringLiteral("--silent")} : QStringList{});
        const bool ended = p.waitForFinished(silent ? 60000 : 2000);
        *errors = p.readAllStandardError();
        if (!ended) {
            p.kill();
            p.waitForFinished();
            return silent ? -1 : kWaitsForTheUser;
        }
        return p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
    }

private slots:
    // Each case through the real updater program; on every refusal the old player stays and runs.
    void replacement_data() {
        QTest::addColumn<QString>("fault");
        QTest::addColumn<bool>("silent");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QByteArray>("started"); // which player runs afterwards; empty = none
        QTest::addColumn<QString>("message");
        QTest::newRow("good") << QString() << true << 0 << QByteArray("new") << QString();
        QTest::newRow("nothing to do") << "nothing to do" << true << 0 << QByteArray() << QString();
        QTest::newRow("new player does not start") << "exits at once" << true << 1 << QByteArray("old")
                                                   << "Die bisherige Version wurde wiederhergestellt";
        QTest::newRow("download changed after the check")
            << "tampered" << true << 1 << QByteArray("old") << "Die Signatur von TavoMP3Player ist ungültig";
        QTest::newRow("download cut short") << "truncated" << true << 1 << QByteArray("old") << "statt";
        QTest::newRow("download missing") << "missing" << true << 1 << QByteArray("old") << "fehlt";
        QTest::newRow("list signed by another key")
            << "stranger" << true << 1 << QByteArray("old") << "Signatur der Versionsliste ist ungültig";
        QTest::newRow("program folder not writable")
            << "unwritable" << true << 1 << QByteArray() << "ist für Sie nicht beschreibbar";
        // Started by the player (without "--silent"), a refusal waits in a message box for the
        // user; the old player is started once it is answered.
        QTest::newRow("refusal shown in a window")
            << "stranger" << false << kWaitsForTheUser << QByteArray() << QString();
    }
    void replacement() {
        QFETCH(QString, fault);
        QFETCH(bool, silent);
        QFETCH(int, exitCode);
        QFETCH(QByteArray, started);
        QFETCH(QString, message);
        Setup s;
        const QByteArray signedDownload =
            fault == QLatin1String("exits at once") ? QByteArray("#!/bin/sh\nexit 1\n") : script("new");
        {
            IniSettingsStore store(s.configFile);
            s.prepare(signedDownload, store,
                      fault == QLatin1String("nothing to do") ? QStringLiteral("0") : QStringLiteral("1"));
            if (fault == QLatin1String("unwritable"))
                store.SaveSetting(QStringLiteral("Update"), QStringLiteral("PlayerPath"),
                                  QStringLiteral("/proc/self/TavoMP3Player")); // not even root writes there
        }
        if (fault == QLatin1String("tampered"))
            QVERIFY(FileBytes::write(s.updated, script("bad")));
        else if (fault == QLatin1String("truncated"))
            QVERIFY(FileBytes::write(s.updated, signedDownload.left(10)));
        else if (fault == QLatin1String("missing"))
            QVERIFY(QFile::remove(s.updated));
        else if (fault == QLatin1String("stranger"))
            QVERIFY(FileBytes::write(
                s.list, ReleaseSigner().versionList("9.9", "99",
                                                    {{UpdateConfig::playerFileName(), signedDownload}})));

        QByteArray errors;
        QCOMPARE(runUpdater(s, silent, &errors), exitCode);
        const QString said = QString::fromLocal8Bit(errors);
        QVERIFY2(message.isEmpty()
                     ? !said.contains(QStringLiteral("TavoMP3 Update: "))
                     : said.contains(QStringLiteral("TavoMP3 Update: Die ")) && said.contains(message),
                 errors.constData());
        const bool replaced = started == "new";
        QCOMPARE(FileBytes::read(s.player), replaced ? signedDownload : script("old"));
        QVERIFY(QFile::permissions(s.player) & QFileDevice::ExeOwner);
        QVERIFY(!QFile::exists(s.player + QStringLiteral(".old")));
        if (started.isEmpty()) {
            QTest::qWait(300);
            QVERIFY(!QFile::exists(s.marker));
        } else {
            QVERIFY(QTest::qWaitFor([&] { return FileBytes::read(s.marker) == started + '\n'; }, 10000));
        }
        IniSettingsStore store(s.configFile);
        QCOMPARE(store.GetSetting(QStringLiteral("Update"), QStringLiteral("PlayerToUpdate"), QString()) ==
                     QLatin1String("0"),
                 replaced || fault == QLatin1String("nothing to do") ||
                     fault == QLatin1String("exits at once"));
    }

    // The player starts the updater while it closes: its file is replaced only once it is gone.
    void waitsForThePlayerToEnd() {
        Setup s;
        TestServices t;
        s.prepare(script("new"), t.settings);
        QVERIFY(QFile::remove(s.player) && QFile::copy(QStringLiteral("/bin/sleep"), s.player));
        QProcess running;
        running.start(s.player, {QStringLiteral("1")});
        QVERIFY(running.waitForStarted());
        PlayerReplacement r(t.settings, t.dialogs, s.signer.publicKey());
        r.confirmStartMs = 200;
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(r.run(), PlayerReplacement::Outcome::Replaced);
        QVERIFY2(clock.elapsed() >= 900 && clock.elapsed() < 20000,
                 qPrintable(QString::number(clock.elapsed())));
        QCOMPARE(FileBytes::read(s.player), script("new"));
    }
};

QTEST_GUILESS_MAIN(tst_Updater)
#include "tst_Updater.moc"
