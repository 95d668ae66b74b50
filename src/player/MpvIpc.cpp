#include "player/MpvIpc.h"

#include <QDeadlineTimer>
#include <QJsonDocument>
#include <QJsonObject>

#ifdef Q_OS_UNIX
#include <csignal>
#endif

MpvIpc::MpvIpc() {
#ifdef Q_OS_UNIX
    // A write to a player that just died must fail with EPIPE, not end this process.
    std::signal(SIGPIPE, SIG_IGN);
#endif
}

MpvIpc::~MpvIpc() = default;

bool MpvIpc::connectTo(const QString& socketPath, int waitMs) {
    disconnect();
    m_socket.connectToServer(socketPath);
    if (m_socket.state() != QLocalSocket::ConnectedState && !m_socket.waitForConnected(waitMs)) {
        m_socket.abort();
        return false;
    }
    return true;
}

bool MpvIpc::isConnected() const {
    return m_socket.state() == QLocalSocket::ConnectedState;
}

void MpvIpc::disconnect() {
    // Posted commands (quit above all) must reach the player before the connection goes.
    if (isConnected() && m_socket.bytesToWrite() > 0)
        m_socket.waitForBytesWritten(500);
    m_socket.abort();
    m_buffer.clear();
    m_replies.clear();
    m_events.clear();
}

void MpvIpc::write(const QJsonArray& command, qint64 id) {
    QJsonObject request;
    request.insert(QStringLiteral("command"), command);
    request.insert(QStringLiteral("request_id"), id);
    QByteArray line = QJsonDocument(request).toJson(QJsonDocument::Compact);
    line.append('\n');
    if (!isConnected() || m_socket.write(line) != line.size())
        throw Unreachable{Failure::Lost};
    m_socket.flush();
}

void MpvIpc::post(const QJsonArray& command) {
    write(command, m_nextId++);
}

MpvIpc::Reply MpvIpc::request(const QJsonArray& command, int waitMs) {
    return requests({command}, waitMs).first();
}

QList<MpvIpc::Reply> MpvIpc::requests(const QList<QJsonArray>& commands, int waitMs) {
    QList<qint64> ids;
    for (const QJsonArray& c : commands) {
        ids << m_nextId;
        write(c, m_nextId++);
    }
    readUntil(ids, waitMs);
    QList<Reply> replies;
    for (qint64 id : ids)
        replies << m_replies.take(id);
    return replies;
}

void MpvIpc::takeLines() {
    m_buffer.append(m_socket.readAll());
    qsizetype end;
    while ((end = m_buffer.indexOf('\n')) >= 0) {
        const QJsonObject o = QJsonDocument::fromJson(m_buffer.left(end)).object();
        m_buffer.remove(0, end + 1);
        if (o.contains(QStringLiteral("event"))) {
            m_events.insert(o.value(QStringLiteral("event")).toString());
            continue;
        }
        if (!o.contains(QStringLiteral("request_id")))
            continue;
        Reply r;
        r.ok = o.value(QStringLiteral("error")).toString() == QLatin1String("success");
        r.data = o.value(QStringLiteral("data"));
        m_replies.insert(o.value(QStringLiteral("request_id")).toInteger(), r);
    }
}

bool MpvIpc::waitForEvent(const QString& name, int waitMs) {
    const QDeadlineTimer deadline(waitMs);
    takeLines();
    while (!m_events.contains(name)) {
        if (!isConnected() || deadline.hasExpired())
            return false;
        m_socket.waitForReadyRead(int(qMax<qint64>(1, deadline.remainingTime())));
        takeLines();
    }
    return true;
}

void MpvIpc::readUntil(const QList<qint64>& wanted, int waitMs) {
    const QDeadlineTimer deadline(waitMs);
    auto complete = [&] {
        for (qint64 id : wanted)
            if (!m_replies.contains(id))
                return false;
        return true;
    };
    takeLines();
    while (!complete()) {
        if (!isConnected() && m_socket.bytesAvailable() == 0)
            throw Unreachable{Failure::Lost};
        if (deadline.hasExpired())
            throw Unreachable{Failure::Timeout};
        m_socket.waitForReadyRead(int(qMax<qint64>(1, deadline.remainingTime())));
        takeLines();
    }
    // Replies to posted commands are never collected; keep the table from growing.
    if (m_replies.size() > 64) {
        for (auto it = m_replies.begin(); it != m_replies.end();)
            it = wanted.contains(it.key()) ? std::next(it) : m_replies.erase(it);
    }
}
