#include "support/FileBytes.h"
#include "support/LocalHttpServer.h"
#include "support/ScriptedDialogs.h"
#include "update/DownloadProgress.h"
#include "update/SocketDownload.h"

#include <QFile>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

namespace {
// A server's whole answer, how it is sent, and what the download makes of it.
struct Answer {
    QByteArray raw;
    int chunkSize; // 0 = in one piece
    int chunkDelayMs;
    QByteArray body;     // what a complete answer carries
    const char* refusal; // part of the reason; empty = accepted
};

QByteArray pattern(int size) {
    QByteArray b(size, '\0');
    for (int i = 0; i < size; ++i)
        b[i] = char((i * 7 + i / 251) & 0xff);
    return b;
}
} // namespace
Q_DECLARE_METATYPE(Answer)

class tst_SocketDownload : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    LocalHttpServer* m_server = nullptr;
    ScriptedDialogs m_dialogs;

    QString dest() const { return m_dir.filePath(QStringLiteral("out.bin")); }
    QString address(const char* path) const {
        return QStringLiteral("http://") + m_server->hostPort() + QLatin1String(path);
    }

private slots:
    void init() {
        m_server = new LocalHttpServer(this);
        QVERIFY(m_server->listen());
    }
    void cleanup() {
        delete m_server;
        QVERIFY(m_dialogs.questions.isEmpty()); // no handler ever raised an error
    }

    // Whatever the server answers, the destination keeps its old content until a complete
    // answer is committed, and a refused one leaves no part file behind.
    void serverAnswers_data() {
        QTest::addColumn<Answer>("a");
        const QByteArray b3000 = pattern(3000);
        const QByteArray padding = "X-Padding: " + QByteArray(600, 'p') + "\r\n";
        // Pieces 40 ms apart with a 10 ms time-out tick: only the restart on every piece keeps it alive.
        QTest::newRow("header over 350 bytes in slow pieces")
            << Answer{LocalHttpServer::ok(b3000, true, padding), 300, 40, b3000, ""};
        QTest::newRow("two-byte first body part") << Answer{LocalHttpServer::ok("AB"), 0, 0, "AB", ""};
        QTest::newRow("no Content-Length")
            << Answer{LocalHttpServer::ok(b3000, false), 1000, 2, "", "keine Größe"};
    }
    void serverAnswers() {
        QFETCH(Answer, a);
        QVERIFY(FileBytes::write(dest(), "old"));
        m_server->setReply(QStringLiteral("/f"),
                           LocalHttpServer::Reply{a.raw, a.chunkSize, a.chunkDelayMs, false});
        SocketDownload d(m_dialogs);
        d.TimerTimeout->setInterval(10);
        DownloadProgress progress;
        QSignalSpy texts(&d, &SocketDownload::progressTextChanged);
        QSignalSpy closed(&d, &SocketDownload::downloadClosed);
        d.DownloadFile(address("/f"), dest(), &progress);
        QVERIFY(closed.wait(10000));
        QVERIFY(!d.TimerTimeout->isActive());
        QVERIFY(d.headerText().size() <= SocketDownload::MaxHeaderBytes);
        QCOMPARE(FileBytes::read(dest()), QByteArray("old"));
        const QByteArray request = m_server->requests.value(0);
        QVERIFY2(request.startsWith("GET /f HTTP/1.0\r\n") &&
                     request.endsWith("\r\nHost: " + m_server->hostPort().toLatin1() + "\r\n\r\n"),
                 request.constData());
        if (*a.refusal) {
            QVERIFY2(d.failure().contains(QString::fromUtf8(a.refusal)), qPrintable(d.failure()));
            QVERIFY(!QFile::exists(d.partFile()));
            return;
        }
        QCOMPARE(d.failure(), QString());
        QCOMPARE(QList<qint64>({progress.Max(), progress.Value()}), QList<qint64>(2, a.body.size()));
        QCOMPARE(texts.last().at(0).toString(), DownloadProgress::infoText(a.body.size(), a.body.size()));
        QCOMPARE(d.commit(), QString());
        QCOMPARE(FileBytes::read(dest()), a.body);
        QVERIFY(!QFile::exists(d.partFile()));
    }

    // No server at all: fifteen time-out ticks end the download, reported once (a server that
    // never answers ends the same way in the update check's answer table).
    void timeout() {
        QTcpServer probe;
        QVERIFY(probe.listen(QHostAddress::LocalHost, 0));
        const QString from = QStringLiteral("http://127.0.0.1:%1/x").arg(probe.serverPort());
        probe.close();
        SocketDownload d(m_dialogs);
        d.TimerTimeout->setInterval(20);
        QList<int> counts;
        connect(&d, &SocketDownload::timeoutCountChanged, this, [&](int c) { counts << c; });
        QSignalSpy timedOut(&d, &SocketDownload::timedOut);
        QSignalSpy closed(&d, &SocketDownload::downloadClosed);
        d.DownloadFile(from, dest(), nullptr);
        QVERIFY(timedOut.wait(5000));
        QCOMPARE(counts, (QList<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}));
        QVERIFY(!d.TimerTimeout->isActive() && !d.isActive());
        QTest::qWait(100);
        QCOMPARE(QList<int>({int(timedOut.count()), int(closed.count())}), QList<int>({1, 0}));
        QVERIFY(!QFile::exists(d.partFile()));
    }

    void newDownloadReplacesARunningOne() {
        m_server->setReply(QStringLiteral("/silent"), LocalHttpServer::Reply{{}, 0, 0, true});
        m_server->setBody(QStringLiteral("/second"), "second body");
        SocketDownload d(m_dialogs);
        QSignalSpy closed(&d, &SocketDownload::downloadClosed);
        const QString first = m_dir.filePath(QStringLiteral("first.bin"));
        d.DownloadFile(address("/silent"), first, nullptr);
        QVERIFY(QTest::qWaitFor([&] { return !m_server->requests.isEmpty(); }, 5000));
        d.DownloadFile(address("/second"), dest(), nullptr);
        QVERIFY(closed.wait(5000));
        QTest::qWait(100);
        QCOMPARE(closed.count(), 1); // the dropped connection is not reported as an end
        QCOMPARE(d.commit(), QString());
        QCOMPARE(FileBytes::read(dest()), QByteArray("second body"));
        QVERIFY(!QFile::exists(first + QStringLiteral(".part")));
    }
};

QTEST_GUILESS_MAIN(tst_SocketDownload)
#include "tst_SocketDownload.moc"
