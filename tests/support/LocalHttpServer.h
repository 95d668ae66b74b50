#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QObject>
#include <QStringList>
#include <QTcpServer>

class QTcpSocket;

// A tiny HTTP server on 127.0.0.1 (never any other address) that answers each path with bytes
// given in advance, optionally in small pieces, or not at all. It records every request.
class LocalHttpServer : public QObject {
    Q_OBJECT
public:
    struct Reply {
        QByteArray raw;       // the whole response, header included
        int chunkSize = 0;    // 0 = everything in one write
        int chunkDelayMs = 0; // pause between pieces
        bool silent = false;  // accept the connection and never answer
    };

    explicit LocalHttpServer(QObject* parent = nullptr);
    bool listen();
    quint16 port() const { return m_server.serverPort(); }
    // "127.0.0.1:<port>", the form the update server setting takes.
    QString hostPort() const;

    void setReply(const QString& path, const Reply& reply) { m_replies.insert(path, reply); }
    void setBody(const QString& path, const QByteArray& body) {
        setReply(path, Reply{ok(body), 0, 0, false});
    }

    // "HTTP/1.0 200 OK" with Content-Length (unless left out) and the body.
    static QByteArray ok(const QByteArray& body, bool withLength = true, const QByteArray& extraHeader = {});

    // The answer for every path without one of its own.
    Reply fallback{"HTTP/1.0 404 Not Found\r\nContent-Length: 9\r\n\r\nnot found", 0, 0, false};

    QList<QByteArray> requests;
    QStringList requestedPaths;

private:
    void onNewConnection();
    void answer(QTcpSocket* socket, const QByteArray& request);
    void sendPieces(QTcpSocket* socket, QByteArray rest, int size, int delayMs);

    QTcpServer m_server;
    QHash<QString, Reply> m_replies;
};
