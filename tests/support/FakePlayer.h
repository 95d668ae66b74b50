#pragma once

#include "player/PlayerLink.h"

#include <QHash>
#include <QList>
#include <QStringList>

// A player that lives in memory: its own list, status, position and volume, moved on by the test
// through advance(). It records every routine called, so tests can check what reached the player
// and in which order. A closed player answers every query with 0, like a window that is gone.
class FakePlayer : public PlayerLink {
    Q_OBJECT
public:
    enum Status : qint32 { Stopped = 0, Playing = 1, Paused = 3 };

    explicit FakePlayer(StatusLine& status, QObject* parent = nullptr) : PlayerLink(status, parent) {}

    // What the player holds.
    QStringList list;
    int current = -1; // entry Play starts, -1 = none
    Status status = Stopped;
    qint64 positionMs = 0;
    int volume = -1; // never set
    bool running = true;
    int startCount = 0;

    // Per file: length in seconds; files not listed last defaultLengthSeconds.
    QHash<QString, int> lengthSeconds;
    int defaultLengthSeconds = 180;

    // The call log: "StartWinamp <path>", "PlayFile <path>", "Command <id>", "GetInfo <code>",
    // "SetVolume <v>", "JumpToTime <ms>".
    QStringList calls;
    QList<qint32> commands() const;
    QStringList playedFiles() const; // files handed over, in order
    void clearLog() { calls.clear(); }

    // Lets time pass: a playing song moves on and, at its end, the player goes to the next entry of
    // its own list or stops after the last one.
    void advance(qint64 ms);
    // The song ends now (as if its last millisecond had played).
    void finishSong();
    // The user works the player's own window.
    void userStop() {
        status = Stopped;
        positionMs = 0;
    }
    void close() { running = false; }

    void StartWinamp(const QString& path) override;
    qint32 WinampSetVolume(quint8 volume) override;
    qint32 WinampJumpToTime(qint32 seconds, qint32 milliseconds) override;
    void WinampPlayFile(const QString& path) override;
    void WinampCommand(qint32 commandId) override;
    QVariant WinampGetInfo(quint8 code) override;
    // A closed player is gone for the desktop's controls too; this player cannot start itself.
    bool canPlay() const override { return running; }
    bool isRunning() const override { return running; }
    // Gapless: with queueing on, a queued file follows the song at its end by itself.
    bool queueing = false;
    QString queued;
    bool canQueue() const override { return queueing && running; }
    bool queueNext(const QString& file) override;
    void clearQueue() override;

    int currentLengthSeconds() const;

private:
    qint32 answer(quint8 code);
};
