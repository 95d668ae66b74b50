#include "base/RuntimeError.h"
#include "playlist/PlaylistManager.h"
#include "support/TestServices.h"

#include <QFile>
#include <QLocale>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

// Loading, showing and saving the two playlists, and the dialogs around them.
class TestPlaylistManager : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;

    QString write(const QString& name, const QByteArray& content) {
        QFile f(m_dir.filePath(name));
        f.open(QIODevice::WriteOnly | QIODevice::Truncate);
        f.write(content);
        return f.fileName();
    }
    static int lineCount(const QString& path) {
        QFile f(path);
        f.open(QIODevice::ReadOnly);
        return int(f.readAll().count("\r\n"));
    }
    static QString setting(TestServices& t, const char* key) {
        return t.settings.GetSetting(u"Settings"_s, QLatin1String(key), u"0"_s);
    }

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }

    void load_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("rows");
        QTest::addColumn<QString>("result"); // %1 = file
        const QString loaded = u"Playliste 1 aus Datei geladen in 0,25 s  ----->>>  %2 Songs"_s;
        const QString failed = u"Fehler beim Laden der Playliste 1 \"%1\" - Fehler: "_s;
        QTest::newRow("crlf") << QByteArray("/m/a/One.mp3:5\r\n/m/b/Two.mp3:3\r\n") << 2 << loaded.arg(2);
        QTest::newRow("last line unterminated")
            << QByteArray("/m/a/One.mp3:5\r\n/m/b/Two.mp3:3") << 2 << loaded.arg(2);
        QTest::newRow("lf only") << QByteArray("/m/a/One.mp3:5\n/m/b/Two.mp3:3\n") << 2 << loaded.arg(2);
        QTest::newRow("empty file") << QByteArray() << 0 << loaded.arg(0);
        QTest::newRow("saved empty playlist")
            << QByteArray("\r\n") << 0 << failed + u"Leerer String! in Zeile 0"_s;
        QTest::newRow("error in third line")
            << QByteArray("/m/a/One.mp3:5\r\n/m/b/Two.mp3:3\r\nrel/x.mp3:5\r\n/m/c/Four.mp3:5\r\n") << 0
            << failed + u"Pfad enthält nicht :\\ oder \\\\! --> rel/x.mp3:5 in Zeile 2"_s;
        QTest::newRow("too short") << QByteArray("/a/b.mp:5\r\n") << 0
                                   << failed + u"Pfad zu kurz! --> /a/b.mp:5 in Zeile 0"_s;
    }
    void load() {
        QFETCH(QByteArray, content);
        QFETCH(int, rows);
        QFETCH(QString, result);
        TestServices t;
        t.clock.stepPerReading = 0.251;
        PlaylistManager p(t.services);
        p.list(1).addItem(u"old row"_s);
        const QString file = write(u"list.txt"_s, content);
        QCOMPARE(p.FuncReadPlaylistAndDisplay(file, true, 1), result.arg(file));
        QCOMPARE(p.list(1).items(), rows ? (QStringList{u"1. One"_s, u"2. Two"_s}) : QStringList());
        QCOMPARE(p.PlaylistPaths.size(), qMax(1, rows));
        if (!rows)
            QCOMPARE(p.PlaylistPaths, QStringList{QString()});
        // A failed load keeps the names read so far.
        if (content.startsWith("/m/a/One.mp3:5\r\n/m/b/Two.mp3:3\r\nrel"))
            QCOMPARE(p.PlaylistNames.mid(0, 2), (QStringList{u"One"_s, u"Two"_s}));
    }

    void missingFileLeavesTheListAlone() {
        TestServices t;
        PlaylistManager p(t.services);
        p.PlaylistPaths = QStringList{u"/m/a/One.mp3:5"_s};
        p.list(1).addItem(u"1. One"_s);
        QCOMPARE(p.FuncReadPlaylistAndDisplay(u"/nonexistent/list.txt"_s, true, 1),
                 u"Fehler beim Laden von \"/nonexistent/list.txt\" -> #53 Datei nicht gefunden"_s);
        QCOMPARE(p.PlaylistPaths.size(), 1);
        QCOMPARE(p.list(1).count(), 0); // the box was cleared as asked
    }

    void loadWithoutClearAppendsAndPlaylist2KeepsNoNames() {
        TestServices t;
        PlaylistManager p(t.services);
        p.list(2).addItem(u"kept"_s);
        p.FuncReadPlaylistAndDisplay(write(u"l.txt"_s, "/m/a/One.mp3:5\r\n"), false, 2);
        QCOMPARE(p.list(2).items(), (QStringList{u"kept"_s, u"1. One"_s}));
        QCOMPARE(p.Playlist2Paths, QStringList{u"/m/a/One.mp3:5"_s});
        QCOMPARE(p.PlaylistNames, QStringList{QString()});
        // An entry the name rule refuses is shown with its error text.
        p.PlaylistPaths = QStringList{u"/m/a/One.mp3:5"_s, u"bad"_s};
        p.FuncDisplayPlaylist(true, 1);
        QCOMPARE(p.list(1).items(),
                 (QStringList{u"1. One"_s, u"2. Fehler: Pfad enthält nicht :\\ oder \\\\! --> bad"_s}));
        QCOMPARE(p.PlaylistNames.size(), 2);
    }

    void saveLimitIs32767Entries() {
        TestServices t;
        PlaylistManager p(t.services);
        const QString file = m_dir.filePath(u"big.txt"_s);
        p.PlaylistPaths = QStringList(32767, u"/m/a/One.mp3:5"_s);
        p.FuncSavePlaylist(file, 1);
        QCOMPARE(lineCount(file), 32767);
        p.PlaylistPaths.append(u"/m/a/Two.mp3:5"_s);
        QVERIFY_THROWS_EXCEPTION(RuntimeError, p.FuncSavePlaylist(file, 1));
        QCOMPARE(lineCount(file), 32767); // the old file is untouched
    }

    void openPlaylist() {
        TestServices t;
        PlaylistManager p(t.services);
        QSignalSpy resets(&p, &PlaylistManager::historyResetRequested);
        const QString file = write(u"l.txt"_s, "/m/a/One.mp3:5\r\n");
        p.DialogLastpath = u"/start/"_s;
        p.OpenPlaylist(1); // cancelled
        QCOMPARE(t.status.text(), u"Abbruch durch User!"_s);
        QCOMPARE(t.dialogs.openRequests.first().initialDir, u"/start/"_s);
        QCOMPARE(resets.count(), 0);

        t.dialogs.openAnswers = {file};
        p.OpenPlaylist(1);
        QCOMPARE(p.DialogLastpath, m_dir.path() + u'/');
        QCOMPARE(p.actPlaylist(1), file);
        QCOMPARE(setting(t, "PlaylistFile"), file);
        QVERIFY(t.status.text().startsWith(u"Playliste 1 aus Datei geladen in "_s));
        QCOMPARE(resets.count(), 1);

        // Playlist 2 remembers its own key, even when loading fails.
        const QString broken = write(u"b.txt"_s, "x\r\n");
        t.dialogs.openAnswers = {broken};
        p.OpenPlaylist(2);
        QCOMPARE(p.actPlaylist(2), broken);
        QCOMPARE(setting(t, "PlaylistFile2"), broken);
        QVERIFY(t.status.text().startsWith(u"Fehler beim Laden der Playliste 2"_s));
    }

    // Save As refuses the other playlist's file (a name differing in case only is another file);
    // for playlist 2 it shows playlist 1's file each time and stores the key of playlist 1.
    void saveAsRefusesTheOtherPlaylistsFile_data() {
        QTest::addColumn<int>("n");
        QTest::newRow("playlist 1") << 1;
        QTest::newRow("playlist 2") << 2;
    }
    void saveAsRefusesTheOtherPlaylistsFile() {
        QFETCH(int, n);
        TestServices t;
        PlaylistManager p(t.services);
        const QString other = m_dir.filePath(u"Other%1.txt"_s.arg(n)),
                      mine = m_dir.filePath(u"other%1.txt"_s.arg(n));
        p.setActPlaylist(3 - n, other);
        p.paths(n) = QStringList{u"/m/a/One.mp3:5"_s};
        t.dialogs.saveAnswers = {other, mine};
        p.FuncSavePlaylistAs(n);
        const QString refusal = u"Playliste %1 darf nicht überschrieben werden!"_s.arg(3 - n);
        QCOMPARE(t.dialogs.messageTexts(),
                 n == 1 ? QStringList{refusal} : (QStringList{other, refusal, other}));
        QCOMPARE(p.actPlaylist(n), mine);
        QVERIFY(QFile::exists(mine));
        QCOMPARE(setting(t, "PlaylistFile"), mine);
        QCOMPARE(setting(t, "PlaylistFile2"), u"0"_s);
    }

    // Closing with changes to a list that has no file yet: Yes asks where to save it.
    void closePromptWithoutFileAsksWhere() {
        TestServices t;
        PlaylistManager p(t.services);
        p.PlaylistPaths = QStringList{u"/m/a/One.mp3:5"_s};
        p.PlaylistChanged = true;
        t.dialogs.answers = {Dialogs::Answer::Yes};
        QVERIFY(p.AskSaveBeforeClose());
        QCOMPARE(t.dialogs.messageTexts(),
                 QStringList{u"Möchten Sie die Änderungen in der Playliste \"\" speichern?"_s});
        QCOMPARE(t.dialogs.saveRequests.size(), 1);
    }
};

QTEST_GUILESS_MAIN(TestPlaylistManager)
#include "tst_PlaylistManager.moc"
