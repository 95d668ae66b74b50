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

    void SetColorText(const Rgb& c) override { colourCalls.append({QStringLiteral("SetColorText"), c}); }
    void SetColorBackground(const Rgb& c) override {
        colourCalls.append({QStringLiteral("SetColorBackground"), c});
    }
    void SetColorFieldText(const Rgb& c) override {
        colourCalls.append({QStringLiteral("SetColorFieldText"), c});
    }
    void SetColorFieldBackground(const Rgb& c) override {
        colourCalls.append({QStringLiteral("SetColorFieldBackground"), c});
    }
    void SetColorButtonText(const Rgb& c) override {
        colourCalls.append({QStringLiteral("SetColorButtonText"), c});
    }
    void SetColorButtonBackground(const Rgb& c) override {
        colourCalls.append({QStringLiteral("SetColorButtonBackground"), c});
    }
    void SetColorDisplayTextBright(const Rgb& c) override {
        colourCalls.append({QStringLiteral("SetColorDisplayTextBright"), c});
    }
    void SetColorDisplayTextDark(const Rgb& c) override {
        colourCalls.append({QStringLiteral("SetColorDisplayTextDark"), c});
    }
    void SetColorDisplayBackground(const Rgb& c) override {
        colourCalls.append({QStringLiteral("SetColorDisplayBackground"), c});
    }
    void LoadBGImage(const QString& path) override { calls.append(QStringLiteral("LoadBGImage:") + path); }
    void setBrowsePath(const QString& dirs) override {
        calls.append(QStringLiteral("setBrowsePath:") + dirs);
    }
    void FuncSetEnv() override { calls.append(QStringLiteral("FuncSetEnv")); }
    void startPlayer(const QString& path) override { calls.append(QStringLiteral("startPlayer:") + path); }

    QStringList colourCallNames() const {
        QStringList names;
        for (const auto& c : colourCalls)
            names.append(c.first);
        return names;
    }
};
