#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QElapsedTimer>
#include <QHash>
#include <QVariantMap>
#include <functional>

class PlaybackController;
class PlaylistManager;
class WindowRequests;
struct Services;

// org.mpris.MediaPlayer2.Player: the desktop's media keys and player controls (GNOME, KDE, playerctl).
// The commands are the transport routines of the buttons and the tray menu, so Next honours shuffle
// and priorities and Previous the history; each runs after the caller has its answer, under the
// program's error report. Status, song, volume and shuffle are announced with PropertiesChanged
// whenever they change, also when a song ends and the next one starts by itself. It knows the
// playback and the playlists, never a window.
class MprisPlayerAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2.Player")
    Q_PROPERTY(QString PlaybackStatus READ playbackStatus)
    Q_PROPERTY(double Rate READ rate WRITE setRate)
    Q_PROPERTY(QVariantMap Metadata READ metadata)
    Q_PROPERTY(double Volume READ volume WRITE setVolume)
    Q_PROPERTY(qlonglong Position READ position)
    Q_PROPERTY(double MinimumRate READ rate)
    Q_PROPERTY(double MaximumRate READ rate)
    Q_PROPERTY(bool Shuffle READ shuffle WRITE setShuffle)
    Q_PROPERTY(bool CanGoNext READ canControl)
    Q_PROPERTY(bool CanGoPrevious READ canControl)
    Q_PROPERTY(bool CanPlay READ canControl)
    Q_PROPERTY(bool CanPause READ canControl)
    Q_PROPERTY(bool CanSeek READ canSeek)
    Q_PROPERTY(bool CanControl READ canControl)
public:
    static const QString kObjectPath;

    // Commands are refused while no player runs and none can be started.
    MprisPlayerAdaptor(QObject* exported, PlaybackController& playback, PlaylistManager& playlists,
                       Services& services, const QDBusConnection& bus);

    // Exports both MPRIS interfaces on the bus, whose name the caller already holds; the exported
    // object is a child of parent.
    static QObject* publish(QObject* parent, PlaybackController& playback, PlaylistManager& playlists,
                            Services& services, WindowRequests& window, const QDBusConnection& bus);

    // How a PropertiesChanged signal leaves; tests take it instead of the bus.
    std::function<void(const QDBusMessage&)> send;

    QString playbackStatus() const;
    double rate() const { return 1.0; }
    void setRate(double) {}
    QVariantMap metadata() const;
    // The volume 0..255 as 0.0..1.0.
    double volume() const;
    void setVolume(double volume);
    qlonglong position() const;
    bool shuffle() const;
    void setShuffle(bool on);
    bool canControl() const { return true; }
    bool canSeek() const { return false; }

    // The object path of a playlist entry as mpris:trackid.
    static QDBusObjectPath trackId(int playlist, qint32 index);

public slots:
    // call: the bus message, to answer it with an error; an empty one when not called over the bus.
    void Next(const QDBusMessage& call);
    void Previous(const QDBusMessage& call);
    void Pause(const QDBusMessage& call);
    void PlayPause(const QDBusMessage& call);
    void Stop(const QDBusMessage& call);
    void Play(const QDBusMessage& call);
    void Seek(qlonglong) {}
    void SetPosition(const QDBusObjectPath&, qlonglong) {}
    void OpenUri(const QString& uri, const QDBusMessage& call);

signals:
    void Seeked(qlonglong position);

private:
    // 0 stopped, 1 playing, 3 paused, as the player says now.
    int playerStatus() const;
    // Runs a command after the caller's answer, under the error report; refused without a player.
    void run(const char* command, const QDBusMessage& call, std::function<void()> body,
             bool needsPlayer = true);
    // The text goes to the status line and, over the bus, back to the caller as the error.
    void refuse(const QString& text, const QDBusMessage& call);
    void announceChanges();
    QVariantMap current() const;
    // The exact length of a song, from its MPEG frames, worked out in the background once per song.
    void measure(const QString& file);

    PlaybackController& m_playback;
    PlaylistManager& m_playlists;
    Services& m_services;
    // Lengths in microseconds by file (0: not an MP3 the frame reader knows; the player's figure then).
    QHash<QString, qint64> m_lengths;
    QString m_measuring;
    // A new song's metadata waits for its length, so that the desktop hears title and length in one
    // change; bounded by kLengthWaitMs.
    QElapsedTimer m_newTrackSince;
    QDBusConnection m_bus;
    QVariantMap m_announced;
};
