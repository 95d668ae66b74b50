#include "playlist/PlaylistManager.h"
#include "support/TestServices.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringEncoder>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

// Playlist files as users' disks hold them: classic ANSI, UTF-8 with and without marks, damaged ones,
// and M3U lists of other players. The bytes on disk are compared before and after.
class TestPlaylistFiles : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;

    QString write(const QString& name, const QByteArray& content) {
        const QString path = m_dir.filePath(name);
        QFile f(path);
        f.open(QIODevice::WriteOnly | QIODevice::Truncate);
        f.write(content);
        return path;
    }
    static QByteArray read(const QString& path) {
        QFile f(path);
        f.open(QIODevice::ReadOnly);
        return f.readAll();
    }
    static QByteArray utf16(const QString& text) {
        QStringEncoder e(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom);
        return e.encode(text);
    }

private slots:
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
            << "w.txt" << utf16(u"/m/a/Ärger.mp3:4\r\n"_s) << "1. Ärger" << none << same;
        QTest::newRow("LF becomes CR LF") << "n.txt" << QByteArray("/m/a/One.mp3:5\n") << "1. One" << none
                                          << QByteArray("/m/a/One.mp3:5\r\n");
        QTest::newRow("empty line, kept") << "e.txt" << broken << "" << no << same;
        QTest::newRow("empty line, replaced") << "e.txt" << broken << "" << yes << QByteArray("\r\n");
        QTest::newRow("relative line, kept") << "r.txt" << QByteArray("a/One.mp3:5\r\n") << "" << no << same;
        QTest::newRow("m3u address, kept") << "w.m3u" << web << "1. One" << no << same;
        QTest::newRow("m3u address, replaced")
            << "w.m3u" << web << "1. One" << yes << QByteArray("#EXTM3U\n#EXTINF:-1,One\n/m/a/One.mp3\n");
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
        QCOMPARE(read(file), after.isNull() ? before : after);
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
        QCOMPARE(read(file), before);
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
        QCOMPARE(read(file), QByteArray("/m/a/Good.mp3:3\r\n"));
        QCOMPARE(t.dialogs.questions.size(), 1);
        QVERIFY(t.dialogs.questions[0].text.contains(u"1. /m/a/Bad\u21b5Name.mp3:5\n3. /m/a/Bad\u21b5Too"_s));
        QCOMPARE(p.PlaylistPaths.size(), 3); // the list itself keeps them
    }

    void m3uRead_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("lines"); // %1 = the list's folder
        QTest::addColumn<QString>("notes");     // what the user is told, "" = nothing
        QTest::newRow("relative, absolute, lengths")
            << QByteArray("#EXTM3U\n#EXTINF:123,Eins\nAlbum/Eins.mp3\n\n#EXTINF:-1,Zwei\n/abs/Zwei.mp3\n")
            << u"%1/Album/Eins.mp3:5|/abs/Zwei.mp3:5"_s.split(u'|') << "1 Datei wurde nicht gefunden";
        QTest::newRow("mark and CR LF") << QByteArray("\xef\xbb\xbf#EXTM3U\r\nAlbum/Eins.mp3\r\n")
                                        << u"%1/Album/Eins.mp3:5"_s.split(u'|') << "";
        QTest::newRow("priorities")
            << QByteArray("#TAVOMP3PRIO:2\nAlbum/Eins.mp3\nAlbum/Eins.mp3:0\nAlbum/Eins.mp3\n")
            << u"%1/Album/Eins.mp3:2|%1/Album/Eins.mp3:0|%1/Album/Eins.mp3:5"_s.split(u'|') << "";
        QTest::newRow("file address")
            << QByteArray("file://%1/Album/Eins.mp3\n") << u"%1/Album/Eins.mp3:5"_s.split(u'|') << "";
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
        QFile song(dir.filePath(u"Album/Eins.mp3"_s));
        QVERIFY(song.open(QIODevice::WriteOnly));
        QFile m3u(dir.filePath(u"liste.m3u"_s));
        QVERIFY(m3u.open(QIODevice::WriteOnly));
        m3u.write(QString::fromUtf8(content).replace(u"%1"_s, dir.path()).toUtf8());
        m3u.close();
        TestServices t;
        PlaylistManager p(t.services);
        t.dialogs.openAnswers = {m3u.fileName()};
        p.OpenPlaylist(1);
        for (QString& l : lines)
            l.replace(u"%1"_s, dir.path());
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

    void m3u8SaveIsReadBackUnchanged() {
        QTemporaryDir dir;
        TestServices t;
        PlaylistManager p(t.services);
        const QString below = dir.filePath(u"Album/Eins.mp3"_s);
        p.PlaylistPaths = {below + u":5"_s, u"/andere/Zwei Ä.mp3:2"_s};
        p.SongSeconds.insert(below, 123);
        const QString file = dir.filePath(u"liste.m3u8"_s);
        p.FuncSavePlaylist(file, 1);
        QCOMPARE(
            QString::fromUtf8(read(file)),
            QStringLiteral("#EXTM3U\n#EXTINF:123,Eins\nAlbum/Eins.mp3\n#TAVOMP3PRIO:2\n#EXTINF:-1,Zwei Ä\n"
                           "/andere/Zwei Ä.mp3\n"));
        const QStringList saved = p.PlaylistPaths;
        p.PlaylistPaths = {QString()};
        p.FuncReadPlaylistAndDisplay(file, true, 1);
        QCOMPARE(p.PlaylistPaths, saved);
    }
};

QTEST_GUILESS_MAIN(TestPlaylistFiles)
#include "tst_PlaylistFiles.moc"
