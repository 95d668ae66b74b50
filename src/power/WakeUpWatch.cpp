#include "power/WakeUpWatch.h"

#ifdef Q_OS_LINUX
#include <ctime>
#endif

WakeUpWatch::WakeUpWatch(QObject* parent) : QObject(parent) {
    m_timer.setInterval(1000);
    connect(&m_timer, &QTimer::timeout, this, &WakeUpWatch::check);
}

qint64 WakeUpWatch::systemSleptMs() {
#ifdef Q_OS_LINUX
    timespec boot{}, monotonic{};
    if (::clock_gettime(CLOCK_BOOTTIME, &boot) != 0 || ::clock_gettime(CLOCK_MONOTONIC, &monotonic) != 0)
        return 0;
    return (qint64(boot.tv_sec) - monotonic.tv_sec) * 1000 + (boot.tv_nsec - monotonic.tv_nsec) / 1000000;
#else
    return 0; // elsewhere a power-off ends the program
#endif
}

void WakeUpWatch::arm() {
    m_sleptAtArm = sleptMs();
    m_timer.start();
}

void WakeUpWatch::disarm() {
    m_timer.stop();
}

void WakeUpWatch::check() {
    if (!isArmed() || sleptMs() - m_sleptAtArm < kMinimumSleepMs)
        return;
    disarm();
    emit wokeUp();
}
