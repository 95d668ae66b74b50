#pragma once

#include "appearance/SettingsWindowHost.h"

class MainWindowUi;
class ProgramCore;

// What the settings window's save does beyond the store: the background picture, the music folders
// in the main window, the environment read anew and the player started with its new path.
class SettingsApplier : public SettingsWindowHost {
public:
    SettingsApplier(ProgramCore& core, MainWindowUi& ui) : m_core(core), m_ui(ui) {}

    void LoadBGImage(const QString& path) override;
    void setBrowsePath(const QString& directories) override;
    void FuncSetEnv() override;
    void startPlayer(const QString& playerPath) override;

private:
    ProgramCore& m_core;
    MainWindowUi& m_ui;
};
