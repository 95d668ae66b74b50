#include "base/RuntimeError.h"
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

class tst_SocketDownload : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    LocalHttpServer* m_server = nullptr;
    ScriptedDialogs m_dialogs;

    QString dest() const { return m_dir.filePath(QStringLiteral("out.bin")); }
    QString address(const QString& path) const {
        return QStringLiteral("http://") + m_server->hostPort() + path;
    }
    static QByteArray fileBytes(const QString& name) {
        QFile f(name);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
    }
    static QByteArray pattern(int size) {
        QByteArray b(size, '\0');
        for (int i = 0; i < size; ++i)
            b[i] = char((i * 7 + i / 251) & 0xff);
        return b;
    }
    // Runs one download to its end (server close, refusal or time-out).
    bool run(SocketDownload& d, const QString& path, DownloadProgress* progress, int timeoutMs = 10000) {
        QSignalSpy closed(&d, &SocketDownload::downloadClosed);
        QSignalSpy timedOut(&d, &SocketDownload::timedOut);
        d.DownloadFile(address(path), dest(), progress);
        return QTest::qWaitFor([&] { return closed.count() + timedOut.count() > 0; }, timeoutMs);
    }

private slots:
    void init() {
        m_server = new LocalHttpServer(this);
        QVERIFY(m_server->listen());
        QFile::remove(dest());
    }
    void cleanup() {
        delete m_server;
        m_server = nullptr;
        QVERIFY(m_dialogs.questions.isEmpty()); // no handler ever raised an error
    }

    void splitAddress_data() {
        QTest::addColumn<QString>("address");
        QTest::addColumn<QString>("host");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("connectHost");
        QTest::addColumn<int>("port");
        QTest::newRow("path") << "http://example.org/TavoMP3/Downloads/Versions.txt"
                              << "example.org"
                              << "/TavoMP3/Downloads/Versions.txt"
                              << "example.org" << 80;
        QTest::newRow("host only") << "http://example.org"
                                   << "example.org"
                                   << "/"
                                   << "example.org" << 80;
        QTest::newRow("port") << "http://127.0.0.1:8080/a/b"
                              << "127.0.0.1:8080"
                              << "/a/b"
                              << "127.0.0.1" << 8080;
        // Seven characters are dropped whatever they are: "https:/" leaves no host.
        QTest::newRow("scheme not checked") << "https://x.org/f"
                                            << ""
                                            << "/x.org/f"
                                            << "" << 80;
        QTest::newRow("bad port kept in host") << "http://h:abc/f"
                                               << "h:abc"
                                               << "/f"
                                               << "h:abc" << 80;
        QTest::newRow("query kept") << "http://h/p?x=1/2"
                                    << "h"
                                    << "/p?x=1/2"
                                    << "h" << 80;
    }
    void splitAddress() {
        QFETCH(QString, address);
        const SocketDownload::Target t = SocketDownload::splitAddress(address);
        QTEST(t.host, "host");
        QTEST(t.path, "path");
        QTEST(t.connectHost, "connectHost");
        QFETCH(int, port);
        QCOMPARE(int(t.port), port);
    }

    void serverReceivesTheFixedRequest() {
        m_server->setBody(QStringLiteral("/TavoMP3/Downloads/Versions.txt"), "hello");
        SocketDownload d(m_dialogs);
        QVERIFY(run(d, QStringLiteral("/TavoMP3/Downloads/Versions.txt"), nullptr));
        QCOMPARE(m_server->requests,
                 QList<QByteArray>{"GET /TavoMP3/Downloads/Versions.txt HTTP/1.0\r\n"
                                   "Accept: image/gif, image/x-xbitmap, image/jpeg, image/pjpeg, "
                                   "application/vnd.ms-powerpoint, application/vnd.ms-excel, "
                                   "application/msword, application/x-comet, */*\r\n"
                                   "Accept-Language: en\r\n"
                                   "Accept-Encoding: gzip , deflate\r\n"
                                   "Cache-Control: no-cache\r\n"
                                   "Proxy-Connection: Keep-Alive\r\n"
                                   "User-Agent: SSM Agent 1.0\r\n"
                                   "Host: " +
                                   m_server->hostPort().toLatin1() + "\r\n\r\n"});
    }

    // Whatever the server answers, the destination keeps its old content until a complete
    // answer is committed, and a refused one leaves no part file behind.
    void serverAnswers_data() {
        QTest::addColumn<QByteArray>("raw");
        QTest::addColumn<int>("chunkSize");
        QTest::addColumn<qint64>("sizeLimit");
        QTest::addColumn<QByteArray>("body"); // what a complete answer carries
        QTest::addColumn<QString>("refusal"); // part of the reason; empty = accepted
        const QByteArray b5000 = pattern(5000), b20000 = pattern(20000), b3000 = pattern(3000);
        const qint64 any = SocketDownload::DefaultSizeLimit;
        QTest::newRow("whole") << LocalHttpServer::ok(b5000) << 0 << any << b5000 << QString();
        QTest::newRow("many small pieces")
            << LocalHttpServer::ok(b20000) << 700 << any << b20000 << QString();
        QTest::newRow("header over 350 bytes in pieces")
            << LocalHttpServer::ok(b3000, true, "X-Padding: " + QByteArray(600, 'p') + "\r\n") << 97 << any
            << b3000 << QString();
        QTest::newRow("exactly the size limit")
            << LocalHttpServer::ok(b5000) << 0 << qint64(5000) << b5000 << QString();
        QTest::newRow("two-byte first body part")
            << LocalHttpServer::ok("AB") << 0 << any << QByteArray("AB") << QString();
        // The one byte after the header is dropped as it always was; the length check catches it.
        QTest::newRow("one-byte first body part")
            << LocalHttpServer::ok("A") << 0 << any << QByteArray() << "unvollständig (0 Bytes von 1 Bytes)";
        QTest::newRow("not found") << QByteArray(
                                          "HTTP/1.0 404 Not Found\r\nContent-Length: 9\r\n\r\nnot found")
                                   << 0 << any << QByteArray() << "antwortete \"HTTP/1.0 404 Not Found\"";
        QTest::newRow("no status line") << QByteArray("<html>\r\n\r\nportal</html>") << 0 << any
                                        << QByteArray() << "antwortete \"<html>\"";
        QTest::newRow("no Content-Length")
            << LocalHttpServer::ok(b3000, false) << 1000 << any << QByteArray() << "keine Größe";
        QTest::newRow("truncated") << LocalHttpServer::ok(b5000).chopped(2000) << 1000 << any << QByteArray()
                                   << "unvollständig (3000 Bytes von 5000 Bytes)";
        QTest::newRow("more than announced")
            << QByteArray("HTTP/1.0 200 OK\r\nContent-Length: 100\r\n\r\n") + b20000 << 4000 << any
            << QByteArray() << "mehr als die angekündigten 100 Bytes";
        QTest::newRow("larger than allowed")
            << LocalHttpServer::ok(b5000) << 0 << qint64(4999) << QByteArray()
            << "größer als erwartet (5000 Bytes statt höchstens 4999 Bytes)";
        QTest::newRow("header without end")
            << QByteArray(300 * 1024, 'x') << 32 * 1024 << any << QByteArray() << "keinen gültigen Kopf";
        QTest::newRow("closed inside the header")
            << QByteArray("HTTP/1.0 200 OK\r\nContent-Len") << 0 << any << QByteArray() << "vor dem Ende";
    }
    void serverAnswers() {
        QFETCH(QByteArray, raw);
        QFETCH(int, chunkSize);
        QFETCH(qint64, sizeLimit);
        QFETCH(QByteArray, body);
        QFETCH(QString, refusal);
        {
            QFile old(dest());
            QVERIFY(old.open(QIODevice::WriteOnly));
            old.write("old");
        }
        m_server->setReply(QStringLiteral("/f"), LocalHttpServer::Reply{raw, chunkSize, 2, false});
        SocketDownload d(m_dialogs);
        d.sizeLimit = sizeLimit;
        DownloadProgress progress;
        QSignalSpy texts(&d, &SocketDownload::progressTextChanged);
        QVERIFY(run(d, QStringLiteral("/f"), &progress));
        QVERIFY(!d.TimerTimeout->isActive());
        QVERIFY(d.headerText().size() <= SocketDownload::MaxHeaderBytes);
        QCOMPARE(fileBytes(dest()), QByteArray("old"));
        if (!refusal.isEmpty()) {
            QVERIFY2(d.failure().contains(refusal), qPrintable(d.failure()));
            QVERIFY(!QFile::exists(d.partFile()));
            return;
        }
        QCOMPARE(d.failure(), QString());
        QCOMPARE(progress.Max(), qint64(body.size()));
        QCOMPARE(progress.Value(), qint64(body.size()));
        QCOMPARE(texts.last().at(0).toString(), DownloadProgress::infoText(body.size(), body.size()));
        QCOMPARE(d.commit(), QString());
        QCOMPARE(fileBytes(dest()), body);
        QVERIFY(!QFile::exists(d.partFile()));
    }

    void unwritableDestinationRaisesAndSendsNothing() {
        QFile blocker(m_dir.filePath(QStringLiteral("plain-file")));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        SocketDownload d(m_dialogs);
        try {
            d.DownloadFile(address(QStringLiteral("/f")), blocker.fileName() + QStringLiteral("/out.bin"),
                           nullptr);
            QFAIL("no error raised");
        } catch (const RuntimeError& e) {
            QVERIFY2(e.description().contains(QStringLiteral("kann nicht geschrieben werden")),
                     qPrintable(e.description()));
        }
        QVERIFY(!d.TimerTimeout->isActive());
        QTest::qWait(100);
        QVERIFY(m_server->requests.isEmpty());
    }

    void timeoutWhenServerNeverAnswers() {
        m_server->setReply(QStringLiteral("/silent"), LocalHttpServer::Reply{{}, 0, 0, true});
        SocketDownload d(m_dialogs);
        d.TimerTimeout->setInterval(20);
        QList<int> counts;
        connect(&d, &SocketDownload::timeoutCountChanged, this, [&](int c) { counts << c; });
        QSignalSpy timedOut(&d, &SocketDownload::timedOut);
        QSignalSpy closed(&d, &SocketDownload::downloadClosed);
        d.DownloadFile(address(QStringLiteral("/silent")), dest(), nullptr);
        QVERIFY(timedOut.wait(5000));
        QCOMPARE(counts.size(), 15);
        QCOMPARE(counts.first(), 1);
        QCOMPARE(counts.last(), 15);
        QVERIFY(!d.TimerTimeout->isActive());
        QVERIFY(!d.isActive());
        QTest::qWait(100);
        QCOMPARE(timedOut.count(), 1);
        QCOMPARE(closed.count(), 0);
        QVERIFY(!QFile::exists(d.partFile()));
    }

    void everyPieceRestartsTheTimeout() {
        // 20 pieces, 40 ms apart, with a 10 ms timeout tick: only the restart keeps it alive.
        const QByteArray body = pattern(2000);
        m_server->setReply(QStringLiteral("/slow"),
                           LocalHttpServer::Reply{LocalHttpServer::ok(body), 100, 40, false});
        SocketDownload d(m_dialogs);
        d.TimerTimeout->setInterval(10);
        QSignalSpy timedOut(&d, &SocketDownload::timedOut);
        QVERIFY(run(d, QStringLiteral("/slow"), nullptr));
        QCOMPARE(timedOut.count(), 0);
        QCOMPARE(d.failure(), QString());
    }

    void refusedConnectionEndsInTimeout() {
        QTcpServer probe;
        QVERIFY(probe.listen(QHostAddress::LocalHost, 0));
        const quint16 closedPort = probe.serverPort();
        probe.close();
        SocketDownload d(m_dialogs);
        d.TimerTimeout->setInterval(10);
        QSignalSpy timedOut(&d, &SocketDownload::timedOut);
        d.DownloadFile(QStringLiteral("http://127.0.0.1:") + QString::number(closedPort) +
                           QStringLiteral("/x"),
                       dest(), nullptr);
        QVERIFY(timedOut.wait(5000));
    }

    void cancelEndsDownloadAndTimeout() {
        m_server->setReply(QStringLiteral("/silent"), LocalHttpServer::Reply{{}, 0, 0, true});
        SocketDownload d(m_dialogs);
        d.TimerTimeout->setInterval(5);
        DownloadProgress progress;
        progress.setValue(123);
        QSignalSpy closed(&d, &SocketDownload::downloadClosed);
        QSignalSpy timedOut(&d, &SocketDownload::timedOut);
        d.DownloadFile(address(QStringLiteral("/silent")), dest(), &progress);
        QVERIFY(QTest::qWaitFor([&] { return !m_server->requests.isEmpty(); }, 5000));
        d.Cancel();
        QCOMPARE(progress.Value(), qint64(0));
        QVERIFY(!QFile::exists(d.partFile()));
        QTest::qWait(150); // thirty time-out ticks, had the timer kept running
        QCOMPARE(timedOut.count(), 0);
        QCOMPARE(closed.count(), 0); // our own close is not the end of a download
    }

    void newDownloadReplacesARunningOne() {
        m_server->setReply(QStringLiteral("/silent"), LocalHttpServer::Reply{{}, 0, 0, true});
        m_server->setBody(QStringLiteral("/second"), "second body");
        SocketDownload d(m_dialogs);
        QSignalSpy closed(&d, &SocketDownload::downloadClosed);
        const QString first = m_dir.filePath(QStringLiteral("first.bin"));
        d.DownloadFile(address(QStringLiteral("/silent")), first, nullptr);
        QVERIFY(QTest::qWaitFor([&] { return !m_server->requests.isEmpty(); }, 5000));
        d.DownloadFile(address(QStringLiteral("/second")), dest(), nullptr);
        QVERIFY(closed.wait(5000));
        QTest::qWait(100);
        QCOMPARE(closed.count(), 1); // the dropped connection is not reported as an end
        QCOMPARE(d.commit(), QString());
        QCOMPARE(fileBytes(dest()), QByteArray("second body"));
        QVERIFY(!QFile::exists(first + QStringLiteral(".part")));
    }

    void progressTexts_data() {
        QTest::addColumn<qint64>("value");
        QTest::addColumn<qint64>("max");
        QTest::addColumn<QString>("info");
        QTest::addColumn<QString>("percent");
        QTest::newRow("start") << qint64(0) << qint64(10240) << "0 kb / 10 kb"
                               << "0 %";
        QTest::newRow("half kb rounds to even 0") << qint64(512) << qint64(10240) << "0 kb / 10 kb"
                                                  << "0 %";
        QTest::newRow("one and a half kb rounds to 2") << qint64(1536) << qint64(10240) << "2 kb / 10 kb"
                                                       << "20 %";
        QTest::newRow("two and a half kb rounds to 2") << qint64(2560) << qint64(10240) << "2 kb / 10 kb"
                                                       << "20 %";
        QTest::newRow("per cent of rounded kb") << qint64(1024) << qint64(3 * 1024) << "1 kb / 3 kb"
                                                << "33 %";
        QTest::newRow("per cent half to even") << qint64(1024) << qint64(8 * 1024) << "1 kb / 8 kb"
                                               << "12 %";
        QTest::newRow("tiny file: no per cent") << qint64(100) << qint64(500) << "0 kb / 0 kb" << QString();
        QTest::newRow("big") << qint64(5'000'000) << qint64(5'000'000) << "4883 kb / 4883 kb"
                             << "100 %";
    }
    void progressTexts() {
        QFETCH(qint64, value);
        QFETCH(qint64, max);
        QTEST(DownloadProgress::infoText(value, max), "info");
        QTEST(DownloadProgress::percentText(value, max), "percent");
    }
};

QTEST_GUILESS_MAIN(tst_SocketDownload)
#include "tst_SocketDownload.moc"
