#pragma once

#include "app/TavoMP3PlayerMain.h"
#include "support/FakePlayer.h"
#include "support/TestServices.h"

// A main window on the test doubles and the in-memory player, not yet loaded.
struct MainWindowRig {
    TestServices t;
    FakePlayer player{t.status};
    Services services = withPlayer();
    TavoMP3PlayerMain w{services};

    Services withPlayer() {
        Services s = t.services;
        s.player = &player;
        return s;
    }
    void setting(const char* key, const QString& value) {
        t.settings.SaveSetting(QStringLiteral("Settings"), QLatin1String(key), value);
    }
};
