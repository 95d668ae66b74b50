#include "app/TavoMP3PlayerMain.h"
#include "base/StatusLine.h"
#include "playlist/PlaylistFile.h"
#include "support/TestServices.h"
#include "ui/DirectoryField.h"
#include "ui/SkinControl.h"
#include "ui/TavoMP3Settings.h"

#include <QAction>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

// The main window shell: start-up from the stored settings, the menu handlers and the close prompt.
class tst_MainWindow : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;

    QString writePlaylist(const QString& name, const QStringList& lines) {
        const QString path = m_dir.filePath(name);
        PlaylistFile::writeLines(path, lines);
        return path;
    }

    // The player path and the music folders: without them start-up only opens the settings window.
    static void configure(TestServices& t) {
        t.settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("WinampPath"),
                               QStringLiteral("/usr/bin/mpv"));
        t.settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("UserMP3Directory"),
                               QStringLiteral("/m"));
    }

private slots:
    void loadShowsStoredPlaylistAndSelectsPosition_data() {
        QTest::addColumn<int>("storedPosition");
        QTest::addColumn<QList<int>>("expectedSelection");
        QTest::newRow("first") << 0 << QList<int>{0};
        QTest::newRow("last") << 2 << QList<int>{2};
        QTest::newRow("past the end selects nothing") << 3 << QList<int>{};
        QTest::newRow("negative selects nothing") << -1 << QList<int>{};
    }
    void loadShowsStoredPlaylistAndSelectsPosition() {
        QFETCH(int, storedPosition);
        QFETCH(QList<int>, expectedSelection);
        TestServices t;
        const QString file = writePlaylist(QStringLiteral("list.txt"), {QStringLiteral("/m/a/Eins.mp3:5"),
                                                                        QStringLiteral("/m/a/Zwei.mp3:3"),
                                                                        QStringLiteral("/m/b/Drei.mp3:0")});
        configure(t);
        t.settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("PlaylistFile"), file);
        t.settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("CurrentPlaylistPosition"),
                               storedPosition);

        TavoMP3PlayerMain w(t.services);
        w.load();

        QCOMPARE(w.windowTitle(), QStringLiteral("Tavo MP3 Player!"));
        QCOMPARE(w.FActPlaylist->text(), file);
        QAbstractItemModel* model = w.FPlaylist->model();
        QCOMPARE(model->rowCount(), 3);
        QCOMPARE(model->index(0, 0).data().toString(), QStringLiteral("1. Eins"));
        QCOMPARE(model->index(2, 0).data().toString(), QStringLiteral("3. Drei"));
        QCOMPARE(w.playlists().list(1).selectedRows(), expectedSelection);
        QCOMPARE(w.PlaylistPosition, storedPosition);
        QVERIFY(!t.status.text().isEmpty());
        QCOMPARE(w.FStatus->text(), t.status.text());
        QVERIFY(t.dialogs.questions.isEmpty());
    }

    void loadWithoutConfiguredPlaylistStartsEmpty() {
        TestServices t;
        TavoMP3PlayerMain w(t.services);
        w.load();
        QCOMPARE(w.FActPlaylist->text(), QString());
        QCOMPARE(w.playlists().PlaylistPaths, QStringList{QString()});
        QVERIFY(t.dialogs.questions.isEmpty());
    }

    void closeWritesSettingsAndAsksToSave_data() {
        QTest::addColumn<bool>("changed");
        QTest::addColumn<QList<Dialogs::Answer>>("answers");
        QTest::addColumn<bool>("proceeds");
        QTest::addColumn<bool>("fileRewritten");
        QTest::newRow("unchanged: no question") << false << QList<Dialogs::Answer>{} << true << false;
        QTest::newRow("Ja saves") << true << QList<Dialogs::Answer>{Dialogs::Answer::Yes} << true << true;
        QTest::newRow("Nein discards")
            << true << QList<Dialogs::Answer>{Dialogs::Answer::No} << true << false;
        QTest::newRow("Abbrechen stays open")
            << true << QList<Dialogs::Answer>{Dialogs::Answer::Cancel} << false << false;
    }
    void closeWritesSettingsAndAsksToSave() {
        QFETCH(bool, changed);
        QFETCH(QList<Dialogs::Answer>, answers);
        QFETCH(bool, proceeds);
        QFETCH(bool, fileRewritten);
        TestServices t;
        const QString file = writePlaylist(QStringLiteral("close.txt"), {QStringLiteral("/m/a/Eins.mp3:5"),
                                                                         QStringLiteral("/m/a/Zwei.mp3:4")});
        configure(t);
        t.settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("PlaylistFile"), file);
        TavoMP3PlayerMain w(t.services);
        w.load();
        // A change in memory that only a save writes to the file.
        w.playlists().PlaylistPaths[1] = QStringLiteral("/m/a/Zwei.mp3:1");
        w.playlists().PlaylistChanged = changed;
        w.PlaylistPosition = 1;
        w.FBrowsePath->setText(QStringLiteral("/m/a\r\n/m/b"));
        t.dialogs.answers = answers;

        QCOMPARE(w.closeMainWindow(), proceeds);

        QCOMPARE(t.dialogs.questions.size(), changed ? 1 : 0);
        if (changed) {
            QCOMPARE(t.dialogs.questions[0].text,
                     QStringLiteral("Möchten Sie die Änderungen in der Playliste \"") + file +
                         QStringLiteral("\" speichern?"));
            QCOMPARE(t.dialogs.questions[0].buttons, Dialogs::Buttons::YesNoCancel);
        }
        const QStringList onDisk = PlaylistFile::readLines(file);
        QCOMPARE(onDisk.value(1),
                 fileRewritten ? QStringLiteral("/m/a/Zwei.mp3:1") : QStringLiteral("/m/a/Zwei.mp3:4"));
        // Settings are written before the question, whatever the answer.
        auto get = [&](const char* key) {
            return t.settings.GetSetting(QStringLiteral("Settings"), QLatin1String(key), QStringLiteral("-"));
        };
        QCOMPARE(get("PlaylistFile"), file);
        QCOMPARE(get("CurrentPlaylistPosition"), QStringLiteral("1"));
        QCOMPARE(get("UserMP3Directory"), QStringLiteral("/m/a\r\n/m/b"));
    }

    void incompleteSettingsOpenTheSettingsWindow_data() {
        QTest::addColumn<QString>("winampPath"); // "-" = key missing
        QTest::addColumn<QString>("folders");
        QTest::addColumn<bool>("incomplete");
        QTest::newRow("nothing stored") << "-"
                                        << "-" << true;
        QTest::newRow("no player") << "-"
                                   << "/m" << true;
        QTest::newRow("player never configured") << "0"
                                                 << "/m" << true;
        QTest::newRow("folders never configured") << "/usr/bin/mpv"
                                                  << "0" << true;
        QTest::newRow("folders empty") << "/usr/bin/mpv"
                                       << "" << true;
        QTest::newRow("empty player path is accepted") << ""
                                                       << "/m" << false;
        QTest::newRow("complete") << "/usr/bin/mpv"
                                  << "/m\r\n/n" << false;
    }
    void incompleteSettingsOpenTheSettingsWindow() {
        QFETCH(QString, winampPath);
        QFETCH(QString, folders);
        QFETCH(bool, incomplete);
        TestServices t;
        const QString file = writePlaylist(QStringLiteral("start.txt"), {QStringLiteral("/m/a/Eins.mp3:5")});
        t.settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("PlaylistFile"), file);
        if (winampPath != QLatin1String("-"))
            t.settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("WinampPath"), winampPath);
        if (folders != QLatin1String("-"))
            t.settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("UserMP3Directory"), folders);

        TavoMP3PlayerMain w(t.services);
        w.load();

        QCOMPARE(w.SettingsIncomplete, incomplete);
        // The settings window always exists (it loads the colour preset); only shown when incomplete.
        QCOMPARE(w.settingsWindow()->isVisible(), incomplete);
        if (incomplete) {
            QVERIFY(w.settingsWindow()->isVisible());
            QCOMPARE(w.settingsWindow()->FStatus->text(),
                     QStringLiteral("Bitte füllen Sie alle Felder aus und speichen die Einstellungen!"));
            QCOMPARE(w.FPlaylist->model()->rowCount(), 0);
            QCOMPARE(w.FActPlaylist->text(), QString());
            QCOMPARE(w.FBrowsePath->text(), QString());
        } else {
            QCOMPARE(w.FPlaylist->model()->index(0, 0).data().toString(), QStringLiteral("1. Eins"));
            QCOMPARE(w.FBrowsePath->text(), folders);
        }
        QVERIFY(w.isVisible()); // the main window shows either way
    }

    void menuEntriesHaveTheirCaptions_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("caption");
        QTest::newRow("open") << "MenuDateiOpenPlaylist" << QStringLiteral("Playliste &öffnen...");
        QTest::newRow("save") << "MenuDateiSavePlaylist" << QStringLiteral("Playliste &speichern...");
        QTest::newRow("save as") << "MenuDateiPlaylistSaveAs"
                                 << QStringLiteral("Playliste speichern &unter...");
        QTest::newRow("quit") << "MenuDateiBeenden" << QStringLiteral("&Beenden");
    }
    void menuEntriesHaveTheirCaptions() {
        QFETCH(QString, name);
        QFETCH(QString, caption);
        TestServices t;
        TavoMP3PlayerMain w(t.services);
        auto* action = w.findChild<QAction*>(name);
        QVERIFY(action);
        QCOMPARE(action->text(), caption);
    }

    void openButtonLoadsChosenFileAndSaveWritesIt() {
        TestServices t;
        const QString file = writePlaylist(QStringLiteral("open.txt"), {QStringLiteral("/m/x/Lied.mp3:2")});
        TavoMP3PlayerMain w(t.services);
        w.load();
        t.dialogs.openAnswers = {file};
        w.BPLOpen->click();
        QCOMPARE(t.dialogs.openRequests.size(), 1);
        QCOMPARE(w.FActPlaylist->text(), file);
        QCOMPARE(w.FPlaylist->model()->index(0, 0).data().toString(), QStringLiteral("1. Lied"));

        w.playlists().PlaylistPaths[0] = QStringLiteral("/m/x/Lied.mp3:0");
        w.BPLSave->click();
        QCOMPARE(PlaylistFile::readLines(file), QStringList{QStringLiteral("/m/x/Lied.mp3:0")});
    }
};

QTEST_MAIN(tst_MainWindow)
#include "tst_MainWindow.moc"
