#include "app/SettingsApplier.h"

#include "app/MainWindowUi.h"
#include "program/ProgramCore.h"
#include "ui/BackgroundPicture.h"
#include "ui/DirectoryField.h"

void SettingsApplier::LoadBGImage(const QString& path) {
    m_ui.background->load(path);
}

void SettingsApplier::setBrowsePath(const QString& directories) {
    m_ui.FBrowsePath->setText(directories);
}

void SettingsApplier::FuncSetEnv() {
    m_core.session().reloadEnvironment();
}

void SettingsApplier::startPlayer(const QString& playerPath) {
    m_core.startPlayer(playerPath);
}
