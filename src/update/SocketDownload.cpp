#include "update/SocketDownload.h"

#include "base/ErrorReport.h"
#include "base/RuntimeError.h"
#include "update/DownloadProgress.h"

#include <QNetworkProxy>
#include <QSignalBlocker>
#include <QTcpSocket>
#include <QTimer>
#include <filesystem>
#include <system_error>

namespace {

const QString kPathMark = QStringLiteral("_$-$_$-");
const QString kHostMark = QStringLiteral("@$@@$@");
const QString kCrLf = QStringLiteral("\r\n");
// The socket never holds more than this much unread, whatever the server sends.
constexpr qint64 kPiece = 64 * 1024;

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
qint64 contentLength(const QByteArray& header) {
    for (const QByteArray& line : header.split('\n')) {
        const qsizetype colon = line.indexOf(':');
        if (colon < 0 || line.left(colon).trimmed().toLower() != "content-length")
            continue;
        bool ok = false;
        const qint64 value = line.mid(colon + 1).trimmed().toLongLong(&ok);
        return ok && value >= 0 ? value : -1;
    }
    return -1;
}

QString bytes(qint64 n) {
    return QString::number(n) + QStringLiteral(" Bytes");
}

} // namespace

SocketDownload::SocketDownload(Dialogs& dialogs, QObject* parent) : QObject(parent), m_dialogs(dialogs) {
    Winsock1 = new QTcpSocket(this);
    Winsock1->setObjectName(QStringLiteral("Winsock1"));
    Winsock1->setProxy(QNetworkProxy::NoProxy);
    Winsock1->setReadBufferSize(kPiece);
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
    CloseDownload();
    m_destination = Destination;
    m_partName = Destination + QStringLiteral(".part");
    m_failure.clear();
    m_file.setFileName(m_partName);
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        throw RuntimeError(RuntimeError::PathFileAccess,
                           QStringLiteral("Die Datei \"") + m_partName +
                               QStringLiteral("\" kann nicht geschrieben werden (") + m_file.errorString() +
                               QStringLiteral("). Das Update wurde abgebrochen."));
    m_timeoutCount = 0;
    TimerTimeout->start();
    m_progress = ProgressBarToUse;
    m_progressWanted = ProgressBarToUse != nullptr;

    const Target target = splitAddress(address);
    m_request = buildRequest(target.host, target.path);
    m_header.clear();
    m_headerText.clear();
    m_headerPending = true;
    m_expected = 0;
    m_received = 0;

    Winsock1->connectToHost(target.connectHost, target.port);
}

void SocketDownload::CloseDownload() {
    if (m_progressWanted && m_progress)
        m_progress->setValue(0);
    const bool receiving = m_file.isOpen();
    closeSocketAndFile();
    TimerTimeout->stop();
    if (receiving)
        QFile::remove(m_partName);
}

void SocketDownload::closeSocketAndFile() {
    // Closing from our side is not the server's end of the body.
    const QSignalBlocker quiet(Winsock1);
    Winsock1->abort();
    if (m_file.isOpen())
        m_file.close();
}

QString SocketDownload::commit() {
    std::error_code error;
    std::filesystem::rename(std::filesystem::path(m_partName.toStdU16String()),
                            std::filesystem::path(m_destination.toStdU16String()), error);
    if (!error)
        return QString();
    QFile::remove(m_partName);
    return QStringLiteral("\"") + m_destination + QStringLiteral("\" kann nicht ersetzt werden (") +
           QString::fromLocal8Bit(error.message()) + QStringLiteral(").");
}

void SocketDownload::refuse(const QString& why) {
    m_failure = why;
    closeSocketAndFile();
    TimerTimeout->stop();
    QFile::remove(m_partName);
    emit downloadClosed();
}

void SocketDownload::onConnected() {
    ErrorReport::guard(m_dialogs, QStringLiteral("Winsock1_Connect"), [this](int& line) {
        line = 1;
        Winsock1->write(m_request);
    });
}

void SocketDownload::onReadyRead() {
    ErrorReport::guard(m_dialogs, QStringLiteral("Winsock1_DataArrival"), [this](int& line) {
        line = 1;
        readAvailable();
    });
}

// The socket does not announce data it already holds a second time, so everything buffered is
// handled here in the same pieces a fresh announcement would have delivered.
void SocketDownload::readAvailable() {
    while (m_file.isOpen() && Winsock1->bytesAvailable() > 0) {
        m_timeoutCount = 0;
        if (m_headerPending)
            handleHeaderChunk();
        else
            writeBody(Winsock1->read(kPiece));
        showProgress();
    }
}

void SocketDownload::handleHeaderChunk() {
    // The first piece is capped so that the header is looked at on its own; a header longer than
    // that is completed from the following pieces, up to a bound, until the blank line arrives.
    const qint64 limit = m_header.isEmpty() ? FirstChunkLimit : MaxHeaderBytes - m_header.size();
    m_header += Winsock1->read(limit);
    const qsizetype end = m_header.indexOf("\r\n\r\n");
    if (end < 0) {
        m_headerText = QString::fromLatin1(m_header);
        if (m_header.size() >= MaxHeaderBytes)
            refuse(QStringLiteral("Die Antwort des Update-Servers hat keinen gültigen Kopf."));
        return;
    }
    const QByteArray body = m_header.mid(end + 4);
    m_header.truncate(end + 4);
    m_headerText = QString::fromLatin1(m_header);
    m_headerPending = false;
    if (!acceptHeader())
        return;
    // A body part of a single byte in the first piece is dropped, as the program always did:
    // only a part of two bytes or more is counted and written. The length check then refuses the file.
    if (body.size() > 1)
        writeBody(body);
}

bool SocketDownload::acceptHeader() {
    const QByteArray status = m_header.left(m_header.indexOf("\r\n"));
    const QList<QByteArray> words = status.split(' ');
    if (words.size() < 2 || !words.at(0).startsWith("HTTP/") || words.at(1) != "200") {
        refuse(QStringLiteral("Der Update-Server antwortete \"") +
               QString::fromLatin1(status.left(80)).simplified() + QStringLiteral("\" statt mit der Datei."));
        return false;
    }
    m_expected = contentLength(m_header);
    if (m_expected < 0) {
        refuse(QStringLiteral("Der Update-Server nannte keine Größe der Datei (Content-Length)."));
        return false;
    }
    if (m_expected > sizeLimit) {
        refuse(QStringLiteral("Die Datei ist größer als erwartet (") + bytes(m_expected) +
               QStringLiteral(" statt höchstens ") + bytes(sizeLimit) + QStringLiteral(")."));
        return false;
    }
    if (m_progressWanted && m_progress)
        m_progress->setMax(m_expected);
    return true;
}

void SocketDownload::writeBody(const QByteArray& piece) {
    if (m_received + piece.size() > m_expected) {
        refuse(QStringLiteral("Der Update-Server sandte mehr als die angekündigten ") + bytes(m_expected) +
               QStringLiteral("."));
        return;
    }
    if (m_file.write(piece) != piece.size()) {
        refuse(QStringLiteral("Die Datei \"") + m_partName +
               QStringLiteral("\" kann nicht geschrieben werden (") + m_file.errorString() +
               QStringLiteral(")."));
        return;
    }
    m_received += piece.size();
    if (m_progressWanted && m_progress)
        m_progress->setValue(m_progress->Value() + piece.size());
}

void SocketDownload::showProgress() {
    if (!m_progressWanted || !m_progress)
        return;
    emit progressTextChanged(DownloadProgress::infoText(m_progress->Value(), m_progress->Max()),
                             DownloadProgress::percentText(m_progress->Value(), m_progress->Max()));
}

void SocketDownload::onDisconnected() {
    ErrorReport::guard(m_dialogs, QStringLiteral("Winsock1_Close"), [this](int& line) {
        line = 1;
        readAvailable(); // data that came with the close is still in the socket
        if (!m_file.isOpen())
            return; // already refused and reported
        line = 2;
        if (m_headerPending) {
            refuse(QStringLiteral("Die Verbindung endete vor dem Ende des Antwortkopfs."));
            return;
        }
        if (m_received != m_expected) {
            refuse(QStringLiteral("Die Übertragung ist unvollständig (") + bytes(m_received) +
                   QStringLiteral(" von ") + bytes(m_expected) + QStringLiteral(")."));
            return;
        }
        line = 3;
        closeSocketAndFile();
        TimerTimeout->stop();
        emit downloadClosed();
    });
}

void SocketDownload::onTimeoutTick() {
    ErrorReport::guard(m_dialogs, QStringLiteral("TimerTimeout_Timer"), [this](int& line) {
        line = 1;
        ++m_timeoutCount;
        emit timeoutCountChanged(m_timeoutCount);
        if (m_timeoutCount >= TimeoutSeconds) {
            line = 2;
            CloseDownload();
            emit timedOut();
        }
    });
}
