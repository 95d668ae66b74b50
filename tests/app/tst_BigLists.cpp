// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "playlist/PlaylistLine.h"
#include "playlist/widgets/PlaylistDropView.h"
#include "playlist/widgets/TavoMP3Playlist2.h"
#include "support/FileBytes.h"
#include "support/MainWindowRig.h"
#include "support/TempMusicTree.h"

#include <QCloseEvent>
#include <QLocale>
#include <QMimeData>
#include <QtTest>

using namespace Qt::StringLiterals;

// A collection of more songs than a 16-bit counter holds, on disk, and every operation on songs
// through the window: each counts in 32 bits.
class tst_BigLists : public QObject {
    Q_OBJECT

    static constexpr int kSongs = 41000; // entry 40 000 exists, well past 32 767
    TempMusicTree m_music;
    QStringList m_lines; // the built list, with priorities 0..5 from entry 32 767 on

    static QString song(int i) {
        return u"CD%1/Titel %2.mp3"_s.arg(i / 100, 3, 10, QLatin1Char('0')).arg(i, 5, 10, QLatin1Char('0'));
    }
    static QString endOf(const QString& status) { return status.mid(status.indexOf(u's')); }

private slots:
    void initTestCase() {
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        QStringList files;
        for (int i = 0; i < kSongs; ++i) {
            files << song(i);
            m_lines << m_music.line(song(i), char(i >= 32767 ? '0' + i % 6 : '5'));
        }
        m_music.add(files);
    }

    void operations_data() {
        QTest::addColumn<QString>("operation");
        QTest::addColumn<QString>("outcome");
        QTest::newRow("build") << "build"
                               << "s  -  Einträge: 41000|41000. Titel 40999";
        QTest::newRow("update keeps every priority")
            << "update"
            << "s   Schleifen: 40999   Liste neu: 40999  Liste vorher: 40999|same";
        QTest::newRow("close with save, then reload") << "close"
                                                      << "Playliste 1 erfolgreich|41000 Songs|same";
        QTest::newRow("play entry 40 000") << "play"
                                           << "39999|/CD399/Titel 39999.mp3";
        QTest::newRow("priority report") << "report"
                                         << "MP3Prio Report fertig|40999/40999|5489";
        QTest::newRow("quick search past 32 767, then F3") << "search"
                                                           << "\"titel 4000\" gefunden!|40000|40001|40002";
        QTest::newRow("delete past 32 767") << "delete"
                                            << "3 Einträge gelöscht!|40997|32767. Titel 32769";
        QTest::newRow("drag entry 40 000 into playlist 2") << "drag"
                                                           << "/CD399/Titel 39999.mp3:3";
        // Clicks and a close that come while the build lets the window paint: one build only, and
        // the close asks about the new list once it is there.
        QTest::newRow("click and close during the build")
            << "busy"
            << "1 build|Möchten Sie die Änderungen in der Playliste \"\" speichern?|41000";
    }
    void operations() {
        QFETCH(QString, operation);
        QFETCH(QString, outcome);
        MainWindowRig r(Paths::nativeStyle());
        r.core.PriorityReportPath = r.dir.filePath("MP3Prio.txt");
        r.load(operation == "build" || operation == "busy" ? QStringList() : m_lines, m_music.root());
        PlaylistManager& lists = r.core.playlists();
        auto status = [&r] { return r.w.ui().FStatus->text(); };
        auto sameList = [&] { return lists.PlaylistPaths == m_lines ? u"same"_s : u"changed"_s; };
        QStringList got;

        if (operation == "build") {
            r.ui().BCreateList->click();
            got << endOf(status()) << lists.list(1).items().last();
            QCOMPARE(PlaylistLine::path(lists.PlaylistPaths.at(40000)), m_music.path(song(40000)));
        } else if (operation == "update") {
            r.ui().BUpdateList->click();
            got << endOf(status()) << sameList();
        } else if (operation == "close") {
            lists.PlaylistChanged = true;
            r.t.dialogs.answers = {Dialogs::Answer::Yes};
            QVERIFY(r.w.close());
            got << status().section(u" unter"_s, 0, 0);
            lists.PlaylistPaths.clear();
            got << lists.FuncReadPlaylistAndDisplay(lists.actPlaylist(1), true, 1).section(u">>>  "_s, 1)
                << sameList();
        } else if (operation == "play") {
            r.play(39999);
            got << QString::number(r.state().PlaylistPosition)
                << QDir::fromNativeSeparators(r.player.playedFiles().join(u',').remove(m_music.root()));
            QCOMPARE(lists.list(1).selectedRows(), QList<int>{39999});
        } else if (operation == "report") {
            r.t.dialogs.answers = {Dialogs::Answer::Yes};
            QTest::mouseClick(r.ui().BReportPrio, Qt::LeftButton);
            got << status().section(u'.', 0, 0) << r.ui().FTest->text()
                << QString::number(FileBytes::read(r.core.PriorityReportPath).count("\r\n"));
        } else if (operation == "search") {
            r.core.quickSearch().PrcQuickSearch("titel 4000", "index", false);
            got << status() << QString::number(lists.list(1).selectedRows().value(0));
            QTest::keyClick(r.ui().FPlaylist, Qt::Key_F3);
            got << QString::number(lists.list(1).selectedRows().value(0))
                << QString::number(r.core.quickSearch().NextSearchStart);
        } else if (operation == "delete") {
            lists.list(1).selectOnly(32766);
            for (int row : {32767, 32768})
                lists.list(1).setSelected(row, true);
            QTest::keyClick(r.ui().FPlaylist, Qt::Key_Delete);
            got << status() << QString::number(lists.list(1).count()) << lists.list(1).itemText(32766);
        } else if (operation == "drag") {
            PlaylistDropView* view = r.ui().Playlist2->FPlaylist;
            QMimeData data;
            data.setText(lists.list(1).itemText(39999));
            QDragEnterEvent enter(QPoint(10, 0), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(view->viewport(), &enter);
            QDropEvent dropped(QPointF(10, 0), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(view->viewport(), &dropped);
            got << QDir::fromNativeSeparators(lists.Playlist2Paths.join(u',').remove(m_music.root()));
        } else if (operation == "busy") {
            QSignalSpy builds(&r.core.builder(), &PlaylistBuilder::finished);
            const QPointF centre = QPointF(r.ui().BCreateList->rect().center());
            for (QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
                QCoreApplication::postEvent(
                    r.ui().BCreateList,
                    new QMouseEvent(type, centre, centre, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier));
            QCoreApplication::postEvent(&r.w, new QCloseEvent);
            r.t.dialogs.answers = {Dialogs::Answer::Cancel};
            r.ui().BCreateList->click();
            QVERIFY(r.t.dialogs.questions.isEmpty()); // the close waits for the end of the build
            QTRY_COMPARE(r.t.dialogs.questions.size(), 1);
            got << u"%1 build"_s.arg(builds.size()) << r.t.dialogs.questions.first().text
                << QString::number(lists.list(1).count());
        }
        QVERIFY2(!status().contains("Fehler"), qPrintable(status()));
        QCOMPARE(got.join(u'|'), outcome);
    }
};

QTEST_MAIN(tst_BigLists)
#include "tst_BigLists.moc"
