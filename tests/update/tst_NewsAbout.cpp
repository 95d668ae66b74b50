#include "app/TavoMP3PlayerMain.h"
#include "support/TestServices.h"
#include "update/VersionHistory.h"
#include "update/widgets/TavoMP3About.h"
#include "update/widgets/TavoMP3News.h"

#include <QAction>
#include <QLabel>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTest>

namespace {
// The history as the user reads it; every line ends in CR LF, two lines keep a trailing blank.
const char* const kHistory = R"HISTORY(---- Version 0.152 / 07.01.2005 ----------------

- Nun mehrere Quell-MP3-Verzeichnisse möglich (einfach die verschiedenen Pfade mehrzeilig in den Einstellungen eingeben)


---- Version 0.151 / 28.11.2004 ----------------

- Grafische Buttons


---- Version 0.150 / 22.07.2004 ----------------

- Zweitplayliste als Einschlafplayliste oder Zusammenstellung nun verfügbar! Einfügen der Lieder per Drag&Drop aus der Hauptplayliste

- Schnellsuche um Suche nach Albumtitel erweitert (Eingabe des Suchwortes während der Focus auf der Hauptplayliste liegt)


---- Version 0.148 / 22.07.2003 ----------------

- Button Prio Report zur besseren Übersicht über die vergebenen Prioritäten


---- Version 0.147 / 28.02.2003 ----------------

- Die Bibliothek "MP3Info.dll" ist eingebunden und liest Bitrate und Frames der Lieder aus - vielen Dank an ihren Autor!
MPInfo Funktionen: Durchschnittliche Bitrate, Bitrate-Verteilungs-Histogram 
MPInfo Aktivierung: "MP3Info.dll" einfach in Windows oder Player Verzeichnis legen... 

- Automatische Prüfung auf neues Update gemäß Updateeinstellungen!

- Erste Version eines benutzerdefinierbaren Slider Steuerelements.


---- Version 0.146 / 15.02.2003 ----------------

- Player Hintergrundbild nun einstellbar!


---- Version 0.145 / 27.01.2003 ----------------

- Anpassen der Farben des Players nun verfügbar!

- Abspeichern und Laden der Farbeinstellungen mit bis zu 99 Presets möglich!


---- Version 0.144 / 25.01.2003 ----------------

- Automatisches Internetupdate nun verfügbar!


---- Version 0.140 / 17.01.2003 ----------------

- Neue Windows Shutdownfunktion für Sleepmode eingebaut.

- Erste Veränderungen der Farben der Oberfläche möglich (bisher ohne Abspeichern).


---- Version 0.139 / 18.11.2002 ----------------

- Korrektur der Liedprioritäten: 5=100%, 4=70%, 3=40%, 2=20%, 1=10%, 0=0% Chance ausgewählt zu werden.


---- Version 0.137 / 18.08.2002 ----------------

- Previous Button aktiviert: Die letzen 20 Songs werden gespeichert. Bei Änderungen an der Playliste wird die Previousliste zurückgesetzt.

- Anzeige des Titels und der Prio des aktuellen Lieds im Trayicon.


---- Version 0.135 / 15.08.2002 ----------------

- Sleepmode: Nach aktivieren des Sleepmodes fährt Windows automatisch nach Ablauf der eingestellten Zeit herunter! (geht nur unter Windows 9x)


---- Version 0.134 / 07.08.2002 ----------------

- Commandozeilenparameterunterstützung hinzugefügt:
/start = Startet den TavoMP3Player! zum Beispiel vom Windows Autostart heraus nur im Tray sichtbar.
/play = fängt beim Starten sofort an das nächste Lied laufenzulassen.

- Newsbereich hinzugefügt!


---- Version 0.131 / 28.07.2002 ----------------

- Erste lauffähige Version vorgestellt
)HISTORY";
} // namespace

class tst_NewsAbout : public QObject {
    Q_OBJECT

    static void screenshot(QWidget& w, const char* name) {
        const QString folder = qEnvironmentVariable("TAVO_SCREENSHOT_DIR");
        if (!folder.isEmpty())
            w.grab().save(folder + QLatin1Char('/') + QLatin1String(name));
    }

private slots:
    void historyTextByteForByte() {
        QByteArray expected(kHistory);
        expected.replace("\n", "\r\n");
        TavoMP3News news;
        QCOMPARE(news.historyText().toUtf8(), expected);
        QCOMPARE(VersionHistory::text().toUtf8(), expected);
        QVERIFY(!expected.contains("\r\n\r\n\r\n\r\n")); // never more than two empty lines
        QVERIFY(expected.contains("Histogram \r\nMPInfo Aktivierung"));
        QVERIFY(expected.contains("legen... \r\n\r\n- Automatische"));
        // The box shows the same lines.
        QCOMPARE(news.FHistory->toPlainText().toUtf8(), QByteArray(kHistory));
    }

    void historyIsNewestFirst() {
        const QList<VersionHistory::Block> blocks = VersionHistory::blocks();
        QCOMPARE(blocks.size(), 14);
        for (int i = 1; i < blocks.size(); ++i) {
            const QString newer = blocks.at(i - 1).heading.section(QLatin1Char(' '), 1, 1);
            const QString older = blocks.at(i).heading.section(QLatin1Char(' '), 1, 1);
            QVERIFY2(newer > older, qPrintable(newer + QLatin1String(" / ") + older));
        }
        for (const auto& b : blocks)
            for (const auto& item : b.items)
                QVERIFY2(item.text.startsWith(QStringLiteral("- ")), qPrintable(item.text));
    }

    void newsWindow() {
        TavoMP3News news;
        QCOMPARE(news.windowTitle(), QStringLiteral("Tavo MP3 Player! News"));
        QCOMPARE(news.FHistory->objectName(), QStringLiteral("FHistory"));
        QVERIFY(news.FHistory->isReadOnly());
        news.SetColorBackground(QColor(0, 0, 64));
        news.SetColorFieldBackground(QColor(20, 20, 60));
        news.SetColorFieldText(QColor(255, 255, 160));
        QCOMPARE(news.FHistory->palette().color(QPalette::Base), QColor(20, 20, 60));
        QCOMPARE(news.FHistory->palette().color(QPalette::Text), QColor(255, 255, 160));
        QCOMPARE(news.palette().color(QPalette::Window), QColor(0, 0, 64));
        news.show();
        screenshot(news, "news-window.png");
    }

    void aboutWindow() {
        TavoMP3About about;
        QCOMPARE(about.windowTitle(), QStringLiteral("About"));
        QCOMPARE(about.Title->text(), QStringLiteral("Tavo MP3 Player!"));
        QCOMPARE(about.Date->text(), QStringLiteral("27.11.2004"));
        QCOMPARE(about.BeginDate->text(), QStringLiteral("Begonnen am 09.03.2002"));
        QVERIFY(!about.Website->text().isEmpty());
        QCOMPARE(about.Version->text(), QStringLiteral("Version ") + QString::number(TAVO_VERSION_MAJOR) +
                                            QLatin1Char('.') + QString::number(TAVO_VERSION_MINOR));
        QVERIFY(about.Version->text() != QStringLiteral("Version x"));
        about.SetColorBackground(QColor(0, 0, 64));
        about.SetColorText(QColor(255, 200, 0));
        QCOMPARE(about.Title->palette().color(QPalette::WindowText), QColor(255, 200, 0));
        QCOMPARE(about.Website->palette().color(QPalette::WindowText), QColor(255, 200, 0));
        about.show();
        screenshot(about, "about-window.png");
    }

    void menuEntriesOpenTheWindows() {
        TestServices t;
        TavoMP3PlayerMain main(t.services);
        main.load();
        QCOMPARE(main.MenuNews->text(), QStringLiteral("&News"));
        QVERIFY(main.menuBar()->actions().contains(main.MenuNews));
        QVERIFY(main.menuBar()->actions().contains(main.MenuAbout));
        QVERIFY(!main.newsWindow().isVisible()); // created hidden, e.g. to take the colours
        main.MenuNews->trigger();
        QVERIFY(main.newsWindow().isVisible());
        main.MenuAbout->trigger();
        QVERIFY(main.aboutWindow().isVisible());
        QVERIFY(t.dialogs.questions.isEmpty());
        screenshot(main, "main-window-menus.png");
    }
};

QTEST_MAIN(tst_NewsAbout)
#include "tst_NewsAbout.moc"
