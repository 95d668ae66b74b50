#include "playlist/PlaylistManager.h"
#include "support/FileBytes.h"
#include "support/TestServices.h"

#include <QDir>
#include <QFile>
#include <QLocale>
#include <QSignalSpy>
#include <QStringEncoder>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

using namespace Qt::StringLiterals;

// Loading, showing and saving the two playlists, and the dialogs around them. Playlist files as users'
// disks hold them: classic ANSI, UTF-8 with and without marks, damaged ones, and M3U lists of other
// players; the bytes on disk are compared before and after.
class TestPlaylistManager : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;

    QString write(const QString& name, const QByteArray& content) {
        return FileBytes::write(m_dir.filePath(name), content) ? m_dir.filePath(name) : QString();
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
        QTest::newRow("last line ends in CR alone")
            << QByteArray("/m/a/One.mp3:5\r\n/m/b/Two.mp3:3\r") << 2 << loaded.arg(2);
        QTest::newRow("empty file") << QByteArray() << 0 << loaded.arg(0);
        QTest::newRow("saved empty playlist")
            << QByteArray("\r\n") << 0 << failed + u"Leerer String! in Zeile 0"_s;
        QTest::newRow("missing file")
            << QByteArray("-") << 0 << u"Fehler beim Laden von \"%1\" -> #53 Datei nicht gefunden"_s;
        QTest::newRow("error in third line")
            << QByteArray("/m/a/One.mp3:5\r\n/m/b/Two.mp3:3\r\nrel/x.mp3:5\r\n/m/c/Four.mp3:5\r\n") << 0
            << failed + u"Pfad enthält nicht :\\ oder \\\\! --> rel/x.mp3:5 in Zeile 2"_s;
    }
    void load() {
        QFETCH(QByteArray, content);
        QFETCH(int, rows);
        QFETCH(QString, result);
        TestServices t;
        t.clock.stepPerReading = 0.251;
        PlaylistManager p(t.services);
        p.list(1).addItem(u"old row"_s);
        const QString file = content == "-" ? m_dir.filePath(u"fehlt.txt"_s) : write(u"list.txt"_s, content);
        QCOMPARE(p.FuncReadPlaylistAndDisplay(file, true, 1), result.arg(file));
        QCOMPARE(p.list(1).items(), rows ? (QStringList{u"1. One"_s, u"2. Two"_s}) : QStringList());
        QCOMPARE(p.PlaylistPaths.size(), qMax(1, rows));
        if (!rows)
            QCOMPARE(p.PlaylistPaths, QStringList{QString()});
        // A failed load keeps the names read so far.
        if (content.startsWith("/m/a/One.mp3:5\r\n/m/b/Two.mp3:3\r\nrel"))
            QCOMPARE(p.PlaylistNames.mid(0, 2), (QStringList{u"One"_s, u"Two"_s}));
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
    // for playlist 2 it shows playlist 1's file each time and stores the key of playlist 1. Saving
    // clears the changed flag of playlist 1 only.
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
        p.PlaylistChanged = true;
        p.SavePlaylistCommand(n); // the list has no file yet: Save As
        QCOMPARE(p.PlaylistChanged, n == 2);
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

    // Loaded, then saved over the same file; an answer is given only where a question is expected.
    void loadThenSave_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QString>("firstRow"); // "" = the load failed
        QTest::addColumn<int>("answer");       // -1 = no question may come
        QTest::addColumn<QByteArray>("after");
        const QByteArray latin1("/m/a/Gr\xfc\xdf"
                                "e.mp3:5\r\n/m/b/Caf\xe9.mp3:3\r\n");
        const QByteArray broken("/m/a/One.mp3:5\r\n\r\n/m/b/Two.mp3:5\r\n");
        const QByteArray web("#EXTM3U\nhttp://radio.example/stream.mp3\n/m/a/One.mp3\n");
        const int none = -1, yes = int(Dialogs::Answer::Yes), no = int(Dialogs::Answer::No);
        const QByteArray same; // the file stays as it was
        QTest::newRow("latin-1") << "l.txt" << latin1 << "1. Grüße" << none << same;
        QTest::newRow("utf-8") << "u.txt" << u"/m/a/Grüße.mp3:5\r\n"_s.toUtf8() << "1. Grüße" << none << same;
        QTest::newRow("utf-8 with mark")
            << "b.txt" << QByteArray("\xef\xbb\xbf/m/a/One.mp3:5\r\n") << "1. One" << none << same;
        QTest::newRow("utf-16 with mark")
            << "w.txt"
            << QByteArray(QStringEncoder(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom)
                              .encode(u"/m/a/Ärger.mp3:4\r\n"_s))
            << "1. Ärger" << none << same;
        QTest::newRow("LF becomes CR LF") << "n.txt" << QByteArray("/m/a/One.mp3:5\n") << "1. One" << none
                                          << QByteArray("/m/a/One.mp3:5\r\n");
        QTest::newRow("empty line, kept") << "e.txt" << broken << "" << no << same;
        QTest::newRow("empty line, replaced") << "e.txt" << broken << "" << yes << QByteArray("\r\n");
#ifndef Q_OS_WIN // the lists' absolute paths are POSIX ones
        // Lengths, titles, priorities and the paths below the list's folder are written back as they were
        // read.
        QTest::newRow("m3u8 round trip")
            << "liste.m3u8"
            << u"#EXTM3U\n#EXTINF:123,Band - Eins, live\nAlbum/Eins.mp3\n#TAVOMP3PRIO:2\n#EXTINF:-1,Zwei Ä\n/andere/Zwei Ä.mp3\n"_s
                   .toUtf8()
            << "1. Eins" << none << same;
        QTest::newRow("m3u address, kept") << "w.m3u" << web << "1. One" << no << same;
        QTest::newRow("m3u address, replaced")
            << "w.m3u" << web << "1. One" << yes << QByteArray("#EXTM3U\n#EXTINF:-1,One\n/m/a/One.mp3\n");
#endif
    }
    void loadThenSave() {
        QFETCH(QString, name);
        QFETCH(QByteArray, before);
        QFETCH(QString, firstRow);
        QFETCH(int, answer);
        QFETCH(QByteArray, after);
        TestServices t;
        PlaylistManager p(t.services);
        const QString file = write(name, before);
        t.dialogs.openAnswers = {file};
        p.OpenPlaylist(1);
        QCOMPARE(p.list(1).items().value(0), firstRow);

        if (answer >= 0)
            t.dialogs.answers = {Dialogs::Answer(answer)};
        const int asked = t.dialogs.questions.size();
        const QString text = p.FuncSavePlaylist(file, 1);
        QCOMPARE(FileBytes::read(file), after.isNull() ? before : after);
        QCOMPARE(t.dialogs.questions.size() - asked, answer >= 0 ? 1 : 0);
        if (answer < 0)
            return;
        const auto q = t.dialogs.questions.last();
        QVERIFY2(q.text.startsWith(u"Die Playliste \"%1\" wurde nicht vollständig geladen:"_s.arg(file)),
                 qPrintable(q.text));
        QCOMPARE(q.buttons, Dialogs::Buttons::YesNo);
        QCOMPARE(q.defaultButton, 2); // Enter keeps the file
        if (answer == int(Dialogs::Answer::Yes))
            return;
        QCOMPARE(text, u"Playliste 1 nicht gespeichert - \"%1\" bleibt unverändert."_s.arg(file));
        // Closing with changes: Yes to saving, No to replacing the file keeps the window open.
        p.setActPlaylist(1, file);
        p.PlaylistChanged = true;
        t.dialogs.answers = {Dialogs::Answer::Yes, Dialogs::Answer::No};
        QVERIFY(!p.AskSaveBeforeClose());
        QCOMPARE(FileBytes::read(file), before);
    }

    void namesWithLineBreaksAreLeftOut() {
        TestServices t;
        PlaylistManager p(t.services);
        const QString file = m_dir.filePath(u"breaks.txt"_s);
        p.PlaylistPaths = {u"/m/a/Bad\nName.mp3:5"_s, u"/m/a/Good.mp3:3"_s, u"/m/a/Bad\rToo.mp3:5"_s};
        QCOMPARE(
            p.FuncSavePlaylist(file, 1),
            u"Playliste 1 erfolgreich unter \"%1\" gespeichert! (2 Einträge mit Zeilenumbruch ausgelassen)"_s
                .arg(file));
        QCOMPARE(FileBytes::read(file), QByteArray("/m/a/Good.mp3:3\r\n"));
        QCOMPARE(t.dialogs.questions.size(), 1);
        QVERIFY(t.dialogs.questions[0].text.contains(u"1. /m/a/Bad\u21b5Name.mp3:5\n3. /m/a/Bad\u21b5Too"_s));
        QCOMPARE(p.PlaylistPaths.size(), 3); // the list itself keeps them
    }

    // Every name the M3U8 writer meets comes back as the same entry with its priority; the lengths of a
    // list opened before do not travel into it.
    void m3uWriteReadsBack_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("written"); // the title and the entry line, %1 = the list's folder
        QTest::newRow("plain") << u"Lied.mp3"_s << u"Lied\nLied.mp3"_s;
        QTest::newRow("leading #") << u"#1 Hit.mp3"_s
                                   << u"#1 Hit\n"_s + QDir::toNativeSeparators(u"./#1 Hit.mp3"_s);
        QTest::newRow("edge blanks") << u" Lied .mp3 "_s << u" Lied .\nfile://%1/%20Lied%20.mp3%20"_s;
        QTest::newRow("ends like a priority") << u"Lied.mp3:3"_s << u"Lied.m\nfile://%1/Lied.mp3:3"_s;
#ifndef Q_OS_WIN // no ":" in a Windows file name
        QTest::newRow("looks like an address") << u"http:/x.mp3"_s << u"x\nhttp:/x.mp3"_s;
#endif
        QTest::newRow("umlauts, percent") << u"Grüße 100%.mp3"_s << u"Grüße 100%\nGrüße 100%.mp3"_s;
    }
    void m3uWriteReadsBack() {
        QFETCH(QString, name);
        QFETCH(QString, written);
        QTemporaryDir dir;
        const QString path = QDir::toNativeSeparators(dir.filePath(name));
        QVERIFY(QDir().mkpath(QFileInfo(path).absolutePath()) && FileBytes::write(path, {}));
        TestServices t;
        t.services.pathStyle = Paths::nativeStyle();
        PlaylistManager p(t.services);
        FileBytes::write(dir.filePath(u"alt.m3u8"_s), (u"#EXTINF:99,Alt\n"_s + path + u"\n"_s).toUtf8());
        p.FuncReadPlaylistAndDisplay(dir.filePath(u"alt.m3u8"_s), true, 1);
        PlaylistFile::writeLines(dir.filePath(u"neu.txt"_s), {path + u":3"_s});
        p.FuncReadPlaylistAndDisplay(dir.filePath(u"neu.txt"_s), true, 1);
        p.FuncSavePlaylist(dir.filePath(u"neu.m3u8"_s), 1);
        const QString base = QUrl::fromLocalFile(dir.path()).path(QUrl::FullyEncoded);
        QCOMPARE(QString::fromUtf8(FileBytes::read(dir.filePath(u"neu.m3u8"_s))),
                 u"#EXTM3U\n#TAVOMP3PRIO:3\n#EXTINF:-1,"_s + QString(written).replace(u"%1"_s, base) + u'\n');
        p.FuncReadPlaylistAndDisplay(dir.filePath(u"neu.m3u8"_s), true, 1);
        QCOMPARE(p.PlaylistPaths, QStringList{path + u":3"_s});
    }

    void m3uRead_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("lines"); // %1 = the list's folder
        QTest::addColumn<QString>("notes");     // what the user is told, "" = nothing
#ifdef Q_OS_WIN
        const QString elsewhere = u"C:\\abs\\Zwei.mp3"_s;
#else
        const QString elsewhere = u"/abs/Zwei.mp3"_s;
#endif
        QTest::newRow("relative, absolute, lengths")
            << (u"#EXTM3U\n#EXTINF:123,Eins\nAlbum/Eins.mp3\n\n#EXTINF:-1,Zwei\n"_s + elsewhere + u'\n')
                   .toUtf8()
            << (u"%1/Album/Eins.mp3:5|"_s + elsewhere + u":5"_s).split(u'|')
            << "1 Datei wurde nicht gefunden";
        QTest::newRow("mark and CR LF") << QByteArray("\xef\xbb\xbf#EXTM3U\r\nAlbum/Eins.mp3\r\n")
                                        << u"%1/Album/Eins.mp3:5"_s.split(u'|') << "";
        QTest::newRow("priorities")
            << QByteArray("#TAVOMP3PRIO:2\nAlbum/Eins.mp3\nAlbum/Eins.mp3:0\nAlbum/Eins.mp3\n")
            << u"%1/Album/Eins.mp3:2|%1/Album/Eins.mp3:0|%1/Album/Eins.mp3:5"_s.split(u'|') << "";
        QTest::newRow("file address")
            << QByteArray("%u/Album/Eins.mp3\n") << u"%1/Album/Eins.mp3:5"_s.split(u'|') << "";
        QTest::newRow("network addresses")
            << QByteArray("https://radio.example/a.mp3\nAlbum/Eins.mp3\nhttp://radio.example/b\n")
            << u"%1/Album/Eins.mp3:5"_s.split(u'|')
            << "2 Einträge mit Internetadressen wurden nicht übernommen (nur Dateien auf diesem Rechner), "
               "z. B. \"https://radio.example/a.mp3\".";
    }
    void m3uRead() {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, lines);
        QFETCH(QString, notes);
        QTemporaryDir dir;
        QDir(dir.path()).mkdir(u"Album"_s);
        TestServices t;
        t.services.pathStyle = Paths::nativeStyle();
        t.dialogs.openAnswers = {QDir::toNativeSeparators(dir.filePath(u"liste.m3u"_s))};
        QVERIFY(FileBytes::write(dir.filePath(u"Album/Eins.mp3"_s), {}) &&
                FileBytes::write(*t.dialogs.openAnswers[0],
                                 QString::fromUtf8(content)
                                     .replace(u"%u"_s, QUrl::fromLocalFile(dir.path()).toString())
                                     .replace(u"%1"_s, dir.path())
                                     .toUtf8()));
        PlaylistManager p(t.services);
        p.OpenPlaylist(1);
        for (QString& l : lines)
            l = QDir::toNativeSeparators(l.replace(u"%1"_s, dir.path()));
        QCOMPARE(p.PlaylistPaths, lines);
        QVERIFY(t.status.text().contains(u"%1 Songs"_s.arg(lines.size())));
        if (notes.isEmpty()) {
            QVERIFY(t.dialogs.questions.isEmpty());
        } else {
            QCOMPARE(t.dialogs.questions.size(), 1);
            QVERIFY2(t.dialogs.questions[0].text.contains(notes), qPrintable(t.dialogs.questions[0].text));
            QVERIFY(t.status.text().contains(notes));
        }
    }
};

QTEST_GUILESS_MAIN(TestPlaylistManager)
#include "tst_PlaylistManager.moc"
