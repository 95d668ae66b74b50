#include "app/SingleInstance.h"
#include "app/TrayModule.h"
#include "support/MainWindowRig.h"

#include <QMenu>
#include <QSignalSpy>
#include <QtTest>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

// The program on the desktop: the notification-area icon and its menu, and a later start that finds
// the running program through its local socket (without a session bus), also after one died.
class tst_Desktop : public QObject {
    Q_OBJECT

    // A socket file nobody listens on any more, as a killed program leaves it.
    static void leaveDeadSocket(const QString& path) {
        const int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        qstrncpy(address.sun_path, QFile::encodeName(path).constData(), sizeof address.sun_path);
        QVERIFY(::bind(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0);
        ::close(fd);
    }

private slots:
    // The tip field holds 63 characters.
    void songTipIsCutToTheTipField() {
        for (const int length : {0, 10, 45, 46})
            QCOMPARE(TrayModule::songTip(QString(length, QLatin1Char('x'))),
                     QStringLiteral("Tavo MP3 Player!: ") + QString(std::min(length, 45), QLatin1Char('x')));
    }

    // Notifications arrive as mouse-move coordinates: only these codes act.
    void notificationsFromTheIcon_data() {
        QTest::addColumn<int>("x");
        QTest::addColumn<int>("y");
        QTest::addColumn<QString>("effect");
        QTest::newRow("left down") << 513 << 0 << u"restore"_s;
        QTest::newRow("left double") << 515 << 0 << u"restore"_s;
        QTest::newRow("left down, y ignored") << 513 << 7 << u"restore"_s;
        QTest::newRow("left up") << 514 << 0 << QString();
        QTest::newRow("plain move") << 100 << 40 << QString();
        QTest::newRow("right up off the icon row") << 517 << 3 << QString();
        QTest::newRow("right up opens the menu") << 517 << 0 << u"menu"_s;
    }
    void notificationsFromTheIcon() {
        QFETCH(int, x);
        QFETCH(int, y);
        QFETCH(QString, effect);
        MainWindowRig r;
        r.w.tray().trayAvailable = [] { return true; };
        r.w.load();
        r.w.showMinimized();
        QTRY_VERIFY(!r.w.isVisible()); // minimized means: only the tray icon is left
        r.w.TrayNotification(x, y);
        QCOMPARE(r.w.isVisible(), effect == u"restore"_s);
        if (effect == u"menu"_s)
            QTRY_VERIFY(r.w.MenuPopupSys->isVisible());
        QCOMPARE(r.w.MenuPopupSys->isVisible(), effect == u"menu"_s);
        r.w.MenuPopupSys->hide();
        r.w.close();
    }

    // Without a notification area a minimized window stays reachable in the task bar.
    void minimizedWithoutANotificationAreaStaysReachable() {
        MainWindowRig r;
        r.w.tray().trayAvailable = [] { return false; };
        r.w.load();
        r.w.showMinimized();
        QTest::qWait(20);
        QVERIFY(r.w.isVisible());
        r.w.close();
    }

    void laterStart_data() {
        QTest::addColumn<QString>("before"); // what the socket path holds when the program starts
        QTest::addColumn<bool>("runs");
        QTest::newRow("nothing") << QStringLiteral("nothing") << true;
        QTest::newRow("dead program's socket") << QStringLiteral("dead") << true;
        QTest::newRow("running program") << QStringLiteral("running") << false;
    }
    void laterStart() {
        QFETCH(QString, before);
        QFETCH(bool, runs);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("TavoMP3Player.instance"));
        const QDBusConnection noBus(QStringLiteral("no bus"));
        SingleInstance running(noBus, path);
        if (before == QLatin1String("running"))
            QVERIFY(running.claim(true, false));
        else if (before == QLatin1String("dead"))
            leaveDeadSocket(path);
        QSignalSpy handedToRunning(&running, &SingleInstance::activationRequested);

        SingleInstance program(noBus, path);
        QSignalSpy handedToProgram(&program, &SingleInstance::activationRequested);
        QCOMPARE(program.claim(false, true), runs);
        if (!runs) {
            QTRY_COMPARE(handedToRunning.size(), 1);
            QCOMPARE(handedToRunning.first(), (QVariantList{false, true}));
            return;
        }
        // The program that runs answers the next start.
        SingleInstance next(noBus, path);
        QVERIFY(!next.claim(true, false));
        QTRY_COMPARE(handedToProgram.size(), 1);
        QCOMPARE(handedToProgram.first(), (QVariantList{true, false}));
    }
};

QTEST_MAIN(tst_Desktop)
#include "tst_Desktop.moc"
