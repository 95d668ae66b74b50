#pragma once

#include <QLabel>

// A label whose text never widens its window: a text longer than the room the layout gives it is
// shown shortened with "…" where the elide mode says (the status line keeps its newest, right end).
// text() and what assistive technology reads stay the whole text. Plain text only.
class ElidedLabel : public QLabel {
    Q_OBJECT
public:
    explicit ElidedLabel(Qt::TextElideMode mode, QWidget* parent = nullptr, const QString& text = QString());

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Qt::TextElideMode m_mode;
};
