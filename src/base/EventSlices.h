#pragma once

#include <QElapsedTimer>

// Long work on the window's thread (walking, sorting and showing 300 000 files) calls breathe()
// often. Once a slice of time has passed, the event loop runs what is waiting, except user input:
// the window paints, timers tick and the player plays on, while clicks and keys wait until the
// work is done, so nothing the user does can change or start again what the work is busy with.
class EventSlices {
public:
    static constexpr int kSliceMs = 50;
    EventSlices();
    void breathe() {
        if (m_clock.elapsed() >= kSliceMs)
            runEvents();
    }

private:
    void runEvents();
    QElapsedTimer m_clock;
};
