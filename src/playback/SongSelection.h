#pragma once

#include <QObject>
#include <QString>

class PlayerLink;
class PlaylistManager;
class PrevSongs;
struct PlaybackState;
struct Services;

// Starting a playlist entry in the player (PlaySong), marking it in its list (SelectSong) and the
// priority-weighted random pick (FuncPickRandomSong, the "Schicksalswürfel").
class SongSelection : public QObject {
    Q_OBJECT
public:
    SongSelection(Services& services, PlaylistManager& playlists, PlayerLink& player, PlaybackState& state,
                  PrevSongs& history, QObject* parent = nullptr);

    // Chance in percent that a song of the priority digit wins the dice; -1 for digits outside 0..5.
    static int chanceOf(int digit);
    static constexpr int kMaxTries = 100;

    // One weighted draw: the entry that won, or why none did.
    struct Pick {
        enum Outcome { Won, InvalidPriority, Timeout };
        Outcome outcome = Won;
        qint16 n = 1;
        qint32 index = 0;
        int chance = 0;
        int dice = 0;
        int tries = 0;
        QString line;           // the winning entry's playlist line
        QString status;         // what a failed draw tells the user
        double drawSeconds = 0; // how long a draw made ahead of time took
    };

    // n = 1 plays from playlist 1, any other value from playlist 2.
    void PlaySong(qint32 position, qint16 n);
    // The player went on to the song by itself (a queued file): everything PlaySong does except
    // handing the file over.
    void JoinSong(qint32 position, qint16 n);
    void SelectSong(qint32 position, qint16 n);
    // Raises the type-mismatch error for a drawn entry whose last character is not a number.
    void FuncPickRandomSong();
    // The two halves of the pick: the draw (raising as above), and what follows it. handOver = false:
    // the player already plays the winner. start: when the pick began, for the time it reports
    // (< 0: now; the draw's own time is added).
    Pick DrawRandomSong();
    void PlayPick(const Pick& pick, bool handOver, double start = -1);

signals:
    // A song was started: its name goes into the tray tip.
    void songStarted(const QString& name);
    // The history changed: the previous-songs menu must be rebuilt.
    void historyChanged();
    // A mode flag changed: the indicators are redrawn.
    void indicatorsChanged();
    // The debug label FTest.
    void testTextChanged(const QString& text);

private:
    void startSong(qint32 position, qint16 n, bool handOver);
    void stopWithoutPlayer();

    Services& m_services;
    PlaylistManager& m_playlists;
    PlayerLink& m_player;
    PlaybackState& m_state;
    PrevSongs& m_history;
};
