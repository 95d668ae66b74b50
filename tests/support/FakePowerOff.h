#pragma once

#include "power/PowerOff.h"

#include <QList>

// Records every power-off request instead of acting on it.
class FakePowerOff : public PowerOff {
public:
    QList<qint32> requests;
    void ShutdownWindows(qint32 mode) override { requests << mode; }
};
