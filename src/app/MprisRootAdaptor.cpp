#include "app/MprisRootAdaptor.h"

#include "app/TavoMP3PlayerMain.h"

MprisRootAdaptor::MprisRootAdaptor(QObject* exported, TavoMP3PlayerMain& window)
    : QDBusAbstractAdaptor(exported), m_window(window) {
}

// Both run after the bus has had its answer: a question the window asks must not hold up the caller.
void MprisRootAdaptor::Raise() {
    QMetaObject::invokeMethod(
        &m_window, [this] { m_window.activateFromDesktop(true, false); }, Qt::QueuedConnection);
}

void MprisRootAdaptor::Quit() {
    QMetaObject::invokeMethod(&m_window, &QWidget::close, Qt::QueuedConnection);
}
