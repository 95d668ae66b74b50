#pragma once

#include <QHash>
#include <QHostAddress>
#include <QPointer>
#include <QStringList>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

// A tiny HTTP server on 127.0.0.1 (never any other address) that answers each path with bytes
// given in advance, optionally in small pieces, or not at all (404 for a path without an answer).
// It records every request.
class LocalHttpServer : public QObject {
public:
    struct Reply {
        QByteArray raw;       // the whole response, header included
        int chunkSize = 0;    // 0 = everything in one write
        int chunkDelayMs = 0; // pause between pieces
        bool silent = false;  // accept the connection and never answer
    };
    static constexpr const char* kNotFound = "HTTP/1.0 404 Not Found\r\nContent-Length: 9\r\n\r\nnot found";

    explicit LocalHttpServer(QObject* parent = nullptr) : QObject(parent) {
        connect(&m_server, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket* socket = m_server.nextPendingConnection()) {
                connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
                connect(socket, &QTcpSocket::readyRead, this,
                        [this, socket, request = QByteArray()]() mutable {
                            const bool answered = request.contains("\r\n\r\n");
                            request += socket->readAll();
                            if (!answered && request.contains("\r\n\r\n"))
                                answer(socket, request);
                        });
            }
        });
    }
    bool listen() { return m_server.listen(QHostAddress::LocalHost, 0); }
    // "127.0.0.1:<port>", the form the update server setting takes.
    QString hostPort() const { return QStringLiteral("127.0.0.1:") + QString::number(m_server.serverPort()); }

    void setReply(const QString& path, const Reply& reply) { m_replies.insert(path, reply); }
    void setBody(const QString& path, const QByteArray& body) { setReply(path, Reply{ok(body)}); }

    static QByteArray ok(const QByteArray& body, bool withLength = true, const QByteArray& extraHeader = {}) {
        const QByteArray length =
            withLength ? "Content-Length: " + QByteArray::number(body.size()) + "\r\n" : "";
        return "HTTP/1.0 200 OK\r\nContent-Type: application/octet-stream\r\n" + extraHeader + length +
               "\r\n" + body;
    }

    QList<QByteArray> requests;
    QStringList requestedPaths;

private:
    void answer(QTcpSocket* socket, const QByteArray& request) {
        requests << request;
        const QList<QByteArray> words = request.left(request.indexOf("\r\n")).split(' ');
        requestedPaths << (words.size() > 1 ? QString::fromLatin1(words.at(1)) : QString());
        const Reply reply = m_replies.value(requestedPaths.last(), Reply{kNotFound});
        if (!reply.silent)
            sendPieces(socket, reply.raw, reply.chunkSize > 0 ? reply.chunkSize : int(reply.raw.size()),
                       reply.chunkDelayMs);
    }
    void sendPieces(QPointer<QTcpSocket> socket, QByteArray rest, int size, int delayMs) {
        if (!socket)
            return;
        socket->write(rest.left(size));
        socket->flush();
        rest.remove(0, size);
        if (rest.isEmpty())
            socket->disconnectFromHost();
        else
            QTimer::singleShot(delayMs, this, [=, this] { sendPieces(socket, rest, size, delayMs); });
    }

    QTcpServer m_server;
    QHash<QString, Reply> m_replies;
};
