#pragma once

#include <QDBusAbstractAdaptor>
#include <QStringList>

class WindowRequests;

// org.mpris.MediaPlayer2: who we are for the desktop's player controls, and Raise/Quit.
class MprisRootAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2")
    Q_PROPERTY(bool CanQuit READ canQuit)
    Q_PROPERTY(bool CanRaise READ canRaise)
    Q_PROPERTY(bool HasTrackList READ hasTrackList)
    Q_PROPERTY(QString Identity READ identity)
    Q_PROPERTY(QString DesktopEntry READ desktopEntry)
    Q_PROPERTY(QStringList SupportedUriSchemes READ supportedUriSchemes)
    Q_PROPERTY(QStringList SupportedMimeTypes READ supportedMimeTypes)
public:
    MprisRootAdaptor(QObject* exported, WindowRequests& window);

    bool canQuit() const { return true; }
    bool canRaise() const { return true; }
    bool hasTrackList() const { return false; }
    QString identity() const { return QStringLiteral("Tavo MP3 Player"); }
    // The installed .desktop file's name without ".desktop".
    QString desktopEntry() const { return QStringLiteral("example.tavomp3.player"); }
    QStringList supportedUriSchemes() const { return {QStringLiteral("file")}; }
    QStringList supportedMimeTypes() const { return {QStringLiteral("audio/mpeg")}; }

public slots:
    // Shows the main window, also from the notification area.
    void Raise();
    // Closes the main window as "Beenden" does, with its question about a changed playlist.
    void Quit();

private:
    WindowRequests& m_window;
};
