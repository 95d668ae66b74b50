#include "desktop/MprisRootAdaptor.h"

#include "program/WindowRequests.h"

MprisRootAdaptor::MprisRootAdaptor(QObject* exported, WindowRequests& window)
    : QDBusAbstractAdaptor(exported), m_window(window) {
}

// The window answers them once the bus has had its answer (main connects them queued): a question the
// window asks must not hold up the caller.
void MprisRootAdaptor::Raise() {
    emit m_window.raiseRequested();
}

void MprisRootAdaptor::Quit() {
    emit m_window.closeRequested();
}
