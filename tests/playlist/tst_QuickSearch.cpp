#include "playlist/PlaylistManager.h"
#include "playlist/QuickSearch.h"
#include "support/TestServices.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// A playlist of the given lines, shown and named as after loading.
struct Searching {
    TestServices t;
    PlaylistManager playlists{t.services};
    QuickSearch search{t.services, playlists};

    explicit Searching(const QStringList& lines, PathStyle style = PathStyle::Posix) {
        t.services.pathStyle = style;
        playlists.PlaylistPaths = lines;
        playlists.FuncDisplayPlaylist(true, 1);
    }
    QList<int> marked() { return playlists.list(1).selectedRows(); }
};

// The same songs in both path styles; the last lies on a share in the Windows list.
QStringList songs(int style) {
    QStringList s =
        u"/m/ABBA/Abba - Waterloo.mp3:5|/m/Diverse/The Abba Song.mp3:5|/m/Greatest Hits/Song.mp3:5|"
        u"/m/Die Ärzte/Schrei nach Liebe.mp3:5|/Einzeln.mp3:5|/x/Die Ärzte/ÄRZTE LIVE.mp3:5"_s.split(u'|');
    if (style == 1)
        for (QString& line : s)
            line = QString(line.startsWith(u"/x/"_s) ? u"\\\\server"_s + line.mid(2)
                                                     : u"D:"_s + line.replace(u"/m/"_s, u"/MP3/"_s))
                       .replace(u'/', u'\\');
    return s;
}

} // namespace

class TestQuickSearch : public QObject {
    Q_OBJECT
private slots:
    // A new search starts at the top, whatever start a search before left behind.
    void search_data() {
        QTest::addColumn<int>("style"); // 0 POSIX, 1 Windows
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("mode");
        QTest::addColumn<int>("hit");
        for (int style = 0; style < 2; ++style) {
            const char* s = style == 0 ? "posix" : "windows";
            QTest::addRow("%s: start of name ignores case", s) << style << u"ab"_s << u"index"_s << 0;
            QTest::addRow("%s: start of name, not inside", s) << style << u"abba s"_s << u"index"_s << -1;
            QTest::addRow("%s: full text inside", s) << style << u"ABBA S"_s << u"fulltext"_s << 1;
            QTest::addRow("%s: lower-case umlaut finds upper case", s)
                << style << u"ärzte l"_s << u"index"_s << 5;
            QTest::addRow("%s: album", s) << style << u"hits"_s << u"album"_s << 2;
            QTest::addRow("%s: album skips a file below the root", s)
                << style << u"einzeln"_s << u"album"_s << -1;
            QTest::addRow("%s: album is not the file name", s) << style << u"waterloo"_s << u"album"_s << -1;
            QTest::addRow("%s: empty text hits the start", s) << style << QString() << u"fulltext"_s << 0;
        }
    }
    void search() {
        QFETCH(int, style);
        QFETCH(QString, text);
        QFETCH(QString, mode);
        QFETCH(int, hit);
        Searching s(songs(style), style == 0 ? PathStyle::Posix : PathStyle::Windows);
        s.search.NextSearchStart = 4;
        s.search.PrcQuickSearch(text, mode, false);
        QString status = u"\"%1\" gefunden!"_s.arg(text);
        if (hit < 0)
            status = u"Kein Suchergebnis für \"%1\"!"_s.arg(text);
        else if (mode == u"album"_s) // the path of the hit instead of the exclamation mark
            status = status.chopped(1) + u" ---> "_s + songs(style).at(hit).chopped(2);
        QCOMPARE(s.t.status.text(), status);
        QCOMPARE(s.marked(), hit < 0 ? QList<int>() : QList<int>{hit});
        QCOMPARE(int(s.search.NextSearchStart), hit < 0 ? 4 : hit + 1);
    }

    void continuesAfterTheLastHitWithoutWrapping() {
        QStringList lines;
        for (int i = 0; i < 12; ++i)
            lines << u"/m/Album/%1 %2.mp3:5"_s.arg(i % 4 == 3 ? u"Treffer"_s : u"Lied"_s).arg(i);
        Searching s(lines); // hits at 3, 7 and 11
        s.search.PrcQuickSearch(u"treffer"_s, u"fulltext"_s, false);
        for (int hit : {3, 7, 11, 11, 11}) {
            QCOMPARE(s.marked(), QList<int>{hit});
            s.search.PrcQuickSearch(s.search.LastSearchText, s.search.LastSearchMode, true);
        }
        // Past the last entry: no result, and the start stays for the next try.
        QCOMPARE(s.t.status.text(), u"Kein Suchergebnis für \"treffer\"!"_s);
        QCOMPARE(int(s.search.NextSearchStart), 12);
        // A new search starts at the top again.
        s.search.PrcQuickSearch(u"treffer"_s, u"fulltext"_s, false);
        QCOMPARE(s.marked(), QList<int>{3});
    }

    void unknownModeAndEmptyPlaylist() {
        Searching s(songs(0));
        s.t.status.setText(u"vorher"_s);
        s.search.PrcQuickSearch(u"ab"_s, u"Index"_s, false); // modes are lower case
        QCOMPARE(s.t.dialogs.messageTexts(), QStringList{u"Fehler"_s});
        QCOMPARE(s.t.status.text(), u"vorher"_s);
        QVERIFY(s.marked().isEmpty());
        Searching empty(QStringList{QString()});
        for (const QString& mode : {u"index"_s, u"album"_s}) {
            empty.search.PrcQuickSearch(u"x"_s, mode, false);
            QCOMPARE(empty.t.status.text(), u"Kein Suchergebnis für \"x\"!"_s);
        }
    }
};

QTEST_GUILESS_MAIN(TestQuickSearch)
#include "tst_QuickSearch.moc"
