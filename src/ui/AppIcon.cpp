#include "ui/AppIcon.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace AppIcon {

QPixmap draw(int size) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    const qreal s = size / 32.0;
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0, 64, 128));
    p.drawRoundedRect(QRectF(1 * s, 1 * s, 30 * s, 30 * s), 6 * s, 6 * s);
    // A beamed pair of notes.
    p.setBrush(QColor(255, 210, 0));
    p.drawEllipse(QRectF(6 * s, 19 * s, 8 * s, 6 * s));
    p.drawEllipse(QRectF(18 * s, 16 * s, 8 * s, 6 * s));
    p.drawRect(QRectF(12 * s, 7 * s, 2 * s, 15 * s));
    p.drawRect(QRectF(24 * s, 4 * s, 2 * s, 15 * s));
    QPainterPath beam;
    beam.moveTo(12 * s, 7 * s);
    beam.lineTo(26 * s, 4 * s);
    beam.lineTo(26 * s, 8 * s);
    beam.lineTo(12 * s, 11 * s);
    beam.closeSubpath();
    p.drawPath(beam);
    return pixmap;
}

QIcon make() {
    QIcon icon;
    for (int size : {16, 22, 32, 48, 64})
        icon.addPixmap(draw(size));
    return icon;
}

} // namespace AppIcon
