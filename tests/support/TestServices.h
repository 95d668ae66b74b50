#pragma once

#include "base/Services.h"
#include "base/StatusLine.h"
#include "support/FakeClock.h"
#include "support/FakePowerOff.h"
#include "support/FakeRandom.h"
#include "support/ScriptedDialogs.h"
#include "support/TempSettings.h"

// One set of test doubles bundled the way the program bundles the real seams.
struct TestServices {
    TempSettings settings;
    ScriptedDialogs dialogs;
    FakeClock clock;
    FakeRandom random;
    StatusLine status;
    FakePowerOff power;
    Services services{settings, dialogs, clock, random, status, PathStyle::Posix, &power};
};
