#include "app/TavoMP3PlayerMain.h"
#include "playlist/PlaylistFile.h"
#include "support/Id3FileWriter.h"
#include "support/TestServices.h"
#include "ui/TavoMP3ID3.h"
#include "ui/TavoMp3Tree.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>

using W = Id3FileWriter;

// The ID3 window opened from the main list, and the folder-tree window.
class tst_Id3TreeWindows : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;

    static void screenshot(QWidget& w, const char* name) {
        const QString folder = qEnvironmentVariable("TAVO_SCREENSHOT_DIR");
        if (!folder.isEmpty())
            w.grab().save(folder + QLatin1Char('/') + QLatin1String(name));
    }
    QList<QLineEdit*> tagFields(TavoMP3ID3& w) {
        return {w.FTitle, w.FArtist, w.FAlbum, w.FYear, w.FCategory, w.FTrack, w.FComment};
    }

private slots:
    void menuEntryShowsSelectedSong_data() {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("title");
        QTest::newRow("tagged song") << 1 << QStringLiteral("Über den Wolken");
        QTest::newRow("song without tag") << 0 << QString();
    }
    void menuEntryShowsSelectedSong() {
        QFETCH(int, row);
        QFETCH(QString, title);
        const QString plain = m_dir.filePath(QStringLiteral("Plain.mp3"));
        const QString tagged = m_dir.filePath(QStringLiteral("Tagged.mp3"));
        QVERIFY(W::write(plain, W::audio()));
        const W::Tag t{QStringLiteral("Über den Wolken"),
                       QStringLiteral("Reinhard Mey"),
                       QStringLiteral("Live"),
                       QStringLiteral("1974"),
                       QStringLiteral("Chanson"),
                       QStringLiteral("7/12"),
                       QStringLiteral("schön")};
        QVERIFY(W::write(tagged, W::id3v2(3, t, W::Utf16) + W::audio()));
        const QString list = m_dir.filePath(QStringLiteral("list.txt"));
        PlaylistFile::writeLines(list, {plain + QStringLiteral(":5"), tagged + QStringLiteral(":3")});

        TestServices t2;
        t2.settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("PlaylistFile"), list);
        t2.settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("UserMP3Directory"), m_dir.path());
        t2.settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("WinampPath"), QString());
        TavoMP3PlayerMain main(t2.services);
        main.load();
        QCOMPARE(main.playlists().list(1).count(), 2);
        main.playlists().list(1).selectOnly(row);
        QCOMPARE(main.MenuPlaylistID3->text(), QStringLiteral("ID3 Tag bearbeiten"));
        QVERIFY(main.MenuPlaylist->actions().contains(main.MenuPlaylistID3));
        QCOMPARE(main.FPlaylist->contextMenuPolicy(), Qt::CustomContextMenu);
        main.MenuPlaylistID3->trigger();

        TavoMP3ID3& w = main.id3Window();
        QVERIFY(w.isVisible());
        QCOMPARE(w.FFile->text(), row == 1 ? tagged : plain); // the line without ":<prio>"
        QCOMPARE(w.FTitle->text(), title);
        if (row == 1) {
            QCOMPARE(w.FArtist->text(), QStringLiteral("Reinhard Mey"));
            QCOMPARE(w.FYear->text(), QStringLiteral("1974"));
            QCOMPARE(w.FTrack->text(), QStringLiteral("7/12"));
            QCOMPARE(w.FComment->text(), QStringLiteral("schön"));
            QCOMPARE(w.LTagVersion->text(), QStringLiteral("ID3v2.3"));
        } else {
            for (QLineEdit* e : tagFields(w))
                QCOMPARE(e->text(), QString());
            QCOMPARE(w.LTagVersion->text(), QStringLiteral("kein ID3 Tag"));
        }
        QVERIFY(t2.dialogs.questions.isEmpty());
    }

    void emptyPlaylistOpensEmptyWindow() {
        TestServices t;
        TavoMP3PlayerMain main(t.services);
        main.load();
        main.MenuPlaylistID3Click();
        QVERIFY(main.id3Window().isVisible());
        QCOMPARE(main.id3Window().FFile->text(), QString());
        QVERIFY(t.dialogs.questions.isEmpty());
    }

    void buttonsAreInertAndColoursApply() {
        const QString tagged = m_dir.filePath(QStringLiteral("Shot.mp3"));
        const W::Tag t{QStringLiteral("Mädchen in den Schänken"),
                       QStringLiteral("Tavo Band"),
                       QStringLiteral("Lieder 2004"),
                       QStringLiteral("2004"),
                       QStringLiteral("Rock"),
                       QStringLiteral("3/10"),
                       QStringLiteral("Lieblingslied")};
        QVERIFY(W::write(tagged, W::id3v2(4, t, W::Utf8) + W::audio()));
        TavoMP3ID3 w;
        w.showFile(tagged);
        w.SetColorBackground(QColor(0, 0, 64));
        w.SetColorText(QColor(255, 200, 0));
        w.SetColorFieldBackground(QColor(20, 20, 60));
        w.SetColorFieldText(QColor(255, 255, 160));
        w.SetColorButtonText(QColor(0, 0, 128));
        QCOMPARE(w.FTitle->palette().color(QPalette::Base), QColor(20, 20, 60));
        QCOMPARE(w.FTitle->palette().color(QPalette::Text), QColor(255, 255, 160));
        QCOMPARE(w.BSave->palette().color(QPalette::ButtonText), QColor(0, 0, 128));
        QCOMPARE(w.LTagVersion->palette().color(QPalette::WindowText), QColor(255, 200, 0));
        w.show();
        const QList<QString> before = [&] {
            QList<QString> texts;
            for (QLineEdit* e : tagFields(w))
                texts << e->text();
            return texts;
        }();
        QTest::mouseClick(w.BSave, Qt::LeftButton);
        QTest::mouseClick(w.BClose, Qt::LeftButton);
        QVERIFY(w.isVisible());
        for (int i = 0; i < before.size(); ++i)
            QCOMPARE(tagFields(w).at(i)->text(), before.at(i));
        QVERIFY(QFile::exists(tagged));
        QCOMPARE(QFileInfo(tagged).size(), qint64(W::id3v2(4, t, W::Utf8).size() + W::audio().size()));
        screenshot(w, "id3-window.png");
    }

    void treeWindow() {
        TavoMp3Tree tree;
        QCOMPARE(tree.objectName(), QStringLiteral("TavoMp3Tree"));
        QCOMPARE(tree.BOK->objectName(), QStringLiteral("BOK"));
        tree.show();
        QTest::mouseClick(tree.BOK, Qt::LeftButton);
        QVERIFY(tree.isVisible()); // OK does nothing
        QVERIFY(tree.FTree->model()->rowCount() > 0);
        tree.SetColorFieldBackground(QColor(20, 20, 60));
        tree.SetColorFieldText(QColor(255, 255, 160));
        QCOMPARE(tree.FTree->palette().color(QPalette::Base), QColor(20, 20, 60));
        QTest::qWait(200); // let the folder model fill in
        screenshot(tree, "tree-window.png");
    }
};

QTEST_MAIN(tst_Id3TreeWindows)
#include "tst_Id3TreeWindows.moc"
