#include "update/SocketDownload.h"

#include "update/DownloadProgress.h"

#include <QNetworkProxy>
#include <QSignalBlocker>
#include <QTcpSocket>
#include <QTimer>

namespace {

const QString kPathMark = QStringLiteral("_$-$_$-");
const QString kHostMark = QStringLiteral("@$@@$@");
const QString kCrLf = QStringLiteral("\r\n");

QString requestTemplate() {
    return QStringLiteral("GET ") + kPathMark + QStringLiteral(" HTTP/1.0") + kCrLf +
           QStringLiteral("Accept: image/gif, image/x-xbitmap, image/jpeg, ") +
           QStringLiteral("image/pjpeg, application/vnd.ms-powerpoint, ") +
           QStringLiteral("application/vnd.ms-excel, application/msword, ") +
           QStringLiteral("application/x-comet, */*") + kCrLf + QStringLiteral("Accept-Language: en") +
           kCrLf + QStringLiteral("Accept-Encoding: gzip , deflate") + kCrLf +
           QStringLiteral("Cache-Control: no-cache") + kCrLf +
           QStringLiteral("Proxy-Connection: Keep-Alive") + kCrLf +
           QStringLiteral("User-Agent: SSM Agent 1.0") + kCrLf + QStringLiteral("Host: ") + kHostMark + kCrLf;
}

// The body's length as the header states it; -1 when the header names none or no number.
qint64 contentLength(const QString& header) {
    const QString key = QStringLiteral("Content-Length: ");
    const int at = header.indexOf(key);
    if (at < 0)
        return -1;
    const int from = at + key.size();
    const int cr = header.indexOf(QLatin1Char('\r'), from);
    bool ok = false;
    const qint64 value = header.mid(from, cr < 0 ? -1 : cr - from).trimmed().toLongLong(&ok);
    return ok && value >= 0 ? value : -1;
}

} // namespace

SocketDownload::SocketDownload(QObject* parent) : QObject(parent) {
    Winsock1 = new QTcpSocket(this);
    Winsock1->setObjectName(QStringLiteral("Winsock1"));
    Winsock1->setProxy(QNetworkProxy::NoProxy);
    TimerTimeout = new QTimer(this);
    TimerTimeout->setObjectName(QStringLiteral("TimerTimeout"));
    TimerTimeout->setInterval(1000);
    connect(Winsock1, &QTcpSocket::connected, this, &SocketDownload::onConnected);
    connect(Winsock1, &QTcpSocket::readyRead, this, &SocketDownload::onReadyRead);
    connect(Winsock1, &QTcpSocket::disconnected, this, &SocketDownload::onDisconnected);
    connect(TimerTimeout, &QTimer::timeout, this, &SocketDownload::onTimeoutTick);
}

SocketDownload::~SocketDownload() {
    Winsock1->disconnect(this);
    Winsock1->abort();
}

SocketDownload::Target SocketDownload::splitAddress(const QString& address) {
    Target t;
    const QString rest = address.mid(7); // the scheme is not checked
    const int slash = rest.indexOf(QLatin1Char('/'));
    if (slash >= 0) {
        t.host = rest.left(slash);
        t.path = rest.mid(slash);
    } else {
        t.host = rest;
        t.path = QStringLiteral("/");
    }
    t.connectHost = t.host;
    const int colon = t.host.lastIndexOf(QLatin1Char(':'));
    if (colon >= 0) {
        bool ok = false;
        const uint port = t.host.mid(colon + 1).toUInt(&ok);
        if (ok && port > 0 && port <= 65535) {
            t.connectHost = t.host.left(colon);
            t.port = quint16(port);
        }
    }
    return t;
}

QByteArray SocketDownload::buildRequest(const QString& host, const QString& path) {
    QString request = requestTemplate();
    request.replace(kPathMark, path, Qt::CaseSensitive);
    request.replace(kHostMark, host, Qt::CaseSensitive);
    request += kCrLf;
    return request.toLatin1();
}

void SocketDownload::DownloadFile(const QString& address, const QString& Destination,
                                  DownloadProgress* ProgressBarToUse) {
    // A caller that skipped CloseDownload must not get the old connection's end reported.
    closeSocketAndFile();
    QFile::remove(Destination); // a missing file is fine
    m_timeoutCount = 0;
    TimerTimeout->start();
    m_progress = ProgressBarToUse;
    m_progressWanted = ProgressBarToUse != nullptr;

    const Target target = splitAddress(address);
    m_request = buildRequest(target.host, target.path);

    m_file.setFileName(Destination);
    // A destination that cannot be written leaves the file closed; the time-out then ends the
    // attempt like any other failure.
    m_file.open(QIODevice::WriteOnly | QIODevice::Truncate);
    m_header.clear();
    m_headerText.clear();
    m_headerPending = true;

    Winsock1->connectToHost(target.connectHost, target.port);
}

void SocketDownload::CloseDownload() {
    if (m_progressWanted && m_progress)
        m_progress->setValue(0);
    closeSocketAndFile();
    TimerTimeout->stop();
}

void SocketDownload::Cancel() {
    closeSocketAndFile();
}

void SocketDownload::closeSocketAndFile() {
    // Closing from our side is not the server's end of the body.
    const QSignalBlocker quiet(Winsock1);
    Winsock1->abort();
    if (m_file.isOpen())
        m_file.close();
}

void SocketDownload::onConnected() {
    Winsock1->write(m_request);
}

void SocketDownload::onReadyRead() {
    readAvailable();
}

// The socket does not announce data it already holds a second time, so everything buffered is
// handled here in the same pieces a fresh announcement would have delivered.
void SocketDownload::readAvailable() {
    while (Winsock1->bytesAvailable() > 0) {
        m_timeoutCount = 0;
        if (m_headerPending) {
            handleHeaderChunk();
        } else {
            writeBody(Winsock1->readAll());
        }
        showProgress();
    }
}

void SocketDownload::handleHeaderChunk() {
    // The first piece is capped so that the header is looked at on its own; a header longer than
    // that is completed from the following pieces until the blank line arrives.
    const qint64 limit = m_header.isEmpty() ? FirstChunkLimit : Winsock1->bytesAvailable();
    m_header += Winsock1->read(limit);
    const int end = m_header.indexOf("\r\n\r\n");
    if (end < 0) {
        m_headerText = QString::fromLatin1(m_header);
        return;
    }
    const QByteArray body = m_header.mid(end + 4);
    m_header.truncate(end + 4);
    m_headerText = QString::fromLatin1(m_header);

    if (m_progressWanted && m_progress) {
        const qint64 length = contentLength(m_headerText);
        // Without a usable length the bar has no maximum: the window shows it as busy.
        m_progress->setMax(length < 0 ? 0 : length);
    }
    // A body part of a single byte in the first piece is dropped, as the program always did:
    // only a part of two bytes or more is counted and written.
    if (body.size() > 1) {
        if (m_progressWanted && m_progress)
            m_progress->setValue(m_progress->Value() + body.size());
        if (m_file.isOpen())
            m_file.write(body);
    }
    m_headerPending = false;
}

void SocketDownload::writeBody(const QByteArray& bytes) {
    if (m_file.isOpen())
        m_file.write(bytes);
    if (m_progressWanted && m_progress)
        m_progress->setValue(m_progress->Value() + bytes.size());
}

void SocketDownload::showProgress() {
    if (!m_progressWanted || !m_progress)
        return;
    emit progressTextChanged(DownloadProgress::infoText(m_progress->Value(), m_progress->Max()),
                             DownloadProgress::percentText(m_progress->Value(), m_progress->Max()));
}

void SocketDownload::onDisconnected() {
    // Data that came with the close is still in the socket.
    readAvailable();
    closeSocketAndFile();
    TimerTimeout->stop();
    emit downloadClosed();
}

void SocketDownload::onTimeoutTick() {
    ++m_timeoutCount;
    emit timeoutCountChanged(m_timeoutCount);
    if (m_timeoutCount >= TimeoutSeconds) {
        CloseDownload();
        emit timedOut();
    }
}
