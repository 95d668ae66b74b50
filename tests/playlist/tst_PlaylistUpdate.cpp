#include "playlist/PlaylistBuilder.h"
#include "playlist/PlaylistLine.h"
#include "playlist/PlaylistManager.h"
#include "support/FakeFolderTree.h"
#include "support/TempMusicTree.h"
#include "support/TestServices.h"

#include <QLocale>
#include <QSignalSpy>
#include <QTest>

namespace {

QStringList texts(std::initializer_list<const char*> items) {
    QStringList out;
    for (const char* item : items)
        out << QString::fromUtf8(item);
    return out;
}

struct Update {
    TestServices t;
    DiskFolderLister disk;
    PlaylistManager playlists{t.services};
    PlaylistBuilder builder{t.services, playlists, disk};

    explicit Update(const TempMusicTree& music) { builder.MusicDirectories = QStringList{music.root()}; }
    void setPriority(const QString& path, char digit) {
        for (QString& line : playlists.PlaylistPaths)
            if (PlaylistLine::path(line) == path)
                line = PlaylistLine::withPriority(line, QLatin1Char(digit));
    }
};

} // namespace

class TestPlaylistUpdate : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }

    // The merge on its own: which lines get the old ":" and digit, and how many comparisons failed.
    void merge_data() {
        QTest::addColumn<QStringList>("old");
        QTest::addColumn<QStringList>("fresh");
        QTest::addColumn<QStringList>("merged");
        QTest::addColumn<int>("loops");
        QTest::newRow("same lists") << texts({"/m/a.mp3:2", "/m/b.mp3:0", "/m/c.mp3:4"})
                                    << texts({"/m/a.mp3:5", "/m/b.mp3:5", "/m/c.mp3:5"})
                                    << texts({"/m/a.mp3:2", "/m/b.mp3:0", "/m/c.mp3:4"})
                                    << 2; // each search starts on the last hit
        QTest::newRow("new file in between")
            << texts({"/m/a.mp3:2", "/m/c.mp3:3"}) << texts({"/m/a.mp3:5", "/m/b.mp3:5", "/m/c.mp3:5"})
            << texts({"/m/a.mp3:2", "/m/b.mp3:5", "/m/c.mp3:3"}) << 2;
        QTest::newRow("deleted file runs to the end")
            << texts({"/m/a.mp3:1", "/m/gone.mp3:0", "/m/z.mp3:3"}) << texts({"/m/a.mp3:5", "/m/z.mp3:5"})
            << texts({"/m/a.mp3:1", "/m/z.mp3:3"}) << 3;
        QTest::newRow("entry before the last match is not found")
            << texts({"/m/c.mp3:1", "/m/a.mp3:2"}) << texts({"/m/a.mp3:5", "/m/c.mp3:5"})
            << texts({"/m/a.mp3:5", "/m/c.mp3:1"}) << 2;
        QTest::newRow("keys compare case-sensitively")
            << texts({"/m/A.mp3:1", "/m/b.mp3:2"}) << texts({"/m/a.mp3:5", "/m/b.mp3:5"})
            << texts({"/m/a.mp3:5", "/m/b.mp3:2"}) << 3;
    }
    void merge() {
        QFETCH(QStringList, old);
        QFETCH(QStringList, fresh);
        QFETCH(QStringList, merged);
        QFETCH(int, loops);
        QCOMPARE(PlaylistBuilder::mergePriorities(old, qint16(old.size() - 1), fresh), loops);
        QCOMPARE(fresh, merged);
    }

    void keepsPrioritiesAgainstTheDisk() {
        TempMusicTree music(texts({"A/eins.mp3", "A/zwei.mp3", "B/drei.mp3", "B/vier.mp3"}));
        Update u(music);
        u.builder.BCreateList();
        u.setPriority(music.path(QStringLiteral("A/zwei.mp3")), '2');
        u.setPriority(music.path(QStringLiteral("B/vier.mp3")), '0');
        u.setPriority(music.path(QStringLiteral("B/drei.mp3")), '1');
        music.remove(QStringLiteral("B/drei.mp3"));
        music.add(texts({"B/neu.mp3", "C/auch neu.mp3"}));
        u.playlists.PlaylistChanged = false;
        QSignalSpy resets(&u.playlists, &PlaylistManager::historyResetRequested);

        u.builder.BUpdateList();
        QStringList expected =
            music.lines(texts({"A/eins.mp3", "A/zwei.mp3", "B/neu.mp3", "B/vier.mp3", "C/auch neu.mp3"}));
        expected[1] = music.line(QStringLiteral("A/zwei.mp3"), '2');
        expected[3] = music.line(QStringLiteral("B/vier.mp3"), '0');
        QCOMPARE(u.playlists.PlaylistPaths, expected);
        QCOMPARE(u.playlists.list(1).items(),
                 texts({"1. eins", "2. zwei", "3. neu", "4. vier", "5. auch neu"}));
        QCOMPARE(u.playlists.PlaylistNames.size(), 5);
        QVERIFY(u.playlists.PlaylistChanged);
        QCOMPARE(resets.count(), 2);
    }

    void oneEntryPlaylistLosesItsPriority() {
        TempMusicTree music(texts({"a.mp3"}));
        Update u(music);
        u.builder.BCreateList();
        u.setPriority(music.path(QStringLiteral("a.mp3")), '2');
        u.builder.BUpdateList();
        QCOMPARE(u.playlists.PlaylistPaths, QStringList{music.line(QStringLiteral("a.mp3"), '5')});
        QVERIFY(u.t.status.text().endsWith(QStringLiteral("   Liste neu: 0  Liste vorher: 0")));
    }

    void twoEntryPlaylistKeepsBoth() {
        TempMusicTree music(texts({"a.mp3", "b.mp3"}));
        Update u(music);
        u.builder.BCreateList();
        u.setPriority(music.path(QStringLiteral("a.mp3")), '2');
        u.setPriority(music.path(QStringLiteral("b.mp3")), '3');
        u.builder.BUpdateList();
        QCOMPARE(u.playlists.PlaylistPaths, QStringList({music.line(QStringLiteral("a.mp3"), '2'),
                                                         music.line(QStringLiteral("b.mp3"), '3')}));
    }

    void statusCountsUpperBounds() {
        TempMusicTree music;
        QStringList names;
        for (char c = 'a'; c <= 'j'; ++c)
            names << QStringLiteral("%1.mp3").arg(QLatin1Char(c));
        music.add(names);
        Update u(music);
        u.builder.BCreateList();
        QCOMPARE(u.playlists.PlaylistPaths.size(), 10);
        music.add(texts({"k.mp3", "l.mp3", "latin1:Über.mp3"}));
        u.t.clock.stepPerReading = 0.75;
        u.builder.BUpdateList();
        QCOMPARE(u.playlists.PlaylistPaths.size(), 12);
        QCOMPARE(u.t.status.text(), QStringLiteral("0,75s   Schleifen: 9   Liste neu: 11  Liste vorher: 9"
                                                   "  -  Übersprungen (Name nicht UTF-8): 1, z. B. ") +
                                        music.path(QStringLiteral("\uFFFDber.mp3")));
    }

    // A line the name rule refuses stops the rebuild where it is.
    void invalidLineStopsTheRebuild_data() {
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QString>("root");
        QTest::addColumn<QString>("status");
        QTest::addColumn<int>("rows");
        QTest::newRow("nothing found") << QStringList() << QStringLiteral("/m")
                                       << QStringLiteral("FuncGetSongName - Fehler: Leerer String!") << 0;
        QTest::newRow("path too short")
            << texts({"/m/langer Name.mp3", "/a.mp3"}) << QStringLiteral("/")
            << QStringLiteral("FuncGetSongName - Fehler: Pfad zu kurz! --> /a.mp3:5") << 0;
    }
    void invalidLineStopsTheRebuild() {
        QFETCH(QStringList, files);
        QFETCH(QString, root);
        QFETCH(QString, status);
        QFETCH(int, rows);
        FakeFolderTree tree(PathStyle::Posix);
        tree.addFolder(QStringLiteral("/m"));
        for (const QString& f : files)
            tree.addFile(f);
        TestServices t;
        PlaylistManager playlists(t.services);
        playlists.PlaylistPaths = texts({"/x/alt1.mp3:3", "/x/alt2.mp3:4"});
        playlists.FuncDisplayPlaylist(true, 1);
        PlaylistBuilder builder(t.services, playlists, tree);
        builder.MusicDirectories = QStringList{root};
        builder.BUpdateList();
        QCOMPARE(t.status.text(), status);
        QCOMPARE(playlists.list(1).count(), rows);
        QVERIFY(!playlists.PlaylistChanged);
    }

    void windowsStyleKeepsPriority() {
        FakeFolderTree tree(PathStyle::Windows);
        tree.addFile(QStringLiteral("E:\\Musik\\Rock\\laut.mp3"));
        tree.addFile(QStringLiteral("E:\\Musik\\Rock\\leise.mp3"));
        TestServices t;
        t.services.pathStyle = PathStyle::Windows;
        PlaylistManager playlists(t.services);
        PlaylistBuilder builder(t.services, playlists, tree);
        builder.MusicDirectories = QStringList{QStringLiteral("E:\\Musik\\")};
        builder.BCreateList();
        playlists.PlaylistPaths[1] = PlaylistLine::withPriority(playlists.PlaylistPaths[1], QLatin1Char('1'));
        tree.addFile(QStringLiteral("E:\\Musik\\Pop\\neu.mp3"));
        builder.BUpdateList();
        QCOMPARE(playlists.PlaylistPaths, texts({"E:\\Musik\\Pop\\neu.mp3:5", "E:\\Musik\\Rock\\laut.mp3:5",
                                                 "E:\\Musik\\Rock\\leise.mp3:1"}));
    }
};

QTEST_GUILESS_MAIN(TestPlaylistUpdate)
#include "tst_PlaylistUpdate.moc"
