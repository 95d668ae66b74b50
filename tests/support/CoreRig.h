#pragma once

#include "program/ProgramCore.h"
#include "support/FakePlayer.h"
#include "support/TestServices.h"

// The program core on the test doubles and the in-memory player. Made-up paths ("/m/Song00.mp3") read
// the same everywhere in Posix style; a rig over real files takes the platform's own style.
struct CoreRig {
    explicit CoreRig(PathStyle style = PathStyle::Posix) : pathStyle(style) {}

    PathStyle pathStyle;
    TestServices t;
    FakePlayer player{t.status};
    Services services = [this] {
        Services s = t.services;
        s.player = &player;
        s.pathStyle = pathStyle;
        return s;
    }();
    ProgramCore core{services};
};
