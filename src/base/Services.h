#pragma once

#include "base/PathStyle.h"

class Clock;
class Dialogs;
class PlayerLink;
class PowerOff;
class RandomSource;
class SettingsStore;
class SongIdentities;
class StatusLine;

// The seams one program run shares: the main window builds the real ones, tests their doubles.
struct Services {
    SettingsStore& settings;
    Dialogs& dialogs;
    Clock& clock;
    RandomSource& random;
    StatusLine& status;
    PathStyle pathStyle = Paths::nativeStyle();
    // Null in tests unless a test installs its recording double: no test can power off by accident.
    PowerOff* power = nullptr;
    // The external player; the program passes its real link. Null: a link that is never started.
    PlayerLink* player = nullptr;
    // What is remembered of the songs seen on disk, to recognise moved ones. Null: nothing is
    // remembered (tests that do not look at it), and the update keeps priorities by path alone.
    SongIdentities* songIdentities = nullptr;
};
