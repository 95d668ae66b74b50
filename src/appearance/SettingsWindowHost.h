#pragma once

#include <QString>

// What the settings window may do to the program behind it: change the background picture, hand
// over the music directories, and restart the environment after saving. Colours go through the
// colour controller.
class SettingsWindowHost {
public:
    virtual ~SettingsWindowHost() = default;
    // All errors ignored; "" removes the picture.
    virtual void LoadBGImage(const QString& path) = 0;
    virtual void setBrowsePath(const QString& directories) = 0;
    // Re-reads the stored environment (player path, music directories).
    virtual void FuncSetEnv() = 0;
    // The player link's start operation with the saved player path.
    virtual void startPlayer(const QString& playerPath) = 0;
};
