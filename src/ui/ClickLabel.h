#pragma once

#include <QLabel>
#include <QMouseEvent>

// A caption that reacts to a click like the control it labels.
class ClickLabel : public QLabel {
    Q_OBJECT
public:
    using QLabel::QLabel;

signals:
    void clicked();

protected:
    void mouseReleaseEvent(QMouseEvent* event) override {
        if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
            emit clicked();
        QLabel::mouseReleaseEvent(event);
    }
};
