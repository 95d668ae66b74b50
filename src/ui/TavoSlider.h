#pragma once

#include <QColor>
#include <QTimer>
#include <QVariant>
#include <QWidget>

class SliderHost;

// The song position slider: a track, a groove line and a knob that eases towards its target on
// a 20 ms timer. Positions are in the control's own horizontal units (the classic twips, 5000
// wide at start), scaled to the widget's pixel width when drawn and when the mouse is read.
class TavoSlider : public QWidget {
    Q_OBJECT
public:
    explicit TavoSlider(QWidget* parent = nullptr);

    void setHost(SliderHost* host) { m_host = host; }

    // "SliderWidth", "LineBorderColor", "LineBorderWidth", "ShapeBackFillColor", "Shape1FillColor",
    // "SliderMax", "SliderValue"; any other name does nothing. Colours are QColor or the packed
    // classic value; "SliderValue" with maximum 0 raises the division error.
    void SetValue(const QString& name, const QVariant& value);

    // One step of the easing (the TimerSlider tick).
    void TimerSlider_Timer();

    float target() const { return m_target; }
    float smoothedTarget() const { return m_smoothed; }
    float knobPosition() const { return m_knob; }
    qint16 maximum() const { return m_max; }
    // The last "SliderValue": the song position in seconds.
    qint32 value() const { return m_value; }
    // Jumps the player to `seconds` (clamped to 0..maximum) as a release of the knob there would.
    void seekTo(qint32 seconds);
    qint16 unitWidth() const { return m_width; }
    QTimer& timer() { return m_timer; }
    QColor shapeBackColor() const { return m_backColor; }
    QColor lineColor() const { return m_lineColor; }
    QColor knobColor() const { return m_knobColor; }

    // Pixel x -> horizontal units and back.
    float unitsAt(double pixelX) const;
    double pixelsFor(float units) const;

    QSize sizeHint() const override { return {391, 16}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    SliderHost* m_host = nullptr;
    QTimer m_timer;
    float m_target = 0;
    float m_smoothed = 0;
    float m_knob = 0;
    qint16 m_max = 0;
    qint32 m_value = 0;
    qint16 m_width = 5000;
    int m_lineWidth = 1;
    QColor m_backColor = QColor(0, 0, 0);
    QColor m_lineColor = QColor(0, 64, 0);
    QColor m_knobColor = QColor(0, 160, 0);
};
