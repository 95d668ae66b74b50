#pragma once

#include <QByteArray>
#include <QHash>
#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QList>
#include <QLocalSocket>
#include <QObject>
#include <QString>
#include <functional>

// One persistent connection to mpv's JSON IPC socket. Requests carry a request_id and replies are
// matched by it, because mpv interleaves event lines with the replies. Lines are taken in as they
// arrive (from the event loop, or while a request waits); events are handed on in the player's order.
// Every wait is bounded.
class MpvIpc : public QObject {
    Q_OBJECT
public:
    struct Reply {
        bool ok = false; // "error":"success"
        QJsonValue data; // the property value of a get_property
    };
    enum class Failure { Lost, Timeout };
    // Thrown when the player went away (EOF, broken pipe) or did not answer in time.
    struct Unreachable {
        Failure failure;
    };

    explicit MpvIpc(QObject* parent = nullptr);
    ~MpvIpc() override;

    // One attempt, waiting at most waitMs for the connection.
    bool connectTo(const QString& socketPath, int waitMs);
    bool isConnected() const;
    void disconnect();
    // The user id of the process at the other end of the socket; -1 when it cannot be told.
    qint64 peerUid() const;
    // Its process id; 0 when it cannot be told.
    qint64 peerPid() const;

    // Sends all commands at once and waits for all their replies (one round trip).
    QList<Reply> requests(const QList<QJsonArray>& commands, int waitMs = kReplyWaitMs);
    Reply request(const QJsonArray& command, int waitMs = kReplyWaitMs);
    // Sends without waiting; the reply arrives later through replied(). Returns the request id.
    qint64 post(const QJsonArray& command);
    // Takes in what has arrived so far, without waiting. Throws Lost when the player has gone.
    void poll();
    // Reads until done() holds or time is up; false when time ran out.
    bool waitUntil(const std::function<bool()>& done, int waitMs);

    // A healthy player answers within a millisecond; this is only the bound for one that hangs.
    static constexpr int kReplyWaitMs = 1000;

signals:
    // An event line ("start-file", "idle", "property-change", ...), in the order the player sent it.
    void eventArrived(const QJsonObject& event);
    // The reply to a posted request.
    void replied(qint64 id, bool ok);
    // Some line arrived: the player is answering.
    void heard();
    // The player closed the connection (it quit or died).
    void lost();

private:
    void write(const QJsonArray& command, qint64 id);
    // Reads complete lines into the reply table until every id in wanted is answered or time is up.
    void readUntil(const QList<qint64>& wanted, int waitMs);
    void takeLines();
    void socketReadable();
    void socketClosed();

    QLocalSocket m_socket;
    QByteArray m_buffer;
    qint64 m_nextId = 1;
    // Ids a caller waits for, and the replies that came for them.
    QList<qint64> m_waitedFor;
    QHash<qint64, Reply> m_replies;
    bool m_closing = false;
};
