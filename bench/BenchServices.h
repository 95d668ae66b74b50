#pragma once

#include "base/Clock.h"
#include "base/RandomSource.h"
#include "base/Services.h"
#include "base/SettingsStore.h"
#include "base/StatusLine.h"
#include "ui/QtDialogs.h"

#include <QTemporaryDir>
#include <algorithm>
#include <vector>

// The program's real seams for a benchmark, with its settings in a folder of its own.
struct BenchServices {
    QTemporaryDir dir;
    IniSettingsStore settings{dir.filePath(QStringLiteral("bench.ini"))};
    QtDialogs dialogs;
    SystemClock clock;
    SeededRandom random{1};
    StatusLine status;
    Services services{settings, dialogs, clock, random, status};
};

// The median of runs timed by hand, so that one disturbed run does not move a ratio.
inline double median(std::vector<double> runs) {
    std::sort(runs.begin(), runs.end());
    return runs.empty() ? 0 : runs[runs.size() / 2];
}
