#include "support/LocalHttpServer.h"
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
    // Runs one download to its end (server close or time-out).
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
    }
    void cleanup() {
        delete m_server;
        m_server = nullptr;
        QFile::remove(dest());
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
        QTest::newRow("host and slash") << "http://example.org/"
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

    void requestTemplate() {
        const QByteArray expected = "GET /TavoMP3/Downloads/Versions.txt HTTP/1.0\r\n"
                                    "Accept: image/gif, image/x-xbitmap, image/jpeg, image/pjpeg, "
                                    "application/vnd.ms-powerpoint, application/vnd.ms-excel, "
                                    "application/msword, application/x-comet, */*\r\n"
                                    "Accept-Language: en\r\n"
                                    "Accept-Encoding: gzip , deflate\r\n"
                                    "Cache-Control: no-cache\r\n"
                                    "Proxy-Connection: Keep-Alive\r\n"
                                    "User-Agent: SSM Agent 1.0\r\n"
                                    "Host: example.org\r\n"
                                    "\r\n";
        QCOMPARE(SocketDownload::buildRequest(QStringLiteral("example.org"),
                                              QStringLiteral("/TavoMP3/Downloads/Versions.txt")),
                 expected);
    }

    void serverReceivesExactRequest() {
        m_server->setBody(QStringLiteral("/x/y.txt"), "hello");
        SocketDownload d;
        QVERIFY(run(d, QStringLiteral("/x/y.txt"), nullptr));
        QCOMPARE(m_server->requests.size(), 1);
        const QByteArray req = m_server->requests.first();
        QCOMPARE(req, SocketDownload::buildRequest(m_server->hostPort(), QStringLiteral("/x/y.txt")));
        QVERIFY(req.startsWith("GET /x/y.txt HTTP/1.0\r\nAccept: image/gif"));
        QVERIFY(req.endsWith("Host: " + m_server->hostPort().toLatin1() + "\r\n\r\n"));
        QCOMPARE(fileBytes(dest()), QByteArray("hello"));
    }

    void destinationDeletedFirst() {
        {
            QFile f(dest());
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write("old content that is longer than the new one");
        }
        m_server->setBody(QStringLiteral("/f"), "new");
        SocketDownload d;
        QVERIFY(run(d, QStringLiteral("/f"), nullptr));
        QCOMPARE(fileBytes(dest()), QByteArray("new"));
    }

    void bodyInPieces_data() {
        QTest::addColumn<int>("headerPadding");
        QTest::addColumn<int>("bodySize");
        QTest::addColumn<int>("chunkSize");
        QTest::newRow("one write") << 0 << 5000 << 0;
        QTest::newRow("many small pieces") << 0 << 20000 << 700;
        QTest::newRow("header over 350 bytes") << 600 << 3000 << 0;
        QTest::newRow("long header in pieces") << 600 << 3000 << 97;
        QTest::newRow("header ends at byte 350") << 0 << 1000 << 0; // padding computed below
        QTest::newRow("two-byte first body part") << 0 << 2 << 0;
    }
    void bodyInPieces() {
        QFETCH(int, headerPadding);
        QFETCH(int, bodySize);
        QFETCH(int, chunkSize);
        const QByteArray body = pattern(bodySize);
        QByteArray extra;
        if (headerPadding > 0)
            extra = "X-Padding: " + QByteArray(headerPadding, 'p') + "\r\n";
        if (QByteArray(QTest::currentDataTag()) == "header ends at byte 350") {
            const int base = int(LocalHttpServer::ok(body).size() - body.size());
            extra = "X-Pad: " + QByteArray(350 - base - 9, 'q') + "\r\n";
            QCOMPARE(int(LocalHttpServer::ok(body, true, extra).size() - body.size()), 350);
        }
        m_server->setReply(
            QStringLiteral("/big"),
            LocalHttpServer::Reply{LocalHttpServer::ok(body, true, extra), chunkSize, 5, false});
        SocketDownload d;
        DownloadProgress progress;
        QSignalSpy texts(&d, &SocketDownload::progressTextChanged);
        QVERIFY(run(d, QStringLiteral("/big"), &progress));
        QCOMPARE(fileBytes(dest()), body);
        QCOMPARE(progress.Max(), qint64(bodySize));
        QCOMPARE(progress.Value(), qint64(bodySize));
        QVERIFY(d.headerText().endsWith(QStringLiteral("\r\n\r\n")));
        QVERIFY(!texts.isEmpty());
        QCOMPARE(texts.last().at(0).toString(), DownloadProgress::infoText(bodySize, bodySize));
        if (chunkSize > 0)
            QVERIFY(texts.count() > 3);
    }

    void progressTextsWhilePieceByPiece() {
        const QByteArray body = pattern(10 * 1024);
        m_server->setReply(QStringLiteral("/p"),
                           LocalHttpServer::Reply{LocalHttpServer::ok(body), 2048, 20, false});
        SocketDownload d;
        DownloadProgress progress;
        QStringList infos, percents;
        connect(&d, &SocketDownload::progressTextChanged, this, [&](const QString& i, const QString& p) {
            infos << i;
            percents << p;
        });
        QVERIFY(run(d, QStringLiteral("/p"), &progress));
        QVERIFY(infos.size() >= 4);
        QCOMPARE(infos.last(), QStringLiteral("10 kb / 10 kb"));
        QCOMPARE(percents.last(), QStringLiteral("100 %"));
        QVERIFY(infos.contains(QStringLiteral("4 kb / 10 kb")) ||
                infos.contains(QStringLiteral("2 kb / 10 kb")));
        for (const QString& p : percents)
            QVERIFY2(p.endsWith(QStringLiteral(" %")), qPrintable(p));
    }

    void contentLengthMissing() {
        const QByteArray body = pattern(4000);
        m_server->setReply(QStringLiteral("/n"),
                           LocalHttpServer::Reply{LocalHttpServer::ok(body, false), 1000, 5, false});
        SocketDownload d;
        DownloadProgress progress;
        QSignalSpy texts(&d, &SocketDownload::progressTextChanged);
        QVERIFY(run(d, QStringLiteral("/n"), &progress));
        QCOMPARE(fileBytes(dest()), body);
        QCOMPARE(progress.Max(), qint64(0));
        QCOMPARE(progress.Value(), qint64(4000));
        QCOMPARE(texts.last().at(0).toString(), QStringLiteral("4 kb / 0 kb"));
        QCOMPARE(texts.last().at(1).toString(), QString()); // no per cent of nothing
    }

    void oneByteFirstBodyPartDropped() {
        // The byte right after the header is lost when it is all the first piece carries.
        m_server->setReply(QStringLiteral("/one"),
                           LocalHttpServer::Reply{LocalHttpServer::ok("A"), 0, 0, false});
        SocketDownload d;
        DownloadProgress progress;
        QVERIFY(run(d, QStringLiteral("/one"), &progress));
        QCOMPARE(fileBytes(dest()), QByteArray());
        QCOMPARE(progress.Value(), qint64(0));
    }

    void errorPageSavedLikeAFile() {
        SocketDownload d;
        QVERIFY(run(d, QStringLiteral("/nothing-here"), nullptr));
        QCOMPARE(fileBytes(dest()), QByteArray("not found"));
    }

    void serverClosesBeforeHeaderEnds() {
        m_server->setReply(QStringLiteral("/cut"),
                           LocalHttpServer::Reply{"HTTP/1.0 200 OK\r\nContent-Len", 0, 0, false});
        SocketDownload d;
        DownloadProgress progress;
        QSignalSpy closed(&d, &SocketDownload::downloadClosed);
        QVERIFY(run(d, QStringLiteral("/cut"), &progress));
        QCOMPARE(closed.count(), 1);
        QCOMPARE(fileBytes(dest()), QByteArray());
        QVERIFY(!d.TimerTimeout->isActive());
    }

    void garbageHeader() {
        QByteArray junk(2000, '\r');
        junk += "\n\n\n\r\r\r";
        m_server->setReply(QStringLiteral("/junk"), LocalHttpServer::Reply{junk, 333, 1, false});
        SocketDownload d;
        DownloadProgress progress;
        QVERIFY(run(d, QStringLiteral("/junk"), &progress));
        QCOMPARE(fileBytes(dest()), QByteArray());
    }

    void timeoutWhenServerNeverAnswers() {
        m_server->setReply(QStringLiteral("/silent"), LocalHttpServer::Reply{{}, 0, 0, true});
        SocketDownload d;
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
        QVERIFY(QFile::exists(dest())); // the emptied file stays behind
    }

    void everyPieceRestartsTheTimeout() {
        // 20 pieces, 40 ms apart, with a 10 ms timeout tick: only the restart keeps it alive.
        const QByteArray body = pattern(2000);
        m_server->setReply(QStringLiteral("/slow"),
                           LocalHttpServer::Reply{LocalHttpServer::ok(body), 100, 40, false});
        SocketDownload d;
        d.TimerTimeout->setInterval(10);
        QSignalSpy timedOut(&d, &SocketDownload::timedOut);
        QVERIFY(run(d, QStringLiteral("/slow"), nullptr));
        QCOMPARE(timedOut.count(), 0);
        QCOMPARE(fileBytes(dest()), body);
    }

    void refusedConnectionEndsInTimeout() {
        QTcpServer probe;
        QVERIFY(probe.listen(QHostAddress::LocalHost, 0));
        const quint16 closedPort = probe.serverPort();
        probe.close();
        SocketDownload d;
        d.TimerTimeout->setInterval(10);
        QSignalSpy timedOut(&d, &SocketDownload::timedOut);
        d.DownloadFile(QStringLiteral("http://127.0.0.1:") + QString::number(closedPort) +
                           QStringLiteral("/x"),
                       dest(), nullptr);
        QVERIFY(timedOut.wait(5000));
    }

    void closeDownloadResetsProgressAndStopsTimer() {
        m_server->setReply(QStringLiteral("/silent"), LocalHttpServer::Reply{{}, 0, 0, true});
        SocketDownload d;
        DownloadProgress progress;
        progress.setValue(123);
        QSignalSpy closed(&d, &SocketDownload::downloadClosed);
        d.DownloadFile(address(QStringLiteral("/silent")), dest(), &progress);
        QTest::qWait(50);
        d.CloseDownload();
        QCOMPARE(progress.Value(), qint64(0));
        QVERIFY(!d.TimerTimeout->isActive());
        QTest::qWait(50);
        QCOMPARE(closed.count(), 0); // our own close is not the end of a download
    }

    void newDownloadReplacesARunningOne() {
        m_server->setReply(QStringLiteral("/silent"), LocalHttpServer::Reply{{}, 0, 0, true});
        m_server->setBody(QStringLiteral("/second"), "second body");
        SocketDownload d;
        QSignalSpy closed(&d, &SocketDownload::downloadClosed);
        d.DownloadFile(address(QStringLiteral("/silent")), m_dir.filePath(QStringLiteral("first.bin")),
                       nullptr);
        QVERIFY(QTest::qWaitFor([&] { return !m_server->requests.isEmpty(); }, 5000));
        d.DownloadFile(address(QStringLiteral("/second")), dest(), nullptr);
        QVERIFY(closed.wait(5000));
        QTest::qWait(100);
        QCOMPARE(closed.count(), 1); // the dropped connection is not reported as an end
        QCOMPARE(fileBytes(dest()), QByteArray("second body"));
        QCOMPARE(fileBytes(m_dir.filePath(QStringLiteral("first.bin"))), QByteArray());
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
