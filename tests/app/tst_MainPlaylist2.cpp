// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "player/PlaybackMonitor.h"
#include "playlist/SongSelection.h"
#include "playlist/widgets/PlaylistDropView.h"
#include "playlist/widgets/TavoMP3Playlist2.h"
#include "support/MainWindowRig.h"

#include <QCheckBox>
#include <QMimeData>
#include <QRadioButton>
#include <QScrollBar>
#include <QtTest>

// The second playlist window as the main window drives it, on the fake player.
class tst_MainPlaylist2 : public QObject {
    Q_OBJECT

    struct Rig : MainWindowRig {
        TavoMP3Playlist2& pl2 = *w.Playlist2;

        // Lists 1 and 2 hold these many songs, and the window shows both.
        Rig(int main, int second) {
            fill(1, songs(main, "a"));
            fill(2, songs(second, "b"));
            w.show();
            w.BPlaylist2Click();
        }
        void fill(int n, const QStringList& paths) {
            if (paths.isEmpty())
                return;
            w.playlists().paths(n) = paths;
            w.playlists().FuncDisplayPlaylist(true, n);
        }
        void key(int key, Qt::KeyboardModifiers mods = Qt::NoModifier) {
            QTest::keyClick(pl2.FPlaylist, Qt::Key(key), mods);
        }
        QPoint docked() const { return {w.frameGeometry().right() + 1, w.frameGeometry().y()}; }
    };

    // A drop on the list's viewport the way the window system delivers it.
    static void drop(PlaylistDropView* view, const QPoint& at, const QString& text, Qt::DropAction action) {
        QMimeData data;
        data.setText(text);
        QDragEnterEvent enter(at, action, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view->viewport(), &enter);
        QDragMoveEvent move(at, action, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view->viewport(), &move);
        QDropEvent dropped(QPointF(at), action, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view->viewport(), &dropped);
    }

private slots:
    // The button shows the window docked beside the main window and makes its list the active one;
    // the user may put it elsewhere, where it stays until the main window moves.
    void buttonAndDockingFollowTheMainWindow() {
        Rig r(0, 0);
        r.w.BPlaylist2Click(); // hidden again
        r.w.move(40, 30);
        r.w.BPlaylist2->click();
        QVERIFY(r.pl2.isVisible() && r.pl2.PL2Visible);
        QVERIFY(r.w.PL[2]->isChecked() && !r.w.PL[1]->isChecked());
        QVERIFY(!r.w.mainPlaylistActive);
        QCOMPARE(r.pl2.pos(), r.docked());

        r.w.dockPlaylist2();
        r.pl2.move(500, 400);
        r.w.dockPlaylist2();
        QCOMPARE(r.pl2.pos(), QPoint(500, 400));
        r.w.move(60, 70);
        r.w.dockPlaylist2();
        QCOMPARE(r.pl2.pos(), r.docked());
        const QRect frame = r.w.frameGeometry();
        QCOMPARE(r.w.LastDockedPosition, QString::number(frame.x()) + QString::number(frame.y()));

        r.w.BPlaylist2->click();
        QVERIFY(!r.pl2.isVisible() && !r.pl2.PL2Visible);
        QVERIFY(r.w.PL[1]->isChecked());
        QVERIFY(r.w.mainPlaylistActive);
        // A minimized main window takes the docked window along.
        r.w.BPlaylist2->click();
        r.w.setWindowState(Qt::WindowMinimized);
        r.w.dockPlaylist2();
        QVERIFY(!r.pl2.isVisible());
    }

    void closingHidesAndKeepsTheEntries() {
        Rig r(0, 3);
        QVERIFY(!r.pl2.close());
        QVERIFY(!r.pl2.isVisible());
        // Activating the main window shows it again: it is still meant to be shown.
        r.w.activateWindow();
        QApplication::setActiveWindow(&r.w);
        QTRY_VERIFY(r.pl2.isVisible());
        QCOMPARE(r.w.playlists().list(2).itemText(2), "3. Song02");
    }

    void dropCountsRowsFromTheFirstVisibleOne_data() {
        QTest::addColumn<int>("scrollRows");
        QTest::addColumn<int>("yPixels");
        QTest::addColumn<bool>("move");
        QTest::addColumn<int>("expectedRow"); // -1: refused
        // 96 dpi: 15 twips per pixel, a row of 195.5 twips is 13 pixels.
        QTest::newRow("top edge") << 0 << 0 << false << 0;
        QTest::newRow("third visible row, unscrolled") << 0 << 26 << false << 2;
        QTest::newRow("third visible row, scrolled by 30") << 30 << 26 << false << 2;
        QTest::newRow("half row rounds to even") << 0 << 13 << false << 1;
        QTest::newRow("a moved row is refused") << 0 << 5 << true << -1;
    }
    void dropCountsRowsFromTheFirstVisibleOne() {
        QFETCH(int, scrollRows);
        QFETCH(int, yPixels);
        QFETCH(bool, move);
        QFETCH(int, expectedRow);
        Rig r(5, 60);
        QVERIFY(QTest::qWaitForWindowExposed(&r.pl2));
        QCOMPARE(r.pl2.FPlaylist->logicalDpiY(), 96);
        r.pl2.FPlaylist->verticalScrollBar()->setValue(scrollRows);
        drop(r.pl2.FPlaylist, QPoint(10, yPixels), "4. Song03", move ? Qt::MoveAction : Qt::CopyAction);
        const QStringList& paths = r.w.playlists().Playlist2Paths;
        QCOMPARE(r.pl2.FStatus->text(), QStringLiteral("x: 150 / y: %1 ---> %2 effect: %3")
                                            .arg(yPixels * 15)
                                            .arg(std::max(expectedRow, 0))
                                            .arg(move ? 2 : 1));
        if (move) {
            QCOMPARE(paths, r.songs(60, "b"));
            QCOMPARE(r.t.dialogs.messageTexts(), QStringList{"Geht noch ned... :-("});
            return;
        }
        QCOMPARE(paths.size(), 61);
        QCOMPARE(paths.at(expectedRow), "/a/Song03.mp3:5");
        QCOMPARE(r.w.playlists().list(2).count(), 61);
        QCOMPARE(r.w.playlists().list(2).itemText(expectedRow),
                 QStringLiteral("%1. Song03").arg(expectedRow + 1));
    }

    void mainListDragsTheCurrentRowAsText() {
        Rig r(5, 0);
        PlaylistListModel& list = r.w.playlists().list(1);
        list.selectAll();
        list.selection().setCurrentIndex(list.index(3), QItemSelectionModel::NoUpdate);
        std::unique_ptr<QMimeData> data(list.mimeData({list.index(1), list.index(3)}));
        QCOMPARE(data->text(), "4. Song03");
        QVERIFY(r.w.FPlaylist->dragEnabled());
    }

    // A click plays from the second list and makes it the active one; its songs enter no history.
    void keysAndClicksOnTheList() {
        Rig r(3, 4);
        r.w.BPlaylist2Click();
        QVERIFY(r.w.PL[1]->isChecked());
        emit r.pl2.rowClicked(1);
        QVERIFY(r.w.PL[2]->isChecked());
        QCOMPARE(r.player.playedFiles(), QStringList{"/b/Song01.mp3"});
        QCOMPARE(r.w.Playlist2Position, 1);
        QCOMPARE(r.w.prevSongs().slot(1), qint32(0));
        r.w.BPlaylist2Click();
        PlaylistListModel& list = r.w.playlists().list(2);

        r.key(Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(list.selectedRows(), (QList<int>{0, 1, 2, 3}));
        list.selectOnly(2);
        r.pl2.FPlaylist->setCurrentIndex(list.index(2));
        r.key(Qt::Key_Return);
        QCOMPARE(r.player.playedFiles().last(), "/b/Song02.mp3");
        list.selectOnly(0);
        r.key(Qt::Key_Delete);
        QCOMPARE(r.w.playlists().Playlist2Paths.size(), 3);
        QCOMPARE(r.w.playlists().Playlist2Paths.first(), "/b/Song01.mp3:5");
    }

    void emptyListIgnoresItsKeys() {
        Rig r(0, 0);
        QSignalSpy deletes(&r.pl2, &TavoMP3Playlist2::deletePressed);
        QSignalSpy spaces(&r.pl2, &TavoMP3Playlist2::spacePressed);
        r.key(Qt::Key_Delete);
        r.key(Qt::Key_Space);
        QCOMPARE(deletes.count() + spaces.count(), 0);
    }

    void spaceSkipsAheadOnlyWithEnoughLeft_data() {
        QTest::addColumn<int>("positionSeconds");
        QTest::addColumn<QStringList>("jumps");
        // Song of 200 s: more than 25 s left jumps 20 s ahead.
        QTest::newRow("plenty left") << 100 << QStringList{"JumpToTime 120000"};
        QTest::newRow("26 left") << 174 << QStringList{"JumpToTime 194000"};
        QTest::newRow("exactly 25 left") << 175 << QStringList{};
    }
    void spaceSkipsAheadOnlyWithEnoughLeft() {
        QFETCH(int, positionSeconds);
        QFETCH(QStringList, jumps);
        Rig r(1, 2);
        r.player.defaultLengthSeconds = 200;
        r.w.songSelection().PlaySong(0, 1);
        r.player.positionMs = qint64(positionSeconds) * 1000;
        r.w.playback().tmrTimeTick();
        r.player.clearLog();
        r.key(Qt::Key_Space);
        QCOMPARE(r.player.calls.filter("JumpToTime"), jumps);
    }

    void endOfPlaylist2_data() {
        QTest::addColumn<bool>("shutdownBox");
        QTest::newRow("box ticked: power off") << true;
        QTest::newRow("box clear: end of list") << false;
    }
    void endOfPlaylist2() {
        QFETCH(bool, shutdownBox);
        Rig r(3, 2);
        r.w.ShuffleStatus = shutdownBox; // a ticked box switches shuffle off
        r.pl2.ShutdownOnPL2End->setChecked(shutdownBox);
        emit r.pl2.rowClicked(0);
        r.w.PlayMode = 1;
        r.w.playback().tmrTimeTick(); // still playing song 1
        r.player.finishSong();
        r.w.playback().tmrTimeTick(); // song 2 of 2 starts, in order when the box is ticked
        QCOMPARE(r.player.playedFiles().size(), 2);
        if (shutdownBox)
            QCOMPARE(r.player.playedFiles().last(), "/b/Song01.mp3");
        r.player.finishSong();
        r.player.userStop();
        for (int tick = 0; tick < 3; ++tick) // the end is one event, however many ticks follow it
            r.w.playback().tmrTimeTick();
        QCOMPARE(r.t.power.requests, shutdownBox ? QList<qint32>{1} : QList<qint32>{});
        if (shutdownBox) {
            QVERIFY(!r.w.ShuffleStatus);
        } else {
            QCOMPARE(r.w.FStatus->text(), "Playlistende erreicht - Playmodus gestoppt.");
            QCOMPARE(r.w.PlayMode, quint8(0));
        }
        QCOMPARE(r.w.prevSongs().slot(1), qint32(0));
    }

    void startLoadsTheSecondPlaylistFile() {
        MainWindowRig r;
        const QString two = r.writeList(r.songs(2, "b"), "two.txt");
        r.setting("PlaylistFile2", two);
        const QString one = r.load(r.songs(3, "a"));
        QCOMPARE(r.w.playlists().Playlist2Paths, r.songs(2, "b"));
        QCOMPARE(r.w.Playlist2->FActPlaylist->text(), two);
        QCOMPARE(r.w.FActPlaylist->text(), one);
        QVERIFY(r.w.FStatus->text().startsWith("Playliste 2 aus Datei geladen in "));
        QVERIFY(r.w.PL[1]->isChecked());
        QVERIFY(!r.w.Playlist2->isVisible());
    }
};

QTEST_MAIN(tst_MainPlaylist2)
#include "tst_MainPlaylist2.moc"
