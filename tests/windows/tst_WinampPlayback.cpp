#include "base/StatusLine.h"
#include "playback/PlaybackController.h"
#include "player/WinampLink.h"
#include "playlist/PlaylistManager.h"
#include "support/TestServices.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <windows.h>

using namespace Qt::StringLiterals;

// The program's playback (monitor, song selection, transport) on the Windows player link and FakeWinamp.exe:
// the songs of a list in order, a shuffle pick, the end of the list, and a player that closes.
class tst_WinampPlayback : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;

    static HWND playerWindow() { return FindWindowW(L"Winamp v1.x", nullptr); }
    static void tell(const QByteArray& line) {
        COPYDATASTRUCT record{0x54415630, DWORD(line.size()), const_cast<char*>(line.constData())};
        SendMessageW(playerWindow(), WM_COPYDATA, 0, LPARAM(&record));
    }
    QStringList handedOver() const {
        QFile file(m_dir.filePath(u"record.txt"_s));
        if (!file.open(QIODevice::ReadOnly))
            return {};
        QStringList files;
        for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts))
            if (line.startsWith(u"file "_s))
                files << line.mid(5).section(u' ', 0, -2);
        return files;
    }

private slots:
    void cleanup() {
        if (playerWindow())
            tell("close");
        QTRY_VERIFY(!playerWindow());
    }

    void playsTheListThroughThePlayersWindow() {
        qputenv("TAVO_FAKE_WINAMP_RECORD",
                QDir::toNativeSeparators(m_dir.filePath(u"record.txt"_s)).toLocal8Bit());
        TestServices t;
        t.services.pathStyle = PathStyle::Windows;
        WinampLink link(t.status, t.dialogs);
        PlaylistManager playlists(t.services);
        PlaybackController playback(t.services, playlists, link);
        link.StartWinamp(QCoreApplication::applicationDirPath() + u"/FakeWinamp.exe"_s);
        QVERIFY(link.isConnected());
        const QStringList songs{u"C:\\Musik\\Erstes Lied.mp3"_s, u"C:\\Musik\\Zweites Lied.mp3"_s,
                                u"C:\\Musik\\Grüße.mp3"_s};
        for (const QString& song : songs)
            playlists.PlaylistPaths << song + u":5"_s;
        playlists.PlaylistPaths.removeFirst();
        playlists.FuncDisplayPlaylist(true, 1);

        playback.transport().Play(0);
        tell("status 1");
        playback.monitor().tmrTimeTick(); // playing: nothing else is handed over
        for (int song = 1; song < 3; ++song) {
            tell("status 0"); // the song ended
            playback.monitor().tmrTimeTick();
            tell("status 1");
        }
        QCOMPARE(handedOver(), songs);
        tell("status 0");
        playback.monitor().tmrTimeTick();
        QCOMPARE(t.status.text(), u"Playlistende erreicht - Playmodus gestoppt."_s);

        // Shuffle: the weighted pick (index from the first draw, the dice from the second).
        t.random.values = {0.6, 0.0};
        playback.toggleShuffle();
        playback.next();
        QCOMPARE(handedOver().last(), songs.at(1));
        QCOMPARE(playback.history().slot(1), 1);

        // A player that closes: messages go nowhere, the status answers 0.
        tell("close");
        QTRY_VERIFY(!playerWindow());
        QCOMPARE(link.WinampGetInfo(PlayerLink::InfoStatus).toInt(), 0);
    }
};

QTEST_GUILESS_MAIN(tst_WinampPlayback)
#include "tst_WinampPlayback.moc"
