// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "playback/PlaybackMonitor.h"
#include "playback/SongSelection.h"
#include "playlist/widgets/PlaylistDropView.h"
#include "playlist/widgets/PriorityFrame.h"
#include "playlist/widgets/PriorityMenu.h"
#include "playlist/widgets/TavoMP3Playlist2.h"
#include "playlist/widgets/TavoMP3QuickSearch.h"
#include "support/MainWindowRig.h"
#include "support/TempMusicTree.h"
#include "ui/DirectoryField.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QLocale>
#include <QMimeData>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QtTest>

using namespace Qt::StringLiterals;

// The main window's list tools (building, priorities, keys, quick search) and the second playlist
// window, on the fake player.
class tst_MainPlaylists : public QObject {
    Q_OBJECT

    TempMusicTree m_music{{"ABBA - Gold/Waterloo.mp3", "ABBA - Gold/Dancing Queen.mp3", "Die Ärzte/Junge.mp3",
                           "Die Ärzte/cover.jpg", "Greatest Hits/Song.mp3"}};

    struct BuiltRig : MainWindowRig {
        explicit BuiltRig(const QString& music) : MainWindowRig(Paths::nativeStyle()) {
            load({}, music);
            ui().BCreateList->click();
        }
    };

    struct ShownRig : MainWindowRig {
        TavoMP3Playlist2& pl2 = *ui().Playlist2;

        ShownRig(int main, int second) {
            fill(1, songs(main, "a"));
            fill(2, songs(second, "b"));
            w.show();
            binding<Playlist2Binding>().BPlaylist2Click();
        }
        void fill(int n, const QStringList& paths) {
            if (paths.isEmpty())
                return;
            core.playlists().paths(n) = paths;
            core.playlists().FuncDisplayPlaylist(true, n);
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
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }

    // The frame's options, the list's context menu and the tray menu set the digit their entry names.
    void priorityButtonsAndMenus_data() {
        QTest::addColumn<QString>("control"); // "frame", "context" or "tray"
        QTest::addColumn<int>("index");       // FPrio index, or menu index
        QTest::addColumn<QString>("caption"); // of the menu entry
        QTest::newRow("FPrio(3)") << u"frame"_s << 3 << u"3"_s;
        QTest::newRow("context 0") << u"context"_s << 5 << u"&0 = nie"_s;
        QTest::newRow("tray 0") << u"tray"_s << 5 << u"&0 = nie"_s;
    }
    void priorityButtonsAndMenus() {
        QFETCH(QString, control);
        QFETCH(int, index);
        QFETCH(QString, caption);
        BuiltRig r(m_music.root());
        for (int row : {0, 3})
            r.core.playlists().list(1).setSelected(row, true);
        QAction* entry = control == "context" ? r.w.ui().MenuPlaylistSetPrio->MenuSetPrio.at(index)
                         : control == "tray"  ? r.w.ui().MenuSetPrio.at(index)
                                              : nullptr;
        if (entry) {
            QCOMPARE(entry->text(), caption);
            entry->trigger();
        } else {
            r.w.ui().Frame1->FPrio.at(index)->click();
        }
        // Which digits go where is the entry editor's; here: the control reached it with its digit.
        const QChar digit = caption.at(caption.startsWith('&') ? 1 : 0);
        const QStringList& paths = r.core.playlists().PlaylistPaths;
        QCOMPARE(QString(paths.at(0).back()) + paths.at(1).back() + paths.at(3).back(),
                 QString(digit) + '5' + digit);
    }

    // A letter or digit typed on the list opens the quick search with it (letters in upper case);
    // the search runs from the OK button or Enter on a search option, not from Escape or Cancel.
    void quickSearchFromTheList_data() {
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("how");
        QTest::addColumn<bool>("found"); // "Greatest Hits/Song.mp3", for the album "Hits"
        QTest::newRow("album by the OK button") << int(Qt::Key_H) << u"ok"_s << true;
        QTest::newRow("album by Enter on the option") << int(Qt::Key_H) << u"enter"_s << true;
        QTest::newRow("escape in the options") << int(Qt::Key_7) << u"escape"_s << false;
        QTest::newRow("cancel button") << int(Qt::Key_H) << u"cancel"_s << false;
    }
    void quickSearchFromTheList() {
        QFETCH(int, key);
        QFETCH(QString, how);
        QFETCH(bool, found);
        BuiltRig r(m_music.root());
        const QString before = r.w.ui().FStatus->text();
        // Typed faster than the new window takes the focus: every letter still goes into one search.
        QTest::keyClick(r.w.ui().FPlaylist, Qt::Key(key));
        QTest::keyClicks(r.w.ui().FPlaylist, "its");
        const QList<TavoMP3QuickSearch*> windows = r.w.findChildren<TavoMP3QuickSearch*>();
        QCOMPARE(windows.size(), 1);
        TavoMP3QuickSearch* search = windows.first();
        QVERIFY(search->isVisible() && !search->isModal());
        const QString typed = QChar(key) + u"its"_s;
        QCOMPARE(search->FSearchtext->text(), typed);
        search->RSearchMode.at(2)->setChecked(true); // album
        if (how == "ok")
            search->OKButton->click();
        else if (how == "enter")
            QTest::keyClick(search->RSearchMode.at(2), Qt::Key_Enter);
        else if (how == "escape")
            QTest::keyClick(search->RSearchMode.at(0), Qt::Key_Escape);
        else
            search->CancelButton->click();
        QVERIFY(!search->isVisible());
        QCOMPARE(r.core.playlists().list(1).selectedRows(), found ? QList<int>{3} : QList<int>{});
        QCOMPARE(r.w.ui().FStatus->text(),
                 found ? "\"" + typed + "\" gefunden ---> " + m_music.path("Greatest Hits/Song.mp3")
                       : before);
    }

    // The button shows the window docked beside the main window and makes its list the active one;
    // the user may put it elsewhere, where it stays until the main window moves.
    void buttonAndDockingFollowTheMainWindow() {
        ShownRig r(0, 0);
        r.binding<Playlist2Binding>().BPlaylist2Click(); // hidden again
        r.w.move(40, 30);
        r.w.ui().BPlaylist2->click();
        QVERIFY(r.pl2.isVisible() && r.pl2.PL2Visible && r.w.ui().PL[2]->isChecked() &&
                !r.core.playback().state().mainPlaylistActive);
        QCOMPARE(r.pl2.pos(), r.docked());
        r.binding<Playlist2Binding>().dockPlaylist2();
        r.pl2.move(500, 400);
        r.binding<Playlist2Binding>().dockPlaylist2();
        QCOMPARE(r.pl2.pos(), QPoint(500, 400));
        r.w.move(60, 70);
        r.binding<Playlist2Binding>().dockPlaylist2();
        QCOMPARE(r.pl2.pos(), r.docked());
        r.w.ui().BPlaylist2->click();
        QVERIFY(!r.pl2.isVisible() && !r.pl2.PL2Visible && r.w.ui().PL[1]->isChecked() &&
                r.core.playback().state().mainPlaylistActive);
        // A minimized main window takes the docked window along.
        r.w.ui().BPlaylist2->click();
        r.w.setWindowState(Qt::WindowMinimized);
        r.binding<Playlist2Binding>().dockPlaylist2();
        QVERIFY(!r.pl2.isVisible());
    }

    // Closing hides the window; only a new activation of the main window shows it again, not any other change
    // of the active main window (which also leaves the focus where the user put it).
    void closingHidesAndKeepsTheEntries() {
        ShownRig r(0, 3);
        QApplication::setActiveWindow(&r.w);
        QTRY_VERIFY(r.w.isActiveWindow());
        QVERIFY(!r.pl2.close());
        r.w.ui().FBrowsePath->setFocus();
        r.w.setFont(QFont("Sans", 13));
        QVERIFY(!r.pl2.isVisible());
        QCOMPARE(QApplication::focusWidget(), r.w.ui().FBrowsePath);
        QApplication::setActiveWindow(&r.pl2);
        QApplication::setActiveWindow(&r.w);
        QTRY_VERIFY(r.pl2.isVisible());
        QCOMPARE(r.core.playlists().list(2).itemText(2), "3. Song02");
    }

    void dropCountsRowsFromTheFirstVisibleOne_data() {
        QTest::addColumn<int>("scrollRows");
        QTest::addColumn<int>("yPixels");
        QTest::addColumn<int>("expectedRow");
        // 96 dpi: 15 twips per pixel, a row of 195.5 twips is 13 pixels.
        QTest::newRow("top edge") << 0 << 0 << 0;
        QTest::newRow("third visible row, scrolled by 30") << 30 << 26 << 2;
        QTest::newRow("half row rounds to even") << 0 << 13 << 1;
    }
    void dropCountsRowsFromTheFirstVisibleOne() {
        QFETCH(int, scrollRows);
        QFETCH(int, yPixels);
        QFETCH(int, expectedRow);
        ShownRig r(5, 60);
        QVERIFY(QTest::qWaitForWindowExposed(&r.pl2));
        QCOMPARE(r.pl2.FPlaylist->logicalDpiY(), 96);
        r.pl2.FPlaylist->verticalScrollBar()->setValue(scrollRows);
        drop(r.pl2.FPlaylist, QPoint(10, yPixels), "4. Song03", Qt::CopyAction);
        const QStringList& paths = r.core.playlists().Playlist2Paths;
        QCOMPARE(r.pl2.FStatus->text(),
                 QStringLiteral("x: 150 / y: %1 ---> %2 effect: 1").arg(yPixels * 15).arg(expectedRow));
        QCOMPARE(paths.size(), 61);
        QCOMPARE(paths.at(expectedRow), "/a/Song03.mp3:5");
    }

    void spaceSkipsAheadOnlyWithEnoughLeft_data() {
        QTest::addColumn<int>("positionSeconds");
        QTest::addColumn<QStringList>("jumps");
        // Song of 200 s: more than 25 s left jumps 20 s ahead.
        QTest::newRow("26 left") << 174 << QStringList{"JumpToTime 194000"};
        QTest::newRow("exactly 25 left") << 175 << QStringList{};
    }
    void spaceSkipsAheadOnlyWithEnoughLeft() {
        QFETCH(int, positionSeconds);
        QFETCH(QStringList, jumps);
        ShownRig r(1, 2);
        r.player.defaultLengthSeconds = 200;
        r.core.playback().selection().PlaySong(0, 1);
        r.player.positionMs = qint64(positionSeconds) * 1000;
        r.core.playback().monitor().tmrTimeTick();
        r.player.clearLog();
        QTest::keyClick(r.pl2.FPlaylist, Qt::Key_Space);
        QCOMPARE(r.player.calls.filter("JumpToTime"), jumps);
    }

    // The end of the second list stops as the end of the main list does; with the shutdown box ticked
    // the list plays in order even with shuffle on, and ends in one power-off.
    void endOfPlaylist2_data() {
        QTest::addColumn<bool>("shutdownBox");
        QTest::newRow("box unticked: stops") << false;
        QTest::newRow("box ticked, shuffle on: in order, one power-off") << true;
    }
    void endOfPlaylist2() {
        QFETCH(bool, shutdownBox);
        ShownRig r(3, 3);
        r.pl2.ShutdownOnPL2End->setChecked(shutdownBox);
        r.core.playback().state().ShuffleStatus = shutdownBox;
        emit r.pl2.rowClicked(0);
        r.core.playback().state().PlayMode = 1;
        for (int song = 0; song < 5; ++song) {
            r.player.finishSong();
            r.player.userStop();
            r.core.playback().monitor().tmrTimeTick();
        }
        QCOMPARE(r.player.playedFiles(), QStringList({"/b/Song00.mp3", "/b/Song01.mp3", "/b/Song02.mp3"}));
        QCOMPARE(r.t.power.requests.size(), shutdownBox ? 1 : 0);
        QCOMPARE(int(r.core.playback().state().PlayMode), 0);
        QVERIFY(!r.core.playback().state().ShuffleStatus);
    }
};

QTEST_MAIN(tst_MainPlaylists)
#include "tst_MainPlaylists.moc"
