#pragma once

#include <QDateTime>

// Time behind a seam: tests use a fixed or stepped clock.
class Clock {
public:
    virtual ~Clock() = default;
    // Seconds since midnight, with fractions (the classic Timer function).
    virtual double secondsOfDay() const = 0;
    virtual QDateTime now() const = 0;
};

class SystemClock : public Clock {
public:
    double secondsOfDay() const override;
    QDateTime now() const override;
};
