#include "base/RuntimeError.h"
#include "playlist/PlaylistManager.h"
#include "support/TestServices.h"

#include <QFile>
#include <QLocale>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

QString writeFile(const QTemporaryDir& dir, const QString& name, const QByteArray& content) {
    const QString path = dir.filePath(name);
    QFile f(path);
    f.open(QIODevice::WriteOnly);
    f.write(content);
    return path;
}

QByteArray readFile(const QString& path) {
    QFile f(path);
    f.open(QIODevice::ReadOnly);
    return f.readAll();
}

} // namespace

class TestPlaylistManager : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }

    void load_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("rows");
        QTest::addColumn<QString>("result"); // %1 = file
        QTest::newRow("crlf") << QByteArray("/m/a/One.mp3:5\r\n/m/b/Two.mp3:3\r\n")
                              << QStringList{QStringLiteral("1. One"), QStringLiteral("2. Two")}
                              << QStringLiteral("Playliste 1 aus Datei geladen in 0,25 s  ----->>>  2 Songs");
        QTest::newRow("last line unterminated")
            << QByteArray("/m/a/One.mp3:5\r\n/m/b/Two.mp3:3")
            << QStringList{QStringLiteral("1. One"), QStringLiteral("2. Two")}
            << QStringLiteral("Playliste 1 aus Datei geladen in 0,25 s  ----->>>  2 Songs");
        QTest::newRow("lf only") << QByteArray("/m/a/One.mp3:5\n/m/b/Two.mp3:3\n")
                                 << QStringList{QStringLiteral("1. One"), QStringLiteral("2. Two")}
                                 << QStringLiteral(
                                        "Playliste 1 aus Datei geladen in 0,25 s  ----->>>  2 Songs");
        QTest::newRow("empty file") << QByteArray() << QStringList()
                                    << QStringLiteral(
                                           "Playliste 1 aus Datei geladen in 0,25 s  ----->>>  0 Songs");
        QTest::newRow("saved empty playlist") << QByteArray("\r\n") << QStringList()
                                              << QStringLiteral("Fehler beim Laden der Playliste 1 \"%1\" - "
                                                                "Fehler: Leerer String! in Zeile 0");
        QTest::newRow("error in third line")
            << QByteArray("/m/a/One.mp3:5\r\n/m/b/Two.mp3:3\r\nrel/x.mp3:5\r\n/m/c/Four.mp3:5\r\n")
            << QStringList()
            << QStringLiteral(
                   "Fehler beim Laden der Playliste 1 \"%1\" - Fehler: Pfad enthält nicht :\\ oder "
                   "\\\\! --> rel/x.mp3:5 in Zeile 2");
        QTest::newRow("too short") << QByteArray("/a/b.mp:5\r\n") << QStringList()
                                   << QStringLiteral("Fehler beim Laden der Playliste 1 \"%1\" - "
                                                     "Fehler: Pfad zu kurz! --> /a/b.mp:5 in Zeile 0");
    }
    void load() {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, rows);
        QFETCH(QString, result);
        TestServices t;
        t.clock.stepPerReading = 0.251;
        PlaylistManager p(t.services);
        p.list(1).addItem(QStringLiteral("old row"));
        QTemporaryDir dir;
        const QString file = writeFile(dir, QStringLiteral("list.txt"), content);
        QCOMPARE(p.FuncReadPlaylistAndDisplay(file, true, 1), result.arg(file));
        QCOMPARE(p.list(1).items(), rows);
        QCOMPARE(p.PlaylistPaths.size(), qMax<qsizetype>(1, rows.size()));
        if (rows.isEmpty())
            QCOMPARE(p.PlaylistPaths, QStringList{QString()});
    }

    void failedLoadKeepsNamesReadSoFar() {
        TestServices t;
        PlaylistManager p(t.services);
        QTemporaryDir dir;
        const QString file =
            writeFile(dir, QStringLiteral("l.txt"), QByteArray("/m/a/One.mp3:5\r\n/m/b/Two.mp3:3\r\n\r\n"));
        p.FuncReadPlaylistAndDisplay(file, true, 1);
        QCOMPARE(p.PlaylistPaths, QStringList{QString()});
        QCOMPARE(p.PlaylistNames, (QStringList{QStringLiteral("One"), QStringLiteral("Two")}));
        QCOMPARE(p.list(1).count(), 0);
    }

    void missingFileLeavesArraysAlone() {
        TestServices t;
        PlaylistManager p(t.services);
        p.PlaylistPaths = QStringList{QStringLiteral("/m/a/One.mp3:5")};
        p.list(1).addItem(QStringLiteral("1. One"));
        const QString missing = QStringLiteral("/nonexistent/dir/list.txt");
        QCOMPARE(p.FuncReadPlaylistAndDisplay(missing, true, 1),
                 QStringLiteral(
                     "Fehler beim Laden von \"/nonexistent/dir/list.txt\" -> #53 Datei nicht gefunden"));
        QCOMPARE(p.PlaylistPaths.size(), 1);
        QCOMPARE(p.list(1).count(), 0); // the box was cleared as asked
    }

    void loadWithoutClearAppendsRowsAndPlaylist2KeepsNoNames() {
        TestServices t;
        PlaylistManager p(t.services);
        p.list(2).addItem(QStringLiteral("kept"));
        QTemporaryDir dir;
        const QString file = writeFile(dir, QStringLiteral("l.txt"), QByteArray("/m/a/One.mp3:5\r\n"));
        p.FuncReadPlaylistAndDisplay(file, false, 2);
        QCOMPARE(p.list(2).items(), (QStringList{QStringLiteral("kept"), QStringLiteral("1. One")}));
        QCOMPARE(p.Playlist2Paths, QStringList{QStringLiteral("/m/a/One.mp3:5")});
        QCOMPARE(p.PlaylistNames, QStringList{QString()});
    }

    void displayListsInvalidEntriesWithTheirErrorText() {
        TestServices t;
        PlaylistManager p(t.services);
        p.PlaylistPaths = QStringList{QStringLiteral("/m/a/One.mp3:5"), QStringLiteral("bad")};
        p.FuncDisplayPlaylist(true, 1);
        QCOMPARE(p.list(1).items(),
                 (QStringList{QStringLiteral("1. One"),
                              QStringLiteral("2. Fehler: Pfad enthält nicht :\\ oder \\\\! --> bad")}));
        QCOMPARE(p.PlaylistNames.size(), 2);
    }

    void saveLimitIs32767Entries() {
        TestServices t;
        PlaylistManager p(t.services);
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("big.txt"));
        p.PlaylistPaths = QStringList(32767, QStringLiteral("/m/a/One.mp3:5"));
        p.FuncSavePlaylist(file, 1);
        QCOMPARE(readFile(file).count("\r\n"), 32767);
        p.PlaylistPaths.append(QStringLiteral("/m/a/Two.mp3:5"));
        try {
            p.FuncSavePlaylist(file, 1);
            QFAIL("no overflow");
        } catch (const RuntimeError& e) {
            QCOMPARE(e.number(), int(RuntimeError::Overflow));
        }
        QCOMPARE(readFile(file).count("\r\n"), 32767); // the old file is untouched
    }

    void openPlaylist() {
        TestServices t;
        PlaylistManager p(t.services);
        QSignalSpy resets(&p, &PlaylistManager::historyResetRequested);
        QTemporaryDir dir;
        const QString file = writeFile(dir, QStringLiteral("l.txt"), QByteArray("/m/a/One.mp3:5\r\n"));
        p.DialogLastpath = QStringLiteral("/start/");

        p.OpenPlaylist(1); // cancelled
        QCOMPARE(t.status.text(), QStringLiteral("Abbruch durch User!"));
        QCOMPARE(t.dialogs.openRequests.size(), 1);
        const Dialogs::FileRequest r = t.dialogs.openRequests.first();
        QCOMPARE(r.title, QStringLiteral("Playliste öffnen"));
        QVERIFY(r.filter.startsWith(QStringLiteral("Playlisten (*.txt)| *.txt|")));
        QCOMPARE(r.initialDir, QStringLiteral("/start/"));
        QCOMPARE(r.defaultExt, QStringLiteral("txt"));
        QCOMPARE(r.flags, 6148);
        QCOMPARE(resets.count(), 0);

        t.dialogs.openAnswers = {file};
        p.OpenPlaylist(1);
        QCOMPARE(p.DialogLastpath, dir.path() + QLatin1Char('/'));
        QCOMPARE(p.actPlaylist(1), file);
        QCOMPARE(t.settings.GetSetting(QStringLiteral("Settings"), QStringLiteral("PlaylistFile"),
                                       QStringLiteral("0")),
                 file);
        QVERIFY(t.status.text().startsWith(QStringLiteral("Playliste 1 aus Datei geladen in ")));
        QCOMPARE(resets.count(), 1);

        // Playlist 2 remembers its own key, even when loading fails.
        const QString broken = writeFile(dir, QStringLiteral("b.txt"), QByteArray("x\r\n"));
        t.dialogs.openAnswers = {broken};
        p.OpenPlaylist(2);
        QCOMPARE(p.actPlaylist(2), broken);
        QCOMPARE(t.settings.GetSetting(QStringLiteral("Settings"), QStringLiteral("PlaylistFile2"),
                                       QStringLiteral("0")),
                 broken);
        QVERIFY(t.status.text().startsWith(QStringLiteral("Fehler beim Laden der Playliste 2")));
    }

    void saveAsRefusesTheOtherPlaylistsFile() {
        TestServices t;
        PlaylistManager p(t.services);
        QTemporaryDir dir;
        const QString other = dir.filePath(QStringLiteral("Zwei.txt"));
        const QString mine = dir.filePath(QStringLiteral("zwei.txt")); // differs in case only: accepted
        p.setActPlaylist(2, other);
        p.PlaylistPaths = QStringList{QStringLiteral("/m/a/One.mp3:5")};
        t.dialogs.saveAnswers = {other, mine};
        p.FuncSavePlaylistAs(1);
        QCOMPARE(t.dialogs.saveRequests.size(), 2);
        QCOMPARE(t.dialogs.saveRequests.first().title, QStringLiteral("Playliste speichern unter"));
        QCOMPARE(t.dialogs.saveRequests.first().flags, 3078);
        QCOMPARE(t.dialogs.messageTexts(),
                 QStringList{QStringLiteral("Playliste 2 darf nicht überschrieben werden!")});
        QCOMPARE(p.actPlaylist(1), mine);
        QVERIFY(QFile::exists(mine));
        QCOMPARE(t.status.text(),
                 QStringLiteral("Playliste 1 erfolgreich unter \"%1\" gespeichert!").arg(mine));
    }

    void saveAsOfPlaylist2ShowsPlaylist1sFileEveryTimeAndStoresKeyOfPlaylist1() {
        TestServices t;
        PlaylistManager p(t.services);
        QTemporaryDir dir;
        const QString one = dir.filePath(QStringLiteral("eins.txt"));
        const QString two = dir.filePath(QStringLiteral("zwei.txt"));
        p.setActPlaylist(1, one);
        p.Playlist2Paths = QStringList{QStringLiteral("/m/a/One.mp3:5")};
        t.dialogs.saveAnswers = {one, two};
        p.FuncSavePlaylistAs(2);
        QCOMPARE(t.dialogs.messageTexts(),
                 (QStringList{one, QStringLiteral("Playliste 1 darf nicht überschrieben werden!"), one}));
        QCOMPARE(p.actPlaylist(2), two);
        QCOMPARE(t.settings.GetSetting(QStringLiteral("Settings"), QStringLiteral("PlaylistFile"),
                                       QStringLiteral("0")),
                 two);
        QCOMPARE(t.settings.GetSetting(QStringLiteral("Settings"), QStringLiteral("PlaylistFile2"),
                                       QStringLiteral("0")),
                 QStringLiteral("0"));
    }

    void closePrompt_data() {
        QTest::addColumn<bool>("changed");
        QTest::addColumn<bool>("hasFile");
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("closes");
        QTest::addColumn<bool>("saved");
        QTest::addColumn<int>("saveDialogs");
        QTest::newRow("unchanged asks nothing")
            << false << true << int(Dialogs::Answer::Cancel) << true << false << 0;
        QTest::newRow("cancel") << true << true << int(Dialogs::Answer::Cancel) << false << false << 0;
        QTest::newRow("no") << true << true << int(Dialogs::Answer::No) << true << false << 0;
        QTest::newRow("yes with file") << true << true << int(Dialogs::Answer::Yes) << true << true << 0;
        QTest::newRow("yes without file") << true << false << int(Dialogs::Answer::Yes) << true << false << 1;
    }
    void closePrompt() {
        QFETCH(bool, changed);
        QFETCH(bool, hasFile);
        QFETCH(int, answer);
        QFETCH(bool, closes);
        QFETCH(bool, saved);
        QFETCH(int, saveDialogs);
        TestServices t;
        PlaylistManager p(t.services);
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("l.txt"));
        p.PlaylistPaths = QStringList{QStringLiteral("/m/a/One.mp3:5")};
        p.PlaylistChanged = changed;
        if (hasFile)
            p.setActPlaylist(1, file);
        t.dialogs.answers = {Dialogs::Answer(answer)};
        QCOMPARE(p.AskSaveBeforeClose(), closes);
        QCOMPARE(t.dialogs.questions.size(), changed ? 1 : 0);
        if (changed) {
            const auto q = t.dialogs.questions.first();
            QCOMPARE(q.text, QStringLiteral("Möchten Sie die Änderungen in der Playliste \"%1\" speichern?")
                                 .arg(hasFile ? file : QString()));
            QCOMPARE(q.title, QStringLiteral("Tavo MP3Player"));
            QCOMPARE(q.buttons, Dialogs::Buttons::YesNoCancel);
        }
        QCOMPARE(QFile::exists(file), saved);
        QCOMPARE(t.dialogs.saveRequests.size(), saveDialogs);
    }
};

QTEST_GUILESS_MAIN(TestPlaylistManager)
#include "tst_PlaylistManager.moc"
