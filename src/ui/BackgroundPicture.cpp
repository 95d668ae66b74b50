#include "ui/BackgroundPicture.h"

#include <QEvent>
#include <QPainter>
#include <QWidget>

BackgroundPicture::BackgroundPicture(QWidget* target) : QObject(target), m_target(target) {
    target->installEventFilter(this);
}

void BackgroundPicture::load(const QString& path) {
    if (path.isEmpty()) {
        m_picture = QPixmap();
    } else {
        QPixmap loaded;
        if (!loaded.load(path))
            return;
        m_picture = loaded;
    }
    m_target->update();
}

bool BackgroundPicture::eventFilter(QObject* watched, QEvent* event) {
    // The widget's own background is already filled when its paint event arrives, so the picture
    // lands between the window colour and the child controls.
    if (watched == m_target && event->type() == QEvent::Paint && !m_picture.isNull()) {
        QPainter painter(m_target);
        painter.drawPixmap(0, 0, m_picture);
    }
    return QObject::eventFilter(watched, event);
}
