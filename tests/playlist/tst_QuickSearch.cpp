#include "playlist/PlaylistManager.h"
#include "playlist/QuickSearch.h"
#include "support/TestServices.h"

#include <QTest>

namespace {

QStringList texts(std::initializer_list<const char*> items) {
    QStringList out;
    for (const char* item : items)
        out << QString::fromUtf8(item);
    return out;
}

// A playlist of the given lines, shown and named as after loading.
struct Searching {
    TestServices t;
    PlaylistManager playlists{t.services};
    QuickSearch search{t.services, playlists};

    Searching(const QStringList& lines, PathStyle style) {
        t.services.pathStyle = style;
        playlists.PlaylistPaths = lines;
        playlists.FuncDisplayPlaylist(true, 1);
    }
    QList<int> marked() const { return const_cast<PlaylistManager&>(playlists).list(1).selectedRows(); }
};

QStringList posixSongs() {
    return texts({"/m/ABBA/Abba - Waterloo.mp3:5", "/m/Diverse/The Abba Song.mp3:5",
                  "/m/Greatest Hits/Song.mp3:5", "/m/Die Ärzte/Schrei nach Liebe.mp3:5", "/Einzeln.mp3:5",
                  "/m/Die Ärzte/ÄRZTE LIVE.mp3:5"});
}

QStringList windowsSongs() {
    return texts({"D:\\MP3\\ABBA\\Abba - Waterloo.mp3:5", "D:\\MP3\\Diverse\\The Abba Song.mp3:5",
                  "D:\\MP3\\Greatest Hits\\Song.mp3:5", "D:\\MP3\\Die Ärzte\\Schrei nach Liebe.mp3:5",
                  "D:\\Einzeln.mp3:5", "\\\\server\\Die Ärzte\\ÄRZTE LIVE.mp3:5"});
}

} // namespace

class TestQuickSearch : public QObject {
    Q_OBJECT
private slots:
    void search_data() {
        QTest::addColumn<int>("style"); // 0 POSIX, 1 Windows
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("mode");
        QTest::addColumn<int>("hit");
        QTest::addColumn<QString>("status");
        for (int style = 0; style < 2; ++style) {
            const char* s = style == 0 ? "posix" : "windows";
            const QString greatest = style == 0 ? QStringLiteral("/m/Greatest Hits/Song.mp3")
                                                : QStringLiteral("D:\\MP3\\Greatest Hits\\Song.mp3");
            QTest::addRow("%s: start of name ignores case", s)
                << style << QStringLiteral("ab") << QStringLiteral("index") << 0
                << QStringLiteral("\"ab\" gefunden!");
            QTest::addRow("%s: start of name not inside", s)
                << style << QStringLiteral("abba s") << QStringLiteral("index") << -1
                << QStringLiteral("Kein Suchergebnis für \"abba s\"!");
            QTest::addRow("%s: full text inside", s)
                << style << QStringLiteral("ABBA S") << QStringLiteral("fulltext") << 1
                << QStringLiteral("\"ABBA S\" gefunden!");
            QTest::addRow("%s: umlaut in lower case finds upper case", s)
                << style << QStringLiteral("ärzte l") << QStringLiteral("index") << 5
                << QStringLiteral("\"ärzte l\" gefunden!");
            QTest::addRow("%s: umlaut full text", s)
                << style << QStringLiteral("NACH LIEBE") << QStringLiteral("fulltext") << 3
                << QStringLiteral("\"NACH LIEBE\" gefunden!");
            QTest::addRow("%s: album reports the path", s)
                << style << QStringLiteral("hits") << QStringLiteral("album") << 2
                << QStringLiteral("\"hits\" gefunden ---> ") + greatest;
            QTest::addRow("%s: album with umlaut", s)
                << style << QStringLiteral("ÄRZTE") << QStringLiteral("album") << 3
                << QStringLiteral("\"ÄRZTE\" gefunden ---> ") +
                       (style == 0 ? QStringLiteral("/m/Die Ärzte/Schrei nach Liebe.mp3")
                                   : QStringLiteral("D:\\MP3\\Die Ärzte\\Schrei nach Liebe.mp3"));
            QTest::addRow("%s: album skips a file below the root", s)
                << style << QStringLiteral("einzeln") << QStringLiteral("album") << -1
                << QStringLiteral("Kein Suchergebnis für \"einzeln\"!");
            QTest::addRow("%s: album is not the file name", s)
                << style << QStringLiteral("waterloo") << QStringLiteral("album") << -1
                << QStringLiteral("Kein Suchergebnis für \"waterloo\"!");
            QTest::addRow("%s: empty text hits the start", s)
                << style << QString() << QStringLiteral("fulltext") << 0 << QStringLiteral("\"\" gefunden!");
        }
    }
    void search() {
        QFETCH(int, style);
        QFETCH(QString, text);
        QFETCH(QString, mode);
        QFETCH(int, hit);
        QFETCH(QString, status);
        Searching s(style == 0 ? posixSongs() : windowsSongs(),
                    style == 0 ? PathStyle::Posix : PathStyle::Windows);
        s.search.NextSearchStart = 4;
        s.search.PrcQuickSearch(text, mode, false);
        QCOMPARE(s.t.status.text(), status);
        QCOMPARE(s.marked(), hit < 0 ? QList<int>() : QList<int>{hit});
        QCOMPARE(int(s.search.NextSearchStart), hit < 0 ? 4 : hit + 1);
        QCOMPARE(s.search.LastSearchText, text);
        QCOMPARE(s.search.LastSearchMode, mode);
    }

    void continuesAfterTheLastHitWithoutWrapping() {
        QStringList lines;
        for (int i = 0; i < 12; ++i)
            lines << QStringLiteral("/m/Album/%1 %2.mp3:5")
                         .arg(i % 4 == 3 ? QStringLiteral("Treffer") : QStringLiteral("Lied"))
                         .arg(i);
        Searching s(lines, PathStyle::Posix); // hits at 3, 7 and 11
        s.search.PrcQuickSearch(QStringLiteral("treffer"), QStringLiteral("fulltext"), false);
        QCOMPARE(s.marked(), QList<int>{3});
        s.search.PrcQuickSearch(s.search.LastSearchText, s.search.LastSearchMode, true);
        QCOMPARE(s.marked(), QList<int>{7});
        QCOMPARE(int(s.search.NextSearchStart), 8);
        s.search.PrcQuickSearch(s.search.LastSearchText, s.search.LastSearchMode, true);
        QCOMPARE(s.marked(), QList<int>{11});
        // Past the last entry: no result, and the start stays for the next try.
        s.search.PrcQuickSearch(s.search.LastSearchText, s.search.LastSearchMode, true);
        QCOMPARE(s.t.status.text(), QStringLiteral("Kein Suchergebnis für \"treffer\"!"));
        QCOMPARE(int(s.search.NextSearchStart), 12);
        QCOMPARE(s.marked(), QList<int>{11});
        s.search.PrcQuickSearch(s.search.LastSearchText, s.search.LastSearchMode, true);
        QCOMPARE(int(s.search.NextSearchStart), 12);
        // A new search starts at the top again.
        s.search.PrcQuickSearch(QStringLiteral("treffer"), QStringLiteral("fulltext"), false);
        QCOMPARE(s.marked(), QList<int>{3});
    }

    void unknownModeAsksNothingElse() {
        Searching s(posixSongs(), PathStyle::Posix);
        s.t.status.setText(QStringLiteral("vorher"));
        s.search.PrcQuickSearch(QStringLiteral("ab"), QStringLiteral("Index"), false);
        QCOMPARE(s.t.dialogs.messageTexts(), QStringList{QStringLiteral("Fehler")});
        QCOMPARE(s.t.status.text(), QStringLiteral("vorher"));
        QVERIFY(s.marked().isEmpty());
    }

    void emptyPlaylist() {
        Searching s(QStringList{QString()}, PathStyle::Posix);
        s.search.PrcQuickSearch(QStringLiteral("x"), QStringLiteral("index"), false);
        QCOMPARE(s.t.status.text(), QStringLiteral("Kein Suchergebnis für \"x\"!"));
        s.search.PrcQuickSearch(QStringLiteral("x"), QStringLiteral("album"), false);
        QCOMPARE(s.t.status.text(), QStringLiteral("Kein Suchergebnis für \"x\"!"));
    }

    void selectSongHookGetsTheHit() {
        Searching s(posixSongs(), PathStyle::Posix);
        QList<qint32> selected;
        s.search.SelectSong = [&](qint32 position) { selected << position; };
        s.search.PrcQuickSearch(QStringLiteral("song"), QStringLiteral("fulltext"), false);
        QCOMPARE(selected, QList<qint32>{1});
    }

    void albumOf_data() {
        QTest::addColumn<QString>("line");
        QTest::addColumn<int>("style");
        QTest::addColumn<QString>("album"); // "-" = none
        QTest::newRow("windows") << QStringLiteral("D:\\MP3\\Greatest Hits\\Song.mp3:5") << 1
                                 << QStringLiteral("Greatest Hits");
        QTest::newRow("windows drive root") << QStringLiteral("D:\\Song.mp3:5") << 1 << QStringLiteral("-");
        QTest::newRow("windows share") << QStringLiteral("\\\\srv\\Song.mp3:5") << 1 << QStringLiteral("srv");
        QTest::newRow("posix") << QStringLiteral("/m/Album/Song.mp3:5") << 0 << QStringLiteral("Album");
        QTest::newRow("posix first level")
            << QStringLiteral("/Album/Song.mp3:5") << 0 << QStringLiteral("Album");
        QTest::newRow("posix root") << QStringLiteral("/Song.mp3:5") << 0 << QStringLiteral("-");
        QTest::newRow("empty") << QString() << 0 << QStringLiteral("-");
    }
    void albumOf() {
        QFETCH(QString, line);
        QFETCH(int, style);
        QFETCH(QString, album);
        const auto found = QuickSearch::albumOf(line, style == 0 ? PathStyle::Posix : PathStyle::Windows);
        QCOMPARE(found.value_or(QStringLiteral("-")), album);
    }
};

QTEST_GUILESS_MAIN(TestQuickSearch)
#include "tst_QuickSearch.moc"
