#pragma once

#include "appearance/ColorSchemeController.h"
#include "base/Services.h"
#include "playback/PlaybackController.h"
#include "playlist/FolderLister.h"
#include "playlist/PlaylistBuilder.h"
#include "playlist/PlaylistEntryEditor.h"
#include "playlist/PlaylistManager.h"
#include "playlist/QuickSearch.h"
#include "power/SleepMode.h"
#include "program/SavedSession.h"
#include "program/WindowRequests.h"
#include "update/UpdateCheckSchedule.h"
#include "update/UpdateConfig.h"

#include <QObject>
#include <memory>

class PlayerLink;

// The program without its windows: the playlists, playback, the sleep mode, building and editing
// lists, the quick search, the update schedule, what is read at start and written at close, and the
// requests to the window. main builds it and hands it by reference to the window and to the
// desktop's adaptors; nothing reaches it any other way.
class ProgramCore : public QObject {
    Q_OBJECT
public:
    explicit ProgramCore(Services& services, QObject* parent = nullptr);
    ~ProgramCore() override;

    Services& services() { return m_services; }
    PlaylistManager& playlists() { return m_playlists; }
    PlaybackController& playback() { return *m_playback; }
    SleepMode& sleepMode() { return m_sleep; }
    PlaylistBuilder& builder() { return m_builder; }
    PlaylistEntryEditor& editor() { return m_editor; }
    QuickSearch& quickSearch() { return m_search; }
    UpdateCheckSchedule& updateSchedule() { return m_updateSchedule; }
    ColorSchemeController& colours() { return m_colours; }
    SavedSession& session() { return m_session; }
    // The report files; tests point them elsewhere ("" = the platform's report path).
    QString BitrateReportPath;
    QString PriorityReportPath;
    // Where the update comes from; tests point it at their own server.
    UpdateConfig UpdateSource = UpdateConfig::forThisProgram();
    WindowRequests& windowRequests() { return m_windowRequests; }

    // Switches the computer off (forced): the end of the sleep mode and of the second playlist.
    void ShutdownComputer();
    // The player link's start with a player path, at the program's volume. Without a link of the
    // program's own (tests of other parts) nothing starts.
    void startPlayer(const QString& playerPath);
    // The "play" word, at start or from a later start: play mode on when there is a list and the
    // settings are complete; the monitor then starts the next song unless one is playing.
    void requestPlayMode();

private:
    Services& m_services;
    // A link that is never started where no player was provided.
    std::unique_ptr<PlayerLink> m_unstartedPlayer;
    PlaylistManager m_playlists;
    std::unique_ptr<PlaybackController> m_playback;
    SleepMode m_sleep;
    DiskFolderLister m_lister;
    PlaylistBuilder m_builder;
    PlaylistEntryEditor m_editor;
    QuickSearch m_search;
    UpdateCheckSchedule m_updateSchedule;
    ColorSchemeController m_colours;
    SavedSession m_session;
    WindowRequests m_windowRequests;
};
