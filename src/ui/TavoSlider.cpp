#include "ui/TavoSlider.h"

#include "appearance/Rgb.h"
#include "base/Checked.h"
#include "base/NumberText.h"
#include "base/RuntimeError.h"
#include "ui/SliderHost.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int kKnobUnits = 120; // knob width in horizontal units (8 pixels at the classic scale)
constexpr float kDeadBand = 5.0f;

QColor colourOf(const QVariant& value) {
    if (value.canConvert<QColor>() && value.metaType().id() == QMetaType::QColor)
        return value.value<QColor>();
    const Rgb rgb = Rgb::fromPacked(quint32(value.toLongLong()));
    return QColor(rgb.red, rgb.green, rgb.blue);
}

} // namespace

TavoSlider::TavoSlider(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("TavoSlider1"));
    setMinimumHeight(12);
    setAccessibleName(QStringLiteral("Songposition"));
    // Reached with Tab, not taken by a click: the playlist keeps the focus while the mouse seeks.
    setFocusPolicy(Qt::TabFocus);
    m_timer.setObjectName(QStringLiteral("TimerSlider"));
    m_timer.setInterval(20);
    connect(&m_timer, &QTimer::timeout, this, &TavoSlider::TimerSlider_Timer);
    m_timer.start();
}

void TavoSlider::SetValue(const QString& name, const QVariant& value) {
    if (name == QLatin1String("SliderWidth")) {
        m_width = Checked::toInt16(value.toLongLong());
    } else if (name == QLatin1String("LineBorderColor")) {
        m_lineColor = colourOf(value);
    } else if (name == QLatin1String("LineBorderWidth")) {
        m_lineWidth = Checked::toInt16(value.toLongLong());
    } else if (name == QLatin1String("ShapeBackFillColor")) {
        m_backColor = colourOf(value);
    } else if (name == QLatin1String("Shape1FillColor")) {
        m_knobColor = colourOf(value);
    } else if (name == QLatin1String("SliderMax")) {
        m_max = Checked::toInt16(value.toLongLong());
    } else if (name == QLatin1String("SliderValue")) {
        if (m_max == 0)
            throw RuntimeError(11, QStringLiteral("Division durch Null"));
        m_target = float(value.toDouble() * m_width / m_max);
        m_value = qint32(value.toLongLong());
    } else {
        return;
    }
    update();
}

void TavoSlider::TimerSlider_Timer() {
    const float knobSmoothing = 0.9f;
    const float targetSmoothing = 0.6f;
    const float p = m_knob;
    // Within the dead band (a distance of exactly 5 included) the knob counts as arrived.
    if (m_target - kDeadBand > p || m_target + kDeadBand < p) {
        m_smoothed = (1.0f - targetSmoothing) * m_target + targetSmoothing * m_smoothed;
        m_knob = (1.0f - knobSmoothing) * m_smoothed + knobSmoothing * p;
        update();
    }
}

float TavoSlider::unitsAt(double pixelX) const {
    return width() > 0 ? float(pixelX * m_width / width()) : 0.0f;
}

double TavoSlider::pixelsFor(float units) const {
    return m_width != 0 ? double(units) * width() / m_width : 0.0;
}

void TavoSlider::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), m_backColor); // ShapeBack
    // Line1: the groove through the middle (120 of 240 twips in the classic layout).
    QPen groove(m_lineColor);
    groove.setWidth(qMax(1, m_lineWidth));
    painter.setPen(groove);
    const int mid = height() / 2;
    painter.drawLine(0, mid, width(), mid);
    // Shape1: the knob.
    const double knobWidth = qMax(4.0, pixelsFor(kKnobUnits));
    const QRectF knob(pixelsFor(m_knob), 2, knobWidth, height() - 4);
    painter.fillRect(knob, m_knobColor);
}

void TavoSlider::mousePressEvent(QMouseEvent* event) {
    m_target = unitsAt(event->position().x());
    if (event->button() == Qt::LeftButton && m_host) {
        m_host->setMonitorEnabled(false);
        m_host->setHideScroll(true);
        m_host->setAllowTimeChange(true);
    }
}

void TavoSlider::mouseMoveEvent(QMouseEvent* event) {
    // Only with the left button alone, as the classic button code 1.
    if (event->buttons() == Qt::LeftButton)
        m_target = unitsAt(event->position().x());
}

void TavoSlider::mouseReleaseEvent(QMouseEvent* event) {
    // The release does not look at the button: a right click jumps as well.
    m_target = unitsAt(event->position().x());
    if (!m_host)
        return;
    m_host->setMonitorEnabled(true);
    m_host->setAllowTimeChange(false);
    // Single precision like the rest of the control's arithmetic. A knob let go beyond either end of
    // the track jumps to that end: mpv reads a negative position as counted back from the song's end.
    const float seconds = m_width != 0 ? float(m_max) * m_target / float(m_width) : 0.0f;
    const double rounded = NumberText::roundHalfEven(seconds, 0);
    m_host->jumpToTime(qint32(std::clamp(rounded, 0.0, double(qMax<qint16>(m_max, 0)))));
    m_host->setHideScroll(false);
    m_host->focusPlaylist();
    m_host->clearShownTitle();
}

void TavoSlider::seekTo(qint32 seconds) {
    seconds = std::clamp<qint32>(seconds, 0, m_max);
    if (m_width != 0 && m_max != 0)
        m_target = float(seconds) * float(m_width) / float(m_max);
    update();
    if (m_host) {
        m_host->jumpToTime(seconds);
        m_host->clearShownTitle();
    }
}

void TavoSlider::keyPressEvent(QKeyEvent* event) {
    // Five seconds a step, a minute with Page keys: the keyboard way to seek.
    int step = 0;
    switch (event->key()) {
    case Qt::Key_Left:
        step = -5;
        break;
    case Qt::Key_Right:
        step = 5;
        break;
    case Qt::Key_PageDown:
        step = -60;
        break;
    case Qt::Key_PageUp:
        step = 60;
        break;
    default:
        QWidget::keyPressEvent(event);
        return;
    }
    seekTo(m_value + step);
}
