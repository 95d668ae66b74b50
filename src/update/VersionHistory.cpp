#include "update/VersionHistory.h"

namespace VersionHistory {

namespace {
Item item(const QString& text, const QStringList& continuation = {}) {
    return Item{text, continuation};
}
} // namespace

QList<Block> blocks() {
    return {
        {QStringLiteral("Version 0.152 / 07.01.2005"),
         {item(
             QStringLiteral("- Nun mehrere Quell-MP3-Verzeichnisse möglich (einfach die verschiedenen Pfade "
                            "mehrzeilig in den Einstellungen eingeben)"))}},
        {QStringLiteral("Version 0.151 / 28.11.2004"), {item(QStringLiteral("- Grafische Buttons"))}},
        {QStringLiteral("Version 0.150 / 22.07.2004"),
         {item(QStringLiteral("- Zweitplayliste als Einschlafplayliste oder Zusammenstellung nun verfügbar! "
                              "Einfügen der Lieder per Drag&Drop aus der Hauptplayliste")),
          item(QStringLiteral(
              "- Schnellsuche um Suche nach Albumtitel erweitert (Eingabe des Suchwortes während "
              "der Focus auf der Hauptplayliste liegt)"))}},
        {QStringLiteral("Version 0.148 / 22.07.2003"),
         {item(
             QStringLiteral("- Button Prio Report zur besseren Übersicht über die vergebenen Prioritäten"))}},
        {QStringLiteral("Version 0.147 / 28.02.2003"),
         {item(
              QStringLiteral(
                  "- Die Bibliothek \"MP3Info.dll\" ist eingebunden und liest Bitrate und Frames der "
                  "Lieder aus - vielen Dank an ihren Autor!"),
              {QStringLiteral("MPInfo Funktionen: Durchschnittliche Bitrate, Bitrate-Verteilungs-Histogram "),
               QStringLiteral(
                   "MPInfo Aktivierung: \"MP3Info.dll\" einfach in Windows oder Player Verzeichnis "
                   "legen... ")}),
          item(QStringLiteral("- Automatische Prüfung auf neues Update gemäß Updateeinstellungen!")),
          item(QStringLiteral("- Erste Version eines benutzerdefinierbaren Slider Steuerelements."))}},
        {QStringLiteral("Version 0.146 / 15.02.2003"),
         {item(QStringLiteral("- Player Hintergrundbild nun einstellbar!"))}},
        {QStringLiteral("Version 0.145 / 27.01.2003"),
         {item(QStringLiteral("- Anpassen der Farben des Players nun verfügbar!")),
          item(QStringLiteral(
              "- Abspeichern und Laden der Farbeinstellungen mit bis zu 99 Presets möglich!"))}},
        {QStringLiteral("Version 0.144 / 25.01.2003"),
         {item(QStringLiteral("- Automatisches Internetupdate nun verfügbar!"))}},
        {QStringLiteral("Version 0.140 / 17.01.2003"),
         {item(QStringLiteral("- Neue Windows Shutdownfunktion für Sleepmode eingebaut.")),
          item(QStringLiteral(
              "- Erste Veränderungen der Farben der Oberfläche möglich (bisher ohne Abspeichern)."))}},
        {QStringLiteral("Version 0.139 / 18.11.2002"),
         {item(QStringLiteral(
             "- Korrektur der Liedprioritäten: 5=100%, 4=70%, 3=40%, 2=20%, 1=10%, 0=0% Chance "
             "ausgewählt zu werden."))}},
        {QStringLiteral("Version 0.137 / 18.08.2002"),
         {item(QStringLiteral(
              "- Previous Button aktiviert: Die letzen 20 Songs werden gespeichert. Bei Änderungen "
              "an der Playliste wird die Previousliste zurückgesetzt.")),
          item(QStringLiteral("- Anzeige des Titels und der Prio des aktuellen Lieds im Trayicon."))}},
        {QStringLiteral("Version 0.135 / 15.08.2002"),
         {item(QStringLiteral(
             "- Sleepmode: Nach aktivieren des Sleepmodes fährt Windows automatisch nach Ablauf "
             "der eingestellten Zeit herunter! (geht nur unter Windows 9x)"))}},
        {QStringLiteral("Version 0.134 / 07.08.2002"),
         {item(QStringLiteral("- Commandozeilenparameterunterstützung hinzugefügt:"),
               {QStringLiteral(
                    "/start = Startet den TavoMP3Player! zum Beispiel vom Windows Autostart heraus nur "
                    "im Tray sichtbar."),
                QStringLiteral("/play = fängt beim Starten sofort an das nächste Lied laufenzulassen.")}),
          item(QStringLiteral("- Newsbereich hinzugefügt!"))}},
        {QStringLiteral("Version 0.131 / 28.07.2002"),
         {item(QStringLiteral("- Erste lauffähige Version vorgestellt"))}},
    };
}

QString text() {
    const QString crLf = QStringLiteral("\r\n");
    QString out;
    bool firstBlock = true;
    for (const Block& block : blocks()) {
        if (!firstBlock)
            out += crLf + crLf;
        firstBlock = false;
        out += QStringLiteral("---- ") + block.heading + QStringLiteral(" ----------------") + crLf + crLf;
        bool firstItem = true;
        for (const Item& i : block.items) {
            if (!firstItem)
                out += crLf;
            firstItem = false;
            out += i.text + crLf;
            for (const QString& line : i.continuation)
                out += line + crLf;
        }
    }
    return out;
}

} // namespace VersionHistory
