#pragma once

#include <QColor>
#include <QWidget>
#include <array>

class QLabel;

// The small bar chart of one song's bit-rate distribution: one horizontal bar per MPEG bit-rate
// class 1..14 (32 kbit/s at the bottom, 320 at the top), each scaled to the largest class.
// Geometry is kept in twips as laid out (15 twips to a pixel); bars start at 360 with a 20-twip
// stub and are at most 940 twips longer.
class TavoxMiniDiagram : public QWidget {
    Q_OBJECT
public:
    static constexpr int kClasses = 14;
    static constexpr int kLineStart = 360;
    static constexpr int kStubEnd = 380;
    static constexpr int kFullLength = 940;

    explicit TavoxMiniDiagram(QWidget* parent = nullptr);

    // Redraws the bars from the 16 counts of the information call (classes 0 and 15 are not
    // shown). All of classes 1..14 empty: the bars stay as they were.
    void SetMiniDiagram(const std::array<qint32, 16>& Histogram);
    // Colours as the classic colour number (0x00BBGGRR) in a single-precision value.
    void SetTextColor(float color);
    void SetBackgroundColor(float color);

    // Right end X2 of xLine(index), index 1..14, in twips.
    int lineEnd(int index) const { return m_lineEnd.at(std::size_t(index - 1)); }
    // Height Y1 = Y2 of xLine(index) in twips.
    static int lineY(int index) { return 890 - (index - 1) * 60; }
    // What the bars show, in words: "128 kbps: 90 %, 160 kbps: 10 %"; "" before the first song.
    QString describe() const;
    QColor textColor() const { return m_text; }
    QColor backgroundColor() const { return m_background; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::array<qint32, 16> m_counts{};
    static QColor fromColorNumber(float color);
    void applyLabelColors();

    std::array<int, kClasses> m_lineEnd;
    std::array<QLabel*, 5> m_labels{};
    QColor m_text{0, 255, 0};
    QColor m_background{Qt::black};
};
