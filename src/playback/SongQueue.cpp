#include "playback/SongQueue.h"

#include "base/Clock.h"
#include "playback/PlaybackState.h"
#include "player/PlayerLink.h"
#include "playlist/PlaylistLine.h"
#include "playlist/PlaylistManager.h"

SongQueue::SongQueue(PlaylistManager& playlists, PlayerLink& player, PlaybackState& state,
                     SongSelection& selection, Clock& clock, QObject* parent)
    : QObject(parent), m_playlists(playlists), m_player(player), m_state(state), m_selection(selection),
      m_clock(clock) {
    connect(&player, &PlayerLink::queuedFileStarted, this, &SongQueue::playerJoined);
}

void SongQueue::invalidate() {
    drop();
}

void SongQueue::drop() {
    if (m_queued)
        m_player.clearQueue();
    m_queued = false;
    m_decision.reset();
    ++m_generation;
}

void SongQueue::refresh(bool listChanged) {
    if (!m_player.canQueue())
        return;
    if (m_state.PlayMode != 1 || m_state.AutoCue) {
        drop(); // stops after this song
        return;
    }
    if (m_decision && !stillRight(*m_decision, listChanged))
        drop();
    if (!m_decision) {
        decide();
    } else if (!m_queued && !m_decision->file.isEmpty()) {
        ++m_generation; // the player did not take it before (not there yet)
        m_queued = m_player.queueNext(m_decision->file);
    }
}

bool SongQueue::shuffles() const {
    // A second playlist that is to end in a shutdown is always played in order: the monitor switches
    // shuffle off at its next tick.
    return m_state.ShuffleStatus && !m_state.shutdownOnPL2End;
}

bool SongQueue::stillRight(const Decision& d, bool listChanged) const {
    const qint16 n = m_state.mainPlaylistActive ? 1 : 2;
    if (d.shuffle != shuffles() || d.n != n)
        return false;
    const QStringList& paths = m_playlists.paths(d.n);
    if (d.index < 0) // a draw that found no song: a list that changed may give one now
        return d.shuffle && !listChanged;
    if (d.index >= paths.size() || paths.at(d.index) != d.line)
        return false; // the song moved, went or got another priority
    if (d.shuffle)
        return true;
    const qint32 position = n == 1 ? m_state.PlaylistPosition : m_state.Playlist2Position;
    return d.index == position + 1;
}

void SongQueue::decide() {
    Decision d;
    d.shuffle = shuffles();
    d.n = m_state.mainPlaylistActive ? 1 : 2;
    if (d.shuffle) {
        const double started = m_clock.secondsOfDay();
        try {
            d.pick = m_selection.DrawRandomSong();
        } catch (...) {
            d.error = std::current_exception();
            m_decision = d;
            return;
        }
        d.pick->drawSeconds = m_clock.secondsOfDay() - started;
        d.n = d.pick->n;
        if (d.pick->outcome == SongSelection::Pick::Won) {
            d.index = d.pick->index;
            d.line = d.pick->line;
        }
    } else {
        // In order: the next entry; after the last one nothing (the end stops, or shuts down).
        const QStringList& paths = m_playlists.paths(d.n);
        const qint32 position = d.n == 1 ? m_state.PlaylistPosition : m_state.Playlist2Position;
        if (position < 0 || position >= paths.size() - 1)
            return;
        d.index = position + 1;
        d.line = paths.at(d.index);
    }
    if (d.index >= 0 && d.line.size() >= 2) {
        d.file = PlaylistLine::path(d.line);
        ++m_generation;
        m_queued = m_player.queueNext(d.file);
    }
    m_decision = d;
}

void SongQueue::playerJoined() {
    if (m_queued)
        m_joined = m_generation;
}

bool SongQueue::commit() {
    if (!m_decision || !m_queued || m_joined != m_generation)
        return false;
    const Decision d = *m_decision;
    m_decision.reset();
    m_queued = false;
    // A pick whose shuffle went off meanwhile plays on as the song it is.
    if (d.pick && shuffles())
        m_selection.PlayPick(*d.pick, false);
    else
        m_selection.JoinSong(d.index, d.n);
    return true;
}

std::optional<SongSelection::Pick> SongQueue::takePick() {
    if (!m_decision || !m_decision->shuffle)
        return std::nullopt;
    const Decision d = *m_decision;
    drop();
    if (d.error)
        std::rethrow_exception(d.error);
    return d.pick;
}
