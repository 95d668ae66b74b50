#pragma once

#include "app/MainWindowUi.h"
#include "program/ProgramCore.h"
#include "support/FakePlayer.h"
#include "support/TestServices.h"

#include <QMainWindow>

// One part of the main window: the program core, the window's controls on a bare window, and only the
// bindings a test asks for (bind<SleepBinding>()), so that a test of one part does not run the rest.
struct WindowPartRig {
    TestServices t;
    FakePlayer player{t.status};
    Services services = [this] {
        Services s = t.services;
        s.player = &player;
        return s;
    }();
    ProgramCore core{services};
    QMainWindow window;
    MainWindowUi ui;

    WindowPartRig() { ui.setupUi(&window); }
    template <typename B, typename... More> B& bind(More&... more) {
        return *new B(core, ui, window, more...);
    }
};
