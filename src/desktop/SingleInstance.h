#pragma once

#include <QLocalServer>
#include <QObject>
#include <QString>

#ifdef Q_OS_WIN
#include <cstddef>
// Windows has no session bus.
using SessionBus = std::nullptr_t;
#else
#include <QDBusConnection>
using SessionBus = QDBusConnection;
#endif

// One program per user session. A second start hands its command-line words to the running program
// and ends, instead of sharing its player and overwriting its settings at close. The running program
// is found by its name on the session bus, the name desktop player controls know it by, and where
// there is no bus by a local socket in the user's private runtime folder. Windows has no session bus:
// there the local socket (a named pipe of the user's) is the only way.
class SingleInstance : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "example.tavomp3.player.Instance")
public:
    static const QString kBusName;
    static const QString kObjectPath;

    // The user's session bus; nothing on Windows.
    static SessionBus sessionBus();

    // socketPath: "" = no local socket (no private runtime folder).
    SingleInstance(const SessionBus& bus, const QString& socketPath, QObject* parent = nullptr);
    ~SingleInstance() override;

    // The socket in the user's runtime folder, which only the user can enter; "" when there is none.
    static QString defaultSocketPath();

    // True: no other program runs; this one goes on and answers later starts from now on.
    // False: a running program took the words over (show = not "start", play = "play"); this one ends.
    bool claim(bool show, bool play);
    // This program holds the bus name, so it may offer the desktop's player controls.
    bool ownsBusName() const { return m_ownsName; }
    // Set when another program holds the bus name: what to tell the user. The name is left to it.
    const QString& busNameProblem() const { return m_busProblem; }

public slots:
    // A later start's words, over the bus.
    Q_SCRIPTABLE void Activate(bool show, bool play);

signals:
    void activationRequested(bool show, bool play);

private:
#ifndef Q_OS_WIN
    bool handOverOnBus(bool show, bool play);
#endif
    bool handOverLocally(bool show, bool play);
    bool listenLocally();
    void readRequest(class QLocalSocket* socket);

#ifndef Q_OS_WIN
    QDBusConnection m_bus;
#endif
    QString m_socketPath;
    QLocalServer m_server;
    bool m_ownsName = false;
    QString m_busProblem;
};
