#include "playlist/widgets/PlaylistKeyFilter.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QWidget>

bool PlaylistKeyFilter::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return QObject::eventFilter(watched, event);
    const auto* keyEvent = static_cast<QKeyEvent*>(event);
    const int key = keyEvent->key();
    const Qt::KeyboardModifiers mods = keyEvent->modifiers();
    if (m_quickSearchField && m_quickSearchField->isVisible() && !(mods & Qt::ControlModifier) &&
        (!keyEvent->text().isEmpty() || key == Qt::Key_Backspace)) {
        QKeyEvent copy(QEvent::KeyPress, key, mods, keyEvent->text(), keyEvent->isAutoRepeat(),
                       ushort(keyEvent->count()));
        QCoreApplication::sendEvent(m_quickSearchField, &copy);
        return true;
    }
    if (key == Qt::Key_Delete) {
        emit deletePressed();
        return true;
    }
    if (key == Qt::Key_F3) {
        emit searchAgainPressed();
        return true;
    }
    if (key == Qt::Key_A && (mods & Qt::ControlModifier)) {
        emit selectAllPressed();
        return true;
    }
    // Number-pad digits have key codes of their own and do not open the search.
    const bool digit = key >= Qt::Key_0 && key <= Qt::Key_9 && !(mods & Qt::KeypadModifier);
    const bool letter = key >= Qt::Key_A && key <= Qt::Key_Z;
    if (digit || letter) {
        emit quickSearchTyped(QString(QChar(key)));
        return true;
    }
    return QObject::eventFilter(watched, event);
}
