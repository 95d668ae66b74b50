#include "playlist/PlaylistBuilder.h"
#include "playlist/PlaylistLine.h"
#include "playlist/PlaylistManager.h"
#include "support/FakeFolderTree.h"
#include "support/TempMusicTree.h"
#include "support/TestServices.h"

#include <QLocale>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QStringList list(const QString& items) {
    return items.isEmpty() ? QStringList() : items.split(u'|');
}

// A list built from the tree, with priorities set on some of its files ("name:digit").
struct Update {
    TestServices t;
    DiskFolderLister disk;
    PlaylistManager playlists{t.services};
    PlaylistBuilder builder{t.services, playlists, disk};

    Update(const TempMusicTree& music, const QString& priorities) {
        builder.MusicDirectories = QStringList{music.root()};
        builder.BCreateList();
        for (const QString& p : list(priorities))
            for (QString& line : playlists.PlaylistPaths)
                if (PlaylistLine::path(line) == music.path(p.chopped(2)))
                    line = PlaylistLine::withPriority(line, p.back());
        playlists.PlaylistChanged = false;
    }
};

} // namespace

class TestPlaylistUpdate : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }

    // The merge on its own: which lines get the old digit, and how many comparisons failed.
    void merge_data() {
        QTest::addColumn<QString>("old");
        QTest::addColumn<QString>("fresh");
        QTest::addColumn<QString>("merged");
        QTest::addColumn<int>("loops");
        QTest::newRow("same lists") << u"/m/a.mp3:2|/m/b.mp3:0|/m/c.mp3:4"_s
                                    << u"/m/a.mp3:5|/m/b.mp3:5|/m/c.mp3:5"_s
                                    << u"/m/a.mp3:2|/m/b.mp3:0|/m/c.mp3:4"_s
                                    << 2; // each search starts on the last hit
        QTest::newRow("new file in between")
            << u"/m/a.mp3:2|/m/c.mp3:3"_s << u"/m/a.mp3:5|/m/b.mp3:5|/m/c.mp3:5"_s
            << u"/m/a.mp3:2|/m/b.mp3:5|/m/c.mp3:3"_s << 2;
        QTest::newRow("deleted file runs to the end")
            << u"/m/a.mp3:1|/m/gone.mp3:0|/m/z.mp3:3"_s << u"/m/a.mp3:5|/m/z.mp3:5"_s
            << u"/m/a.mp3:1|/m/z.mp3:3"_s << 3;
        QTest::newRow("entry before the last match is not found")
            << u"/m/c.mp3:1|/m/a.mp3:2"_s << u"/m/a.mp3:5|/m/c.mp3:5"_s << u"/m/a.mp3:5|/m/c.mp3:1"_s << 2;
        QTest::newRow("keys compare case-sensitively")
            << u"/m/A.mp3:1|/m/b.mp3:2"_s << u"/m/a.mp3:5|/m/b.mp3:5"_s << u"/m/a.mp3:5|/m/b.mp3:2"_s << 3;
    }
    void merge() {
        QFETCH(QString, old);
        QFETCH(QString, fresh);
        QFETCH(QString, merged);
        QFETCH(int, loops);
        QStringList lines = list(fresh);
        QCOMPARE(PlaylistBuilder::mergePriorities(list(old), qint16(list(old).size() - 1), lines), loops);
        QCOMPARE(lines, list(merged));
    }

    // Against the disk: files removed and added between build and update.
    void keepsPrioritiesAgainstTheDisk_data() {
        QTest::addColumn<QString>("tree");
        QTest::addColumn<QString>("priorities");
        QTest::addColumn<QString>("removed");
        QTest::addColumn<QString>("added");
        QTest::addColumn<QString>("result");
        QTest::newRow("files gone and new")
            << u"A/eins.mp3|A/zwei.mp3|B/drei.mp3|B/vier.mp3"_s << u"A/zwei.mp3:2|B/vier.mp3:0|B/drei.mp3:1"_s
            << u"B/drei.mp3"_s << u"B/neu.mp3|C/auch neu.mp3"_s
            << u"A/eins.mp3:5|A/zwei.mp3:2|B/neu.mp3:5|B/vier.mp3:0|C/auch neu.mp3:5"_s;
        // Element 0 is left out of the merge: a one-entry list loses its priority.
        QTest::newRow("one entry") << u"a.mp3"_s << u"a.mp3:2"_s << QString() << QString() << u"a.mp3:5"_s;
        QTest::newRow("two entries") << u"a.mp3|b.mp3"_s << u"a.mp3:2|b.mp3:3"_s << QString() << QString()
                                     << u"a.mp3:2|b.mp3:3"_s;
    }
    void keepsPrioritiesAgainstTheDisk() {
        QFETCH(QString, tree);
        QFETCH(QString, priorities);
        QFETCH(QString, removed);
        QFETCH(QString, added);
        QFETCH(QString, result);
        TempMusicTree music(list(tree));
        Update u(music, priorities);
        if (!removed.isEmpty())
            music.remove(removed);
        music.add(list(added));
        QSignalSpy resets(&u.playlists, &PlaylistManager::historyResetRequested);
        u.builder.BUpdateList();
        QStringList expected, rows;
        for (const QString& r : list(result)) {
            expected << music.line(r.chopped(2), r.back().toLatin1());
            rows << u"%1. "_s.arg(rows.size() + 1) + r.section(u'/', -1).chopped(6);
        }
        QCOMPARE(u.playlists.PlaylistPaths, expected);
        QCOMPARE(u.playlists.list(1).items(), rows);
        QCOMPARE(u.playlists.PlaylistNames.size(), expected.size());
        QVERIFY(u.playlists.PlaylistChanged);
        QCOMPARE(resets.count(), 2);
    }

    void statusCountsUpperBounds() {
        TempMusicTree music(list(u"a.mp3|b.mp3|c.mp3|d.mp3|e.mp3|f.mp3|g.mp3|h.mp3|i.mp3|j.mp3"_s));
        Update u(music, QString());
        music.add(list(u"k.mp3|l.mp3|latin1:Über.mp3"_s));
        u.t.clock.stepPerReading = 0.75;
        u.builder.BUpdateList();
        QCOMPARE(u.playlists.PlaylistPaths.size(), 12);
        QCOMPARE(u.t.status.text(),
                 u"0,75s   Schleifen: 9   Liste neu: 11  Liste vorher: 9  -  Übersprungen (Name nicht "
                 u"UTF-8): 1, z. B. "_s +
                     music.path(u"\uFFFDber.mp3"_s));
    }

    // A line the name rule refuses stops the rebuild where it is.
    void invalidLineStopsTheRebuild_data() {
        QTest::addColumn<QString>("files");
        QTest::addColumn<QString>("root");
        QTest::addColumn<QString>("status");
        QTest::newRow("nothing found")
            << QString() << u"/m"_s << u"FuncGetSongName - Fehler: Leerer String!"_s;
        QTest::newRow("path too short") << u"/m/langer Name.mp3|/a.mp3"_s << u"/"_s
                                        << u"FuncGetSongName - Fehler: Pfad zu kurz! --> /a.mp3:5"_s;
    }
    void invalidLineStopsTheRebuild() {
        QFETCH(QString, files);
        QFETCH(QString, root);
        QFETCH(QString, status);
        FakeFolderTree tree(PathStyle::Posix);
        tree.addFolder(u"/m"_s);
        for (const QString& f : list(files))
            tree.addFile(f);
        TestServices t;
        PlaylistManager playlists(t.services);
        playlists.PlaylistPaths = list(u"/x/alt1.mp3:3|/x/alt2.mp3:4"_s);
        playlists.FuncDisplayPlaylist(true, 1);
        PlaylistBuilder builder(t.services, playlists, tree);
        builder.MusicDirectories = QStringList{root};
        builder.BUpdateList();
        QCOMPARE(t.status.text(), status);
        QCOMPARE(playlists.list(1).count(), 0);
        QVERIFY(!playlists.PlaylistChanged);
    }

    void windowsStyleKeepsPriority() {
        FakeFolderTree tree(PathStyle::Windows);
        tree.addFile(u"E:\\Musik\\Rock\\laut.mp3"_s);
        tree.addFile(u"E:\\Musik\\Rock\\leise.mp3"_s);
        TestServices t;
        t.services.pathStyle = PathStyle::Windows;
        PlaylistManager playlists(t.services);
        PlaylistBuilder builder(t.services, playlists, tree);
        builder.MusicDirectories = QStringList{u"E:\\Musik\\"_s};
        builder.BCreateList();
        playlists.PlaylistPaths[1] = PlaylistLine::withPriority(playlists.PlaylistPaths[1], u'1');
        tree.addFile(u"E:\\Musik\\Pop\\neu.mp3"_s);
        builder.BUpdateList();
        QCOMPARE(
            playlists.PlaylistPaths,
            list(u"E:\\Musik\\Pop\\neu.mp3:5|E:\\Musik\\Rock\\laut.mp3:5|E:\\Musik\\Rock\\leise.mp3:1"_s));
    }
};

QTEST_GUILESS_MAIN(TestPlaylistUpdate)
#include "tst_PlaylistUpdate.moc"
