#pragma once

#include "base/Dialogs.h"
#include "base/Services.h"
#include "playlist/PlaylistFile.h"
#include "playlist/PlaylistListModel.h"

#include <QHash>
#include <QObject>
#include <QStringList>
#include <functional>

// The two playlists of the main window: their path arrays, the list rows they show, the file
// captions and the open/save routines. An empty playlist is one element "" at index 0.
class PlaylistManager : public QObject {
    Q_OBJECT
public:
    explicit PlaylistManager(Services& services, QObject* parent = nullptr);

    // The arrays of the main window, under their classic names.
    QStringList PlaylistPaths{QString()};
    QStringList PlaylistNames{QString()};
    QStringList Playlist2Paths{QString()};
    bool PlaylistChanged = false;
    QString DialogLastpath;
    // Song lengths in seconds the player reported in this session, by file path; an M3U save writes
    // them into its "#EXTINF" lines.
    QHash<QString, qint32> SongSeconds;

    PlaylistListModel& list(int n) { return n == 1 ? m_list1 : m_list2; }
    QStringList& paths(int n) { return n == 1 ? PlaylistPaths : Playlist2Paths; }
    static bool isEmptyPlaylist(const QStringList& paths) {
        return paths.isEmpty() || paths.first().isEmpty();
    }

    // The caption of playlist n's FActPlaylist label: its file, "" = none yet.
    const QString& actPlaylist(int n) const { return n == 1 ? m_act1 : m_act2; }
    void setActPlaylist(int n, const QString& file);

    // Reads our own format and M3U/M3U8 (by name or "#EXTM3U" header).
    QString FuncReadPlaylistAndDisplay(const QString& file, bool clear, int n);
    void FuncDisplayPlaylist(bool clear, int n);
    // Playlist n becomes `lines`, shown as FuncDisplayPlaylist(true, n) shows it. The names and rows
    // are made first (calling `between` now and then, so that a long list lets the window paint);
    // the playlist, its names and its rows then change in one step, so whatever runs meanwhile (the
    // player's next song) sees the old list whole.
    void replacePlaylist(int n, QStringList lines, const std::function<void()>& between);
    void OpenPlaylist(int n);
    // Writes M3U8 for a ".m3u8"/".m3u" name, else our own format in the encoding the file was read in
    // (UTF-8 for a file not read). Asks before replacing a file whose load failed or lost entries,
    // and leaves out entries whose name holds a line break, saying so.
    QString FuncSavePlaylist(const QString& file, int n);
    void FuncSavePlaylistAs(int n);
    QStringList GetPlaylistSongs() const { return PlaylistNames; }

    // BPLSave / "Playliste speichern...": save under the caption, or ask for a file.
    void SavePlaylistCommand(int n);
    // The question on closing the main window; false = the user cancelled the close.
    bool AskSaveBeforeClose();

    // A row of the main list ("<n>. <name>") dropped on playlist 2 at `position`. Effect 1 (copy)
    // inserts entry n - 1 of playlist 1 there and returns the position; any other effect (a move)
    // only says it is not supported and returns -1. Raises the subscript error for a number outside
    // playlist 1 and the type mismatch for a text without one, before anything changes.
    qint32 AddDragDropToPL2(const QString& text, qint32 position, int effect);

signals:
    void actPlaylistChanged(int n, const QString& file);
    // Opening a playlist invalidates the previous-songs history.
    void historyResetRequested();
    // Lines of playlist n changed in place (their priorities).
    void linesEdited(int n);

private:
    // What the last load of a playlist left behind: the file and, when it failed or left entries
    // out, why (a save over that file asks first).
    struct LoadRecord {
        QString file;
        PlaylistFile::TextFormat format;
        QString problem;
        QString notes; // what an M3U load left out or missed, for the user
        // What an M3U gave its entries, written back by an M3U save of this playlist only.
        QHash<QString, qint32> seconds;
        QHash<QString, QString> titles;
    };

    // The display names and list rows of playlist lines; every invalid line is named by its error.
    void makeNames(const QStringList& source, QStringList& names, QStringList& rows,
                   const std::function<void()>& between = {}) const;
    Dialogs::FileRequest fileRequest(const QString& title, const QString& filter, int flags) const;
    QString readPlaylist(const QString& file, int n, LoadRecord& record);
    bool confirmOverwrite(const QString& file, int n);
    void writePlaylist(const QString& file, const QStringList& lines, int n);

    Services& m_services;
    PlaylistListModel m_list1;
    PlaylistListModel m_list2;
    QString m_act1;
    QString m_act2;
    LoadRecord m_loaded[3];
    // The last FuncSavePlaylist left the file alone because the user said so.
    bool m_saveDeclined = false;
};
