#include "base/RuntimeError.h"
#include "playlist/PlaylistManager.h"
#include "support/TestServices.h"

#include <QTest>

using namespace Qt::StringLiterals;

// Rows of the main list ("/m/A.mp3:5", "/m/B.mp3:3", "/m/C.mp3:0") dropped on the second playlist.
class tst_DragDropToPlaylist2 : public QObject {
    Q_OBJECT
private slots:
    void drop_data() {
        QTest::addColumn<QStringList>("before");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("position");
        QTest::addColumn<int>("effect");
        QTest::addColumn<QStringList>("after");
        QTest::addColumn<int>("returned"); // -1 = "not yet"; a raised error's number as -100 - number
        const QString x = u"/n/X.mp3:5"_s, y = u"/n/Y.mp3:5"_s, a = u"/m/A.mp3:5"_s, b = u"/m/B.mp3:3"_s;
        const QStringList xy{x, y};
        const int range = -100 - RuntimeError::SubscriptOutOfRange, type = -100 - RuntimeError::TypeMismatch;
        QTest::newRow("empty list filled in place")
            << QStringList{QString()} << u"1. A"_s << 0 << 1 << QStringList{a} << 0;
        QTest::newRow("empty list, dropped lower")
            << QStringList{QString()} << u"2. B"_s << 4 << 1 << QStringList{b} << 0;
        QTest::newRow("no element at all") << QStringList{} << u"2. B"_s << 0 << 1 << QStringList{b} << 0;
        QTest::newRow("at the top") << xy << u"1. A"_s << 0 << 1 << QStringList{a, x, y} << 0;
        QTest::newRow("between") << xy << u"2. B"_s << 1 << 1 << QStringList{x, b, y} << 1;
        QTest::newRow("just below the last row") << xy << u"2. B"_s << 2 << 1 << QStringList{x, y, b} << 2;
        QTest::newRow("far below appends") << xy << u"1. A"_s << 40 << 1 << QStringList{x, y, a} << 2;
        QTest::newRow("blanks and a name with dots")
            << xy << u" 2. B. side"_s << 0 << 1 << QStringList{b, x, y} << 0;
        QTest::newRow("move only says not yet") << xy << u"1. A"_s << 0 << 2 << xy << -1;
        QTest::newRow("the main list's last row")
            << xy << u"3. C"_s << 1 << 1 << QStringList{x, u"/m/C.mp3:0"_s, y} << 1;
        QTest::newRow("number past the main list") << xy << u"4. D"_s << 1 << 1 << xy << range;
        QTest::newRow("number zero") << xy << u"0. nothing"_s << 1 << 1 << xy << range;
        QTest::newRow("no number") << xy << u"A song"_s << 1 << 1 << xy << type;
        QTest::newRow("letters before the dot") << xy << u"x. A"_s << 1 << 1 << xy << type;
    }
    void drop() {
        QFETCH(QStringList, before);
        QFETCH(QString, text);
        QFETCH(int, position);
        QFETCH(int, effect);
        QFETCH(QStringList, after);
        QFETCH(int, returned);
        TestServices t;
        PlaylistManager p(t.services);
        p.PlaylistPaths = {u"/m/A.mp3:5"_s, u"/m/B.mp3:3"_s, u"/m/C.mp3:0"_s};
        p.Playlist2Paths = before;
        try {
            QCOMPARE(p.AddDragDropToPL2(text, position, effect), returned);
        } catch (const RuntimeError& e) {
            QCOMPARE(-100 - e.number(), returned);
        }
        QCOMPARE(p.Playlist2Paths, after);
        QCOMPARE(t.dialogs.messageTexts(),
                 returned == -1 ? QStringList{u"Geht noch ned... :-("_s} : QStringList());
    }
};

QTEST_GUILESS_MAIN(tst_DragDropToPlaylist2)
#include "tst_DragDropToPlaylist2.moc"
