#pragma once

#include "base/Dialogs.h"
#include "base/Services.h"
#include "playlist/PlaylistListModel.h"

#include <QObject>
#include <QStringList>

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

    PlaylistListModel& list(int n) { return n == 1 ? m_list1 : m_list2; }
    QStringList& paths(int n) { return n == 1 ? PlaylistPaths : Playlist2Paths; }
    static bool isEmptyPlaylist(const QStringList& paths) {
        return paths.isEmpty() || paths.first().isEmpty();
    }

    // The caption of playlist n's FActPlaylist label: its file, "" = none yet.
    const QString& actPlaylist(int n) const { return n == 1 ? m_act1 : m_act2; }
    void setActPlaylist(int n, const QString& file);

    QString FuncReadPlaylistAndDisplay(const QString& file, bool clear, int n);
    void FuncDisplayPlaylist(bool clear, int n);
    void OpenPlaylist(int n);
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

private:
    Dialogs::FileRequest fileRequest(const QString& title, int flags) const;

    Services& m_services;
    PlaylistListModel m_list1;
    PlaylistListModel m_list2;
    QString m_act1;
    QString m_act2;
};
