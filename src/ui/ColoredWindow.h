#pragma once

#include <QColor>
#include <QList>
#include <QPointer>
#include <QWidget>

// A secondary window that follows the colour scheme. Subclasses register their controls by the
// role they take: labels and option buttons the text colour, the window face the background,
// text fields and lists the field colours, buttons the button text colour.
class ColoredWindow : public QWidget {
    Q_OBJECT
public:
    using QWidget::QWidget;

    void SetColorText(const QColor& colour);
    void SetColorBackground(const QColor& colour);
    void SetColorFieldText(const QColor& colour);
    void SetColorFieldBackground(const QColor& colour);
    void SetColorButtonText(const QColor& colour);

protected:
    void addTextControl(QWidget* w) { m_text << w; }
    void addFieldControl(QWidget* w) { m_fields << w; }
    void addButtonControl(QWidget* w) { m_buttons << w; }

private:
    static void paint(const QList<QPointer<QWidget>>& controls, QPalette::ColorRole role,
                      const QColor& colour);

    QList<QPointer<QWidget>> m_text;
    QList<QPointer<QWidget>> m_fields;
    QList<QPointer<QWidget>> m_buttons;
};
