#include "base/RuntimeError.h"
#include "playlist/PlaylistLine.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestPlaylistLine : public QObject {
    Q_OBJECT
private slots:
    // The name shown for a playlist line, or the error text that stands in for it ("!" = raises).
    void songName_data() {
        QTest::addColumn<int>("style"); // 0 Windows, 1 POSIX
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("name");
        const QString notRooted = u"Fehler: Pfad enthält nicht :\\ oder \\\\! --> "_s;
        const QString tooShort = u"Fehler: Pfad zu kurz! --> "_s;
        QTest::newRow("win normal") << 0 << u"D:\\MP3\\Artist\\Title.mp3:5"_s << u"Title"_s;
        QTest::newRow("win share") << 0 << u"\\\\server\\share\\x.mp3:5"_s << u"x"_s;
        QTest::newRow("win 10 chars") << 0 << u"C:\\a.mp3:5"_s << u"a"_s;
        QTest::newRow("win 9 chars") << 0 << u"C:\\a.mp:5"_s << tooShort + u"C:\\a.mp:5"_s;
        QTest::newRow("win no backslash") << 0 << u"C:song.mp3:5"_s << notRooted + u"C:song.mp3:5"_s;
        QTest::newRow("win relative") << 0 << u"Music\\a.mp3:5"_s << notRooted + u"Music\\a.mp3:5"_s;
        QTest::newRow("win dots in name") << 0 << u"C:\\x\\Mr. X - Y.mp3:3"_s << u"Mr. X - Y"_s;
        QTest::newRow("empty") << 0 << QString() << u"Fehler: Leerer String!"_s;
        QTest::newRow("posix normal") << 1 << u"/music/Artist/Title.mp3:5"_s << u"Title"_s;
        QTest::newRow("posix root file") << 1 << u"/abcde.mp3:5"_s << u"abcde"_s;
        QTest::newRow("posix 9 chars") << 1 << u"/a/b.mp:5"_s << tooShort + u"/a/b.mp:5"_s;
        QTest::newRow("posix relative") << 1 << u"music/a.mp3:5"_s << notRooted + u"music/a.mp3:5"_s;
        QTest::newRow("posix windows line") << 1 << u"C:\\a\\b.mp3:5"_s << notRooted + u"C:\\a\\b.mp3:5"_s;
        QTest::newRow("file part shorter than the cut") << 1 << u"/music/long/x:5"_s << u"!"_s;
    }
    void songName() {
        QFETCH(int, style);
        QFETCH(QString, line);
        QFETCH(QString, name);
        const PathStyle s = style == 0 ? PathStyle::Windows : PathStyle::Posix;
        if (name == u"!"_s)
            QVERIFY_THROWS_EXCEPTION(RuntimeError, PlaylistLine::FuncGetSongName(line, s));
        else
            QCOMPARE(PlaylistLine::FuncGetSongName(line, s), name);
    }
};

QTEST_GUILESS_MAIN(TestPlaylistLine)
#include "tst_PlaylistLine.moc"
