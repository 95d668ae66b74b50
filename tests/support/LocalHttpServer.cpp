#include "support/LocalHttpServer.h"

#include <QHostAddress>
#include <QPointer>
#include <QTcpSocket>
#include <QTimer>
#include <memory>

LocalHttpServer::LocalHttpServer(QObject* parent) : QObject(parent) {
    connect(&m_server, &QTcpServer::newConnection, this, &LocalHttpServer::onNewConnection);
}

bool LocalHttpServer::listen() {
    return m_server.listen(QHostAddress::LocalHost, 0);
}

QString LocalHttpServer::hostPort() const {
    return QStringLiteral("127.0.0.1:") + QString::number(port());
}

QByteArray LocalHttpServer::ok(const QByteArray& body, bool withLength, const QByteArray& extraHeader) {
    QByteArray r = "HTTP/1.0 200 OK\r\nContent-Type: application/octet-stream\r\n";
    r += extraHeader;
    if (withLength)
        r += "Content-Length: " + QByteArray::number(body.size()) + "\r\n";
    r += "\r\n";
    return r + body;
}

void LocalHttpServer::onNewConnection() {
    while (QTcpSocket* socket = m_server.nextPendingConnection()) {
        struct Pending {
            QByteArray request;
            bool answered = false;
        };
        auto pending = std::make_shared<Pending>();
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QTcpSocket::readyRead, this, [this, socket, pending] {
            pending->request += socket->readAll();
            if (!pending->answered && pending->request.contains("\r\n\r\n")) {
                pending->answered = true;
                answer(socket, pending->request);
            }
        });
    }
}

void LocalHttpServer::answer(QTcpSocket* socket, const QByteArray& request) {
    requests << request;
    const QByteArray firstLine = request.left(request.indexOf("\r\n"));
    const QList<QByteArray> words = firstLine.split(' ');
    const QString path = words.size() > 1 ? QString::fromLatin1(words.at(1)) : QString();
    requestedPaths << path;
    const Reply reply = m_replies.value(path, fallback);
    if (reply.silent)
        return;
    sendPieces(socket, reply.raw, reply.chunkSize, reply.chunkDelayMs);
}

void LocalHttpServer::sendPieces(QTcpSocket* socket, QByteArray rest, int size, int delayMs) {
    if (size <= 0)
        size = int(rest.size());
    socket->write(rest.left(size));
    socket->flush();
    rest.remove(0, size);
    if (rest.isEmpty()) {
        socket->disconnectFromHost();
        return;
    }
    QPointer<QTcpSocket> guard(socket);
    QTimer::singleShot(delayMs, this, [this, guard, rest, size, delayMs] {
        if (guard)
            sendPieces(guard, rest, size, delayMs);
    });
}
