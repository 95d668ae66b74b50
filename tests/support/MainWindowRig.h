#pragma once

#include "app/Playlist2Binding.h"
#include "app/SecondaryWindows.h"
#include "app/TavoMP3PlayerMain.h"
#include "app/TransportBinding.h"
#include "app/TrayBinding.h"
#include "app/TrayModule.h"
#include "playlist/PlaylistFile.h"
#include "support/CoreRig.h"
#include "ui/SkinControl.h"

#include <QAction>
#include <QLabel>
#include <QListView>
#include <QTemporaryDir>
#include <QTest>

// The program core and its main window on the test doubles and the in-memory player, not yet loaded.
struct MainWindowRig : CoreRig {
    using CoreRig::CoreRig;

    QTemporaryDir dir;
    TavoMP3PlayerMain w{core};

    MainWindowUi& ui() { return w.ui(); }
    PlaybackController& playback() { return core.playback(); }
    PlaybackState& state() { return core.playback().state(); }
    // One of the window's bindings (TrayBinding, Playlist2Binding, ...).
    template <typename B> B& binding() { return *w.findChild<B*>(); }

    void setting(const char* key, const QString& value) {
        t.settings.SaveSetting(QStringLiteral("Settings"), QLatin1String(key), value);
    }
    // Lines "/<folder>/SongNN.mp3:5", numbered from 00.
    static QStringList songs(int count, const QString& folder = QStringLiteral("m")) {
        QStringList out;
        for (int i = 0; i < count; ++i)
            out << QStringLiteral("/%1/Song%2.mp3:5").arg(folder).arg(i, 2, 10, QLatin1Char('0'));
        return out;
    }
    QString writeList(const QStringList& lines, const QString& name = QStringLiteral("list.txt")) {
        const QString file = dir.filePath(name);
        PlaylistFile::writeLines(file, lines);
        return file;
    }
    // The player and the music folders set (without them start-up only opens the settings window),
    // a playlist file of these lines unless there are none, and the window loaded.
    QString load(const QStringList& lines = {}, const QString& music = {}) {
        setting("WinampPath", QStringLiteral("/usr/bin/mpv"));
        setting("UserMP3Directory", music.isEmpty() ? dir.path() : music);
        const QString file = lines.isEmpty() ? QString() : writeList(lines);
        if (!file.isEmpty())
            setting("PlaylistFile", file);
        w.load();
        return file;
    }
    void play(int row) {
        core.playlists().list(1).selectOnly(row);
        ui().FPlaylist->setCurrentIndex(core.playlists().list(1).index(row));
        QTest::mouseClick(ui().BPlay, Qt::LeftButton);
    }
};
