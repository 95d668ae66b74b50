#include "program/ProgramCore.h"

#include "player/MpvLink.h"
#include "power/PowerOff.h"

ProgramCore::ProgramCore(Services& services, QObject* parent)
    : QObject(parent), m_services(services),
      m_unstartedPlayer(services.player
                            ? nullptr
                            : std::make_unique<MpvLink>(services.status, services.dialogs, QString())),
      m_playlists(services),
      m_playback(std::make_unique<PlaybackController>(
          services, m_playlists, services.player ? *services.player : *m_unstartedPlayer)),
      m_sleep(services.dialogs), m_builder(services, m_playlists, m_lister), m_editor(services, m_playlists),
      m_search(services, m_playlists), m_updateSchedule(services.settings), m_colours(services.settings),
      m_session(services.settings, m_playlists, *m_playback) {
    m_updateSchedule.setErrorReport(services.dialogs);
    // At the sleep mode's end nothing is to follow the playing song.
    connect(&m_sleep, &SleepMode::shutdownRequested, m_playback.get(), &PlaybackController::dropQueue);
    // The end of the second playlist with its shutdown box ticked.
    connect(m_playback.get(), &PlaybackController::shutdownRequested, this, &ProgramCore::ShutdownComputer);
    // A hit of the quick search is marked like any other chosen song.
    m_search.SelectSong = [this](qint32 position) { m_playback->selection().SelectSong(position, 1); };
}

ProgramCore::~ProgramCore() = default;

void ProgramCore::ShutdownComputer() {
    if (m_services.power)
        m_services.power->ShutdownWindows(1);
}

void ProgramCore::startPlayer(const QString& playerPath) {
    if (!m_services.player)
        return;
    // mpv starts at its own 100 %: one this program starts begins at the program's volume instead.
    m_services.player->setStartVolume(m_playback->volume());
    m_services.player->StartWinamp(playerPath);
}

void ProgramCore::requestPlayMode() {
    if (m_playlists.list(1).count() > 0 && !m_session.settingsIncomplete())
        m_playback->setPlayMode(1);
}
