#include "playlist/PlaylistEntryEditor.h"
#include "playlist/PlaylistManager.h"
#include "support/TestServices.h"

#include <QSignalSpy>
#include <QTest>

namespace {

// Ten entries "/m/Lied 0.mp3:5" .. "/m/Lied 9.mp3:5", shown in the list box.
void fillTen(PlaylistManager& playlists, int n = 1) {
    QStringList lines;
    for (int i = 0; i < 10; ++i)
        lines << QStringLiteral("/m/Lied %1.mp3:5").arg(i);
    playlists.paths(n) = lines;
    playlists.FuncDisplayPlaylist(true, n);
}

void mark(PlaylistManager& playlists, const QList<int>& rows, int n = 1) {
    for (int row : rows)
        playlists.list(n).setSelected(row, true);
}

} // namespace

class TestPlaylistEntryEditor : public QObject {
    Q_OBJECT
private slots:
    void setPriority_data() {
        QTest::addColumn<QList<int>>("marked");
        QTest::addColumn<int>("priority");
        QTest::addColumn<QString>("status");
        QTest::newRow("0 on three of ten")
            << QList<int>{1, 4, 9} << 0
            << QStringLiteral("Priorität 0 bei allen markierten Einträgen (3) gesetzt!");
        QTest::newRow("2 on the first")
            << QList<int>{0} << 2
            << QStringLiteral("Priorität 2 bei allen markierten Einträgen (1) gesetzt!");
        QTest::newRow("nothing marked")
            << QList<int>{} << 4 << QStringLiteral("Priorität 4 bei allen markierten Einträgen (0) gesetzt!");
    }
    void setPriority() {
        QFETCH(QList<int>, marked);
        QFETCH(int, priority);
        QFETCH(QString, status);
        TestServices t;
        PlaylistManager playlists(t.services);
        fillTen(playlists);
        mark(playlists, marked);
        const QStringList rowsBefore = playlists.list(1).items();
        QSignalSpy resets(&playlists, &PlaylistManager::historyResetRequested);
        PlaylistEntryEditor editor(t.services, playlists);
        editor.FPrioClick(priority);
        QCOMPARE(t.status.text(), status);
        for (int i = 0; i < 10; ++i) {
            const QChar digit = marked.contains(i) ? QChar(u'0' + priority) : QLatin1Char('5');
            QCOMPARE(playlists.PlaylistPaths.at(i), QStringLiteral("/m/Lied %1.mp3:").arg(i) + digit);
        }
        // A priority is no change that asks to be saved, and the history stays.
        QVERIFY(!playlists.PlaylistChanged);
        QCOMPARE(resets.count(), 0);
        QCOMPARE(playlists.list(1).items(), rowsBefore);
    }

    void menuIndexSetsFiveMinusIndex_data() {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QChar>("digit");
        const QStringList captions = PlaylistEntryEditor::priorityMenuCaptions();
        for (int i = 0; i < 6; ++i)
            QTest::addRow("index %d", i) << i << captions.at(i) << QChar(u'0' + 5 - i);
    }
    void menuIndexSetsFiveMinusIndex() {
        QFETCH(int, index);
        QFETCH(QString, caption);
        QFETCH(QChar, digit);
        const QStringList expectedCaptions{QStringLiteral("&5 = normal"), QStringLiteral("&4"),
                                           QStringLiteral("&3"),          QStringLiteral("&2 = selten"),
                                           QStringLiteral("&1"),          QStringLiteral("&0 = nie")};
        QCOMPARE(caption, expectedCaptions.at(index));
        TestServices t;
        PlaylistManager playlists(t.services);
        fillTen(playlists);
        playlists.PlaylistPaths[3] = QStringLiteral("/m/Lied 3.mp3:2");
        mark(playlists, {3});
        PlaylistEntryEditor editor(t.services, playlists);
        editor.MenuSetPrioClick(index);
        QCOMPARE(playlists.PlaylistPaths.at(3).back(), digit);
    }

    void emptyListDoesNothing() {
        TestServices t;
        t.status.setText(QStringLiteral("vorher"));
        PlaylistManager playlists(t.services);
        PlaylistEntryEditor editor(t.services, playlists);
        editor.FPrioClick(3);
        QCOMPARE(t.status.text(), QStringLiteral("vorher"));
        QCOMPARE(playlists.PlaylistPaths, QStringList{QString()});
    }

    void deleteMarked_data() {
        QTest::addColumn<int>("playlist");
        QTest::addColumn<QList<int>>("marked");
        QTest::addColumn<QList<int>>("kept");
        QTest::addColumn<QString>("status");
        const QList<int> all{0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
        QTest::newRow("nothing marked") << 1 << QList<int>{} << all << QStringLiteral("0 Einträge gelöscht!");
        QTest::newRow("one") << 1 << QList<int>{4} << QList<int>{0, 1, 2, 3, 5, 6, 7, 8, 9}
                             << QStringLiteral("1 Eintrag gelöscht!");
        QTest::newRow("first and last") << 1 << QList<int>{0, 9} << QList<int>{1, 2, 3, 4, 5, 6, 7, 8}
                                        << QStringLiteral("2 Einträge gelöscht!");
        QTest::newRow("all") << 1 << all << QList<int>{} << QStringLiteral("10 Einträge gelöscht!");
        QTest::newRow("playlist 2") << 2 << QList<int>{2, 3, 5} << QList<int>{0, 1, 4, 6, 7, 8, 9}
                                    << QStringLiteral("3 Einträge gelöscht!");
    }
    void deleteMarked() {
        QFETCH(int, playlist);
        QFETCH(QList<int>, marked);
        QFETCH(QList<int>, kept);
        QFETCH(QString, status);
        TestServices t;
        PlaylistManager playlists(t.services);
        fillTen(playlists, playlist);
        mark(playlists, marked, playlist);
        QSignalSpy resets(&playlists, &PlaylistManager::historyResetRequested);
        PlaylistEntryEditor editor(t.services, playlists);
        editor.DeleteSelectedSongs(playlist);

        QStringList lines, rows;
        for (int i : kept) {
            lines << QStringLiteral("/m/Lied %1.mp3:5").arg(i);
            rows << QStringLiteral("%1. Lied %2").arg(rows.size() + 1).arg(i);
        }
        QCOMPARE(playlists.paths(playlist), lines.isEmpty() ? QStringList{QString()} : lines);
        QCOMPARE(playlists.list(playlist).items(), rows);
        QCOMPARE(t.status.text(), status);
        QVERIFY(playlists.PlaylistChanged); // also for playlist 2 and when nothing was marked
        QCOMPARE(resets.count(), playlist == 1 ? 1 : 0);
        if (playlist == 1)
            QCOMPARE(playlists.PlaylistNames.size(), qMax<qsizetype>(1, kept.size()));
    }
};

QTEST_GUILESS_MAIN(TestPlaylistEntryEditor)
#include "tst_PlaylistEntryEditor.moc"
