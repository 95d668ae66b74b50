#include "base/EventSlices.h"

#include <QCoreApplication>

EventSlices::EventSlices() {
    m_clock.start();
}

void EventSlices::runEvents() {
    if (QCoreApplication::instance())
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    m_clock.restart();
}
