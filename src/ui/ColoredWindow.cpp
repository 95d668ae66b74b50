#include "ui/ColoredWindow.h"

#include <QAbstractScrollArea>

void ColoredWindow::paint(const QList<QPointer<QWidget>>& controls, QPalette::ColorRole role,
                          const QColor& colour) {
    for (QWidget* w : controls) {
        if (!w)
            continue;
        QPalette p = w->palette();
        p.setColor(role, colour);
        w->setPalette(p);
        if (role == QPalette::Base) {
            if (auto* area = qobject_cast<QAbstractScrollArea*>(w))
                area->viewport()->setPalette(p);
        }
    }
}

void ColoredWindow::SetColorText(const QColor& colour) {
    paint(m_text, QPalette::WindowText, colour);
}

void ColoredWindow::SetColorBackground(const QColor& colour) {
    QPalette p = palette();
    p.setColor(QPalette::Window, colour);
    setPalette(p);
    setAutoFillBackground(true);
}

void ColoredWindow::SetColorFieldText(const QColor& colour) {
    paint(m_fields, QPalette::Text, colour);
}

void ColoredWindow::SetColorFieldBackground(const QColor& colour) {
    paint(m_fields, QPalette::Base, colour);
}

void ColoredWindow::SetColorButtonText(const QColor& colour) {
    paint(m_buttons, QPalette::ButtonText, colour);
}
