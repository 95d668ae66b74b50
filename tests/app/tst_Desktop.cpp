#include "app/TrayModule.h"
#include "desktop/SingleInstance.h"
#include "support/MainWindowRig.h"

#include <QMenu>
#include <QSignalSpy>
#include <QSystemTrayIcon>
#include <QtTest>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

// The program on the desktop: the notification-area icon and its menu, and a start after a program died.
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

    // Notifications arrive as mouse-move coordinates: only these codes act; the icon's own click and
    // double click (x < 0: the activation reason) restore as well. Without a notification area a
    // minimized window stays reachable in the task bar.
    void notificationsFromTheIcon_data() {
        QTest::addColumn<bool>("tray");
        QTest::addColumn<int>("x");
        QTest::addColumn<int>("y");
        QTest::addColumn<QString>("effect");
        QTest::newRow("icon clicked") << true << -int(QSystemTrayIcon::Trigger) << 0 << u"restore"_s;
        QTest::newRow("icon double-clicked")
            << true << -int(QSystemTrayIcon::DoubleClick) << 0 << u"restore"_s;
        QTest::newRow("left double") << true << 515 << 0 << u"restore"_s;
        QTest::newRow("left down, y ignored") << true << 513 << 7 << u"restore"_s;
        QTest::newRow("left up") << true << 514 << 0 << QString();
        QTest::newRow("plain move") << true << 100 << 40 << QString();
        QTest::newRow("right up off the icon row") << true << 517 << 3 << QString();
        QTest::newRow("right up opens the menu") << true << 517 << 0 << u"menu"_s;
        QTest::newRow("no notification area") << false << 100 << 40 << u"restore"_s;
    }
    void notificationsFromTheIcon() {
        QFETCH(bool, tray);
        QFETCH(int, x);
        QFETCH(int, y);
        QFETCH(QString, effect);
        MainWindowRig r;
        r.binding<TrayBinding>().tray().trayAvailable = [tray] { return tray; };
        r.w.load();
        QCOMPARE(r.binding<TrayBinding>().tray().icon()->toolTip(), TrayModule::idleTip());
        r.w.showMinimized();
        QTest::qWait(20);
        QTRY_COMPARE(r.w.isVisible(), !tray); // minimized means: only the tray icon is left
        if (x < 0)
            emit r.binding<TrayBinding>().tray().icon()->activated(QSystemTrayIcon::ActivationReason(-x));
        else
            r.binding<TrayBinding>().TrayNotification(x, y);
        QCOMPARE(r.w.isVisible(), effect == u"restore"_s);
        QTRY_COMPARE(r.w.ui().MenuPopupSys->isVisible(), effect == u"menu"_s);
        r.w.ui().MenuPopupSys->hide();
        r.w.close();
    }

    // A killed program leaves its socket file behind: the next start takes the path over and answers
    // the start after it (a running program's answer over the socket is the desktop test's).
    void startAfterADeadProgram() {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("TavoMP3Player.instance"));
        const QDBusConnection noBus(QStringLiteral("no bus"));
        leaveDeadSocket(path);
        SingleInstance program(noBus, path);
        QSignalSpy handed(&program, &SingleInstance::activationRequested);
        QVERIFY(program.claim(false, true));
        SingleInstance next(noBus, path);
        QVERIFY(!next.claim(true, false));
        QTRY_COMPARE(handed.size(), 1);
        QCOMPARE(handed.first(), (QVariantList{true, false}));
    }
};

QTEST_MAIN(tst_Desktop)
#include "tst_Desktop.moc"
