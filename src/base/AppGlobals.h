#pragma once

#include <QString>

// Process-wide values of the start-up code that live as long as the process.
namespace AppGlobals {

extern bool StartUpdaterOnExit;
extern QString UpdaterPath;
extern bool PlayOnStart;

// Folder of the running executable, without a trailing separator.
QString programFolder();
// The updater's file name beside the program.
QString updaterFileName();
// Where the skin bitmaps are: beside the program, or the data folder of an installation
// (<prefix>/share/tavomp3player beside <prefix>/bin); the program folder when neither has them.
QString skinFolder();

} // namespace AppGlobals
