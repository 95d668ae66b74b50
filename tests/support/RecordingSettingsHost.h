#pragma once

#include "appearance/SettingsWindowHost.h"

#include <QList>
#include <QPair>
#include <QStringList>

// Stands in for the main window behind the settings window: records every call in order.
class RecordingSettingsHost : public SettingsWindowHost {
public:
    QList<QPair<QString, Rgb>> colourCalls;
    QStringList calls; // "LoadBGImage:<path>", "setBrowsePath:<dirs>", "FuncSetEnv", "startPlayer:<path>"

#define TAVO_RECORD_COLOUR(name)                                                                             \
    void name(const Rgb& c) override {                                                                       \
        colourCalls.append({QStringLiteral(#name), c});                                                      \
    }
    TAVO_RECORD_COLOUR(SetColorText)
    TAVO_RECORD_COLOUR(SetColorBackground)
    TAVO_RECORD_COLOUR(SetColorFieldText)
    TAVO_RECORD_COLOUR(SetColorFieldBackground)
    TAVO_RECORD_COLOUR(SetColorButtonText)
    TAVO_RECORD_COLOUR(SetColorButtonBackground)
    TAVO_RECORD_COLOUR(SetColorDisplayTextBright)
    TAVO_RECORD_COLOUR(SetColorDisplayTextDark)
    TAVO_RECORD_COLOUR(SetColorDisplayBackground)
#undef TAVO_RECORD_COLOUR
    void LoadBGImage(const QString& path) override {
        calls.append(QStringLiteral("LoadBGImage:") + path);
    }
    void setBrowsePath(const QString& dirs) override {
        calls.append(QStringLiteral("setBrowsePath:") + dirs);
    }
    void FuncSetEnv() override {
        calls.append(QStringLiteral("FuncSetEnv"));
    }
    void startPlayer(const QString& path) override {
        calls.append(QStringLiteral("startPlayer:") + path);
    }
};
