#include "ui/TavoxMiniDiagram.h"

#include "base/NumberText.h"

#include <QLabel>
#include <QPainter>
#include <cmath>

namespace {

constexpr double kTwipsPerPixel = 15.0;
constexpr int kWidthTwips = 1440;
constexpr int kHeightTwips = 1000;
constexpr int kLabelRight = 330;
constexpr int kBarPixels = 3;

int px(double twips) {
    return int(std::lround(twips / kTwipsPerPixel));
}

struct AxisLabel {
    const char* name;
    const char* text;
    int lineIndex;
};
constexpr AxisLabel kAxis[5] = {
    {"Label1", "32", 1},   {"Label2", "64", 5},   {"Label3", "112", 8},
    {"Label4", "192", 11}, {"Label5", "320", 14},
};

} // namespace

TavoxMiniDiagram::TavoxMiniDiagram(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("TavoxMiniDiagram"));
    setAccessibleName(QStringLiteral("Bitrate-Verteilung"));
    m_lineEnd.fill(kStubEnd);
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(8);
    for (std::size_t i = 0; i < m_labels.size(); ++i) {
        auto* label = new QLabel(QLatin1String(kAxis[i].text), this);
        label->setObjectName(QLatin1String(kAxis[i].name));
        label->setFont(font);
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        const int y = px(lineY(kAxis[i].lineIndex));
        label->setGeometry(1, y - 5, px(kLabelRight) - 1, 10);
        m_labels[i] = label;
    }
    setFixedSize(sizeHint());
    applyLabelColors();
}

QSize TavoxMiniDiagram::sizeHint() const {
    return {px(kWidthTwips), px(kHeightTwips)};
}

void TavoxMiniDiagram::SetMiniDiagram(const std::array<qint32, 16>& Histogram) {
    qint32 max = 0;
    for (int i = 1; i <= kClasses; ++i)
        max = qMax(max, Histogram[std::size_t(i)]);
    if (max == 0)
        return;
    m_counts = Histogram;
    for (int i = 1; i <= kClasses; ++i) {
        // Halves go to the even neighbour (the default rounding mode).
        const double length = std::nearbyint(double(Histogram[std::size_t(i)]) * kFullLength / max);
        m_lineEnd[std::size_t(i - 1)] = kStubEnd + int(length);
    }
    update();
}

QColor TavoxMiniDiagram::fromColorNumber(float color) {
    const auto value = qint64(NumberText::roundHalfEven(double(color), 0));
    return QColor(int(value & 0xFF), int((value >> 8) & 0xFF), int((value >> 16) & 0xFF));
}

void TavoxMiniDiagram::SetTextColor(float color) {
    m_text = fromColorNumber(color);
    applyLabelColors();
    update();
}

void TavoxMiniDiagram::SetBackgroundColor(float color) {
    m_background = fromColorNumber(color);
    update();
}

void TavoxMiniDiagram::applyLabelColors() {
    for (QLabel* label : m_labels) {
        QPalette p = label->palette();
        p.setColor(QPalette::WindowText, m_text);
        label->setPalette(p);
    }
}

void TavoxMiniDiagram::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    // Shape1: the frame, filled with the background colour.
    painter.fillRect(rect(), m_background);
    painter.setPen(QColor(128, 128, 128));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    for (int i = 1; i <= kClasses; ++i) {
        const int x1 = px(kLineStart);
        const int x2 = px(lineEnd(i));
        const int y = px(lineY(i));
        if (x2 > x1)
            painter.fillRect(QRect(x1, y - kBarPixels / 2, x2 - x1, kBarPixels), m_text);
    }
}

QString TavoxMiniDiagram::describe() const {
    // MPEG-1 Layer III rates of the classes the bars show, 1..14.
    static constexpr int kKbps[kClasses] = {32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};
    qint64 total = 0;
    for (int i = 1; i <= kClasses; ++i)
        total += m_counts[std::size_t(i)];
    if (total == 0)
        return QString();
    QStringList parts;
    for (int i = kClasses; i >= 1; --i) {
        const qint32 count = m_counts[std::size_t(i)];
        if (count == 0)
            continue;
        const auto percent = qint64(NumberText::roundHalfEven(100.0 * count / double(total), 0));
        parts << QStringLiteral("%1 kbps: %2 %").arg(kKbps[i - 1]).arg(percent);
    }
    return parts.join(QStringLiteral(", "));
}
