#include "base/RuntimeError.h"
#include "playlist/PlaylistLine.h"

#include <QTest>

class TestPlaylistLine : public QObject {
    Q_OBJECT
private slots:
    void songName_data() {
        QTest::addColumn<int>("style");
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("name");
        const QString notRooted = QStringLiteral("Fehler: Pfad enthält nicht :\\ oder \\\\! --> ");
        const QString tooShort = QStringLiteral("Fehler: Pfad zu kurz! --> ");
        QTest::newRow("win normal") << 0 << QStringLiteral("D:\\MP3\\Artist\\Title.mp3:5")
                                    << QStringLiteral("Title");
        QTest::newRow("win share") << 0 << QStringLiteral("\\\\server\\share\\x.mp3:5")
                                   << QStringLiteral("x");
        QTest::newRow("win 10 chars") << 0 << QStringLiteral("C:\\a.mp3:5") << QStringLiteral("a");
        QTest::newRow("win 9 chars") << 0 << QStringLiteral("C:\\a.mp:5")
                                     << tooShort + QStringLiteral("C:\\a.mp:5");
        QTest::newRow("win no backslash")
            << 0 << QStringLiteral("C:song.mp3:5") << notRooted + QStringLiteral("C:song.mp3:5");
        QTest::newRow("win relative")
            << 0 << QStringLiteral("Music\\a.mp3:5") << notRooted + QStringLiteral("Music\\a.mp3:5");
        QTest::newRow("win dots in name")
            << 0 << QStringLiteral("C:\\x\\Mr. X - Y.mp3:3") << QStringLiteral("Mr. X - Y");
        QTest::newRow("empty") << 0 << QString() << QStringLiteral("Fehler: Leerer String!");
        QTest::newRow("posix normal")
            << 1 << QStringLiteral("/music/Artist/Title.mp3:5") << QStringLiteral("Title");
        QTest::newRow("posix root file") << 1 << QStringLiteral("/abcde.mp3:5") << QStringLiteral("abcde");
        QTest::newRow("posix 9 chars")
            << 1 << QStringLiteral("/a/b.mp:5") << tooShort + QStringLiteral("/a/b.mp:5");
        QTest::newRow("posix relative")
            << 1 << QStringLiteral("music/a.mp3:5") << notRooted + QStringLiteral("music/a.mp3:5");
        QTest::newRow("posix windows line")
            << 1 << QStringLiteral("C:\\a\\b.mp3:5") << notRooted + QStringLiteral("C:\\a\\b.mp3:5");
        QTest::newRow("posix empty") << 1 << QString() << QStringLiteral("Fehler: Leerer String!");
    }
    void songName() {
        QFETCH(int, style);
        QFETCH(QString, line);
        QFETCH(QString, name);
        QCOMPARE(PlaylistLine::FuncGetSongName(line, style == 0 ? PathStyle::Windows : PathStyle::Posix),
                 name);
    }

    // A file part shorter than extension, colon and digit cannot be cut: that is a run-time error.
    void fileNameTooShortToCutRaises() {
        try {
            PlaylistLine::FuncGetSongName(QStringLiteral("/music/long/x:5"), PathStyle::Posix);
            QFAIL("no error");
        } catch (const RuntimeError& e) {
            QCOMPARE(e.number(), int(RuntimeError::InvalidCall));
        }
    }

    void priorityIsTheLastCharacter() {
        const QString line = QStringLiteral("/m/a.mp3:5");
        QCOMPARE(PlaylistLine::priority(line), QLatin1Char('5'));
        QCOMPARE(PlaylistLine::withPriority(line, QLatin1Char('0')), QStringLiteral("/m/a.mp3:0"));
        QCOMPARE(PlaylistLine::path(line), QStringLiteral("/m/a.mp3"));
        QCOMPARE(PlaylistLine::listItemText(0, QStringLiteral("Title")), QStringLiteral("1. Title"));
    }
};

QTEST_GUILESS_MAIN(TestPlaylistLine)
#include "tst_PlaylistLine.moc"
