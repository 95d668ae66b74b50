#pragma once

#include <QDBusConnection>
#include <QLocalServer>
#include <QObject>
#include <QString>

// One program per user session. A second start hands its command-line words to the running program
// and ends, instead of sharing its player and overwriting its settings at close. The running program
// is found by its name on the session bus, the name desktop player controls know it by, and where
// there is no bus by a local socket in the user's private runtime folder.
class SingleInstance : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "example.tavomp3.player.Instance")
public:
    static const QString kBusName;
    static const QString kObjectPath;

    // socketPath: "" = no local socket (no private runtime folder).
    SingleInstance(const QDBusConnection& bus, const QString& socketPath, QObject* parent = nullptr);
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
    bool handOverOnBus(bool show, bool play);
    bool handOverLocally(bool show, bool play);
    bool listenLocally();
    void readRequest(class QLocalSocket* socket);

    QDBusConnection m_bus;
    QString m_socketPath;
    QLocalServer m_server;
    bool m_ownsName = false;
    QString m_busProblem;
};
