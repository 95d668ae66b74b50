#include "app/TavoMP3PlayerMain.h"
#include "base/StatusLine.h"
#include "playlist/widgets/PriorityFrame.h"
#include "playlist/widgets/PriorityMenu.h"
#include "playlist/widgets/TavoMP3QuickSearch.h"
#include "support/TempMusicTree.h"
#include "support/TestServices.h"
#include "ui/DirectoryField.h"
#include "ui/SkinControl.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QLocale>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

namespace {

QStringList texts(std::initializer_list<const char*> items) {
    QStringList out;
    for (const char* item : items)
        out << QString::fromUtf8(item);
    return out;
}

// Saves a picture of a window when TAVO_SCREENSHOT_DIR names a folder, for looking at the layout.
void screenshot(QWidget* w, const char* name) {
    const QString dir = qEnvironmentVariable("TAVO_SCREENSHOT_DIR");
    if (!dir.isEmpty())
        w->grab().save(dir + QLatin1Char('/') + QLatin1String(name) + QStringLiteral(".png"));
}

} // namespace

// The main window's controls for building, priorities, deleting and the quick search.
class tst_MainPlaylistTools : public QObject {
    Q_OBJECT

    TempMusicTree m_music{texts({"ABBA - Gold/Waterloo.mp3", "ABBA - Gold/Dancing Queen.mp3",
                                 "Die Ärzte/Junge.mp3", "Die Ärzte/cover.jpg", "Greatest Hits/Song.mp3"})};

    struct Window {
        TestServices t;
        TavoMP3PlayerMain w{t.services};
        explicit Window(const QString& music) {
            t.settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("WinampPath"),
                                   QStringLiteral("/usr/bin/mpv"));
            t.settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("UserMP3Directory"), music);
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
        Window win(m_music.root());
        QCOMPARE(win.rows(), texts({"1. Dancing Queen", "2. Waterloo", "3. Junge", "4. Song"}));
        QVERIFY(win.w.FStatus->text().endsWith(QStringLiteral("s  -  Einträge: 4")));
        QVERIFY(win.w.playlists().PlaylistChanged);
        screenshot(&win.w, "main-built");
    }

    void updateKeepsPriority() {
        TempMusicTree music(texts({"ABBA - Gold/Waterloo.mp3", "ABBA - Gold/Dancing Queen.mp3",
                                   "Die Ärzte/Junge.mp3", "Greatest Hits/Song.mp3"}));
        Window win(music.root());
        win.mark({1});
        win.w.Frame1->FPrio.at(2)->click();
        music.add(texts({"Neu/Lied.mp3"}));
        music.remove(QStringLiteral("Die Ärzte/Junge.mp3"));
        win.w.BUpdateList->click();
        QCOMPARE(win.rows(), texts({"1. Dancing Queen", "2. Waterloo", "3. Song", "4. Lied"}));
        QCOMPARE(win.w.playlists().PlaylistPaths.at(1),
                 music.line(QStringLiteral("ABBA - Gold/Waterloo.mp3"), '2'));
        QVERIFY(win.w.FStatus->text().contains(QStringLiteral("   Liste neu: 3  Liste vorher: 3")));
    }

    void priorityButtonsAndMenus_data() {
        QTest::addColumn<QString>("control"); // "frame", "context" or "tray"
        QTest::addColumn<int>("index");       // FPrio index, or menu Index
        QTest::addColumn<QChar>("digit");
        QTest::newRow("FPrio(0)") << QStringLiteral("frame") << 0 << QChar(u'0');
        QTest::newRow("FPrio(3)") << QStringLiteral("frame") << 3 << QChar(u'3');
        QTest::newRow("context &5 = normal") << QStringLiteral("context") << 0 << QChar(u'5');
        QTest::newRow("context &0 = nie") << QStringLiteral("context") << 5 << QChar(u'0');
        QTest::newRow("tray &2 = selten") << QStringLiteral("tray") << 3 << QChar(u'2');
    }
    void priorityButtonsAndMenus() {
        QFETCH(QString, control);
        QFETCH(int, index);
        QFETCH(QChar, digit);
        Window win(m_music.root());
        win.w.playlists().PlaylistChanged = false;
        win.mark({0, 3});
        if (control == QLatin1String("frame"))
            win.w.Frame1->FPrio.at(index)->click();
        else if (control == QLatin1String("context"))
            win.w.MenuPlaylistSetPrio->MenuSetPrio.at(index)->trigger();
        else
            win.w.MenuSetPrio.at(index)->trigger();
        const QStringList& paths = win.w.playlists().PlaylistPaths;
        QCOMPARE(paths.at(0).back(), digit);
        QCOMPARE(paths.at(1).back(), QLatin1Char('5'));
        QCOMPARE(paths.at(3).back(), digit);
        QCOMPARE(win.w.FStatus->text(),
                 QStringLiteral("Priorität %1 bei allen markierten Einträgen (2) gesetzt!").arg(digit));
        QVERIFY(!win.w.playlists().PlaylistChanged);
    }

    void contextMenuEntries() {
        Window win(m_music.root());
        const QList<QAction*> items = win.w.MenuPlaylist->actions();
        QCOMPARE(items.size(), 2);
        QCOMPARE(items.at(0)->text(), QStringLiteral("Priorität &setzen"));
        QCOMPARE(items.at(1)->text(), QStringLiteral("ID3 Tag bearbeiten"));
        QCOMPARE(items.at(1)->objectName(), QStringLiteral("MenuPlaylistID3"));
        QStringList captions;
        for (QAction* a : win.w.MenuPlaylistSetPrio->MenuSetPrio)
            captions << a->text();
        QCOMPARE(captions, texts({"&5 = normal", "&4", "&3", "&2 = selten", "&1", "&0 = nie"}));
    }

    void keysOnTheList_data() {
        QTest::addColumn<QList<int>>("marked");
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<QStringList>("rows");
        QTest::addColumn<QList<int>>("markedAfter");
        QTest::addColumn<QString>("status");
        QTest::newRow("delete two") << QList<int>{0, 2} << int(Qt::Key_Delete) << 0
                                    << texts({"1. Waterloo", "2. Song"}) << QList<int>{}
                                    << QStringLiteral("2 Einträge gelöscht!");
        QTest::newRow("delete nothing") << QList<int>{} << int(Qt::Key_Delete) << 0
                                        << texts({"1. Dancing Queen", "2. Waterloo", "3. Junge", "4. Song"})
                                        << QList<int>{} << QStringLiteral("0 Einträge gelöscht!");
        QTest::newRow("ctrl+a") << QList<int>{1} << int(Qt::Key_A) << int(Qt::ControlModifier)
                                << texts({"1. Dancing Queen", "2. Waterloo", "3. Junge", "4. Song"})
                                << QList<int>{0, 1, 2, 3} << QString();
    }
    void keysOnTheList() {
        QFETCH(QList<int>, marked);
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(QStringList, rows);
        QFETCH(QList<int>, markedAfter);
        QFETCH(QString, status);
        Window win(m_music.root());
        win.mark(marked);
        const QString before = win.w.FStatus->text();
        QTest::keyClick(win.w.FPlaylist, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        QCOMPARE(win.rows(), rows);
        QCOMPARE(win.marked(), markedAfter);
        QCOMPARE(win.w.FStatus->text(), status.isEmpty() ? before : status);
        QVERIFY(win.w.findChild<TavoMP3QuickSearch*>() == nullptr);
    }

    void typingOpensTheQuickSearch_data() {
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("typed");
        QTest::newRow("letter arrives in upper case") << int(Qt::Key_D) << QStringLiteral("D");
        QTest::newRow("digit") << int(Qt::Key_7) << QStringLiteral("7");
    }
    void typingOpensTheQuickSearch() {
        QFETCH(int, key);
        QFETCH(QString, typed);
        Window win(m_music.root());
        QTest::keyClick(win.w.FPlaylist, Qt::Key(key));
        auto* search = win.w.findChild<TavoMP3QuickSearch*>();
        QVERIFY(search);
        QVERIFY(search->isVisible());
        QVERIFY(!search->isModal());
        QCOMPARE(search->windowTitle(), QStringLiteral("Schnellsuche"));
        QCOMPARE(search->FSearchtext->text(), typed);
        screenshot(search, "quick-search");
    }

    void quickSearchMarksTheHitAndF3Continues() {
        Window win(m_music.root());
        QTest::keyClick(win.w.FPlaylist, Qt::Key_N);
        auto* search = win.w.findChild<TavoMP3QuickSearch*>();
        QVERIFY(search);
        search->RSearchMode.at(1)->setChecked(true); // Volltextsuche
        QTest::keyClick(search->FSearchtext, Qt::Key_Return);
        QCOMPARE(win.marked(), QList<int>{0}); // "Dancing Queen"
        QCOMPARE(win.w.FStatus->text(), QStringLiteral("\"N\" gefunden!"));
        QVERIFY(!search->isVisible());
        QTest::keyClick(win.w.FPlaylist, Qt::Key_F3);
        QCOMPARE(win.marked(), QList<int>{2}); // "Junge"
        QTest::keyClick(win.w.FPlaylist, Qt::Key_F3);
        QCOMPARE(win.marked(), QList<int>{3}); // "Song"
        QTest::keyClick(win.w.FPlaylist, Qt::Key_F3);
        QCOMPARE(win.w.FStatus->text(), QStringLiteral("Kein Suchergebnis für \"N\"!"));
        QCOMPARE(win.marked(), QList<int>{3});
    }

    void quickSearchAlbumByOkButton() {
        Window win(m_music.root());
        TavoMP3QuickSearch* search = win.w.openQuickSearch(QStringLiteral("H"));
        QTest::keyClicks(search->FSearchtext, QStringLiteral("its"));
        search->RSearchMode.at(2)->click();
        search->OKButton->click();
        QCOMPARE(win.marked(), QList<int>{3});
        QCOMPARE(win.w.FStatus->text(), QStringLiteral("\"Hits\" gefunden ---> ") +
                                            m_music.path(QStringLiteral("Greatest Hits/Song.mp3")));
    }

    void quickSearchEscapeAndCancelSearchNothing_data() {
        QTest::addColumn<bool>("escape");
        QTest::newRow("escape in the text") << true;
        QTest::newRow("cancel button") << false;
    }
    void quickSearchEscapeAndCancelSearchNothing() {
        QFETCH(bool, escape);
        Window win(m_music.root());
        const QString before = win.w.FStatus->text();
        TavoMP3QuickSearch* search = win.w.openQuickSearch(QStringLiteral("J"));
        QSignalSpy requests(search, &TavoMP3QuickSearch::searchRequested);
        if (escape)
            QTest::keyClick(search->RSearchMode.at(0), Qt::Key_Escape);
        else
            search->CancelButton->click();
        QCOMPARE(requests.count(), 0);
        QVERIFY(!search->isVisible());
        QCOMPARE(win.w.FStatus->text(), before);
        QVERIFY(win.marked().isEmpty());
    }

    void enterOnAnOptionSearches() {
        Window win(m_music.root());
        TavoMP3QuickSearch* search = win.w.openQuickSearch(QStringLiteral("Ä"));
        search->RSearchMode.at(2)->setChecked(true);
        QTest::keyClick(search->RSearchMode.at(2), Qt::Key_Enter);
        QCOMPARE(win.marked(), QList<int>{2});
        QCOMPARE(win.w.FStatus->text(), QStringLiteral("\"Ä\" gefunden ---> ") +
                                            m_music.path(QStringLiteral("Die Ärzte/Junge.mp3")));
    }
};

QTEST_MAIN(tst_MainPlaylistTools)
#include "tst_MainPlaylistTools.moc"
