#include "base/RuntimeError.h"
#include "playlist/PlaylistManager.h"
#include "support/TestServices.h"

#include <QTest>

// Rows of the main list dropped on the second playlist.
class tst_DragDropToPlaylist2 : public QObject {
    Q_OBJECT

    static QStringList mainList() {
        return {QStringLiteral("/m/A.mp3:5"), QStringLiteral("/m/B.mp3:3"), QStringLiteral("/m/C.mp3:0")};
    }

private slots:
    void copyInserts_data() {
        QTest::addColumn<QStringList>("before");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("position");
        QTest::addColumn<QStringList>("after");
        QTest::addColumn<int>("returned");
        const QString x = QStringLiteral("/n/X.mp3:5"), y = QStringLiteral("/n/Y.mp3:5");
        const QString a = QStringLiteral("/m/A.mp3:5"), b = QStringLiteral("/m/B.mp3:3");
        QTest::newRow("empty list filled in place")
            << QStringList{QString()} << QStringLiteral("1. A") << 0 << QStringList{a} << 0;
        QTest::newRow("empty list, dropped further down")
            << QStringList{QString()} << QStringLiteral("2. B") << 4 << QStringList{b} << 0;
        QTest::newRow("no element at all")
            << QStringList{} << QStringLiteral("2. B") << 0 << QStringList{b} << 0;
        QTest::newRow("at the top") << QStringList{x, y} << QStringLiteral("1. A") << 0
                                    << QStringList{a, x, y} << 0;
        QTest::newRow("between") << QStringList{x, y} << QStringLiteral("2. B") << 1 << QStringList{x, b, y}
                                 << 1;
        QTest::newRow("just below the last row")
            << QStringList{x, y} << QStringLiteral("2. B") << 2 << QStringList{x, y, b} << 2;
        QTest::newRow("far below the last row appends")
            << QStringList{x, y} << QStringLiteral("1. A") << 40 << QStringList{x, y, a} << 2;
        QTest::newRow("number with blanks and a name with dots")
            << QStringList{x} << QStringLiteral(" 2. B. side") << 0 << QStringList{b, x} << 0;
    }
    void copyInserts() {
        QFETCH(QStringList, before);
        QFETCH(QString, text);
        QFETCH(int, position);
        QFETCH(QStringList, after);
        QFETCH(int, returned);
        TestServices t;
        PlaylistManager p(t.services);
        p.PlaylistPaths = mainList();
        p.Playlist2Paths = before;
        QCOMPARE(p.AddDragDropToPL2(text, position, 1), returned);
        QCOMPARE(p.Playlist2Paths, after);
        QVERIFY(t.dialogs.questions.isEmpty());
    }

    void otherEffectsOnlySayNotYet_data() {
        QTest::addColumn<int>("effect");
        QTest::newRow("move") << 2;
        QTest::newRow("link") << 4;
        QTest::newRow("none") << 0;
    }
    void otherEffectsOnlySayNotYet() {
        QFETCH(int, effect);
        TestServices t;
        PlaylistManager p(t.services);
        p.PlaylistPaths = mainList();
        const QStringList before{QStringLiteral("/n/X.mp3:5")};
        p.Playlist2Paths = before;
        QCOMPARE(p.AddDragDropToPL2(QStringLiteral("1. A"), 0, effect), -1);
        QCOMPARE(p.Playlist2Paths, before);
        QCOMPARE(t.dialogs.messageTexts(), QStringList{QStringLiteral("Geht noch ned... :-(")});
    }

    void badTextRaisesBeforeChanging_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("number");
        QTest::newRow("number past the main list")
            << QStringLiteral("4. D") << int(RuntimeError::SubscriptOutOfRange);
        QTest::newRow("number zero") << QStringLiteral("0. nothing")
                                     << int(RuntimeError::SubscriptOutOfRange);
        QTest::newRow("no number") << QStringLiteral("A song") << int(RuntimeError::TypeMismatch);
        QTest::newRow("letters before the dot") << QStringLiteral("x. A") << int(RuntimeError::TypeMismatch);
    }
    void badTextRaisesBeforeChanging() {
        QFETCH(QString, text);
        QFETCH(int, number);
        TestServices t;
        PlaylistManager p(t.services);
        p.PlaylistPaths = mainList();
        const QStringList before{QStringLiteral("/n/X.mp3:5"), QStringLiteral("/n/Y.mp3:5")};
        p.Playlist2Paths = before;
        try {
            p.AddDragDropToPL2(text, 1, 1);
            QFAIL("no error raised");
        } catch (const RuntimeError& e) {
            QCOMPARE(e.number(), number);
        }
        QCOMPARE(p.Playlist2Paths, before);
    }
};

QTEST_GUILESS_MAIN(tst_DragDropToPlaylist2)
#include "tst_DragDropToPlaylist2.moc"
