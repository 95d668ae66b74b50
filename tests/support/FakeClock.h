#pragma once

#include "base/Clock.h"

// A clock that stands still until told to move; each reading can also advance it by a step.
class FakeClock : public Clock {
public:
    mutable double seconds = 36000.0; // 10:00:00
    double stepPerReading = 0.0;
    QDateTime dateTime = QDateTime(QDate(2026, 11, 22), QTime(10, 0));

    double secondsOfDay() const override {
        const double now = seconds;
        seconds += stepPerReading;
        return now;
    }
    QDateTime now() const override { return dateTime; }
    void advance(double s) {
        seconds += s;
        dateTime = dateTime.addMSecs(qint64(s * 1000));
    }
};
