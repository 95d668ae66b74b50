// TavoMP3Update: started by the player as it closes after an update was downloaded. Checks the
// downloaded player against the signed version list, swaps the player file for it and starts the
// player again (the old one when the new one does not start). "--silent" reports on standard error
// instead of in message boxes.
#include "base/RegistrySettingsStore.h"
#include "base/SettingsStore.h"
#include "ui/QtDialogs.h"
#include "update/PlayerReplacement.h"
#include "update/UpdateConfig.h"
#include "updater/ConsoleDialogs.h"

#include <QApplication>
#include <memory>

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(SettingsStore::applicationName());
    const bool silent = app.arguments().contains(QStringLiteral("--silent"));

#ifdef Q_OS_WIN
    RegistrySettingsStore settings; // where existing installations keep their settings
#else
    IniSettingsStore settings;
#endif
    std::unique_ptr<Dialogs> dialogs;
    if (silent)
        dialogs = std::make_unique<ConsoleDialogs>();
    else
        dialogs = std::make_unique<QtDialogs>();
    PlayerReplacement replacement(settings, *dialogs, UpdateConfig::publicKeyFromEnvironment());
    const PlayerReplacement::Outcome outcome = replacement.run();
    return outcome == PlayerReplacement::Outcome::Replaced ||
                   outcome == PlayerReplacement::Outcome::NothingToDo
               ? 0
               : 1;
}
