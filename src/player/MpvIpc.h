#pragma once

#include <QByteArray>
#include <QHash>
#include <QJsonArray>
#include <QJsonValue>
#include <QList>
#include <QLocalSocket>
#include <QSet>
#include <QString>

// One persistent connection to mpv's JSON IPC socket. Requests carry a request_id and replies are
// matched by it, because mpv interleaves event lines with the replies. Every wait is bounded.
class MpvIpc {
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

    MpvIpc();
    ~MpvIpc();

    // One attempt, waiting at most waitMs for the connection.
    bool connectTo(const QString& socketPath, int waitMs);
    bool isConnected() const;
    void disconnect();

    // Sends all commands at once and waits for all their replies (one round trip).
    QList<Reply> requests(const QList<QJsonArray>& commands, int waitMs = kReplyWaitMs);
    Reply request(const QJsonArray& command, int waitMs = kReplyWaitMs);
    // Sends without waiting; the reply is skipped when it arrives.
    void post(const QJsonArray& command);
    // Waits until the player has sent the event since the connection was made; false when time ran out.
    bool waitForEvent(const QString& name, int waitMs);

    static constexpr int kReplyWaitMs = 2000;

private:
    void write(const QJsonArray& command, qint64 id);
    // Reads complete lines into the reply table until every id in wanted is answered or time is up.
    void readUntil(const QList<qint64>& wanted, int waitMs);
    void takeLines();

    QLocalSocket m_socket;
    QByteArray m_buffer;
    qint64 m_nextId = 1;
    QHash<qint64, Reply> m_replies;
    QSet<QString> m_events;
};
