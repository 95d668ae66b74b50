#include "program/SavedSession.h"

#include "base/Checked.h"
#include "playback/PlaybackController.h"
#include "playlist/PlaylistManager.h"

#include <QDir>

namespace {
const QString kSettings = QStringLiteral("Settings");
const QString kScreen = QStringLiteral("Screen");
} // namespace

SavedSession::SavedSession(SettingsStore& settings, PlaylistManager& playlists, PlaybackController& playback)
    : m_settings(settings), m_playlists(playlists),
      m_playback(playback), m_readOnLoad{kScreen + QStringLiteral("/FormPositionLeft"),
                                         kScreen + QStringLiteral("/FormPositionTop")} {
}

void SavedSession::markRead(const QString& section, const QString& key) {
    m_readOnLoad.insert(section + QLatin1Char('/') + key);
}

void SavedSession::readFilesAndPaths() {
    PlaylistFile = m_settings.GetSetting(kSettings, QStringLiteral("PlaylistFile"), QStringLiteral("0"));
    PlaylistFile2 = m_settings.GetSetting(kSettings, QStringLiteral("PlaylistFile2"), QStringLiteral("0"));
    UserMP3Directory =
        m_settings.GetSetting(kSettings, QStringLiteral("UserMP3Directory"), QStringLiteral("0"));
    m_playback.state().PlaylistPosition =
        Checked::textToInt32(m_settings.GetSetting(kSettings, QStringLiteral("CurrentPlaylistPosition"), 0));
    markRead(kSettings, QStringLiteral("CurrentPlaylistPosition"));
    WinampPath = m_settings.GetSetting(kSettings, QStringLiteral("WinampPath"), QStringLiteral("0"));
    m_playlists.DialogLastpath =
        m_settings.GetSetting(kSettings, QStringLiteral("DialogLastpath"),
                              QDir::toNativeSeparators(QDir::homePath() + QLatin1Char('/')));
    markRead(kSettings, QStringLiteral("DialogLastpath"));
}

void SavedSession::readShuffle() {
    m_playback.state().ShuffleStatus = Checked::textToBool(
        m_settings.GetSetting(kSettings, QStringLiteral("ShuffleStatus"), QStringLiteral("False")));
    markRead(kSettings, QStringLiteral("ShuffleStatus"));
}

void SavedSession::readVolume() {
    m_playback.restoreVolume(Checked::textToByte(
        m_settings.GetSetting(kSettings, QStringLiteral("Volume"), QStringLiteral("200"))));
    markRead(kSettings, QStringLiteral("Volume"));
}

void SavedSession::readHistory() {
    m_playback.history().read(m_settings);
    for (const SettingsStore::Entry& e : m_playback.history().entries())
        markRead(e.section, e.key);
}

bool SavedSession::isIncomplete() const {
    // An empty player path is accepted; only a never-configured one ("0") is incomplete.
    return WinampPath == QLatin1String("0") || UserMP3Directory == QLatin1String("0") ||
           UserMP3Directory.isEmpty();
}

void SavedSession::reloadEnvironment() {
    WinampPath = m_settings.GetSetting(kSettings, QStringLiteral("WinampPath"), QStringLiteral("0"));
    UserMP3Directory =
        m_settings.GetSetting(kSettings, QStringLiteral("UserMP3Directory"), QStringLiteral("0"));
}

QList<SettingsStore::Entry> SavedSession::valuesOnClose(int windowLeft, int windowTop,
                                                        const QString& musicFolders) const {
    const PlaybackState& state = m_playback.state();
    QList<SettingsStore::Entry> entries{
        {kSettings, QStringLiteral("PlaylistFile"), m_playlists.actPlaylist(1)},
        {kSettings, QStringLiteral("UserMP3Directory"), musicFolders},
        // Written for compatibility only; the window always opens at its design position.
        {kScreen, QStringLiteral("FormPositionLeft"), QString::number(windowLeft)},
        {kScreen, QStringLiteral("FormPositionTop"), QString::number(windowTop)},
        {kSettings, QStringLiteral("ShuffleStatus"), Checked::boolText(state.ShuffleStatus)},
        {kSettings, QStringLiteral("CurrentPlaylistPosition"), QString::number(state.PlaylistPosition)},
        {kSettings, QStringLiteral("Volume"), QString::number(m_playback.volume())},
        {kSettings, QStringLiteral("DialogLastpath"), m_playlists.DialogLastpath}};
    entries << m_playback.history().entries();
    return entries;
}

void SavedSession::rememberUnread(const QString& musicFolders) {
    // Such a value is written again once the user has changed it.
    m_unreadOnLoad.clear();
    for (const SettingsStore::Entry& e : valuesOnClose(0, 0, musicFolders)) {
        const QString id = e.section + QLatin1Char('/') + e.key;
        if (!m_readOnLoad.contains(id))
            m_unreadOnLoad.insert(id, e.value);
    }
}

void SavedSession::writeOnClose(int windowLeft, int windowTop, const QString& musicFolders) {
    QList<SettingsStore::Entry> entries;
    for (const SettingsStore::Entry& e : valuesOnClose(windowLeft, windowTop, musicFolders)) {
        const auto unread = m_unreadOnLoad.constFind(e.section + QLatin1Char('/') + e.key);
        if (unread == m_unreadOnLoad.constEnd() || unread.value() != e.value)
            entries.append(e);
    }
    m_settings.SaveSettings(entries);
}
