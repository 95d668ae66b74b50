#include "app/MainWindowUi.h"
#include "app/SecondaryWindows.h"
#include "app/SettingsApplier.h"
#include "app/WindowSkins.h"
#include "base/StatusLine.h"
#include "program/ProgramCore.h"
#include "support/LocalHttpServer.h"
#include "support/ReleaseSigner.h"
#include "support/TestServices.h"
#include "update/UpdateCheckSchedule.h"
#include "update/VersionHistory.h"
#include "update/widgets/TavoMP3About.h"
#include "update/widgets/TavoMP3News.h"
#include "update/widgets/TavoMP3Update.h"

#include <QAction>
#include <QFile>
#include <QLabel>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

namespace {
const QString kList = QStringLiteral("/TavoMP3/Downloads/Versions.txt");
}

// The windows of the update folder and their place in the main window: menu entries, the timed
// check and its question, the update window's log and progress, the news and about windows.
class tst_UpdateWindow : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    ReleaseSigner m_signer;
    TestServices* m_t = nullptr;
    LocalHttpServer* m_server = nullptr;

    // The windows the main window opens, with the program core behind them, without the rest of the window.
    struct Windows {
        ProgramCore core;
        QMainWindow window;
        MainWindowUi ui;
        SettingsApplier applier{core, ui};
        WindowSkins skins{ui, window, core.services().status};
        SecondaryWindows& windows;
        explicit Windows(Services& services)
            : core(services),
              windows((ui.setupUi(&window), *new SecondaryWindows(core, ui, window, applier, skins))) {}
    };

    UpdateConfig config() const {
        UpdateConfig c;
        c.server = m_server->hostPort();
        c.publicKey = m_signer.publicKey();
        c.programFolder = m_dir.path();
        c.ownName = QStringLiteral("TavoMP3Player");
        c.playerVersion = QStringLiteral("0.160");
        c.updaterVersion = QStringLiteral("4");
        c.updaterPath = m_dir.filePath(QStringLiteral("TavoMP3Update"));
        return c;
    }

private slots:
    void init() {
        m_t = new TestServices;
        m_server = new LocalHttpServer(this);
        QVERIFY(m_server->listen());
    }
    void cleanup() {
        delete m_server;
        delete m_t;
    }

    void menuEntriesOpenTheWindowsAndTheHistory() {
        Windows main(m_t->services);
        const QList<QPair<QAction*, QWidget*>> entries = {{main.ui.MenuNews, &main.windows.newsWindow()},
                                                          {main.ui.MenuAbout, &main.windows.aboutWindow()},
                                                          {main.ui.MenuUpdate, &main.windows.updateWindow()}};
        for (const auto& [entry, window] : entries) {
            QVERIFY(!window->isVisible()); // created hidden, e.g. to take the colours
            entry->trigger();
            QVERIFY2(window->isVisible(), qPrintable(entry->objectName()));
        }
        QCOMPARE(main.windows.aboutWindow().Version->text(),
                 QStringLiteral("Version %1.%2").arg(TAVO_VERSION_MAJOR).arg(TAVO_VERSION_MINOR));
        QVERIFY(m_t->dialogs.questions.isEmpty());
        // The history as the user reads it: one spot check of a tricky passage, and its layout.
        const QString text = VersionHistory::text();
        QCOMPARE(main.windows.newsWindow().FHistory->toPlainText(),
                 QString(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
        QVERIFY(text.contains(
            QStringLiteral("Bitrate-Verteilungs-Histogram \r\nMPInfo Aktivierung: \"MP3Info.dll\" einfach in "
                           "Windows oder Player Verzeichnis legen... \r\n\r\n- Automatische Prüfung")));
        // Headings newest first, each followed by one empty line; items ("- ", continued on lines of
        // their own) one empty line apart; two empty lines before the next heading; CR LF throughout.
        const QString heading =
            QStringLiteral("---- Version (0\\.\\d{3}) / \\d\\d\\.\\d\\d\\.\\d{4} -{16}\r\n\r\n");
        const QString item = QStringLiteral("- [^\r\n]+(\r\n[^-\r\n][^\r\n]*)*");
        const QString block =
            heading + item + QStringLiteral("(\r\n\r\n") + item + QLatin1Char(')') + QLatin1Char('*');
        const QRegularExpression layout(QStringLiteral("\\A") + block + QStringLiteral("(\r\n\r\n\r\n") +
                                        block + QStringLiteral(")*\r\n\\z"));
        QVERIFY(layout.match(text).hasMatch());
        QCOMPARE(QRegularExpression(heading).globalMatch(text).next().captured(1), QStringLiteral("0.152"));
    }

    void startShowsTheWholeCheck() {
        const QByteArray updater(300 * 1024, 'u');
        m_server->setBody(kList,
                          m_signer.versionList("0.160", "5", {{UpdateConfig::updaterFileName(), updater}}));
        m_server->setReply(QStringLiteral("/TavoMP3/Downloads/") + UpdateConfig::updaterFileName(),
                           LocalHttpServer::Reply{LocalHttpServer::ok(updater), 32 * 1024, 5, false});
        TavoMP3Update w(m_t->services, config());
        w.show();
        QTest::mouseClick(w.BStart, Qt::LeftButton);
        // The log's CR LF lines shown as lines; the rest of the text is the check's own.
        const QString end =
            QStringLiteral("aktualisiert.\n\nAutomatisches Update erfolgreich abgeschlossen.\n");
        QVERIFY(QTest::qWaitFor([&] { return w.FLog->toPlainText().endsWith(end); }, 10000));
        QCOMPARE((QStringList{w.ProgressInfo->text(), w.ProgressPercent->text(),
                              QString::number(w.ProgressBar->maximum()),
                              QString::number(w.ProgressBar->value()), w.LTimeout->text()}),
                 QStringList({QStringLiteral("300 kb / 300 kb"), QStringLiteral("100 %"),
                              QStringLiteral("307200"), QStringLiteral("307200"), QStringLiteral("0")}));
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
        m_server->setReply(kList, LocalHttpServer::Reply{{}, 0, 0, true});
        TavoMP3Update w(m_t->services, config());
        w.check().download().TimerTimeout->setInterval(5);
        QSignalSpy closed(&w.check().download(), &SocketDownload::downloadClosed);
        w.show();
        QTest::mouseClick(w.BStart, Qt::LeftButton);
        QVERIFY(QTest::qWaitFor([&] { return !m_server->requests.isEmpty(); }, 5000));
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
        QCOMPARE(closed.count(), 0); // our own close is not the end of a download
    }

    // The minute timer reaches the interval: the check runs hidden, asks before anything is
    // downloaded, and the timer stops whatever the answer.
    void timedCheckAsks_data() {
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("shown");
        QTest::newRow("Ja shows the window") << int(Dialogs::Answer::Yes) << true;
        QTest::newRow("Abbrechen keeps it hidden") << int(Dialogs::Answer::Cancel) << false;
    }
    void timedCheckAsks() {
        QFETCH(int, answer);
        QFETCH(bool, shown);
        m_server->setBody(kList, m_signer.versionList("0.161", "4"));
        const QString section = QStringLiteral("Settings");
        m_t->settings.SaveSetting(section, QStringLiteral("UpdateMode"), QStringLiteral("1"));
        m_t->settings.SaveSetting(section, QStringLiteral("UpdateInterval"), QStringLiteral("1"));
        m_t->dialogs.answers << Dialogs::Answer(answer);
        Windows main(m_t->services);
        main.core.UpdateSource = config();
        main.core.updateSchedule().load(); // as the main window's load does
        QVERIFY(main.core.updateSchedule().TimerCheck->isActive());
        QCOMPARE(main.ui.FCheck->text(), QStringLiteral("0/1"));
        main.core.updateSchedule().TimerCheckTimer(); // the first minute reaches the interval
        QVERIFY(QTest::qWaitFor([&] { return !m_t->dialogs.questions.isEmpty(); }, 10000));
        const auto& q = m_t->dialogs.questions.first();
        QVERIFY2(q.text.startsWith(
                     QStringLiteral("Es ist eine neue Version (0.161) von TavoMP3 Player verfügbar!")),
                 qPrintable(q.text));
        QCOMPARE(q.buttons, Dialogs::Buttons::YesNoCancel);
        QCOMPARE(main.windows.updateWindow().isVisible(), shown);
        QCOMPARE(main.windows.updateWindow().FLog->toPlainText(),
                 QString()); // the hidden check logged nothing
        QCOMPARE(
            m_t->settings.GetSetting(section, QStringLiteral("LastUpdateCheckStatus"), QStringLiteral("-")),
            QString());
        QCOMPARE(m_server->requestedPaths, QStringList{kList});
        QVERIFY(!main.core.updateSchedule().TimerCheck->isActive());
    }
};

QTEST_MAIN(tst_UpdateWindow)
#include "tst_UpdateWindow.moc"
