#include "playlist/MusicFolderWalk.h"
#include "playlist/PlaylistBuilder.h"
#include "playlist/PlaylistLine.h"
#include "playlist/PlaylistManager.h"
#include "playlist/SongIdentities.h"
#include "support/FakeFolderTree.h"
#include "support/FileBytes.h"
#include "support/Mp3Synth.h"
#include "support/TempMusicTree.h"
#include "support/TestServices.h"

#include <QDir>
#include <QLocale>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QStringList list(const QString& items) {
    return items.isEmpty() ? QStringList() : items.split(u'|');
}

// The build as the main window runs it, over the real disk or a tree in memory, with every status
// text recorded.
struct Build {
    TestServices t;
    DiskFolderLister disk;
    PlaylistManager playlists{t.services};
    PlaylistBuilder builder;
    QStringList statusTexts;

    explicit Build(const QString& root, const FolderLister* tree = nullptr)
        : builder(t.services, playlists, tree ? *tree : disk) {
        t.services.pathStyle = tree ? tree->style() : Paths::nativeStyle();
        builder.MusicDirectories = list(root);
        QObject::connect(&t.status, &StatusLine::textChanged, [this](const QString& s) { statusTexts << s; });
    }
    // Builds the list, then sets priorities on some of its files ("relative path:digit").
    void buildWith(const TempMusicTree& music, const QString& priorities) {
        builder.BCreateList();
        for (const QString& p : list(priorities))
            for (QString& line : playlists.PlaylistPaths)
                if (PlaylistLine::path(line) == music.path(p.chopped(2)))
                    line = PlaylistLine::withPriority(line, p.back());
        playlists.PlaylistChanged = false;
    }
};

// A song with its own audio (seed), behind an ID3v2 tag, large enough to be read in blocks, or with
// 's' short enough to be read at once. Variant 'x': another song of the same length; 't': the same
// audio with its tags edited (a larger ID3v2 tag, an ID3v1 tag behind).
bool writeSong(const QString& path, const QString& recipe) {
    const int frames = (recipe.contains(u's') ? 100 : 700) + recipe.at(0).digitValue();
    QByteArray audio = Mp3Synth::cbrFrames(Mp3Synth::Frame{}, frames);
    if (recipe.endsWith(u'x'))
        audio[200] = '\x55';
    const bool tagged = recipe.endsWith(u't');
    QDir().mkpath(QFileInfo(path).path());
    return FileBytes::write(path, Mp3Synth::id3v2(tagged ? 500 : 40) + audio +
                                      (tagged ? Mp3Synth::id3v1() : QByteArray()));
}

} // namespace

// Building the main list from the music folders, and updating it with the priorities kept.
class TestPlaylistBuilder : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }

    void splitMusicDirectories_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("folders");
        QTest::newRow("one") << u"/m"_s << u"/m"_s;
        QTest::newRow("lines") << u"/m\r\n/n"_s << u"/m|/n"_s;
        QTest::newRow("comma blank") << u"/m, /n"_s << u"/m|/n"_s;
        QTest::newRow("comma alone stays") << u"/m,/n"_s << u"/m,/n"_s;
        QTest::newRow("name with comma blank is split")
            << u"/Musik/Bach, Johann"_s << u"/Musik/Bach|Johann"_s;
    }
    void splitMusicDirectories() {
        QFETCH(QString, text);
        QFETCH(QString, folders);
        QCOMPARE(PlaylistBuilder::splitMusicDirectories(text), list(folders));
        QCOMPARE(PlaylistBuilder::splitMusicDirectories(QString()), QStringList{QString()});
    }

    void musicNames() {
        for (const QString& name : list(u"a.mp3|A.MP3|a.Wma|a.ogg|a.mpc|a.mp3.bak|Best.of.mp3s"_s))
            QVERIFY2(MusicFolderWalk::isMusicName(name), qPrintable(name));
        for (const QString& name : list(u"a.flac|mp3|cover.jpg"_s))
            QVERIFY2(!MusicFolderWalk::isMusicName(name), qPrintable(name));
    }

    // Folders are listed case-insensitively with ties in binary order, whatever the characters.
    void listingOrder_data() {
        QTest::addColumn<QString>("names");
        QTest::newRow("ASCII: case, length, ties") << u"_x|A|a|Ab|ab|b|E|Z|Zz"_s;
        QTest::newRow("umlauts fold and sort after z")
            << u"Motorhead|MOTÖRHEAD|Motörhead|Mötley|Zappa|Ärzte"_s;
        QTest::newRow("letters beyond the basic plane fold as pairs")
            << u"a\U00010428b|a\U00010400c|a\U00010428d"_s;
    }
    void listingOrder() {
        QFETCH(QString, names);
        QStringList listed = list(names);
        std::reverse(listed.begin(), listed.end());
        FolderLister::sortNames(listed);
        QCOMPARE(listed, list(names));
    }

    // Which files a tree on disk gives, in which order after the sort ("*": not compared), and every
    // status text ("<root>" stands for the tree's folder). Errors and progress stay until the summary
    // replaces them. A trailing separator on the root changes nothing.
    void buildFromDisk_data() {
        QTest::addColumn<QString>("tree");
        QTest::addColumn<QString>("roots"); // "" = the tree's folder
        QTest::addColumn<QString>("playlist");
        QTest::addColumn<QString>("status");
        // The listing is case-insensitive, the sort binary: "a.mp3" is found first and stays first
        // though it sorts last; the walk goes back to each parent and skips hidden entries.
        QTest::newRow("element 0 kept first, deep tree, hidden entries")
            << u"C.mp3|a.mp3|D/B/C/1.mp3|D/B/2.mp3|D/3.mp3|D/E/4.mp3|D/B/C/x.jpg|D/F/|.h/a.mp3|.b.mp3|D/.e.mp3"_s
            << QString() << u"a.mp3|C.mp3|D/3.mp3|D/B/2.mp3|D/B/C/1.mp3|D/E/4.mp3"_s
            << u"12,38s  -  Einträge: 6"_s;
        QTest::newRow("empty folders only")
            << u"a/|b/c/"_s << QString() << QString() << u"12,38s  -  Einträge: 0"_s;
#ifndef Q_OS_WIN // symbolic links and names in other encodings are the POSIX file system's
        QTest::newRow("link back up the tree beside a cover")
            << u"01.mp3|Album/02.mp3|Album/cover.jpg|Album/Alle -> ."_s << QString()
            << u"01.mp3|Album/02.mp3"_s << u"12,38s  -  Einträge: 2"_s;
        QTest::newRow("links to a folder and a file elsewhere")
            << u"A/x.mp3|B/Zu A -> A|B/Lied.mp3 -> A/x.mp3"_s << QString()
            << u"A/x.mp3|B/Lied.mp3|B/Zu A/x.mp3"_s << u"12,38s  -  Einträge: 3"_s;
        QTest::newRow("Latin-1 names skipped and counted")
            << u"Die Ärzte/Schrei nach Liebe.mp3|latin1:Motörhead.mp3|latin1:Björk/Jóga.mp3"_s << QString()
            << u"Die Ärzte/Schrei nach Liebe.mp3"_s
            << u"12,38s  -  Einträge: 1  -  Übersprungen (Name nicht UTF-8): 2, z. B. <root>/Bj\uFFFDrk"_s;
#endif
        const QString missing =
            u"Fehler - Verzeichnis nicht vorhanden: <root>/fehlt|12,38s  -  Einträge: 2"_s;
        QTest::newRow("second folder missing")
            << u"a.mp3|b/c.mp3"_s << u"<root>|<root>/fehlt"_s << u"a.mp3|b/c.mp3"_s << missing;
        QTest::newRow("first folder missing")
            << u"a.mp3|b/c.mp3"_s << u"<root>/fehlt|<root>"_s << u"a.mp3|b/c.mp3"_s << missing;
        for (int files : {63, 64, 129}) {
            QStringList tree;
            for (int i = 0; i < files; ++i)
                tree << u"CD%1/%2.mp3"_s.arg(i / 10).arg(i);
            const QStringList progress{u"Suche Dateien: 64"_s, u"Suche Dateien: 128"_s};
            QTest::addRow("%d files", files)
                << tree.join(u'|') << QString() << u"*"_s
                << (progress.mid(0, files / 64) << u"12,38s  -  Einträge: %1"_s.arg(files)).join(u'|');
        }
    }
    void buildFromDisk() {
        QFETCH(QString, tree);
        QFETCH(QString, roots);
        QFETCH(QString, playlist);
        QFETCH(QString, status);
        TempMusicTree music(list(tree));
        Build b(roots.isEmpty() ? music.root()
                                : QDir::toNativeSeparators(roots.replace(u"<root>"_s, music.root())));
        QSignalSpy resets(&b.playlists, &PlaylistManager::historyResetRequested);
        b.playlists.PlaylistPaths = QStringList{u"/old/entry.mp3:3"_s};
        b.t.clock.stepPerReading = 12.375;
        b.builder.BCreateList();
        const QStringList texts = list(QDir::toNativeSeparators(status.replace(u"<root>"_s, music.root())));
        QCOMPARE(b.statusTexts, texts);
        QVERIFY(b.playlists.PlaylistChanged);
        QCOMPARE(resets.count(), 2);
        if (playlist == u"*"_s)
            return;
        const QStringList expected = music.lines(list(playlist));
        QCOMPARE(b.playlists.PlaylistPaths, expected.isEmpty() ? QStringList{QString()} : expected);
        QCOMPARE(b.playlists.list(1).count(), int(expected.size()));
        if (!expected.isEmpty())
            QCOMPARE(b.playlists.list(1).itemText(0), u"1. "_s + b.playlists.PlaylistNames.first());
        Build trailing(music.root() + QDir::separator());
        trailing.builder.BCreateList();
        QCOMPARE(trailing.playlists.PlaylistPaths, roots.isEmpty() ? b.playlists.PlaylistPaths : expected);
    }

    // Trees in memory: Windows drive roots with and without "\", the POSIX root, a folder whose
    // listing fails (reported, the walk goes on). "!<status>": an update, which a line the name rule
    // refuses stops where it is, with the list emptied and not counted as a change.
    void treeInMemory_data() {
        QTest::addColumn<int>("style"); // 0 Windows, 1 POSIX
        QTest::addColumn<QString>("files");
        QTest::addColumn<QString>("root");
        QTest::addColumn<QString>("playlist");
        const QString win =
            u"D:\\MP3\\Greatest Hits\\Song.mp3|D:\\MP3\\Greatest Hits\\folder.jpg|D:\\MP3\\abc.WMA|D:\\boot.ini"_s;
        // "abc.WMA" is listed before "Greatest Hits" (case-insensitive) and so found first.
        const QString found = u"D:\\MP3\\abc.WMA:5|D:\\MP3\\Greatest Hits\\Song.mp3:5"_s;
        QTest::newRow("drive with backslash") << 0 << win << u"D:\\"_s << found;
        QTest::newRow("drive without") << 0 << win << u"D:"_s << found;
        QTest::newRow("posix root") << 1 << u"/musik/a.mp3|/etc/x.conf"_s << u"/"_s << u"/musik/a.mp3:5"_s;
        QTest::newRow("broken listing")
            << 1 << u"/m/a/1.mp3|/m/b/2.mp3|/m/c/3.mp3"_s << u"/m"_s << u"/m/a/1.mp3:5|/m/c/3.mp3:5"_s;
        QTest::newRow("update, nothing found")
            << 1 << QString() << u"/m"_s << u"!FuncGetSongName - Fehler: Leerer String!"_s;
        QTest::newRow("update, path too short") << 1 << u"/m/langer Name.mp3|/a.mp3"_s << u"/"_s
                                                << u"!FuncGetSongName - Fehler: Pfad zu kurz! --> /a.mp3:5"_s;
    }
    void treeInMemory() {
        QFETCH(int, style);
        QFETCH(QString, files);
        QFETCH(QString, root);
        QFETCH(QString, playlist);
        FakeFolderTree tree(style == 0 ? PathStyle::Windows : PathStyle::Posix);
        for (const QString& f : list(files))
            tree.addFile(f);
        tree.addFolder(u"/m"_s);
        tree.failListing(u"/m/b"_s, 75, u"Fehler beim Zugriff auf Pfad/Datei"_s);
        Build b(root, &tree);
        if (playlist.startsWith(u'!')) {
            b.playlists.PlaylistPaths = list(u"/x/alt1.mp3:3|/x/alt2.mp3:4"_s);
            b.playlists.FuncDisplayPlaylist(true, 1);
            b.builder.BUpdateList();
            QCOMPARE(b.t.status.text(), playlist.mid(1));
            QCOMPARE(b.playlists.list(1).count(), 0);
            QVERIFY(!b.playlists.PlaylistChanged);
            return;
        }
        b.builder.BCreateList();
        QCOMPARE(b.playlists.PlaylistPaths, list(playlist));
        if (root == u"/m"_s)
            QCOMPARE(b.statusTexts.first(), u"Fehler: #75 Fehler beim Zugriff auf Pfad/Datei"_s);
    }

    // The merge on its own: which lines get the old digit, and how many comparisons failed.
    void merge_data() {
        QTest::addColumn<QString>("old");
        QTest::addColumn<QString>("fresh");
        QTest::addColumn<QString>("merged");
        QTest::addColumn<qint64>("loops");
        QTest::newRow("same lists") << u"/m/a.mp3:2|/m/b.mp3:0|/m/c.mp3:4"_s
                                    << u"/m/a.mp3:5|/m/b.mp3:5|/m/c.mp3:5"_s
                                    << u"/m/a.mp3:2|/m/b.mp3:0|/m/c.mp3:4"_s
                                    << qint64(2); // each search starts on the last hit
        QTest::newRow("new file in between")
            << u"/m/a.mp3:2|/m/c.mp3:3"_s << u"/m/a.mp3:5|/m/b.mp3:5|/m/c.mp3:5"_s
            << u"/m/a.mp3:2|/m/b.mp3:5|/m/c.mp3:3"_s << qint64(2);
        QTest::newRow("deleted file runs to the end")
            << u"/m/a.mp3:1|/m/gone.mp3:0|/m/z.mp3:3"_s << u"/m/a.mp3:5|/m/z.mp3:5"_s
            << u"/m/a.mp3:1|/m/z.mp3:3"_s << qint64(3);
        QTest::newRow("entry before the last match is not found")
            << u"/m/c.mp3:1|/m/a.mp3:2"_s << u"/m/a.mp3:5|/m/c.mp3:5"_s << u"/m/a.mp3:5|/m/c.mp3:1"_s
            << qint64(2);
        QTest::newRow("keys compare case-sensitively")
            << u"/m/A.mp3:1|/m/b.mp3:2"_s << u"/m/a.mp3:5|/m/b.mp3:5"_s << u"/m/a.mp3:5|/m/b.mp3:2"_s
            << qint64(3);
        // A search starts on the last hit itself: a repeated old path gives its digit to the same new
        // line again (the last one wins), and a repeated new path takes it on its first line.
        QTest::newRow("repeated paths")
            << u"/m/a.mp3:1|/m/a.mp3:2|/m/b.mp3:3"_s << u"/m/a.mp3:5|/m/a.mp3:5|/m/b.mp3:5"_s
            << u"/m/a.mp3:2|/m/a.mp3:5|/m/b.mp3:3"_s << qint64(2);
    }
    void merge() {
        QFETCH(QString, old);
        QFETCH(QString, fresh);
        QFETCH(QString, merged);
        QFETCH(qint64, loops);
        QStringList lines = list(fresh);
        QCOMPARE(PlaylistBuilder::mergePriorities(list(old), qint32(list(old).size() - 1), lines), loops);
        QCOMPARE(lines, list(merged));
    }

    // Random lists with repeated, missing and reordered paths give what the search along the list
    // gave, digit for digit and comparison for comparison.
    void mergeMatchesTheSearchAlongTheList() {
        QRandomGenerator random(31);
        auto draw = [&random](int size) {
            QStringList lines;
            for (int k = 0; k < size; ++k)
                lines << u"/m/%1.mp3:%2"_s.arg(random.bounded(12)).arg(random.bounded(6));
            return lines;
        };
        for (int round = 0; round < 300; ++round) {
            const QStringList old = draw(random.bounded(1, 15));
            QStringList fresh = draw(random.bounded(1, 15));
            if (round % 2)
                std::sort(fresh.begin(), fresh.end());
            QStringList expected = fresh;
            qint64 loops = 0;
            qsizetype j0 = 0;
            for (const QString& line : old)
                for (qsizetype j = j0; j < expected.size(); ++j, ++loops)
                    if (expected.at(j).chopped(2) == line.chopped(2)) {
                        expected[j] = expected.at(j).chopped(2) + line.right(2);
                        j0 = j;
                        break;
                    }
            QCOMPARE(PlaylistBuilder::mergePriorities(old, qint32(old.size() - 1), fresh), loops);
            QCOMPARE(fresh, expected);
        }
    }

    // Against the disk: files removed and added between build and update.
    void keepsPrioritiesAgainstTheDisk_data() {
        QTest::addColumn<QString>("tree");
        QTest::addColumn<QString>("priorities");
        QTest::addColumn<QString>("removed");
        QTest::addColumn<QString>("added");
        QTest::addColumn<QString>("result");
        QTest::addColumn<QString>("status"); // "<root>" stands for the tree's folder
#ifdef Q_OS_WIN
        const QString skipped, skippedText;
#else
        const QString skipped = u"|latin1:Über.mp3"_s;
        const QString skippedText = u"  -  Übersprungen (Name nicht UTF-8): 1, z. B. <root>/\uFFFDber.mp3"_s;
#endif
        QTest::newRow("files gone and new")
            << u"A/eins.mp3|A/zwei.mp3|B/drei.mp3|B/vier.mp3"_s << u"A/zwei.mp3:2|B/vier.mp3:0|B/drei.mp3:1"_s
            << u"B/drei.mp3"_s << u"B/neu.mp3|C/auch neu.mp3"_s + skipped
            << u"A/eins.mp3:5|A/zwei.mp3:2|B/neu.mp3:5|B/vier.mp3:0|C/auch neu.mp3:5"_s
            << u"0,75s   Schleifen: 7   Liste neu: 4  Liste vorher: 3"_s + skippedText;
        // Element 0 is left out of the merge: a one-entry list loses its priority.
        QTest::newRow("one entry") << u"a.mp3"_s << u"a.mp3:2"_s << QString() << QString() << u"a.mp3:5"_s
                                   << u"0,75s   Schleifen: 0   Liste neu: 0  Liste vorher: 0"_s;
        QTest::newRow("two entries") << u"a.mp3|b.mp3"_s << u"a.mp3:2|b.mp3:3"_s << QString() << QString()
                                     << u"a.mp3:2|b.mp3:3"_s
                                     << u"0,75s   Schleifen: 1   Liste neu: 1  Liste vorher: 1"_s;
    }
    void keepsPrioritiesAgainstTheDisk() {
        QFETCH(QString, tree);
        QFETCH(QString, priorities);
        QFETCH(QString, removed);
        QFETCH(QString, added);
        QFETCH(QString, result);
        QFETCH(QString, status);
        TempMusicTree music(list(tree));
        Build u(music.root());
        u.buildWith(music, priorities);
        if (!removed.isEmpty())
            music.remove(removed);
        music.add(list(added));
        QSignalSpy resets(&u.playlists, &PlaylistManager::historyResetRequested);
        u.t.clock.stepPerReading = 0.75;
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
        QCOMPARE(u.t.status.text(), QDir::toNativeSeparators(status.replace(u"<root>"_s, music.root())));
    }

    // A list with priorities 1, 2, 3, 4, 0 is built and saved and the program closed; songs are moved
    // on disk (">" rename, "+" copy, "-" delete, "=" write a song) and the remembered identities
    // damaged; the program starts, loads the list and updates it. Songs whose audio is found at
    // exactly one new path keep their priority there; afterwards the cache knows the files listed.
    void recognisesMovedSongs_data() {
        QTest::addColumn<QString>("changes");
        QTest::addColumn<QString>("cache");
        QTest::addColumn<QString>("result");
        QTest::addColumn<int>("moved");
        const QString unmoved = u"B/drei.mp3:3|B/vier.mp3:4|C/fuenf.mp3:0"_s;
        QTest::newRow("folder renamed")
            << u"A > A (2001)"_s << QString() << u"A (2001)/eins.mp3:1|A (2001)/zwei.mp3:2|"_s + unmoved << 2;
        QTest::newRow("renamed in place")
            << u"B/drei.mp3 > B/drei (live).mp3"_s << QString()
            << u"A/eins.mp3:1|A/zwei.mp3:2|B/drei (live).mp3:3|B/vier.mp3:4|C/fuenf.mp3:0"_s << 1;
        QTest::newRow("copied to another disk under another name, then deleted")
            << u"B/vier.mp3 + D/4.mp3|-B/vier.mp3"_s << QString()
            << u"A/eins.mp3:1|A/zwei.mp3:2|B/drei.mp3:3|C/fuenf.mp3:0|D/4.mp3:4"_s << 1;
        QTest::newRow("tags edited after the move")
            << u"C/fuenf.mp3 > D/fuenf.mp3|D/fuenf.mp3=5st"_s << QString()
            << u"A/eins.mp3:1|A/zwei.mp3:2|B/drei.mp3:3|B/vier.mp3:4|D/fuenf.mp3:0"_s << 1;
        QTest::newRow("two copies of one song")
            << u"A/zwei.mp3 + D/zwei.mp3|A/zwei.mp3 > E/zwei.mp3"_s << QString()
            << u"A/eins.mp3:1|B/drei.mp3:3|B/vier.mp3:4|C/fuenf.mp3:0|D/zwei.mp3:5|E/zwei.mp3:5"_s << 0;
        QTest::newRow("another song of the same name and length")
            << u"-B/drei.mp3|D/drei.mp3=3x"_s << QString()
            << u"A/eins.mp3:1|A/zwei.mp3:2|B/vier.mp3:4|C/fuenf.mp3:0|D/drei.mp3:5"_s << 0;
        const QString allNew = u"A (2001)/eins.mp3:5|A (2001)/zwei.mp3:5|"_s + unmoved;
        QTest::newRow("cache missing") << u"A > A (2001)"_s << u"missing"_s << allNew << 0;
        QTest::newRow("cache garbage") << u"A > A (2001)"_s << u"garbage"_s << allNew << 0;
        // Records are kept sorted by path: the cut costs the last one, C/fuenf.mp3.
        QTest::newRow("cache cut off in its last line")
            << u"A > A (2001)|C/fuenf.mp3 > C/5.mp3"_s << u"truncated"_s
            << u"A (2001)/eins.mp3:1|A (2001)/zwei.mp3:2|B/drei.mp3:3|B/vier.mp3:4|C/5.mp3:5"_s << 2;
    }
    void recognisesMovedSongs() {
        QFETCH(QString, changes);
        QFETCH(QString, cache);
        QFETCH(QString, result);
        QFETCH(int, moved);
        TempMusicTree music;
        const QString songs = u"A/eins.mp3=1|A/zwei.mp3=2|B/drei.mp3=3|B/vier.mp3=4|C/fuenf.mp3=5s"_s;
        for (const QString& song : list(songs))
            QVERIFY(writeSong(music.path(song.section(u'=', 0, 0)), song.section(u'=', 1)));
        const QString cacheFile = music.path(u".cache/SongIdentities.txt"_s);
        const QString playlist = music.path(u".liste.txt"_s);
        Build u(music.root());
        {
            SongIdentities before(cacheFile);
            u.t.services.songIdentities = &before;
            u.buildWith(music, u"A/eins.mp3:1|A/zwei.mp3:2|B/drei.mp3:3|B/vier.mp3:4|C/fuenf.mp3:0"_s);
            u.playlists.FuncSavePlaylist(playlist, 1);
            before.waitUntilIdle();
        }

        for (const QString& change : list(changes)) {
            const QStringList move = change.split(u" > "_s), copy = change.split(u" + "_s);
            if (move.size() == 2)
                QVERIFY(QDir().mkpath(QFileInfo(music.path(move[1])).path()) &&
                        QDir().rename(music.path(move[0]), music.path(move[1])));
            else if (copy.size() == 2)
                QVERIFY(QDir().mkpath(QFileInfo(music.path(copy[1])).path()) &&
                        QFile::copy(music.path(copy[0]), music.path(copy[1])));
            else if (change.startsWith(u'-'))
                QVERIFY(QFile::remove(music.path(change.mid(1))));
            else
                QVERIFY(writeSong(music.path(change.section(u'=', 0, 0)), change.section(u'=', 1)));
        }
        const QByteArray remembered = FileBytes::read(cacheFile);
        if (cache == u"missing"_s)
            QVERIFY(QFile::remove(cacheFile));
        else if (cache == u"truncated"_s)
            QVERIFY(FileBytes::write(cacheFile, remembered.chopped(10)));
        else if (cache == u"garbage"_s)
            QVERIFY(FileBytes::write(cacheFile, SongIdentityFile::kHeader + Mp3Synth::junk(4096, 7)));

        SongIdentities after(cacheFile);
        u.t.services.songIdentities = &after;
        u.playlists.FuncReadPlaylistAndDisplay(playlist, true, 1);
        u.builder.BUpdateList();
        QStringList expected;
        for (const QString& r : list(result))
            expected << music.line(r.chopped(2), r.back().toLatin1());
        QCOMPARE(u.playlists.PlaylistPaths, expected);
        QVERIFY2(u.t.status.text().endsWith(u"   Verschoben: %1"_s.arg(moved)),
                 qPrintable(u.t.status.text()));

        after.waitUntilIdle();
        QStringList known = SongIdentityFile::read(cacheFile).keys(), listed;
        for (const QString& line : expected)
            listed << line.chopped(2);
        known.sort();
        listed.sort();
        QCOMPARE(known, listed);
    }
};

QTEST_GUILESS_MAIN(TestPlaylistBuilder)
#include "tst_PlaylistBuilder.moc"
