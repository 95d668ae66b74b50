#include "playlist/PlaylistEntryEditor.h"
#include "playlist/PlaylistManager.h"
#include "support/TestServices.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

// Priorities set on and deletion of the marked entries of "/m/Lied 0.mp3:5" .. "/m/Lied 9.mp3:5".
// The buttons and menus that call these are tested through the main window.
class TestPlaylistEntryEditor : public QObject {
    Q_OBJECT
private slots:
    void editMarked_data() {
        QTest::addColumn<int>("playlist");
        QTest::addColumn<QList<int>>("marked");
        QTest::addColumn<int>("priority"); // -1 = delete
        QTest::addColumn<QString>("status");
        QTest::newRow("priority 0 on three")
            << 1 << QList<int>{1, 4, 9} << 0 << u"Priorität 0 bei allen markierten Einträgen (3) gesetzt!"_s;
        QTest::newRow("priority 4, nothing marked")
            << 1 << QList<int>{} << 4 << u"Priorität 4 bei allen markierten Einträgen (0) gesetzt!"_s;
        QTest::newRow("delete nothing") << 1 << QList<int>{} << -1 << u"0 Einträge gelöscht!"_s;
        QTest::newRow("delete one") << 1 << QList<int>{4} << -1 << u"1 Eintrag gelöscht!"_s;
        QTest::newRow("delete first and last") << 1 << QList<int>{0, 9} << -1 << u"2 Einträge gelöscht!"_s;
        QTest::newRow("delete all") << 1 << QList<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9} << -1
                                    << u"10 Einträge gelöscht!"_s;
        QTest::newRow("delete on playlist 2") << 2 << QList<int>{2, 3, 5} << -1 << u"3 Einträge gelöscht!"_s;
    }
    void editMarked() {
        QFETCH(int, playlist);
        QFETCH(QList<int>, marked);
        QFETCH(int, priority);
        QFETCH(QString, status);
        TestServices t;
        PlaylistManager playlists(t.services);
        playlists.paths(playlist).clear();
        for (int i = 0; i < 10; ++i)
            playlists.paths(playlist) << u"/m/Lied %1.mp3:5"_s.arg(i);
        playlists.FuncDisplayPlaylist(true, playlist);
        for (int row : marked)
            playlists.list(playlist).setSelected(row, true);
        QSignalSpy resets(&playlists, &PlaylistManager::historyResetRequested);
        PlaylistEntryEditor editor(t.services, playlists);
        if (priority >= 0)
            editor.FPrioClick(priority);
        else
            editor.DeleteSelectedSongs(playlist);
        QCOMPARE(t.status.text(), status);

        QStringList lines, rows;
        for (int i = 0; i < 10; ++i) {
            if (priority < 0 && marked.contains(i))
                continue;
            const QChar digit = marked.contains(i) ? QChar(u'0' + priority) : u'5';
            lines << u"/m/Lied %1.mp3:"_s.arg(i) + digit;
            rows << u"%1. Lied %2"_s.arg(rows.size() + 1).arg(i);
        }
        QCOMPARE(playlists.paths(playlist), lines.isEmpty() ? QStringList{QString()} : lines);
        QCOMPARE(playlists.list(playlist).items(), rows);
        // A priority is no change that asks to be saved, and the history stays; a deletion is one,
        // even when nothing was marked, and it resets the history of the main list.
        QCOMPARE(playlists.PlaylistChanged, priority < 0);
        QCOMPARE(resets.count(), priority < 0 && playlist == 1 ? 1 : 0);
        if (playlist == 1)
            QCOMPARE(playlists.PlaylistNames.size(), qMax<qsizetype>(1, lines.size()));
    }

    void emptyListDoesNothing() {
        TestServices t;
        t.status.setText(u"vorher"_s);
        PlaylistManager playlists(t.services);
        PlaylistEntryEditor(t.services, playlists).FPrioClick(3);
        QCOMPARE(t.status.text(), u"vorher"_s);
        QCOMPARE(playlists.PlaylistPaths, QStringList{QString()});
    }
};

QTEST_GUILESS_MAIN(TestPlaylistEntryEditor)
#include "tst_PlaylistEntryEditor.moc"
