#pragma once

#include <QtGlobal>

// Switching the computer off. The program never checks the result: a refused request simply
// leaves it running. Tests use a recording double; nothing in the tests may reach the real one.
class PowerOff {
public:
    virtual ~PowerOff() = default;
    // mode as for the Windows shutdown: 0 plain, 1 forced, 2 forced only for hung programs.
    virtual void ShutdownWindows(qint32 mode) = 0;
};
