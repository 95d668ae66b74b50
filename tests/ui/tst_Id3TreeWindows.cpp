// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "app/TavoMP3PlayerMain.h"
#include "playlist/PlaylistFile.h"
#include "support/Id3FileWriter.h"
#include "support/TestServices.h"
#include "ui/TavoMP3ID3.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QTemporaryDir>
#include <QTest>

using W = Id3FileWriter;

// The ID3 window opened from the main list's context menu.
class tst_Id3TreeWindows : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;

private slots:
    void menuEntryShowsSelectedSong_data() {
        QTest::addColumn<int>("row");       // -1: empty playlist
        QTest::addColumn<QString>("shown"); // file|title|artist|year|track|comment|tag version
        const QString tagged = m_dir.filePath("Tagged.mp3");
        QTest::newRow("tagged song") << 1 << tagged + "|Über den Wolken|Reinhard Mey|1974|7/12|schön|ID3v2.3";
        QTest::newRow("song without tag") << 0 << m_dir.filePath("Plain.mp3") + "||||||kein ID3 Tag";
        QTest::newRow("empty playlist") << -1 << "||||||kein ID3 Tag";
    }
    void menuEntryShowsSelectedSong() {
        QFETCH(int, row);
        QFETCH(QString, shown);
        const QString plain = m_dir.filePath("Plain.mp3");
        const QString tagged = m_dir.filePath("Tagged.mp3");
        QVERIFY(W::write(plain, W::audio()));
        const W::Tag tag{"Über den Wolken", "Reinhard Mey", "Live", "1974", "Chanson", "7/12", "schön"};
        QVERIFY(W::write(tagged, W::id3v2(3, tag, W::Utf16) + W::audio()));
        const QString list = m_dir.filePath("list.txt");
        PlaylistFile::writeLines(list, {plain + ":5", tagged + ":3"});

        TestServices t;
        if (row >= 0)
            t.settings.SaveSetting("Settings", "PlaylistFile", list);
        t.settings.SaveSetting("Settings", "UserMP3Directory", m_dir.path());
        t.settings.SaveSetting("Settings", "WinampPath", QString());
        TavoMP3PlayerMain main(t.services);
        main.load();
        QCOMPARE(main.playlists().list(1).count(), row >= 0 ? 2 : 0);
        if (row >= 0)
            main.playlists().list(1).selectOnly(row);
        QVERIFY(main.MenuPlaylist->actions().contains(main.MenuPlaylistID3));
        QCOMPARE(main.FPlaylist->contextMenuPolicy(), Qt::CustomContextMenu);
        main.MenuPlaylistID3->trigger();

        TavoMP3ID3& w = main.id3Window();
        QVERIFY(w.isVisible());
        // The file is the list line without ":<prio>".
        QCOMPARE((QStringList{w.FFile->text(), w.FTitle->text(), w.FArtist->text(), w.FYear->text(),
                              w.FTrack->text(), w.FComment->text(), w.LTagVersion->text()}),
                 shown.split('|'));
        QVERIFY(t.dialogs.questions.isEmpty());
        if (const QString folder = qEnvironmentVariable("TAVO_SCREENSHOT_DIR"); !folder.isEmpty() && row == 1)
            w.grab().save(folder + "/id3-window.png");
    }
};

QTEST_MAIN(tst_Id3TreeWindows)
#include "tst_Id3TreeWindows.moc"
