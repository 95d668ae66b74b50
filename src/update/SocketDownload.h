#pragma once

#include <QByteArray>
#include <QFile>
#include <QObject>
#include <QPointer>
#include <QString>

class DownloadProgress;
class QTcpSocket;
class QTimer;

// One HTTP/1.0 GET over a plain TCP socket, the body written to a local file. The end of the
// body is the server closing the connection; nothing of the response is checked, an error page is
// saved like any file. One download at a time: every caller closes the previous one first.
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
    static constexpr int TimeoutSeconds = 15;

    explicit SocketDownload(QObject* parent = nullptr);
    ~SocketDownload() override;

    static Target splitAddress(const QString& address);
    static QByteArray buildRequest(const QString& host, const QString& path);

    // Starts the download and returns at once; progress may be null.
    void DownloadFile(const QString& address, const QString& Destination, DownloadProgress* ProgressBarToUse);
    // Resets the progress value, closes socket and file, stops the time-out.
    void CloseDownload();
    // What cancelling or closing the window does: socket and file closed.
    void Cancel();

    QTcpSocket* Winsock1 = nullptr;
    QTimer* TimerTimeout = nullptr;

    qint16 timeoutCount() const { return m_timeoutCount; }
    const QString& headerText() const { return m_headerText; }
    const QByteArray& requestText() const { return m_request; }
    bool isActive() const { return m_file.isOpen(); }

signals:
    // The server closed the connection; socket and file are closed.
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
    void writeBody(const QByteArray& bytes);
    void showProgress();
    void closeSocketAndFile();

    QFile m_file;
    QByteArray m_request;
    QByteArray m_header;
    QString m_headerText;
    bool m_headerPending = false;
    bool m_progressWanted = false;
    QPointer<DownloadProgress> m_progress;
    qint16 m_timeoutCount = 0;
};
