// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "support/Id3FileWriter.h"
#include "support/MainWindowRig.h"
#include "ui/TavoMP3ID3.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

using W = Id3FileWriter;

// The ID3 window opened from the main list's context menu.
class tst_Id3TreeWindows : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;

private slots:
    // Tag layouts as the versions define them, read through the window a user opens.
    void menuEntryShowsTheSongsTag_data() {
        QTest::addColumn<QByteArray>("bytes"); // the second song of the list; "-": no file; empty: no list
        QTest::addColumn<QString>("shown");    // title|artist|album|year|category|track|comment|tag version
        const W::Tag german{"Über den Wolken", "Reinhard Mey", "Mädchen", "1974", "Chanson", "7/12", "schön"};
        const QString germanShown = "Über den Wolken|Reinhard Mey|Mädchen|1974|Chanson|7/12|schön|ID3v2.3";
        QTest::newRow("ID3v2.3 Latin-1") << W::id3v2(3, german, W::Latin1) + W::audio() << germanShown;
        QTest::newRow("ID3v2.3 UTF-16") << W::id3v2(3, german, W::Utf16) + W::audio() << germanShown;
        const W::Tag wide{"Ωmega — ☂", "Σ Artist", "日本", "2004", "Rock", "3", "€ und ß"};
        QTest::newRow("ID3v2.4 UTF-8") << W::id3v2(4, wide, W::Utf8) + W::audio()
                                       << "Ωmega — ☂|Σ Artist|日本|2004|Rock|3|€ und ß|ID3v2.4";
        const W::Tag v1{"Old Song", "Old Band", "Old Album", "1999", "", "5", "v1 comment"};
        QTest::newRow("ID3v1 only, genre from its number")
            << W::audio() + W::id3v1(v1, 17) << "Old Song|Old Band|Old Album|1999|Rock|5|v1 comment|ID3v1";
        QTest::newRow("v2 wins over v1")
            << W::id3v2(3, german, W::Latin1) + W::audio() + W::id3v1(v1, 17) << germanShown;
        QTest::newRow("no tag") << W::audio() << "|||||||kein ID3 Tag";
        QTest::newRow("missing file") << QByteArray("-") << "|||||||kein ID3 Tag";
        QTest::newRow("empty playlist") << QByteArray() << "|||||||kein ID3 Tag";
    }
    void menuEntryShowsTheSongsTag() {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, shown);
        const QString other = QDir::toNativeSeparators(m_dir.filePath("Andere.mp3"));
        const QString song =
            QDir::toNativeSeparators(m_dir.filePath(QString(QTest::currentDataTag()) + ".mp3"));
        QVERIFY(W::write(other, W::audio()));
        if (bytes != "-")
            QVERIFY(W::write(song, bytes));
        MainWindowRig r(Paths::nativeStyle());
        r.load(bytes.isEmpty() ? QStringList() : QStringList{other + ":5", song + ":3"}, m_dir.path());
        QCOMPARE(r.core.playlists().list(1).count(), bytes.isEmpty() ? 0 : 2);
        if (!bytes.isEmpty())
            r.core.playlists().list(1).selectOnly(1);
        r.ui().MenuPlaylistID3->trigger();

        TavoMP3ID3& w = r.w.windows().id3Window();
        QVERIFY(w.isVisible());
        // The file is the list line without ":<prio>".
        QCOMPARE(w.FFile->text(), bytes.isEmpty() ? QString() : song);
        QCOMPARE(
            (QStringList{w.FTitle->text(), w.FArtist->text(), w.FAlbum->text(), w.FYear->text(),
                         w.FCategory->text(), w.FTrack->text(), w.FComment->text(), w.LTagVersion->text()}),
            shown.split('|'));
        QVERIFY(r.t.dialogs.questions.isEmpty());
    }
};

QTEST_MAIN(tst_Id3TreeWindows)
#include "tst_Id3TreeWindows.moc"
