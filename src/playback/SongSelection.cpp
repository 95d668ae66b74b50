#include "playback/SongSelection.h"

#include "base/Checked.h"
#include "base/Clock.h"
#include "base/NumberText.h"
#include "base/RandomSource.h"
#include "base/RuntimeError.h"
#include "base/Services.h"
#include "base/StatusLine.h"
#include "playback/PlaybackState.h"
#include "playback/PrevSongs.h"
#include "player/PlayerLink.h"
#include "playlist/PlaylistLine.h"
#include "playlist/PlaylistManager.h"
#include "playlist/SongIdentities.h"

#include <cmath>
#include <limits>

namespace {

constexpr int kSubscriptOutOfRange = 9;

RuntimeError subscriptOutOfRange() {
    return {kSubscriptOutOfRange, QStringLiteral("Index außerhalb des gültigen Bereichs")};
}

const QString& element(const QStringList& list, qint64 index) {
    if (index < 0 || index >= list.size())
        throw subscriptOutOfRange();
    return list.at(index);
}

// A single-precision number as the user reads it: only the digits a float holds reliably (six), so
// that 0.001 s does not read 0.0009999999, with the user's decimal separator.
QString singleText(float value) {
    return NumberText::localeText(
        QString::number(value, 'g', std::numeric_limits<float>::digits10).toDouble());
}

} // namespace

SongSelection::SongSelection(Services& services, PlaylistManager& playlists, PlayerLink& player,
                             PlaybackState& state, PrevSongs& history, QObject* parent)
    : QObject(parent), m_services(services), m_playlists(playlists), m_player(player), m_state(state),
      m_history(history) {
}

int SongSelection::chanceOf(int digit) {
    switch (digit) {
    case 5:
        return 100;
    case 4:
        return 70;
    case 3:
        return 50;
    case 2:
        return 20;
    case 1:
        return 10;
    case 0:
        return 0;
    default:
        return -1;
    }
}

void SongSelection::PlaySong(qint32 position, qint16 n) {
    startSong(position, n, true);
}

void SongSelection::JoinSong(qint32 position, qint16 n) {
    startSong(position, n, false);
}

void SongSelection::startSong(qint32 position, qint16 n, bool handOver) {
    try {
        const QString& line =
            element(n == 1 ? m_playlists.PlaylistPaths : m_playlists.Playlist2Paths, position);
        SelectSong(position, n);
        if (n == 1)
            m_state.PlaylistPosition = position;
        else
            m_state.Playlist2Position = position;
        if (line.size() < 2)
            throw RuntimeError::invalidCall();
        const QString file = PlaylistLine::path(line);
        m_state.CurrentSongFile = file;
        // A song played is a song seen: its identity lets it keep its priority when it moves.
        if (m_services.songIdentities)
            m_services.songIdentities->remember(file);
        m_state.CurrentSongList = n == 1 ? 1 : 2;
        if (n == 1 && m_history.AddToPrevSongs(position))
            emit historyChanged();
        if (handOver) {
            // A player that died is started again here; one that cannot be started takes the file
            // nowhere, as a closed player window would. A file queued for the song that was to come
            // next is taken back: this one comes instead.
            m_player.ensurePlayer();
            m_player.clearQueue();
            m_player.WinampPlayFile(file);
            m_player.WinampCommand(PlayerLink::JumpToLastCommand);
            m_player.WinampCommand(PlayerLink::PlayCommand);
        }
        // The name array of playlist 1 serves playlist 2 as well.
        m_state.CurrentSongName = element(m_playlists.PlaylistNames, position);
        m_state.PlayerStatus = Checked::toInt16(m_player.WinampGetInfo(PlayerLink::InfoVersion).toLongLong());
        m_state.PlayMode = 1;
        emit songStarted(m_state.CurrentSongName);
    } catch (const std::exception&) {
        m_state.PlayMode = 0;
        m_services.status.setText(
            QStringLiteral("Sub Playsong: Lied nicht vorhanden oder Listenende erreicht! Songposition = ") +
            QString::number(position));
    }
}

void SongSelection::SelectSong(qint32 position, qint16 n) {
    try {
        PlaylistListModel& list = m_playlists.list(n == 1 ? 1 : 2);
        if (position < 0 || position >= list.count())
            throw RuntimeError::invalidCall();
        list.selectOnly(position);
    } catch (const std::exception&) {
        m_services.status.setText(QStringLiteral("Sub SelectSong: Fehler beim Lied auswählen! ToSelect = ") +
                                  QString::number(position));
    }
}

void SongSelection::FuncPickRandomSong() {
    // Without a player every tick would draw another song that never plays and fill the history
    // with it: shuffle stops instead.
    if (!m_player.ensurePlayer()) {
        stopWithoutPlayer();
        return;
    }
    const double start = m_services.clock.secondsOfDay();
    PlayPick(DrawRandomSong(), true, start);
}

void SongSelection::stopWithoutPlayer() {
    m_state.PlayMode = 0;
    m_services.status.setText(
        QStringLiteral("Der Player konnte nicht gestartet werden - Playmodus gestoppt."));
}

SongSelection::Pick SongSelection::DrawRandomSong() {
    Pick pick;
    pick.n = m_state.mainPlaylistActive ? 1 : 2;
    const QStringList& paths = pick.n == 1 ? m_playlists.PlaylistPaths : m_playlists.Playlist2Paths;
    const qint64 upper = paths.size() - 1;
    for (;;) {
        ++pick.tries;
        // Index from [0, upper bound): the last entry is never drawn, a one-entry list gives 0.
        pick.index = qint32(std::floor(m_services.random.next() * double(upper)));
        const QString& song = element(paths, pick.index);
        pick.dice = int(std::floor(m_services.random.next() * 100.0));
        const quint8 digit = Checked::textToByte(song.right(1));
        pick.chance = chanceOf(digit);
        if (pick.chance < 0) {
            // The name shown is that of the entry before, from playlist 1's names.
            pick.outcome = Pick::InvalidPriority;
            pick.status = QStringLiteral("Fehler: Ungültige Liedpriorität \"") + QString::number(digit) +
                          QStringLiteral("\" bei Lied \"") + QString::number(pick.index) +
                          QStringLiteral(". ") + element(m_playlists.PlaylistNames, qint64(pick.index) - 1) +
                          QStringLiteral("\"");
            return pick;
        }
        if (pick.dice < pick.chance) {
            pick.line = song;
            return pick;
        }
        if (pick.tries >= kMaxTries) {
            pick.outcome = Pick::Timeout;
            pick.status =
                QStringLiteral("Zufallslied konnte nicht bestimmt werden - Timeout nach 100 Versuchen!");
            return pick;
        }
    }
}

void SongSelection::PlayPick(const Pick& pick, bool handOver, double start) {
    if (start < 0)
        start = m_services.clock.secondsOfDay();
    if (pick.outcome != Pick::Won) {
        m_services.status.setText(pick.status);
        if (pick.outcome == Pick::InvalidPriority)
            m_state.PlayMode = 0;
        return;
    }
    if (handOver && !m_player.ensurePlayer()) {
        stopWithoutPlayer();
        return;
    }
    emit testTextChanged(QStringLiteral("gewonnen - Liedpriorität=") + QString::number(pick.chance) +
                         QStringLiteral("   Schicksalswürfel=") + QString::number(pick.dice) +
                         QStringLiteral("    Versuche=") + QString::number(pick.tries));
    m_state.ShuffleStatus = true;
    emit indicatorsChanged();
    SelectSong(pick.index, pick.n);
    startSong(pick.index, pick.n, handOver);
    m_services.status.append(QStringLiteral("    Zeit: ") +
                             singleText(float(pick.drawSeconds + m_services.clock.secondsOfDay() - start)));
}
