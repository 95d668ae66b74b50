#pragma once

#include "playback/SongSelection.h"

#include <QObject>
#include <exception>
#include <optional>

class Clock;
class PlayerLink;
class PlaylistManager;
struct PlaybackState;

// Gapless playback: what comes after the playing song is decided while it plays, with the same rule
// the monitor applies at a song's end (the next entry in order, or the weighted pick drawn now, once),
// and handed to the player ahead of time; a player that can join files (mpv) then goes on without a
// gap. The song change itself (index, history, title, tray, desktop) happens when the player says it
// went on to the queued file. Whatever changes what should come next takes the file back or replaces
// it before it plays. Links that cannot queue are left alone: the song ends and the next one starts.
class SongQueue : public QObject {
    Q_OBJECT
public:
    SongQueue(PlaylistManager& playlists, PlayerLink& player, PlaybackState& state, SongSelection& selection,
              Clock& clock, QObject* parent = nullptr);

    // Forgets what was decided (a new song started, shuffle switched, the active list changed).
    void invalidate();
    // Hands the player what comes next, keeps what it holds while that is still right, or takes it
    // back (play mode off, AUTOCUE, the end of the list, a list or priority that changed).
    void refresh(bool listChanged = false);
    // Takes the queued file back and forgets the decision.
    void drop();

    // The player went on to the queued file: the song change, as the monitor makes it at a song's
    // end. False when nothing that matches was queued.
    bool commit();
    // At a song's end in shuffle: the pick drawn ahead for it, which did not join (the player did not
    // take it, or no song won); raises what the draw raised. Empty when none was drawn.
    std::optional<SongSelection::Pick> takePick();

    // The file the player holds for what comes next; "" when none.
    QString queuedFile() const { return m_queued ? m_decision->file : QString(); }

private:
    struct Decision {
        bool shuffle = false;
        qint16 n = 1;
        qint32 index = -1;
        QString line;
        QString file;
        std::optional<SongSelection::Pick> pick;
        std::exception_ptr error; // what the draw raised
    };

    void decide();
    bool shuffles() const;
    bool stillRight(const Decision& d, bool listChanged) const;
    void playerJoined();

    PlaylistManager& m_playlists;
    PlayerLink& m_player;
    PlaybackState& m_state;
    SongSelection& m_selection;
    Clock& m_clock;
    std::optional<Decision> m_decision;
    bool m_queued = false;
    // Which decision the player went on to: a decision made after that does not count as joined.
    quint64 m_generation = 0;
    quint64 m_joined = 0;
};
