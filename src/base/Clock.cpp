#include "base/Clock.h"

double SystemClock::secondsOfDay() const {
    return QTime::currentTime().msecsSinceStartOfDay() / 1000.0;
}

QDateTime SystemClock::now() const {
    return QDateTime::currentDateTime();
}
