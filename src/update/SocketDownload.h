#pragma once

#include <QByteArray>
#include <QFile>
#include <QObject>
#include <QPointer>
#include <QString>

class Dialogs;
class DownloadProgress;
class QTcpSocket;
class QTimer;

// One HTTP/1.0 GET over a plain TCP socket. The body is streamed into "<Destination>.part"; the
// destination itself is only replaced by commit(), which the caller does after checking the file.
// The answer must be "200" with a Content-Length no larger than sizeLimit, and exactly that many
// bytes must arrive before the server closes; anything else is refused (failure() says why in
// German) and the partial file is removed. One download at a time: a new one drops the old one.
class SocketDownload : public QObject {
    Q_OBJECT
public:
    // Where an address points: "http://host[:port]/path". The port part is our addition so that
    // a server on another port than 80 can be named.
    struct Target {
        QString host; // as written in the address, a port included (this is what "Host:" carries)
        QString path;
        QString connectHost;
        quint16 port = 80;
    };

    static constexpr int FirstChunkLimit = 350;
    static constexpr int MaxHeaderBytes = 8 * 1024;
    static constexpr int TimeoutSeconds = 15;
    static constexpr qint64 DefaultSizeLimit = 256 * 1024 * 1024;

    explicit SocketDownload(Dialogs& dialogs, QObject* parent = nullptr);
    ~SocketDownload() override;

    static Target splitAddress(const QString& address);
    static QByteArray buildRequest(const QString& host, const QString& path);

    // Starts the download and returns at once; progress may be null. A part file that cannot be
    // created raises a RuntimeError, and nothing is sent.
    void DownloadFile(const QString& address, const QString& Destination, DownloadProgress* ProgressBarToUse);
    // Resets the progress value, closes socket and file, stops the time-out, drops the part file.
    void CloseDownload();
    // What cancelling or closing the window does: the same as CloseDownload.
    void Cancel() { CloseDownload(); }

    // The largest body the next download accepts.
    qint64 sizeLimit = DefaultSizeLimit;

    // After downloadClosed: empty when the answer was complete, else why it was refused.
    const QString& failure() const { return m_failure; }
    // Where the body is being written, and where it goes on commit().
    const QString& partFile() const { return m_partName; }
    const QString& destination() const { return m_destination; }
    // Moves the finished part file onto the destination in one step; an error text, or empty.
    QString commit();
    // Drops a finished part file that did not pass the caller's checks.
    void discard() { QFile::remove(m_partName); }

    QTcpSocket* Winsock1 = nullptr;
    QTimer* TimerTimeout = nullptr;

    qint16 timeoutCount() const { return m_timeoutCount; }
    const QString& headerText() const { return m_headerText; }
    const QByteArray& requestText() const { return m_request; }
    bool isActive() const { return m_file.isOpen(); }

signals:
    // The server closed the connection, or the answer was refused; socket and file are closed.
    void downloadClosed();
    // The time-out count changed (shown beside "Timeout:").
    void timeoutCountChanged(int count);
    // Fifteen seconds passed without connection or data; the download is closed.
    void timedOut();
    // New progress texts; empty percent = leave the per-cent display as it is.
    void progressTextChanged(const QString& info, const QString& percent);

private:
    void onConnected();
    void onReadyRead();
    void onDisconnected();
    void onTimeoutTick();
    void readAvailable();
    void handleHeaderChunk();
    bool acceptHeader();
    void writeBody(const QByteArray& bytes);
    void showProgress();
    void closeSocketAndFile();
    void refuse(const QString& why);

    Dialogs& m_dialogs;
    QFile m_file;
    QString m_destination;
    QString m_partName;
    QString m_failure;
    QByteArray m_request;
    QByteArray m_header;
    QString m_headerText;
    bool m_headerPending = false;
    qint64 m_expected = 0;
    qint64 m_received = 0;
    bool m_progressWanted = false;
    QPointer<DownloadProgress> m_progress;
    qint16 m_timeoutCount = 0;
};
