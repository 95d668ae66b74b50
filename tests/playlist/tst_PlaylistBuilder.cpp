#include "base/RuntimeError.h"
#include "playlist/MusicFolderWalk.h"
#include "playlist/PlaylistBuilder.h"
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

// The build as the main window runs it, over the real disk, with every status text recorded.
struct Build {
    TestServices t;
    DiskFolderLister disk;
    PlaylistManager playlists{t.services};
    PlaylistBuilder builder{t.services, playlists, disk};
    QStringList statusTexts;

    Build() {
        QObject::connect(&t.status, &StatusLine::textChanged, [this](const QString& s) { statusTexts << s; });
    }
};

} // namespace

class TestPlaylistBuilder : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }

    void splitMusicDirectories_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("folders");
        QTest::newRow("one") << QStringLiteral("/m") << texts({"/m"});
        QTest::newRow("lines") << QStringLiteral("/m\r\n/n") << texts({"/m", "/n"});
        QTest::newRow("comma blank") << QStringLiteral("/m, /n") << texts({"/m", "/n"});
        QTest::newRow("comma alone stays") << QStringLiteral("/m,/n") << texts({"/m,/n"});
        QTest::newRow("name with comma blank is split")
            << QStringLiteral("/Musik/Bach, Johann") << texts({"/Musik/Bach", "Johann"});
        QTest::newRow("empty") << QString() << texts({""});
    }
    void splitMusicDirectories() {
        QFETCH(QString, text);
        QFETCH(QStringList, folders);
        QCOMPARE(PlaylistBuilder::splitMusicDirectories(text), folders);
    }

    void musicNames_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("music");
        QTest::newRow("mp3") << QStringLiteral("a.mp3") << true;
        QTest::newRow("upper case") << QStringLiteral("A.MP3") << true;
        QTest::newRow("wma") << QStringLiteral("a.Wma") << true;
        QTest::newRow("ogg") << QStringLiteral("a.ogg") << true;
        QTest::newRow("mpc") << QStringLiteral("a.mpc") << true;
        QTest::newRow("inside the name") << QStringLiteral("a.mp3.bak") << true;
        QTest::newRow("folder named like music") << QStringLiteral("Best.of.mp3s") << true;
        QTest::newRow("flac") << QStringLiteral("a.flac") << false;
        QTest::newRow("no dot") << QStringLiteral("mp3") << false;
        QTest::newRow("jpg") << QStringLiteral("cover.jpg") << false;
    }
    void musicNames() {
        QFETCH(QString, name);
        QFETCH(bool, music);
        QCOMPARE(MusicFolderWalk::isMusicName(name), music);
    }

    // Folders are listed case-insensitively with ties in binary order, whatever the characters.
    void listingOrder_data() {
        QTest::addColumn<QStringList>("names");
        QTest::newRow("ASCII: case, length, ties")
            << texts({"_x", "A", "a", "Ab", "ab", "b", "E", "Z", "Zz"});
        QTest::newRow("umlauts fold and sort after z")
            << texts({"Motorhead", "MOTÖRHEAD", "Motörhead", "Mötley", "Zappa", "Ärzte"});
        QTest::newRow("letters beyond the basic plane fold as pairs")
            << texts({"a\U00010428b", "a\U00010400c", "a\U00010428d"});
    }
    void listingOrder() {
        QFETCH(QStringList, names);
        QStringList listed(names.rbegin(), names.rend());
        FolderLister::sortNames(listed);
        QCOMPARE(listed, names);
    }

    // Which files a tree on disk gives, in which order after the sort, and the final status text
    // ("<root>" stands for the tree's folder).
    void buildFromDisk_data() {
        QTest::addColumn<QStringList>("tree");
        QTest::addColumn<QStringList>("playlist");
        QTest::addColumn<QString>("summary");
        QTest::newRow("element 0 kept first")
            // The listing is case-insensitive, the sort binary: "a.mp3" is found first but sorts last.
            << texts({"C.mp3", "a.mp3", "B.mp3"}) << texts({"a.mp3", "B.mp3", "C.mp3"})
            << QStringLiteral("Einträge: 3");
        QTest::newRow("folder before file in listing")
            << texts({"zz.mp3", "Album/b.mp3", "Album/a.mp3"})
            << texts({"Album/a.mp3", "Album/b.mp3", "zz.mp3"}) << QStringLiteral("Einträge: 3");
        QTest::newRow("deep tree, back to each parent")
            << texts({"A/B/C/1.mp3", "A/B/2.mp3", "A/3.mp3", "A/D/4.mp3", "A/B/C/x.jpg", "A/E/", "F/5.mp3",
                      "6.ogg"})
            << texts({"6.ogg", "A/3.mp3", "A/B/2.mp3", "A/B/C/1.mp3", "A/D/4.mp3", "F/5.mp3"})
            << QStringLiteral("Einträge: 6");
        QTest::newRow("hidden entries skipped") << texts({".hidden/a.mp3", ".b.mp3", "c.mp3", "d/.e.mp3"})
                                                << texts({"c.mp3"}) << QStringLiteral("Einträge: 1");
        QTest::newRow("empty folders only")
            << texts({"a/", "b/c/"}) << QStringList() << QStringLiteral("Einträge: 0");
        QTest::newRow("link back up the tree beside a cover")
            << texts({"01.mp3", "Album/02.mp3", "Album/cover.jpg", "Album/Alle -> ."})
            << texts({"01.mp3", "Album/02.mp3"}) << QStringLiteral("Einträge: 2");
        QTest::newRow("links to a folder and a file elsewhere")
            << texts({"A/x.mp3", "B/Zu A -> A", "B/Lied.mp3 -> A/x.mp3"})
            << texts({"A/x.mp3", "B/Lied.mp3", "B/Zu A/x.mp3"}) << QStringLiteral("Einträge: 3");
        QTest::newRow("Latin-1 names skipped and counted")
            << texts({"Die Ärzte/Schrei nach Liebe.mp3", "latin1:Motörhead.mp3", "latin1:Björk/Jóga.mp3"})
            << texts({"Die Ärzte/Schrei nach Liebe.mp3"})
            << QStringLiteral("Einträge: 1  -  Übersprungen (Name nicht UTF-8): 2, z. B. <root>/Bj\uFFFDrk");
    }
    void buildFromDisk() {
        QFETCH(QStringList, tree);
        QFETCH(QStringList, playlist);
        QFETCH(QString, summary);
        TempMusicTree music(tree);
        Build b;
        b.builder.MusicDirectories = QStringList{music.root()};
        b.playlists.PlaylistPaths = texts({"/old/entry.mp3:3"});
        b.builder.BCreateList();
        QCOMPARE(b.playlists.PlaylistPaths,
                 playlist.isEmpty() ? QStringList{QString()} : music.lines(playlist));
        QCOMPARE(b.playlists.list(1).count(), int(playlist.size()));
        QVERIFY(b.playlists.PlaylistChanged);
        QCOMPARE(b.t.status.text(),
                 QStringLiteral("0s  -  ") + summary.replace(QLatin1String("<root>"), music.root()));
    }

    void trailingSeparatorGivesSameList() {
        TempMusicTree music(texts({"A/x.mp3", "A/B/y.mp3", "z.mp3"}));
        Build plain;
        plain.builder.MusicDirectories = QStringList{music.root()};
        plain.builder.BCreateList();
        Build trailing;
        trailing.builder.MusicDirectories = QStringList{music.root() + QLatin1Char('/')};
        trailing.builder.BCreateList();
        QCOMPARE(trailing.playlists.PlaylistPaths, plain.playlists.PlaylistPaths);
        QCOMPARE(plain.playlists.PlaylistPaths.size(), 3);
    }

    void progressEvery64Files_data() {
        QTest::addColumn<int>("files");
        QTest::addColumn<QStringList>("progress");
        QTest::newRow("63") << 63 << QStringList();
        QTest::newRow("64") << 64 << texts({"Suche Dateien: 64"});
        QTest::newRow("129") << 129 << texts({"Suche Dateien: 64", "Suche Dateien: 128"});
    }
    void progressEvery64Files() {
        QFETCH(int, files);
        QFETCH(QStringList, progress);
        TempMusicTree music;
        QStringList names;
        for (int i = 0; i < files; ++i)
            names << QStringLiteral("CD%1/%2.mp3").arg(i / 10).arg(i);
        music.add(names);
        Build b;
        QSignalSpy paints(&b.builder, &PlaylistBuilder::statusPaintRequested);
        b.builder.MusicDirectories = QStringList{music.root()};
        b.t.clock.stepPerReading = 12.375;
        b.builder.BCreateList();
        QCOMPARE(b.statusTexts.mid(0, b.statusTexts.size() - 1), progress);
        QCOMPARE(paints.count(), int(progress.size()));
        QCOMPARE(b.statusTexts.last(), QStringLiteral("12,38s  -  Einträge: %1").arg(files));
    }

    void missingDirectory_data() {
        QTest::addColumn<bool>("missingFirst");
        QTest::newRow("second missing") << false;
        QTest::newRow("first missing") << true;
    }
    void missingDirectory() {
        QFETCH(bool, missingFirst);
        TempMusicTree music(texts({"a.mp3", "b/c.mp3"}));
        const QString missing = music.path(QStringLiteral("gibt es nicht"));
        Build b;
        b.builder.MusicDirectories =
            missingFirst ? QStringList{missing, music.root()} : QStringList{music.root(), missing};
        b.t.clock.stepPerReading = 0.5;
        b.builder.BCreateList();
        QCOMPARE(b.playlists.PlaylistPaths, music.lines(texts({"a.mp3", "b/c.mp3"})));
        // The error text stays until the summary replaces it.
        QCOMPARE(b.statusTexts,
                 QStringList({QStringLiteral("Fehler - Verzeichnis nicht vorhanden: ") + missing,
                              QStringLiteral("0,5s  -  Einträge: 2")}));
    }

    void resetsHistoryAndShowsNames() {
        TempMusicTree music(texts({"Pop/Song Eins.mp3", "Pop/Song Zwei.mp3"}));
        Build b;
        QSignalSpy resets(&b.playlists, &PlaylistManager::historyResetRequested);
        b.builder.MusicDirectories = QStringList{music.root()};
        b.builder.BCreateList();
        QCOMPARE(resets.count(), 2);
        QCOMPARE(b.playlists.list(1).items(), texts({"1. Song Eins", "2. Song Zwei"}));
        QCOMPARE(b.playlists.PlaylistNames, texts({"Song Eins", "Song Zwei"}));
    }

    // Windows rules: drive roots, "\" separators, a root with and without its trailing "\".
    void windowsStyleTree_data() {
        QTest::addColumn<QString>("root");
        QTest::newRow("drive with backslash") << QStringLiteral("D:\\");
        QTest::newRow("drive without") << QStringLiteral("D:");
    }
    void windowsStyleTree() {
        QFETCH(QString, root);
        FakeFolderTree tree(PathStyle::Windows);
        tree.addFile(QStringLiteral("D:\\MP3\\Greatest Hits\\Song.mp3"));
        tree.addFile(QStringLiteral("D:\\MP3\\Greatest Hits\\folder.jpg"));
        tree.addFile(QStringLiteral("D:\\MP3\\abc.WMA"));
        tree.addFile(QStringLiteral("D:\\boot.ini"));
        TestServices t;
        t.services.pathStyle = PathStyle::Windows;
        PlaylistManager playlists(t.services);
        PlaylistBuilder builder(t.services, playlists, tree);
        builder.MusicDirectories = QStringList{root};
        builder.BCreateList();
        // "abc.WMA" is listed before "Greatest Hits" (case-insensitive) and so found first.
        QCOMPARE(playlists.PlaylistPaths,
                 texts({"D:\\MP3\\abc.WMA:5", "D:\\MP3\\Greatest Hits\\Song.mp3:5"}));
        QCOMPARE(playlists.list(1).items(), texts({"1. abc", "2. Song"}));
    }

    void posixRootFolder() {
        FakeFolderTree tree(PathStyle::Posix);
        tree.addFile(QStringLiteral("/musik/a.mp3"));
        tree.addFile(QStringLiteral("/etc/x.conf"));
        TestServices t;
        PlaylistManager playlists(t.services);
        PlaylistBuilder builder(t.services, playlists, tree);
        builder.MusicDirectories = QStringList{QStringLiteral("/")};
        builder.BCreateList();
        QCOMPARE(playlists.PlaylistPaths, texts({"/musik/a.mp3:5"}));
    }

    void brokenListingReportedAndWalkGoesOn() {
        FakeFolderTree tree(PathStyle::Posix);
        tree.addFile(QStringLiteral("/m/a/1.mp3"));
        tree.addFile(QStringLiteral("/m/b/2.mp3"));
        tree.addFile(QStringLiteral("/m/c/3.mp3"));
        tree.failListing(QStringLiteral("/m/b"), 75, QStringLiteral("Fehler beim Zugriff auf Pfad/Datei"));
        TestServices t;
        QStringList statusTexts;
        QObject::connect(&t.status, &StatusLine::textChanged, [&](const QString& s) { statusTexts << s; });
        PlaylistManager playlists(t.services);
        PlaylistBuilder builder(t.services, playlists, tree);
        builder.MusicDirectories = QStringList{QStringLiteral("/m")};
        builder.BCreateList();
        QCOMPARE(playlists.PlaylistPaths, texts({"/m/a/1.mp3:5", "/m/c/3.mp3:5"}));
        QCOMPARE(statusTexts.first(), QStringLiteral("Fehler: #75 Fehler beim Zugriff auf Pfad/Datei"));
    }

    void counterOverflowsAtFile32768_data() {
        QTest::addColumn<int>("files");
        QTest::addColumn<bool>("overflow");
        QTest::newRow("32767 fit") << 32767 << false;
        QTest::newRow("32768th overflows") << 32768 << true;
    }
    void counterOverflowsAtFile32768() {
        QFETCH(int, files);
        QFETCH(bool, overflow);
        FakeFolderTree tree(PathStyle::Posix);
        for (int i = 0; i < files; ++i)
            tree.addFile(QStringLiteral("/m/%1/%2.mp3").arg(i / 500).arg(i));
        TestServices t;
        PlaylistManager playlists(t.services);
        PlaylistBuilder builder(t.services, playlists, tree);
        builder.MusicDirectories = QStringList{QStringLiteral("/m")};
        if (!overflow) {
            builder.BCreateList();
            QCOMPARE(playlists.PlaylistPaths.size(), files);
            QCOMPARE(t.status.text().right(15), QStringLiteral("Einträge: 32767"));
            return;
        }
        try {
            builder.BCreateList();
            QFAIL("no overflow");
        } catch (const RuntimeError& e) {
            QCOMPARE(e.number(), int(RuntimeError::Overflow));
        }
        // The file that overflowed the counter was stored before the count went up.
        QCOMPARE(playlists.PlaylistPaths.size(), 32768);
        QVERIFY(!playlists.PlaylistChanged);
    }

    // Every folder is read from disk once: a finished folder is found again in its parent's
    // listing without reading the parent a second time.
    void eachFolderListedOnce() {
        FakeFolderTree tree(PathStyle::Posix);
        for (int a = 0; a < 5; ++a)
            for (int c = 0; c < 4; ++c)
                tree.addFile(QStringLiteral("/m/A%1/C%2/t.mp3").arg(a).arg(c));
        TestServices t;
        PlaylistManager playlists(t.services);
        PlaylistBuilder builder(t.services, playlists, tree);
        builder.MusicDirectories = QStringList{QStringLiteral("/m")};
        builder.BCreateList();
        QCOMPARE(playlists.PlaylistPaths.size(), 20);
        QCOMPARE(tree.listings, 1 + 5 + 20);
    }
};

QTEST_GUILESS_MAIN(TestPlaylistBuilder)
#include "tst_PlaylistBuilder.moc"
