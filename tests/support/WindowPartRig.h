#pragma once

#include "app/MainWindowUi.h"
#include "support/CoreRig.h"

#include <QMainWindow>

// One part of the main window: the program core, the window's controls on a bare window, and only the
// bindings a test asks for (bind<SleepBinding>()), so that a test of one part does not run the rest.
struct WindowPartRig : CoreRig {
    QMainWindow window;
    MainWindowUi ui;

    WindowPartRig() { ui.setupUi(&window); }
    template <typename B, typename... More> B& bind(More&... more) {
        return *new B(core, ui, window, more...);
    }
};
