#include "desktop/SingleInstance.h"

#include <QDir>
#include <QLocalSocket>
#include <QStandardPaths>

#ifndef Q_OS_WIN
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#endif

const QString SingleInstance::kBusName = QStringLiteral("org.mpris.MediaPlayer2.TavoMP3Player");
const QString SingleInstance::kObjectPath = QStringLiteral("/example/tavomp3/player");

namespace {

const QString kInterface = QStringLiteral("example.tavomp3.player.Instance");
constexpr int kWaitMs = 3000;
// "activate <show> <play>\n"; anything longer is not ours.
constexpr qint64 kMaxRequest = 64;

QByteArray request(bool show, bool play) {
    return QByteArrayLiteral("activate ") + (show ? "1 " : "0 ") + (play ? "1\n" : "0\n");
}

} // namespace

SessionBus SingleInstance::sessionBus() {
#ifdef Q_OS_WIN
    return nullptr;
#else
    return QDBusConnection::sessionBus();
#endif
}

SingleInstance::SingleInstance([[maybe_unused]] const SessionBus& bus, const QString& socketPath,
                               QObject* parent)
    : QObject(parent),
#ifndef Q_OS_WIN
      m_bus(bus),
#endif
      m_socketPath(socketPath) {
    connect(&m_server, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket* socket = m_server.nextPendingConnection()) {
            connect(socket, &QLocalSocket::readyRead, this, [this, socket] { readRequest(socket); });
            connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
            readRequest(socket);
        }
    });
}

SingleInstance::~SingleInstance() {
#ifndef Q_OS_WIN
    if (m_ownsName)
        m_bus.interface()->unregisterService(kBusName);
#endif
}

QString SingleInstance::defaultSocketPath() {
#ifdef Q_OS_WIN
    // A named pipe: one name per user, and QLocalServer::UserAccessOption lets only that user in.
    return QStringLiteral("TavoMP3Player.instance.") + qEnvironmentVariable("USERNAME");
#else
    // Qt makes sure the folder belongs to the user and only the user may enter it, or gives none.
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return folder.isEmpty() ? QString() : QDir(folder).filePath(QStringLiteral("TavoMP3Player.instance"));
#endif
}

bool SingleInstance::claim(bool show, bool play) {
#ifndef Q_OS_WIN
    if (m_bus.isConnected() && handOverOnBus(show, play))
        return false;
#endif
    if (handOverLocally(show, play))
        return false;
#ifndef Q_OS_WIN
    if (m_bus.isConnected() && m_busProblem.isEmpty()) {
        m_bus.registerObject(kObjectPath, this, QDBusConnection::ExportScriptableSlots);
        const auto reply =
            m_bus.interface()->registerService(kBusName, QDBusConnectionInterface::DontQueueService,
                                               QDBusConnectionInterface::DontAllowReplacement);
        m_ownsName = reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceRegistered;
        // Another start was quicker.
        if (!m_ownsName && handOverOnBus(show, play))
            return false;
    }
#endif
    if (listenLocally())
        return true;
    // Another start has begun to listen in the meantime.
    return !handOverLocally(show, play);
}

#ifndef Q_OS_WIN
bool SingleInstance::handOverOnBus(bool show, bool play) {
    if (!m_bus.interface()->isServiceRegistered(kBusName))
        return false;
    QDBusMessage call =
        QDBusMessage::createMethodCall(kBusName, kObjectPath, kInterface, QStringLiteral("Activate"));
    call << show << play;
    const QDBusMessage reply = m_bus.call(call, QDBus::Block, kWaitMs);
    if (reply.type() == QDBusMessage::ReplyMessage)
        return true;
    m_busProblem =
        QStringLiteral("Der Name \"") + kBusName +
        QStringLiteral("\" auf dem Sitzungsbus gehört schon einem anderen Programm. Tavo MP3 Player "
                       "läuft trotzdem, aber ohne die Mediensteuerung des Desktops (Medientasten, "
                       "playerctl); das andere Programm behält den Namen.");
    return false;
}
#endif

bool SingleInstance::handOverLocally(bool show, bool play) {
    if (m_socketPath.isEmpty())
        return false;
    // Only a running program accepts: the socket of one that died refuses the connection.
    QLocalSocket socket;
    socket.connectToServer(m_socketPath);
    if (!socket.waitForConnected(kWaitMs))
        return false;
    socket.write(request(show, play));
    const bool sent = socket.waitForBytesWritten(kWaitMs);
    socket.disconnectFromServer();
    return sent;
}

bool SingleInstance::listenLocally() {
    if (m_socketPath.isEmpty())
        return true;
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    if (m_server.listen(m_socketPath))
        return true;
    // Left behind by a program that is gone, unless another start has just begun to listen.
    if (m_server.serverError() == QAbstractSocket::AddressInUseError) {
        QLocalSocket probe;
        probe.connectToServer(m_socketPath);
        if (probe.waitForConnected(kWaitMs))
            return false;
        QLocalServer::removeServer(m_socketPath);
        if (m_server.listen(m_socketPath))
            return true;
    }
    qWarning("TavoMP3Player: no local socket for later starts at %s: %s", qPrintable(m_socketPath),
             qPrintable(m_server.errorString()));
    return true;
}

void SingleInstance::readRequest(QLocalSocket* socket) {
    if (!socket->canReadLine()) {
        if (socket->bytesAvailable() > kMaxRequest)
            socket->abort();
        return;
    }
    const QList<QByteArray> words = socket->readLine(kMaxRequest).trimmed().split(' ');
    socket->disconnectFromServer();
    if (words.size() == 3 && words[0] == "activate")
        emit activationRequested(words[1] == "1", words[2] == "1");
}

void SingleInstance::Activate(bool show, bool play) {
    emit activationRequested(show, play);
}
