#pragma once

#include <QObject>
#include <QString>
#include <QVariant>

class StatusLine;

// The only way the program talks to the external player: the seven classic routines in the
// Winamp vocabulary. Backends: MpvLink (Linux), WinampLink (Windows), a fake in the tests.
class PlayerLink : public QObject {
    Q_OBJECT
public:
    // Button command ids, posted without waiting.
    enum Command : qint32 {
        CloseCommand = 40001,
        PlayCommand = 40045,
        PauseCommand = 40046,
        StopCommand = 40047,
        JumpToLastCommand = 40158,
    };
    // WinampGetInfo codes.
    enum InfoCode : quint8 {
        InfoVersion = 0,
        InfoClearList = 1,
        InfoStatus = 2,   // 0 stopped, 1 playing, 3 paused
        InfoLength = 3,   // seconds, -1 if none
        InfoPosition = 4, // milliseconds
        InfoWritePlaylist = 6,
        InfoListLength = 8,
        InfoListPos = 9,
        InfoSampleRate = 10, // kHz
        InfoBitrate = 11,    // kbps
        InfoCode12 = 12,
        InfoTitle = 13, // parsed song title (text)
    };

    explicit PlayerLink(StatusLine& status, QObject* parent = nullptr) : QObject(parent), m_status(status) {}

    // Finds the running player or starts the one at path and waits (bounded) until it answers.
    virtual void StartWinamp(const QString& path) = 0;
    virtual qint32 WinampSetVolume(quint8 volume) = 0;
    // Raises the overflow error when seconds*1000+ms leaves 32 bits; errors go to the caller.
    virtual qint32 WinampJumpToTime(qint32 seconds, qint32 milliseconds) = 0;
    // Appends a file to the player's own list without starting it; errors go to the caller.
    virtual void WinampPlayFile(const QString& path) = 0;
    virtual void WinampCommand(qint32 commandId) = 0;
    // A number, the parsed title (code 13) or an invalid QVariant for codes 5, 7 and 14..255.
    virtual QVariant WinampGetInfo(quint8 code) = 0;

    // "WinampModule Error: <description> and number <number>" into FStatus.
    void ReportWinampError(const QString& description, int number);

    // Makes sure there is a player to take a file: a link whose player died starts a new one, as at
    // start-up. False when there is none and none could be started. A player window that somebody
    // closed stays closed (the classic behaviour): links that cannot start a player answer true.
    virtual bool ensurePlayer() { return true; }
    // Whether a player runs or can be started for the next song (desktop controls refuse otherwise).
    virtual bool canPlay() const { return true; }
    // Whether a player runs now.
    virtual bool isRunning() const { return true; }
    // The volume a player the link starts itself begins with; a player that already ran keeps its own.
    virtual void setStartVolume(quint8 volume) { Q_UNUSED(volume); }
    // The length of the playing song in microseconds as exactly as the player tells it; 0 = not known.
    virtual qint64 lengthMicroseconds();

    // Gapless playback. A player that can join two files itself takes the next file while the current
    // one plays, and moves on to it at the end without a gap (queuedFileStarted). Links that cannot
    // (the Winamp link) take nothing: the next song starts after the current one ended, as always.
    virtual bool canQueue() const { return false; }
    // Puts the file behind the playing one, in place of a file queued before; false when not taken.
    virtual bool queueNext(const QString& file) {
        Q_UNUSED(file);
        return false;
    }
    // Takes a queued file back; nothing when none is queued.
    virtual void clearQueue() {}

signals:
    // The player said on its own that a file ended or that it has nothing left to play. Links that
    // can only be asked never send it; the monitor then finds out at its next poll.
    void playbackEnded();
    // The player went on to the queued file by itself.
    void queuedFileStarted();

protected:
    StatusLine& m_status;
};
