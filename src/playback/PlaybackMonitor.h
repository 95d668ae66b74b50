#pragma once

#include "base/RecurringReport.h"

#include <QObject>
#include <QString>
#include <QTimer>

class Dialogs;
class PlayerLink;
class PlaylistManager;
class SongQueue;
class SongSelection;
class StatusLine;
struct PlaybackState;

// The engine of continuous play: tmrTime polls the player every 750 ms and, in play mode, starts the
// next song when the player has stopped; it also refreshes the display labels. A player that reports
// the end of a file on its own gets the same tick at once, so the next song follows without waiting
// for the poll. tmrTitleScroll rotates a song name too long for the title label.
class PlaybackMonitor : public QObject {
    Q_OBJECT
public:
    enum Label { TrackName, Time, Bitrate, Samplerate, Test2 };
    static constexpr int kTickMs = 750;
    static constexpr int kScrollMs = 250;
    static constexpr qint16 kVisibleChars = 43;
    static inline const QString kScrollTail = QStringLiteral("  <<<>>> ");

    PlaybackMonitor(PlaylistManager& playlists, PlayerLink& player, PlaybackState& state,
                    SongSelection& selection, StatusLine& status, Dialogs& dialogs,
                    QObject* parent = nullptr);

    QTimer tmrTime;
    QTimer tmrTitleScroll;

    // Minutes, ":" and two-digit seconds; a negative argument is set to 0 (the caller's too).
    static QString FormatTime(qint16& seconds);

    // One tick of each timer, under the window's error report: a failure (a song the pick cannot
    // read, a list emptied under the running song) is reported as "Fehler in tmrTime_Timer in Zeile
    // <step>" and the next tick comes all the same.
    void tmrTimeTick();
    void tmrTitleScrollTick();
    // The title label shows the current song of the main playlist again (after a volume drag).
    // Raises the subscript error when the current index lies outside the main playlist.
    void RestoreCaption();
    // The volume slider was let go: the next tick sets the title label up again.
    void VolumeReleased();
    // The position slider was let go: the next tick sets the title label up again.
    void clearShownName() { m_shownName.clear(); }
    // Gapless playback: what comes next is queued here; the player went on to it (songJoined) and
    // the next tick makes the song change instead of waiting for the player to stop.
    void setQueue(SongQueue* queue) { m_queue = queue; }
    void songJoined();

    // What the labels show, for the window and the tests.
    const QString& text(Label label) const { return m_texts[label]; }
    void setText(Label label, const QString& text);
    qint16 songLength() const { return m_songLength; }
    qint16 lastPosition() const { return m_lastPosition; }
    const QString& shownName() const { return m_shownName; }
    const QString& scrollText() const { return m_scrollText; }

signals:
    void textChanged(PlaybackMonitor::Label label, const QString& text);
    // The position slider's value operation: "SliderMax" or "SliderValue".
    void sliderValue(const QString& name, int value);
    void indicatorsChanged();
    // The second playlist ends in a shutdown.
    void shutdownRequested();
    // Step 5: keep the second playlist window docked (the window decides whether it is visible).
    void dockRequested();

private:
    void runTick(int& line);
    // The player reported an end: one tick as soon as the event loop is free, never inside another.
    void tickSoon();
    void startNextSong();
    void refreshDisplay();
    void setUpTitle(const QString& name);

    PlaylistManager& m_playlists;
    PlayerLink& m_player;
    PlaybackState& m_state;
    SongSelection& m_selection;
    StatusLine& m_status;
    RecurringReport m_tickReport;
    RecurringReport m_scrollReport;
    bool m_ticking = false;
    bool m_tickQueued = false;
    SongQueue* m_queue = nullptr;
    bool m_joined = false;

    QString m_texts[Test2 + 1];
    qint16 m_songLength = 0;
    qint32 m_lastPosition = 0;
    QString m_shownName;
    QString m_scrollText;
};
