#pragma once

#include <QObject>
#include <QTimer>
#include <functional>

// Notices that the computer slept. The boot clock runs on through a suspend and the monotonic clock
// does not, so the gap between them grows by the time asleep. Armed after a power-off request: a
// power-off that only suspended (TAVOMP3_POWEROFF_COMMAND="systemctl suspend") comes back here.
class WakeUpWatch : public QObject {
    Q_OBJECT
public:
    explicit WakeUpWatch(QObject* parent = nullptr);

    // Milliseconds the computer has slept since it started; tests put their own clock here.
    std::function<qint64()> sleptMs = systemSleptMs;
    static qint64 systemSleptMs();
    // Sleep shorter than this is clock noise, not a suspend.
    static constexpr qint64 kMinimumSleepMs = 2000;

    void arm();
    void disarm();
    bool isArmed() const { return m_timer.isActive(); }
    // Looks once; its timer does so every second while armed.
    void check();

signals:
    void wokeUp();

private:
    QTimer m_timer;
    qint64 m_sleptAtArm = 0;
};
