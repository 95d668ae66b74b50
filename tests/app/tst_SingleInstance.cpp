#include "app/SingleInstance.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

// Without a session bus a later start finds the running program through its local socket; a socket
// left behind by a program that died must not keep the next start from running.
class tst_SingleInstance : public QObject {
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

QTEST_GUILESS_MAIN(tst_SingleInstance)
#include "tst_SingleInstance.moc"
