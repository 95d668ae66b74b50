#include "ui/ElidedLabel.h"

#include <QPainter>
#include <QStyle>

namespace {
// A short text asks for its own width; a long one no more than this, the rest of the room is the layout's.
constexpr int kWidestHint = 320;
} // namespace

ElidedLabel::ElidedLabel(Qt::TextElideMode mode, QWidget* parent, const QString& text)
    : QLabel(text, parent), m_mode(mode) {
    setTextFormat(Qt::PlainText);
}

QSize ElidedLabel::sizeHint() const {
    const QSize natural = QLabel::sizeHint();
    return {qMin(natural.width(), kWidestHint), natural.height()};
}

QSize ElidedLabel::minimumSizeHint() const {
    return {0, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent* event) {
    const QRect room = contentsRect().adjusted(margin(), margin(), -margin(), -margin());
    const QFontMetrics metrics = fontMetrics();
    if (metrics.horizontalAdvance(text()) <= room.width()) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    drawFrame(&painter);
    style()->drawItemText(&painter, room, QStyle::visualAlignment(layoutDirection(), alignment()), palette(),
                          isEnabled(), metrics.elidedText(text(), m_mode, room.width()), foregroundRole());
}
