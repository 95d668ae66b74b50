#include "app/TavoMP3PlayerMain.h"
#include "support/LocalHttpServer.h"
#include "support/ReleaseSigner.h"
#include "support/TestServices.h"
#include "update/UpdateCheckSchedule.h"
#include "update/widgets/TavoMP3Update.h"

#include <QAction>
#include <QFile>
#include <QLabel>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

// The update window and its place in the main window: menu entry, timed check, hand-over.
class tst_UpdateWindow : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    ReleaseSigner m_signer;

    UpdateConfig config(const LocalHttpServer& server) const {
        UpdateConfig c;
        c.server = server.hostPort();
        c.publicKey = m_signer.publicKey();
        c.programFolder = m_dir.path();
        c.ownName = QStringLiteral("TavoMP3Player");
        c.playerVersion = QStringLiteral("0.160");
        c.updaterVersion = QStringLiteral("4");
        c.updaterPath = m_dir.filePath(QStringLiteral("TavoMP3Update"));
        return c;
    }
    static void screenshot(QWidget& w, const char* name) {
        const QString folder = qEnvironmentVariable("TAVO_SCREENSHOT_DIR");
        if (!folder.isEmpty())
            w.grab().save(folder + QLatin1Char('/') + QLatin1String(name));
    }

private slots:
    void layoutAndCaptions() {
        TestServices t;
        LocalHttpServer server;
        QVERIFY(server.listen());
        TavoMP3Update w(t.services, config(server));
        QCOMPARE(w.objectName(), QStringLiteral("TavoMP3Update"));
        QCOMPARE(w.BStart->text(), QStringLiteral("&Start"));
        QCOMPARE(w.BCancel->text(), QStringLiteral("&Abbrechen"));
        QCOMPARE(w.LWelcome->text(),
                 QStringLiteral("Willkommen beim automatischen Update von Tavo MP3. Bitte stellen "
                                "Sie, falls nicht schon vorhanden, eine Internetverbindung her "
                                "und beginnen das Update"));
        QCOMPARE(w.LTimeoutCaption->text(), QStringLiteral("Timeout:"));
        QCOMPARE(w.FLog->toPlainText(), QString());
        QVERIFY(!w.check().download().TimerTimeout->isActive());
    }

    void startShowsTheWholeCheck() {
        TestServices t;
        LocalHttpServer server;
        QVERIFY(server.listen());
        const QByteArray updater(300 * 1024, 'u');
        server.setBody(QStringLiteral("/TavoMP3/Downloads/Versions.txt"),
                       m_signer.versionList("0.160", "5", {{UpdateConfig::updaterFileName(), updater}}));
        server.setReply(QStringLiteral("/TavoMP3/Downloads/") + UpdateConfig::updaterFileName(),
                        LocalHttpServer::Reply{LocalHttpServer::ok(updater), 32 * 1024, 5, false});
        TavoMP3Update w(t.services, config(server));
        w.show();
        QTest::mouseClick(w.BStart, Qt::LeftButton);
        QVERIFY(QTest::qWaitFor(
            [&] { return w.FLog->toPlainText().endsWith(QStringLiteral("abgeschlossen.\n")); }, 10000));
        QCOMPARE(w.FLog->toPlainText(),
                 QStringLiteral("Überprüfe Player Version (aktuelle Version 0.160) ...\n"
                                "Aktuellste Version des Players bereits vorhanden.\n"
                                "Überprüfe Update-Programm Version (aktuelle Version 4) ...\n"
                                "Neue Update-Programm Version (5) verfügbar - Starte Download ...\n"
                                "Update-Programm wurde aktualisiert.\n\n"
                                "Automatisches Update erfolgreich abgeschlossen.\n"));
        QCOMPARE(w.ProgressInfo->text(), QStringLiteral("300 kb / 300 kb"));
        QCOMPARE(w.ProgressPercent->text(), QStringLiteral("100 %"));
        QCOMPARE(w.ProgressBar->maximum(), 300 * 1024);
        QCOMPARE(w.ProgressBar->value(), 300 * 1024);
        QCOMPARE(w.LTimeout->text(), QStringLiteral("0"));
        screenshot(w, "update-window.png");
    }

    // Cancelling ends the download and its time-out: the window opened again later shows nothing
    // of the abandoned attempt.
    void cancelEndsDownloadAndTimeout_data() {
        QTest::addColumn<bool>("byCloseBox");
        QTest::newRow("Abbrechen") << false;
        QTest::newRow("close box") << true;
    }
    void cancelEndsDownloadAndTimeout() {
        QFETCH(bool, byCloseBox);
        TestServices t;
        LocalHttpServer server;
        QVERIFY(server.listen());
        server.setReply(QStringLiteral("/TavoMP3/Downloads/Versions.txt"),
                        LocalHttpServer::Reply{{}, 0, 0, true});
        TavoMP3Update w(t.services, config(server));
        w.check().download().TimerTimeout->setInterval(5);
        w.show();
        QTest::mouseClick(w.BStart, Qt::LeftButton);
        QVERIFY(QTest::qWaitFor([&] { return !server.requests.isEmpty(); }, 5000));
        if (byCloseBox)
            w.close();
        else
            QTest::mouseClick(w.BCancel, Qt::LeftButton);
        QVERIFY(!w.isVisible());
        QVERIFY(!w.check().download().TimerTimeout->isActive());
        QTest::qWait(150); // thirty time-out ticks, had the timer kept running
        w.show();
        QVERIFY(!w.FLog->toPlainText().contains(QStringLiteral("Zeitüberschreitung")));
        QVERIFY(!QFile::exists(w.check().download().partFile()));
    }

    void mainWindowMenuOpensUpdateWindow() {
        TestServices t;
        TavoMP3PlayerMain main(t.services);
        main.load();
        QCOMPARE(main.MenuUpdate->text(), QStringLiteral("&Update"));
        QVERIFY(main.menuBar()->actions().contains(main.MenuUpdate));
        main.MenuUpdate->trigger();
        QVERIFY(main.updateWindow().isVisible());
        QCOMPARE(main.updateWindow().windowTitle(), QStringLiteral("Tavo MP3 Player! Update"));
    }

    void mainWindowTimedCheckAsksAndStops_data() {
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("shown");
        QTest::newRow("Ja shows the window") << int(Dialogs::Answer::Yes) << true;
        QTest::newRow("Nein keeps it hidden") << int(Dialogs::Answer::No) << false;
    }
    void mainWindowTimedCheckAsksAndStops() {
        QFETCH(int, answer);
        QFETCH(bool, shown);
        TestServices t;
        LocalHttpServer server;
        QVERIFY(server.listen());
        server.setBody(QStringLiteral("/TavoMP3/Downloads/Versions.txt"), m_signer.versionList("0.161", "4"));
        t.settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("UpdateMode"), QStringLiteral("1"));
        t.settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("UpdateInterval"),
                               QStringLiteral("1"));
        t.dialogs.answers << Dialogs::Answer(answer);
        TavoMP3PlayerMain main(t.services);
        main.UpdateSource = config(server);
        main.load();
        QVERIFY(main.updateSchedule().TimerCheck->isActive());
        QCOMPARE(main.FCheck->text(), QStringLiteral("0/1"));
        main.updateSchedule().TimerCheckTimer(); // the first minute reaches the interval
        QCOMPARE(main.FCheck->text(), QStringLiteral("0/1"));
        QVERIFY(QTest::qWaitFor([&] { return !t.dialogs.questions.isEmpty(); }, 10000));
        QCOMPARE(t.dialogs.questions.first().title, QStringLiteral("Neue Version"));
        QCOMPARE(main.updateWindow().isVisible(), shown);
        QVERIFY(!main.updateSchedule().TimerCheck->isActive());
    }
};

QTEST_MAIN(tst_UpdateWindow)
#include "tst_UpdateWindow.moc"
