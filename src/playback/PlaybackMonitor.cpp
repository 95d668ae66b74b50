#include "playback/PlaybackMonitor.h"

#include "base/Checked.h"
#include "base/RuntimeError.h"
#include "base/StatusLine.h"
#include "playback/PlaybackState.h"
#include "playback/SongQueue.h"
#include "playback/SongSelection.h"
#include "player/PlayerLink.h"
#include "playlist/PlaylistManager.h"

#include <QScopeGuard>
#include <cmath>

namespace {

const QString kEndOfList = QStringLiteral("Playlistende erreicht - Playmodus gestoppt.");

const QString& mainName(const PlaylistManager& playlists, qint32 index) {
    if (index < 0 || index >= playlists.PlaylistNames.size())
        throw RuntimeError(9, QStringLiteral("Index außerhalb des gültigen Bereichs"));
    return playlists.PlaylistNames.at(index);
}

// From step 6 on a failing step is skipped and the tick goes on.
template <typename F> void skipOnError(F&& step) {
    try {
        step();
    } catch (const std::exception&) {
    }
}

} // namespace

PlaybackMonitor::PlaybackMonitor(PlaylistManager& playlists, PlayerLink& player, PlaybackState& state,
                                 SongSelection& selection, StatusLine& status, Dialogs& dialogs,
                                 QObject* parent)
    : QObject(parent), m_playlists(playlists), m_player(player), m_state(state), m_selection(selection),
      m_status(status), m_tickReport(dialogs, QStringLiteral("tmrTime_Timer")),
      m_scrollReport(dialogs, QStringLiteral("tmrTitleScroll_Timer")) {
    // Children of the monitor, so that the window's timers can be found by name.
    tmrTime.setParent(this);
    tmrTitleScroll.setParent(this);
    tmrTime.setObjectName(QStringLiteral("tmrTime"));
    tmrTime.setInterval(kTickMs);
    tmrTitleScroll.setObjectName(QStringLiteral("tmrTitleScroll"));
    tmrTitleScroll.setInterval(kScrollMs);
    connect(&tmrTime, &QTimer::timeout, this, &PlaybackMonitor::tmrTimeTick);
    connect(&tmrTitleScroll, &QTimer::timeout, this, &PlaybackMonitor::tmrTitleScrollTick);
    connect(&m_player, &PlayerLink::playbackEnded, this, &PlaybackMonitor::tickSoon);
}

void PlaybackMonitor::songJoined() {
    m_joined = true;
    tickSoon();
}

void PlaybackMonitor::tickSoon() {
    if (m_tickQueued)
        return;
    m_tickQueued = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_tickQueued = false;
            // Not while the slider holds the monitor; the timer's next tick catches up.
            if (tmrTime.isActive())
                tmrTimeTick();
        },
        Qt::QueuedConnection);
}

QString PlaybackMonitor::FormatTime(qint16& seconds) {
    if (seconds < 0)
        seconds = 0;
    return QString::number(seconds / 60) + QLatin1Char(':') +
           QStringLiteral("%1").arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

void PlaybackMonitor::setText(Label label, const QString& text) {
    m_texts[label] = text;
    emit textChanged(label, text);
}

void PlaybackMonitor::tmrTimeTick() {
    // A tick that comes while another one runs (the link lets the interface breathe while it waits
    // for the player) is left out. The report's box is shown after the tick has ended, so the
    // ticks inside the box's own event loop run: playback goes on while the box is open.
    if (m_ticking)
        return;
    m_tickReport.run([this](int& line) {
        m_ticking = true;
        const auto done = qScopeGuard([this] { m_ticking = false; });
        runTick(line);
    });
}

void PlaybackMonitor::runTick(int& line) {
    line = 1;
    m_state.WinampStatus = Checked::toByte(m_player.WinampGetInfo(PlayerLink::InfoStatus).toLongLong());
    line = 2;
    setText(Test2, QStringLiteral("Winamp Status = ") + QString::number(m_state.WinampStatus) +
                       QStringLiteral(" / Playmode = ") + QString::number(m_state.PlayMode));
    line = 3;
    // A second playlist that is to end in a shutdown is always played in order.
    line = 3;
    if (m_state.ShuffleStatus && m_state.shutdownOnPL2End) {
        m_state.ShuffleStatus = false;
        emit indicatorsChanged();
    }
    line = 4;
    const bool stopped = m_state.WinampStatus != 1 && m_state.WinampStatus != 3;
    if (m_joined) {
        m_joined = false;
        if (m_queue)
            m_queue->commit();
        // A player that could not keep the file it went on to (one it cannot open) has stopped: the
        // next song follows, as after any failed start.
        if (m_state.PlayMode == 1 && stopped)
            startNextSong();
    } else if (m_state.PlayMode == 1 && stopped) {
        startNextSong();
    }
    line = 5;
    emit dockRequested();
    line = 6;
    refreshDisplay();
}

void PlaybackMonitor::startNextSong() {
    if (m_state.ShuffleStatus) {
        // A pick drawn while the song played counts: one draw for each change.
        if (const std::optional<SongSelection::Pick> pick = m_queue ? m_queue->takePick() : std::nullopt)
            m_selection.PlayPick(*pick, true);
        else
            m_selection.FuncPickRandomSong();
        return;
    }
    // No repeat from the start: the end of a list always stops (or shuts down).
    if (m_state.mainPlaylistActive) {
        if (m_state.PlaylistPosition >= m_playlists.PlaylistPaths.size() - 1) {
            m_state.PlayMode = 0;
            m_status.setText(kEndOfList);
        } else {
            m_selection.PlaySong(m_state.PlaylistPosition + 1, 1);
        }
        return;
    }
    const bool atEnd = m_state.Playlist2Position >= m_playlists.Playlist2Paths.size() - 1;
    if (m_state.shutdownOnPL2End && atEnd) {
        // Once: the end of the list is one event, and a suspend instead of a power-off wakes up
        // to a monitor that must not send the computer to sleep again at its next tick.
        m_state.PlayMode = 0;
        emit shutdownRequested();
    } else if (atEnd) {
        m_state.PlayMode = 0;
        m_status.setText(kEndOfList);
    } else {
        m_selection.PlaySong(m_state.Playlist2Position + 1, 2);
    }
}

void PlaybackMonitor::refreshDisplay() {
    qint64 position = -1;
    skipOnError([&] { position = m_player.WinampGetInfo(PlayerLink::InfoPosition).toLongLong(); });
    if (position == -1)
        return; // nothing loaded: the labels keep their texts
    skipOnError([&] {
        setText(Bitrate,
                m_player.WinampGetInfo(PlayerLink::InfoBitrate).toString() + QStringLiteral(" kbps"));
    });
    skipOnError([&] {
        setText(Samplerate,
                m_player.WinampGetInfo(PlayerLink::InfoSampleRate).toString() + QStringLiteral(" kHz"));
    });
    qint16 seconds = 0;
    skipOnError([&] { seconds = Checked::toInt16(qint64(std::floor(double(position) / 1000.0))); });
    QString elapsed;
    skipOnError([&] { elapsed = FormatTime(seconds); });
    // Always the main playlist's entry, also while the second playlist plays.
    QString current;
    skipOnError([&] { current = mainName(m_playlists, m_state.PlaylistPosition); });
    skipOnError([&] {
        m_songLength = Checked::toInt16(m_player.WinampGetInfo(PlayerLink::InfoLength).toLongLong());
        emit sliderValue(QStringLiteral("SliderMax"), m_songLength);
    });
    skipOnError([&] {
        if (m_lastPosition > seconds || current != m_shownName)
            setUpTitle(current);
    });
    m_lastPosition = seconds;
    skipOnError([&] {
        setText(Time, elapsed + QLatin1Char('/') + FormatTime(m_songLength));
        emit sliderValue(QStringLiteral("SliderValue"), seconds);
    });
}

void PlaybackMonitor::setUpTitle(const QString& name) {
    m_shownName = name;
    m_scrollText = name;
    if (name.size() <= kVisibleChars) {
        tmrTitleScroll.stop();
        RestoreCaption();
    } else {
        m_scrollText = name + QLatin1Char(' ') + kScrollTail;
        tmrTitleScroll.start();
    }
}

void PlaybackMonitor::tmrTitleScrollTick() {
    m_scrollReport.run([this](int& line) {
        line = 1;
        if (m_scrollText.size() > kVisibleChars && !m_state.volumeDrag) {
            m_scrollText = m_scrollText.mid(1) + m_scrollText.left(1);
            setText(TrackName, m_scrollText.left(kVisibleChars));
        }
    });
}

void PlaybackMonitor::RestoreCaption() {
    if (m_shownName.size() <= kVisibleChars)
        setText(TrackName, mainName(m_playlists, m_state.PlaylistPosition));
}

void PlaybackMonitor::VolumeReleased() {
    try {
        RestoreCaption();
    } catch (...) {
        m_state.volumeDrag = false;
        m_shownName.clear();
        throw;
    }
    m_state.volumeDrag = false;
    m_shownName.clear();
}
