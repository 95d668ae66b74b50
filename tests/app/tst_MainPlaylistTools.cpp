// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "playlist/widgets/PriorityFrame.h"
#include "playlist/widgets/PriorityMenu.h"
#include "playlist/widgets/TavoMP3QuickSearch.h"
#include "support/MainWindowRig.h"
#include "support/TempMusicTree.h"

#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

using namespace Qt::StringLiterals;

// The main window's controls for building, priorities, deleting and the quick search.
class tst_MainPlaylistTools : public QObject {
    Q_OBJECT

    TempMusicTree m_music{{"ABBA - Gold/Waterloo.mp3", "ABBA - Gold/Dancing Queen.mp3", "Die Ärzte/Junge.mp3",
                           "Die Ärzte/cover.jpg", "Greatest Hits/Song.mp3"}};
    const QStringList m_built{"1. Dancing Queen", "2. Waterloo", "3. Junge", "4. Song"};

    // A window whose list was built from the music folders by its button.
    struct Rig : MainWindowRig {
        explicit Rig(const QString& music) {
            setting("WinampPath", "/usr/bin/mpv");
            setting("UserMP3Directory", music);
            w.load();
            w.BCreateList->click();
        }
        QStringList rows() { return w.playlists().list(1).items(); }
        QList<int> marked() { return w.playlists().list(1).selectedRows(); }
        void mark(const QList<int>& rows) {
            for (int r : rows)
                w.playlists().list(1).setSelected(r, true);
        }
    };

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }

    void createListFromTheFolderField() {
        Rig r(m_music.root());
        QCOMPARE(r.rows(), m_built);
        QVERIFY(r.w.FStatus->text().endsWith("s  -  Einträge: 4"));
        QVERIFY(r.w.playlists().PlaylistChanged);
    }

    void updateKeepsPriority() {
        TempMusicTree music({"ABBA - Gold/Waterloo.mp3", "ABBA - Gold/Dancing Queen.mp3",
                             "Die Ärzte/Junge.mp3", "Greatest Hits/Song.mp3"});
        Rig r(music.root());
        r.mark({1});
        r.w.Frame1->FPrio.at(2)->click();
        music.add({"Neu/Lied.mp3"});
        music.remove("Die Ärzte/Junge.mp3");
        r.w.BUpdateList->click();
        QCOMPARE(r.rows(), (QStringList{"1. Dancing Queen", "2. Waterloo", "3. Song", "4. Lied"}));
        QCOMPARE(r.w.playlists().PlaylistPaths.at(1), music.line("ABBA - Gold/Waterloo.mp3", '2'));
        QVERIFY(r.w.FStatus->text().contains("   Liste neu: 3  Liste vorher: 3"));
    }

    // The frame's options, the list's context menu and the tray menu set the digit their entry names.
    void priorityButtonsAndMenus_data() {
        QTest::addColumn<QString>("control"); // "frame", "context" or "tray"
        QTest::addColumn<int>("index");       // FPrio index, or menu index
        QTest::addColumn<QString>("caption"); // of the menu entry
        QTest::newRow("FPrio(0)") << u"frame"_s << 0 << u"0"_s;
        QTest::newRow("FPrio(3)") << u"frame"_s << 3 << u"3"_s;
        QTest::newRow("context 5") << u"context"_s << 0 << u"&5 = normal"_s;
        QTest::newRow("context 0") << u"context"_s << 5 << u"&0 = nie"_s;
        QTest::newRow("tray 2") << u"tray"_s << 3 << u"&2 = selten"_s;
        QTest::newRow("tray 0") << u"tray"_s << 5 << u"&0 = nie"_s;
    }
    void priorityButtonsAndMenus() {
        QFETCH(QString, control);
        QFETCH(int, index);
        QFETCH(QString, caption);
        Rig r(m_music.root());
        r.w.playlists().PlaylistChanged = false;
        r.mark({0, 3});
        QAction* entry = control == "context" ? r.w.MenuPlaylistSetPrio->MenuSetPrio.at(index)
                         : control == "tray"  ? r.w.MenuSetPrio.at(index)
                                              : nullptr;
        if (entry) {
            QCOMPARE(entry->text(), caption);
            entry->trigger();
        } else {
            r.w.Frame1->FPrio.at(index)->click();
        }
        const QChar digit = caption.at(caption.startsWith('&') ? 1 : 0);
        const QStringList& paths = r.w.playlists().PlaylistPaths;
        QCOMPARE(paths.at(0).back(), digit);
        QCOMPARE(paths.at(1).back(), QLatin1Char('5'));
        QCOMPARE(paths.at(3).back(), digit);
        QCOMPARE(r.w.FStatus->text(),
                 QStringLiteral("Priorität %1 bei allen markierten Einträgen (2) gesetzt!").arg(digit));
        QVERIFY(!r.w.playlists().PlaylistChanged);
    }

    void keysOnTheList_data() {
        QTest::addColumn<QList<int>>("marked");
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<QStringList>("rows");
        QTest::addColumn<QList<int>>("markedAfter");
        QTest::addColumn<QString>("status");
        QTest::newRow("delete two") << QList<int>{0, 2} << int(Qt::Key_Delete) << 0
                                    << QStringList{"1. Waterloo", "2. Song"} << QList<int>{}
                                    << u"2 Einträge gelöscht!"_s;
        QTest::newRow("delete nothing") << QList<int>{} << int(Qt::Key_Delete) << 0 << m_built << QList<int>{}
                                        << u"0 Einträge gelöscht!"_s;
        QTest::newRow("ctrl+a") << QList<int>{1} << int(Qt::Key_A) << int(Qt::ControlModifier) << m_built
                                << QList<int>{0, 1, 2, 3} << QString();
    }
    void keysOnTheList() {
        QFETCH(QList<int>, marked);
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(QStringList, rows);
        QFETCH(QList<int>, markedAfter);
        QFETCH(QString, status);
        Rig r(m_music.root());
        r.mark(marked);
        const QString before = r.w.FStatus->text();
        QTest::keyClick(r.w.FPlaylist, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        QCOMPARE(r.rows(), rows);
        QCOMPARE(r.marked(), markedAfter);
        QCOMPARE(r.w.FStatus->text(), status.isEmpty() ? before : status);
        QVERIFY(r.w.findChild<TavoMP3QuickSearch*>() == nullptr);
    }

    // A letter or digit typed on the list opens the quick search with it (letters in upper case);
    // the search runs from the OK button or Enter on a search option, not from Escape or Cancel.
    void quickSearchFromTheList_data() {
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("more"); // typed into the search field
        QTest::addColumn<QString>("how");
        QTest::addColumn<QList<int>>("marked");
        QTest::addColumn<QString>("found"); // file named in the status; empty: status unchanged
        QTest::newRow("album by the OK button")
            << int(Qt::Key_H) << u"its"_s << u"ok"_s << QList<int>{3} << u"Greatest Hits/Song.mp3"_s;
        QTest::newRow("album by Enter on the option")
            << int(Qt::Key_H) << u"its"_s << u"enter"_s << QList<int>{3} << u"Greatest Hits/Song.mp3"_s;
        QTest::newRow("escape in the options")
            << int(Qt::Key_7) << u""_s << u"escape"_s << QList<int>{} << u""_s;
        QTest::newRow("cancel button") << int(Qt::Key_J) << u""_s << u"cancel"_s << QList<int>{} << u""_s;
    }
    void quickSearchFromTheList() {
        QFETCH(int, key);
        QFETCH(QString, more);
        QFETCH(QString, how);
        QFETCH(QList<int>, marked);
        QFETCH(QString, found);
        Rig r(m_music.root());
        const QString before = r.w.FStatus->text();
        QTest::keyClick(r.w.FPlaylist, Qt::Key(key));
        auto* search = r.w.findChild<TavoMP3QuickSearch*>();
        QVERIFY(search);
        QVERIFY(search->isVisible() && !search->isModal());
        QTest::keyClicks(search->FSearchtext, more);
        const QString typed = QChar(key) + more;
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
        QCOMPARE(r.marked(), marked);
        QCOMPARE(r.w.FStatus->text(),
                 found.isEmpty() ? before : "\"" + typed + "\" gefunden ---> " + m_music.path(found));
    }

    void quickSearchMarksTheHitAndF3Continues() {
        Rig r(m_music.root());
        QTest::keyClick(r.w.FPlaylist, Qt::Key_N);
        auto* search = r.w.findChild<TavoMP3QuickSearch*>();
        QVERIFY(search);
        search->RSearchMode.at(1)->setChecked(true); // Volltextsuche
        QTest::keyClick(search->FSearchtext, Qt::Key_Return);
        QCOMPARE(r.marked(), QList<int>{0}); // "Dancing Queen"
        QCOMPARE(r.w.FStatus->text(), "\"N\" gefunden!");
        QTest::keyClick(r.w.FPlaylist, Qt::Key_F3);
        QCOMPARE(r.marked(), QList<int>{2}); // "Junge"
        QTest::keyClick(r.w.FPlaylist, Qt::Key_F3);
        QCOMPARE(r.marked(), QList<int>{3}); // "Song"
        QTest::keyClick(r.w.FPlaylist, Qt::Key_F3);
        QCOMPARE(r.w.FStatus->text(), "Kein Suchergebnis für \"N\"!");
        QCOMPARE(r.marked(), QList<int>{3});
    }
};

QTEST_MAIN(tst_MainPlaylistTools)
#include "tst_MainPlaylistTools.moc"
