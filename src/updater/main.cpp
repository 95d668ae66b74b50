// TavoMP3Update: started by the player as it closes after an update was downloaded. Swaps the
// player file for the new one and starts the player again. "--silent" reports on standard error
// instead of in message boxes.
#include "base/SettingsStore.h"
#include "ui/QtDialogs.h"
#include "update/PlayerReplacement.h"
#include "updater/ConsoleDialogs.h"

#include <QApplication>
#include <memory>

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(SettingsStore::applicationName());
    const bool silent = app.arguments().contains(QStringLiteral("--silent"));

    IniSettingsStore settings;
    std::unique_ptr<Dialogs> dialogs;
    if (silent)
        dialogs = std::make_unique<ConsoleDialogs>();
    else
        dialogs = std::make_unique<QtDialogs>();
    PlayerReplacement replacement(settings, *dialogs);
    return replacement.run() == PlayerReplacement::Outcome::Refused ? 1 : 0;
}
