#include "app/TavoMP3PlayerMain.h"
#include "player/PlaybackMonitor.h"
#include "playlist/PlaylistFile.h"
#include "playlist/SongSelection.h"
#include "playlist/widgets/PlaylistDropView.h"
#include "playlist/widgets/TavoMP3Playlist2.h"
#include "support/MainWindowRig.h"
#include "ui/ClickLabel.h"
#include "ui/SkinControl.h"

#include <QCheckBox>
#include <QLabel>
#include <QMimeData>
#include <QRadioButton>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QtTest>

// The second playlist window as the main window drives it, on the fake player.
class tst_MainPlaylist2 : public QObject {
    Q_OBJECT

    struct Rig : MainWindowRig {
        TavoMP3Playlist2& pl2 = *w.Playlist2;

        void fill(int n, const QStringList& paths) {
            w.playlists().paths(n) = paths;
            w.playlists().FuncDisplayPlaylist(true, n);
        }
        void key(int key, Qt::KeyboardModifiers mods = Qt::NoModifier) {
            QTest::keyClick(pl2.FPlaylist, Qt::Key(key), mods);
        }
    };

    static QStringList songs(const QString& folder, int count) {
        QStringList out;
        for (int i = 0; i < count; ++i)
            out << QStringLiteral("/%1/Song%2.mp3:5").arg(folder).arg(i, 2, 10, QLatin1Char('0'));
        return out;
    }

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
    void windowCarriesItsControls() {
        Rig r;
        r.w.SetupSkins();
        QCOMPARE(r.pl2.windowTitle(), QStringLiteral("Playliste 2"));
        QCOMPARE(r.pl2.BPLOpen->label(), QStringLiteral("Öffnen"));
        QCOMPARE(r.pl2.BPLSave->label(), QStringLiteral("Speichern"));
        QCOMPARE(r.pl2.Label1->text(), QStringLiteral("PC herunterfahren bei Playlist Ende"));
        QCOMPARE(r.pl2.FPlaylist->selectionMode(), QAbstractItemView::ExtendedSelection);
        QCOMPARE(r.w.BPlaylist2->label(), QStringLiteral("Playliste 2 anzeigen"));
        // The main window's own buttons of the same names keep their captions.
        QCOMPARE(r.w.BPLOpen->label(), QStringLiteral("Playliste öffnen"));
        QVERIFY(!r.pl2.isVisible());
    }

    void buttonTogglesWindowAndActivePlaylist() {
        Rig r;
        r.w.show();
        r.w.move(40, 30);
        r.w.BPlaylist2->click();
        QVERIFY(r.pl2.isVisible());
        QVERIFY(r.pl2.PL2Visible);
        QVERIFY(r.w.PL[2]->isChecked());
        QVERIFY(!r.w.PL[1]->isChecked());
        QVERIFY(!r.w.mainPlaylistActive);
        const QRect frame = r.w.frameGeometry();
        QCOMPARE(r.pl2.pos(), QPoint(frame.x() + frame.width(), frame.y()));

        r.w.BPlaylist2->click();
        QVERIFY(!r.pl2.isVisible());
        QVERIFY(!r.pl2.PL2Visible);
        QVERIFY(r.w.PL[1]->isChecked());
        QVERIFY(r.w.mainPlaylistActive);
    }

    void closingHidesAndKeepsTheEntries() {
        Rig r;
        r.fill(2, songs(QStringLiteral("b"), 3));
        r.w.show();
        r.w.BPlaylist2Click();
        QVERIFY(!r.pl2.close());
        QVERIFY(!r.pl2.isVisible());
        QCOMPARE(r.w.playlists().list(2).count(), 3);
        // Activating the main window shows it again: it is still meant to be shown.
        r.w.activateWindow();
        QApplication::setActiveWindow(&r.w);
        QTRY_VERIFY(r.pl2.isVisible());
        QCOMPARE(r.w.playlists().list(2).itemText(2), QStringLiteral("3. Song02"));
    }

    void dockingFollowsTheMainWindowOnly() {
        Rig r;
        r.w.show();
        r.w.move(10, 20);
        r.w.BPlaylist2Click();
        r.w.dockPlaylist2();
        // The user may put the window elsewhere; it stays there until the main window moves.
        r.pl2.move(500, 400);
        r.w.dockPlaylist2();
        QCOMPARE(r.pl2.pos(), QPoint(500, 400));
        r.w.move(60, 70);
        r.w.dockPlaylist2();
        const QRect frame = r.w.frameGeometry();
        QCOMPARE(r.pl2.pos(), QPoint(frame.x() + frame.width(), frame.y()));
        QCOMPARE(r.w.LastDockedPosition, QString::number(frame.x()) + QString::number(frame.y()));
        r.w.setWindowState(Qt::WindowMinimized);
        r.w.dockPlaylist2();
        QVERIFY(!r.pl2.isVisible());
    }

    void dropCountsRowsFromTheFirstVisibleOne_data() {
        QTest::addColumn<int>("scrollRows");
        QTest::addColumn<int>("yPixels");
        QTest::addColumn<int>("expectedRow");
        // 96 dpi: 15 twips per pixel, a row of 195.5 twips is 13 pixels.
        QTest::newRow("top edge") << 0 << 0 << 0;
        QTest::newRow("third visible row, unscrolled") << 0 << 26 << 2;
        QTest::newRow("third visible row, scrolled by 30") << 30 << 26 << 2;
        QTest::newRow("half row rounds to even") << 0 << 13 << 1;
    }
    void dropCountsRowsFromTheFirstVisibleOne() {
        QFETCH(int, scrollRows);
        QFETCH(int, yPixels);
        QFETCH(int, expectedRow);
        Rig r;
        r.fill(1, songs(QStringLiteral("a"), 5));
        r.fill(2, songs(QStringLiteral("b"), 60));
        r.w.show();
        r.w.BPlaylist2Click();
        QVERIFY(QTest::qWaitForWindowExposed(&r.pl2));
        QCOMPARE(r.pl2.FPlaylist->logicalDpiY(), 96);
        r.pl2.FPlaylist->verticalScrollBar()->setValue(scrollRows);
        drop(r.pl2.FPlaylist, QPoint(10, yPixels), QStringLiteral("4. Song03"), Qt::CopyAction);
        const QStringList& paths = r.w.playlists().Playlist2Paths;
        QCOMPARE(paths.size(), 61);
        QCOMPARE(paths.at(expectedRow), QStringLiteral("/a/Song03.mp3:5"));
        QCOMPARE(r.pl2.FStatus->text(),
                 QStringLiteral("x: 150 / y: %1 ---> %2 effect: 1").arg(yPixels * 15).arg(expectedRow));
        QCOMPARE(r.w.playlists().list(2).count(), 61);
        QCOMPARE(r.w.playlists().list(2).itemText(expectedRow),
                 QStringLiteral("%1. Song03").arg(expectedRow + 1));
    }

    void movedRowIsRefused() {
        Rig r;
        r.fill(1, songs(QStringLiteral("a"), 5));
        r.fill(2, songs(QStringLiteral("b"), 2));
        r.w.show();
        r.w.BPlaylist2Click();
        drop(r.pl2.FPlaylist, QPoint(10, 5), QStringLiteral("1. Song00"), Qt::MoveAction);
        QCOMPARE(r.w.playlists().Playlist2Paths, songs(QStringLiteral("b"), 2));
        QCOMPARE(r.t.dialogs.messageTexts(), QStringList{QStringLiteral("Geht noch ned... :-(")});
        QCOMPARE(r.pl2.FStatus->text(), QStringLiteral("x: 150 / y: 75 ---> 0 effect: 2"));
    }

    void mainListDragsTheCurrentRowAsText() {
        Rig r;
        r.fill(1, songs(QStringLiteral("a"), 5));
        PlaylistListModel& list = r.w.playlists().list(1);
        list.selectAll();
        list.selection().setCurrentIndex(list.index(3), QItemSelectionModel::NoUpdate);
        std::unique_ptr<QMimeData> data(list.mimeData({list.index(1), list.index(3)}));
        QCOMPARE(data->text(), QStringLiteral("4. Song03"));
        QVERIFY(r.w.FPlaylist->dragEnabled());
    }

    void clickPlaysFromPlaylist2WithoutHistory() {
        Rig r;
        r.fill(1, songs(QStringLiteral("a"), 3));
        r.fill(2, songs(QStringLiteral("b"), 3));
        r.w.show();
        QVERIFY(r.w.PL[1]->isChecked());
        emit r.pl2.rowClicked(1);
        QVERIFY(r.w.PL[2]->isChecked());
        QCOMPARE(r.player.playedFiles(), QStringList{QStringLiteral("/b/Song01.mp3")});
        QCOMPARE(r.w.Playlist2Position, 1);
        QCOMPARE(r.w.prevSongs().slot(1), qint32(0));
    }

    void keysOnTheList() {
        Rig r;
        r.fill(2, songs(QStringLiteral("b"), 4));
        r.w.show();
        r.w.BPlaylist2Click();
        PlaylistListModel& list = r.w.playlists().list(2);

        r.key(Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(list.selectedRows(), (QList<int>{0, 1, 2, 3}));

        list.selectOnly(2);
        r.pl2.FPlaylist->setCurrentIndex(list.index(2));
        r.key(Qt::Key_Return);
        QCOMPARE(r.player.playedFiles(), QStringList{QStringLiteral("/b/Song02.mp3")});

        list.selectOnly(0);
        r.key(Qt::Key_Delete);
        QCOMPARE(r.w.playlists().Playlist2Paths.size(), 3);
        QCOMPARE(r.w.playlists().Playlist2Paths.first(), QStringLiteral("/b/Song01.mp3:5"));
    }

    void spaceSkipsAheadOnlyWithEnoughLeft_data() {
        QTest::addColumn<int>("positionSeconds");
        QTest::addColumn<QStringList>("jumps");
        // Song of 200 s: more than 25 s left jumps 20 s ahead.
        QTest::newRow("plenty left") << 100 << QStringList{QStringLiteral("JumpToTime 120000")};
        QTest::newRow("26 left") << 174 << QStringList{QStringLiteral("JumpToTime 194000")};
        QTest::newRow("exactly 25 left") << 175 << QStringList{};
    }
    void spaceSkipsAheadOnlyWithEnoughLeft() {
        QFETCH(int, positionSeconds);
        QFETCH(QStringList, jumps);
        Rig r;
        r.fill(1, songs(QStringLiteral("a"), 1));
        r.fill(2, songs(QStringLiteral("b"), 2));
        r.player.defaultLengthSeconds = 200;
        r.w.songSelection().PlaySong(0, 1);
        r.player.positionMs = qint64(positionSeconds) * 1000;
        r.w.playback().tmrTimeTick();
        r.player.clearLog();
        r.w.show();
        r.w.BPlaylist2Click();
        r.key(Qt::Key_Space);
        QCOMPARE(r.player.calls.filter(QStringLiteral("JumpToTime")), jumps);
    }

    void emptyListIgnoresItsKeys() {
        Rig r;
        r.w.show();
        r.w.BPlaylist2Click();
        QSignalSpy deletes(&r.pl2, &TavoMP3Playlist2::deletePressed);
        QSignalSpy spaces(&r.pl2, &TavoMP3Playlist2::spacePressed);
        r.key(Qt::Key_Delete);
        r.key(Qt::Key_Space);
        QCOMPARE(deletes.count() + spaces.count(), 0);
    }

    void endOfPlaylist2_data() {
        QTest::addColumn<bool>("shutdownBox");
        QTest::addColumn<int>("powerRequests");
        QTest::addColumn<QString>("status");
        QTest::newRow("box ticked: power off") << true << 1 << QString();
        QTest::newRow("box clear: end of list")
            << false << 0 << QStringLiteral("Playlistende erreicht - Playmodus gestoppt.");
    }
    void endOfPlaylist2() {
        QFETCH(bool, shutdownBox);
        QFETCH(int, powerRequests);
        QFETCH(QString, status);
        Rig r;
        r.fill(1, songs(QStringLiteral("a"), 3));
        r.fill(2, songs(QStringLiteral("b"), 2));
        r.w.ShuffleStatus = shutdownBox; // a ticked box switches shuffle off
        r.pl2.ShutdownOnPL2End->setChecked(shutdownBox);
        emit r.pl2.rowClicked(0);
        r.w.PlayMode = 1;
        r.w.playback().tmrTimeTick(); // still playing song 1
        r.player.finishSong();
        r.w.playback().tmrTimeTick(); // song 2 of 2 starts, in order when the box is ticked
        if (shutdownBox)
            QCOMPARE(r.player.playedFiles().last(), QStringLiteral("/b/Song01.mp3"));
        r.player.finishSong();
        r.player.userStop();
        for (int tick = 0; tick < 3; ++tick) // the end is one event, however many ticks follow it
            r.w.playback().tmrTimeTick();
        if (shutdownBox) {
            QVERIFY(!r.w.ShuffleStatus);
            QCOMPARE(r.t.power.requests, QList<qint32>{1});
        } else {
            QCOMPARE(r.t.power.requests.size(), powerRequests);
            QCOMPARE(r.w.FStatus->text(), status);
            QCOMPARE(r.w.PlayMode, quint8(0));
        }
        QCOMPARE(r.w.prevSongs().slot(1), qint32(0));
    }

    void startLoadsTheSecondPlaylistFile() {
        QTemporaryDir dir;
        Rig r;
        const QString one = dir.filePath(QStringLiteral("one.txt"));
        const QString two = dir.filePath(QStringLiteral("two.txt"));
        PlaylistFile::writeLines(one, songs(QStringLiteral("a"), 3));
        PlaylistFile::writeLines(two, songs(QStringLiteral("b"), 2));
        r.setting("WinampPath", QStringLiteral("/usr/bin/mpv"));
        r.setting("UserMP3Directory", dir.path());
        r.setting("PlaylistFile", one);
        r.setting("PlaylistFile2", two);
        r.w.load();
        QCOMPARE(r.w.playlists().Playlist2Paths, songs(QStringLiteral("b"), 2));
        QCOMPARE(r.pl2.FActPlaylist->text(), two);
        QCOMPARE(r.w.FActPlaylist->text(), one);
        QVERIFY(r.w.FStatus->text().startsWith(QStringLiteral("Playliste 2 aus Datei geladen in ")));
        QVERIFY(r.w.PL[1]->isChecked());
        QVERIFY(!r.pl2.isVisible());
    }
};

QTEST_MAIN(tst_MainPlaylist2)
#include "tst_MainPlaylist2.moc"
