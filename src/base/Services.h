#pragma once

#include "base/PathStyle.h"

class Clock;
class Dialogs;
class RandomSource;
class SettingsStore;
class StatusLine;

// The seams one program run shares: the main window builds the real ones, tests their doubles.
struct Services {
    SettingsStore& settings;
    Dialogs& dialogs;
    Clock& clock;
    RandomSource& random;
    StatusLine& status;
    PathStyle pathStyle = Paths::nativeStyle();
};
