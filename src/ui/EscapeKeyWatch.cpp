#include "ui/EscapeKeyWatch.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QWidget>

EscapeKeyWatch::EscapeKeyWatch(QWidget* guarded) : m_guarded(guarded) {
    QCoreApplication::instance()->installEventFilter(this);
}

EscapeKeyWatch::~EscapeKeyWatch() {
    QCoreApplication::instance()->removeEventFilter(this);
}

bool EscapeKeyWatch::poll() {
    QCoreApplication::processEvents();
    const bool result = m_pressed || m_held;
    m_pressed = false;
    return result;
}

bool EscapeKeyWatch::aimedAtGuarded(QObject* watched) const {
    auto* widget = qobject_cast<QWidget*>(watched);
    return widget && m_guarded && widget->window() == m_guarded->window();
}

bool EscapeKeyWatch::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease: {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Escape && !key->isAutoRepeat()) {
            // Pressed on the window counts; a release anywhere ends the hold (it may come while
            // the confirmation box has the focus).
            if (event->type() == QEvent::KeyRelease)
                m_held = false;
            else if (aimedAtGuarded(watched))
                m_held = m_pressed = true;
        }
        return aimedAtGuarded(watched);
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ShortcutOverride:
    case QEvent::Close:
        return aimedAtGuarded(watched);
    default:
        return false;
    }
}
