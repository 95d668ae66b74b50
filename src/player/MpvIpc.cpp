#include "player/MpvIpc.h"

#include <QDeadlineTimer>
#include <QJsonDocument>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/socket.h>
#include <sys/stat.h>
#endif

MpvIpc::MpvIpc(QObject* parent) : QObject(parent) {
#ifdef Q_OS_UNIX
    // A write to a player that just died must fail with EPIPE, not end this process.
    std::signal(SIGPIPE, SIG_IGN);
#endif
    // Handlers of socket signals: nothing may escape into the event loop.
    connect(&m_socket, &QLocalSocket::readyRead, this, &MpvIpc::socketReadable);
    connect(&m_socket, &QLocalSocket::disconnected, this, &MpvIpc::socketClosed);
}

MpvIpc::~MpvIpc() {
    m_closing = true;
}

bool MpvIpc::connectTo(const QString& socketPath, int waitMs) {
    disconnect();
    m_socket.connectToServer(socketPath);
    if (m_socket.state() != QLocalSocket::ConnectedState && !m_socket.waitForConnected(waitMs)) {
        disconnect();
        return false;
    }
    return true;
}

bool MpvIpc::isConnected() const {
    return m_socket.state() == QLocalSocket::ConnectedState;
}

void MpvIpc::disconnect() {
    m_closing = true;
    // Posted commands (quit above all) must reach the player before the connection goes; they
    // wait in the socket for a player that hangs and are read when it goes on.
    if (isConnected() && m_socket.bytesToWrite() > 0)
        m_socket.waitForBytesWritten(500);
    m_socket.abort();
    m_buffer.clear();
    m_replies.clear();
    m_waitedFor.clear();
    m_closing = false;
}

qint64 MpvIpc::peerUid() const {
#if defined(Q_OS_LINUX)
    ucred cred{};
    socklen_t length = sizeof cred;
    if (::getsockopt(int(m_socket.socketDescriptor()), SOL_SOCKET, SO_PEERCRED, &cred, &length) == 0)
        return qint64(cred.uid);
    return -1;
#elif defined(Q_OS_UNIX)
    // Without peer credentials: the owner of the socket file, which lies in a folder only we can enter.
    struct stat info {};
    if (::stat(m_socket.fullServerName().toLocal8Bit().constData(), &info) == 0)
        return qint64(info.st_uid);
    return -1;
#else
    return -1;
#endif
}

qint64 MpvIpc::peerPid() const {
#if defined(Q_OS_LINUX)
    ucred cred{};
    socklen_t length = sizeof cred;
    if (::getsockopt(int(m_socket.socketDescriptor()), SOL_SOCKET, SO_PEERCRED, &cred, &length) == 0)
        return qint64(cred.pid);
#endif
    return 0;
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

qint64 MpvIpc::post(const QJsonArray& command) {
    const qint64 id = m_nextId++;
    write(command, id);
    return id;
}

MpvIpc::Reply MpvIpc::request(const QJsonArray& command, int waitMs) {
    return requests({command}, waitMs).first();
}

QList<MpvIpc::Reply> MpvIpc::requests(const QList<QJsonArray>& commands, int waitMs) {
    QList<qint64> ids;
    for (const QJsonArray& c : commands) {
        ids << m_nextId;
        m_waitedFor << m_nextId;
        write(c, m_nextId++);
    }
    auto forget = [&] {
        for (qint64 id : ids)
            m_waitedFor.removeOne(id);
    };
    try {
        readUntil(ids, waitMs);
    } catch (...) {
        // A late reply to these is dropped when it comes.
        forget();
        throw;
    }
    forget();
    QList<Reply> replies;
    for (qint64 id : ids)
        replies << m_replies.take(id);
    return replies;
}

void MpvIpc::takeLines() {
    if (m_socket.isOpen())
        m_buffer.append(m_socket.readAll());
    qsizetype end;
    while ((end = m_buffer.indexOf('\n')) >= 0) {
        const QJsonObject o = QJsonDocument::fromJson(m_buffer.left(end)).object();
        m_buffer.remove(0, end + 1);
        emit heard();
        if (o.contains(QStringLiteral("event"))) {
            emit eventArrived(o);
            continue;
        }
        if (!o.contains(QStringLiteral("request_id")))
            continue;
        const qint64 id = o.value(QStringLiteral("request_id")).toInteger();
        Reply r;
        r.ok = o.value(QStringLiteral("error")).toString() == QLatin1String("success");
        r.data = o.value(QStringLiteral("data"));
        if (m_waitedFor.contains(id))
            m_replies.insert(id, r);
        else
            emit replied(id, r.ok);
    }
}

void MpvIpc::poll() {
    if (m_socket.state() == QLocalSocket::UnconnectedState && m_socket.bytesAvailable() == 0)
        throw Unreachable{Failure::Lost};
    // Zero wait: takes in what is there and notices a closed connection, which shows only once the
    // data in front of it is read, without blocking.
    while (m_socket.waitForReadyRead(0))
        takeLines();
    takeLines();
    if (!isConnected() && m_socket.bytesAvailable() == 0)
        throw Unreachable{Failure::Lost};
}

bool MpvIpc::waitUntil(const std::function<bool()>& done, int waitMs) {
    const QDeadlineTimer deadline(waitMs);
    takeLines();
    while (!done()) {
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
}

void MpvIpc::socketReadable() {
    try {
        takeLines();
    } catch (...) {
        // Only the receivers of the signals above can fail here, and they report for themselves.
    }
}

void MpvIpc::socketClosed() {
    if (m_closing)
        return;
    try {
        takeLines(); // what the player said before it went is still read
        emit lost();
    } catch (...) {
    }
}
