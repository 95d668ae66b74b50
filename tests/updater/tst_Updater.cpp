#include "support/TestServices.h"
#include "update/PlayerReplacement.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

QByteArray script(const QByteArray& word) {
    return "#!/bin/sh\necho " + word + " > \"$(dirname \"$0\")/started.txt\"\n";
}

bool writeFile(const QString& name, const QByteArray& bytes, QFileDevice::Permissions perms = {}) {
    QFile f(name);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    f.write(bytes);
    f.close();
    return perms == QFileDevice::Permissions() || f.setPermissions(perms);
}

QByteArray fileBytes(const QString& name) {
    QFile f(name);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
}

const QFileDevice::Permissions kExecutable = QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                             QFileDevice::ExeOwner | QFileDevice::ReadUser |
                                             QFileDevice::WriteUser | QFileDevice::ExeUser;

} // namespace

class tst_Updater : public QObject {
    Q_OBJECT

private:
    struct Setup {
        QTemporaryDir dir;
        QString player() const { return dir.filePath(QStringLiteral("TavoMP3Player")); }
        QString updated() const { return dir.filePath(QStringLiteral("TavoMP3Player.tmp")); }
        QString marker() const { return dir.filePath(QStringLiteral("started.txt")); }
        void writeKeys(SettingsStore& s, const QString& toUpdate = QStringLiteral("1")) const {
            s.SaveSetting(QStringLiteral("Update"), QStringLiteral("PlayerPath"), player());
            s.SaveSetting(QStringLiteral("Update"), QStringLiteral("PlayerPathUpdated"), updated());
            s.SaveSetting(QStringLiteral("Update"), QStringLiteral("PlayerToUpdate"), toUpdate);
        }
    };

    static QString updaterProgram() {
        return qEnvironmentVariable("TAVO_BUILD_DIR") + QStringLiteral("/TavoMP3Update");
    }
    // Runs the real updater program with its settings in the setup's folder.
    static int runUpdater(const Setup& s) {
        QProcess p;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("XDG_CONFIG_HOME"), s.dir.filePath(QStringLiteral("config")));
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        p.setProcessEnvironment(env);
        p.start(updaterProgram(), {QStringLiteral("--silent")});
        if (!p.waitForFinished(60000))
            return -1;
        return p.exitCode();
    }
    static QString configFile(const Setup& s) {
        return s.dir.filePath(QStringLiteral("config/TavoMP3Player/TavoMP3Player.ini"));
    }

private slots:
    void looksLikeProgram_data() {
        QTest::addColumn<QByteArray>("head");
        QTest::addColumn<bool>("program");
        QTest::newRow("elf") << QByteArray("\x7f"
                                           "ELF")
                             << true;
        QTest::newRow("script") << QByteArray("#!/b") << true;
        QTest::newRow("html error page") << QByteArray("<htm") << false;
        QTest::newRow("windows program") << QByteArray("MZ\x90\0", 4) << false;
        QTest::newRow("empty") << QByteArray() << false;
        QTest::newRow("almost elf") << QByteArray("\x7f"
                                                  "EL")
                                    << false;
    }
    void looksLikeProgram() {
        QFETCH(QByteArray, head);
        QTEST(PlayerReplacement::looksLikeProgram(head), "program");
    }

    void endToEndReplacesAndRestarts() {
        QVERIFY(QFile::exists(updaterProgram()));
        Setup s;
        QVERIFY(writeFile(s.player(), script("old"), kExecutable));
        QVERIFY(writeFile(s.updated(), script("new"))); // downloaded files carry no execute bit
        {
            IniSettingsStore store(configFile(s));
            s.writeKeys(store);
        }
        QCOMPARE(runUpdater(s), 0);
        QVERIFY(QTest::qWaitFor([&] { return QFile::exists(s.marker()); }, 10000));
        QCOMPARE(fileBytes(s.marker()), QByteArray("new\n"));
        QCOMPARE(fileBytes(s.player()), script("new"));
        QVERIFY(QFile::permissions(s.player()) & QFileDevice::ExeOwner);
        QVERIFY(!QFile::exists(s.updated()));
        IniSettingsStore store(configFile(s));
        QCOMPARE(store.GetSetting(QStringLiteral("Update"), QStringLiteral("PlayerToUpdate"), QString()),
                 QStringLiteral("0"));
    }

    void endToEndRefusesEmptyDownload() {
        Setup s;
        QVERIFY(writeFile(s.player(), script("old"), kExecutable));
        QVERIFY(writeFile(s.updated(), QByteArray()));
        {
            IniSettingsStore store(configFile(s));
            s.writeKeys(store);
        }
        QCOMPARE(runUpdater(s), 1);
        QCOMPARE(fileBytes(s.player()), script("old"));
        QVERIFY(QFile::permissions(s.player()) & QFileDevice::ExeOwner);
        // The old player is started again so the user is not left without it.
        QVERIFY(QTest::qWaitFor([&] { return QFile::exists(s.marker()); }, 10000));
        QCOMPARE(fileBytes(s.marker()), QByteArray("old\n"));
    }

    void endToEndNothingToDo() {
        Setup s;
        QVERIFY(writeFile(s.player(), script("old"), kExecutable));
        QVERIFY(writeFile(s.updated(), script("new")));
        {
            IniSettingsStore store(configFile(s));
            s.writeKeys(store, QStringLiteral("0"));
        }
        QCOMPARE(runUpdater(s), 0);
        QTest::qWait(300);
        QCOMPARE(fileBytes(s.player()), script("old"));
        QVERIFY(!QFile::exists(s.marker()));
    }

    void refusals_data() {
        QTest::addColumn<QByteArray>("download");
        QTest::addColumn<bool>("present");
        QTest::addColumn<QString>("reason");
        QTest::newRow("empty") << QByteArray() << true << "ist leer.";
        QTest::newRow("error page") << QByteArray("<html>404</html>") << true << "ist kein Programm.";
        QTest::newRow("missing") << QByteArray() << false << "nicht gefunden.";
    }
    void refusals() {
        QFETCH(QByteArray, download);
        QFETCH(bool, present);
        QFETCH(QString, reason);
        Setup s;
        TestServices t;
        QVERIFY(writeFile(s.player(), script("old"), kExecutable));
        if (present)
            QVERIFY(writeFile(s.updated(), download));
        s.writeKeys(t.settings);
        PlayerReplacement r(t.settings, t.dialogs);
        QStringList started;
        r.startProgram = [&](const QString& p) {
            started << p;
            return true;
        };
        r.isRunning = [](const QString&) { return false; };
        QCOMPARE(r.run(), PlayerReplacement::Outcome::Refused);
        QCOMPARE(t.dialogs.questions.size(), 1);
        QVERIFY2(t.dialogs.questions.first().text.contains(reason),
                 qPrintable(t.dialogs.questions.first().text));
        QCOMPARE(fileBytes(s.player()), script("old"));
        QCOMPARE(started, QStringList{s.player()});
    }

    void waitsForThePlayerToEnd() {
        Setup s;
        TestServices t;
        QVERIFY(writeFile(s.player(), script("old"), kExecutable));
        QVERIFY(writeFile(s.updated(), script("new")));
        s.writeKeys(t.settings);
        PlayerReplacement r(t.settings, t.dialogs);
        int polls = 0;
        QByteArray contentWhileRunning;
        r.isRunning = [&](const QString& p) {
            contentWhileRunning = fileBytes(p);
            return ++polls < 4;
        };
        r.startProgram = [](const QString&) { return true; };
        QCOMPARE(r.run(), PlayerReplacement::Outcome::Replaced);
        QCOMPARE(polls, 4);
        QCOMPARE(contentWhileRunning, script("old")); // untouched until the player was gone
        QCOMPARE(fileBytes(s.player()), script("new"));
    }

    void detectsARunningProgram() {
        Setup s;
        QVERIFY(QFile::copy(QStringLiteral("/bin/sleep"), s.dir.filePath(QStringLiteral("sleeper"))));
        QProcess p;
        p.start(s.dir.filePath(QStringLiteral("sleeper")), {QStringLiteral("30")});
        QVERIFY(p.waitForStarted());
        QVERIFY(PlayerReplacement::programIsRunning(s.dir.filePath(QStringLiteral("sleeper"))));
        p.kill();
        p.waitForFinished();
        QVERIFY(!PlayerReplacement::programIsRunning(s.dir.filePath(QStringLiteral("sleeper"))));
    }
};

QTEST_GUILESS_MAIN(tst_Updater)
#include "tst_Updater.moc"
