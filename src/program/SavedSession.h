#pragma once

#include "base/SettingsStore.h"

#include <QHash>
#include <QSet>
#include <QString>

class PlaybackController;
class PlaylistManager;

// What the program reads from the settings at start and writes back at close, in the classic order.
// A value the load never read (a damaged one stopped it early) is only a default here: writing it
// back would replace the user's playlist path or music folders with nothing, so it is not written,
// unless the user changed it since.
class SavedSession {
public:
    SavedSession(SettingsStore& settings, PlaylistManager& playlists, PlaybackController& playback);

    // The reads of the load, each raising the classic conversion errors; in this order.
    // Playlist files, music folders, current position, player path and dialog folder.
    void readFilesAndPaths();
    void readShuffle();
    // The volume goes to the playback (shown, not told to the player).
    void readVolume();
    void readHistory();
    // The load got to this value (step 10 marks the music folders and the playlist file).
    void markRead(const QString& section, const QString& key);
    // Called once the load has ended, however far it came, with the music folders the window shows.
    void rememberUnread(const QString& musicFolders);

    // The settings count as incomplete when the player path was never set ("0") or the music folders
    // are "0" or empty; the load then skips the player and the playlists.
    bool isIncomplete() const;
    void setIncomplete(bool incomplete) { m_incomplete = incomplete; }
    bool settingsIncomplete() const { return m_incomplete; }
    // Re-reads the player path and the music folders after the settings window saved them.
    void reloadEnvironment();

    QString PlaylistFile;
    QString PlaylistFile2;
    QString UserMP3Directory;
    QString WinampPath;

    // The close sequence's values, written in one batch: the window's left and top and the music
    // folders as the window shows them. Raises the store's error when it cannot be written.
    void writeOnClose(int windowLeft, int windowTop, const QString& musicFolders);

private:
    QList<SettingsStore::Entry> valuesOnClose(int windowLeft, int windowTop,
                                              const QString& musicFolders) const;

    SettingsStore& m_settings;
    PlaylistManager& m_playlists;
    PlaybackController& m_playback;
    bool m_incomplete = false;
    // "Section/Key" of the close values the load read, and those it did not get to with the default
    // the program holds for them.
    QSet<QString> m_readOnLoad;
    QHash<QString, QString> m_unreadOnLoad;
};
