#include "ui/SkinControl.h"

#include "base/StatusLine.h"
#include "ui/Mnemonic.h"

#include <QEvent>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>

namespace {
// The caption sits one pixel right of and below the centre (20 twips in the classic layout), which
// reads as centred on a face lit from above.
constexpr int kLabelOffset = 1;
} // namespace

SkinControl::SkinControl(const QString& label, QWidget* parent) : QAbstractButton(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    picSkin = new QLabel(this);
    picSkin->setObjectName(QStringLiteral("picSkin"));
    BtnLabel = new QLabel(this);
    BtnLabel->setObjectName(QStringLiteral("BtnLabel"));
    BtnLabel->setAlignment(Qt::AlignCenter);
    // A little smaller than the window text, so that the longest caption fits the narrow faces.
    QFont small = BtnLabel->font();
    small.setPointSizeF(small.pointSizeF() * 0.9);
    BtnLabel->setFont(small);
    lblMessage = new QLabel(QStringLiteral("(Select Picture)"), this);
    lblMessage->setObjectName(QStringLiteral("lblMessage"));
    // The parts pass every mouse event on: the control raises them as its own.
    for (QLabel* part : {picSkin, BtnLabel, lblMessage}) {
        part->setAttribute(Qt::WA_TransparentForMouseEvents);
        part->setMouseTracking(true);
    }
    setLabel(label);
    connect(this, &QAbstractButton::pressed, this, &SkinControl::placeLabel);
    connect(this, &QAbstractButton::released, this, &SkinControl::placeLabel);
    refresh();
}

void SkinControl::setLabel(const QString& label) {
    setText(label);
    BtnLabel->setText(label);
    BtnLabel->adjustSize();
    setAccessibleName(Mnemonic::spoken(label));
    placeLabel();
}

QString SkinControl::label() const {
    return BtnLabel->text();
}

bool SkinControl::loadFace(const QString& path) {
    QPixmap face;
    if (path.isEmpty() || !face.load(path)) {
        if (m_status)
            m_status->setText(QStringLiteral("Fehler beim Laden von Button Bild \"") + path +
                              QStringLiteral("\"!"));
        return false;
    }
    setPicture(face);
    return true;
}

void SkinControl::setImage(const QString& path) {
    m_image = path;
    loadFace(path);
}

void SkinControl::setImageOver(const QString& path) {
    m_imageOver = path;
}

void SkinControl::setOver(bool over) {
    if (!over) {
        loadFace(m_image);
        m_over = false;
    } else if (!m_over) {
        loadFace(m_imageOver);
        m_over = true;
    }
}

void SkinControl::setForeColor(const QColor& colour) {
    QPalette p = BtnLabel->palette();
    p.setColor(QPalette::WindowText, colour);
    BtnLabel->setPalette(p);
}

QColor SkinControl::foreColor() const {
    return BtnLabel->palette().color(QPalette::WindowText);
}

void SkinControl::setMaskColor(const QColor& colour) {
    m_maskColor = colour;
    refresh();
}

void SkinControl::setChangeMask(bool on) {
    m_changeMask = on;
    refresh();
}

void SkinControl::setPicture(const QPixmap& picture) {
    m_picture = picture;
    refresh();
}

QRegion SkinControl::shapeRegion(const QImage& image, QRgb maskColour) {
    QRegion region;
    const QImage img = image.convertToFormat(QImage::Format_RGB32);
    const QRgb mask = maskColour | 0xFF000000u;
    const int width = img.width();
    for (int y = 0; y < img.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(img.constScanLine(y));
        int x = 0;
        while (x < width) {
            while (x < width && row[x] == mask)
                ++x;
            if (x >= width)
                break;
            const int start = x;
            while (x < width && row[x] != mask)
                ++x;
            region += QRect(start, y, x - start, 1);
        }
    }
    return region;
}

void SkinControl::refresh() {
    if (m_picture.isNull()) {
        lblMessage->show();
        lblMessage->adjustSize();
        picSkin->hide();
        m_shape = QRegion(rect());
        clearMask();
        placeLabel();
        return;
    }
    lblMessage->hide();
    picSkin->show();
    picSkin->setPixmap(m_picture);
    picSkin->resize(m_picture.size());
    setFixedSize(m_picture.size());
    placeLabel();
    if (m_changeMask) {
        m_shape = shapeRegion(m_picture.toImage(), m_maskColor.rgb());
        // An empty region would mean "no mask" to the window system; a region outside the control
        // hides it completely while it keeps its size.
        setMask(m_shape.isEmpty() ? QRegion(-1, -1, 1, 1) : m_shape);
    } else {
        m_shape = QRegion(rect());
        clearMask();
    }
    update();
}

void SkinControl::placeLabel() {
    BtnLabel->adjustSize();
    const QSize face = m_picture.isNull() ? size() : m_picture.size();
    const int shift = isDown() ? 1 : 0; // pressed: the caption sinks with the face
    BtnLabel->move((face.width() - BtnLabel->width()) / 2 + kLabelOffset + shift,
                   (face.height() - BtnLabel->height()) / 2 + kLabelOffset + shift);
    BtnLabel->raise();
}

QSize SkinControl::sizeHint() const {
    if (!m_picture.isNull())
        return m_picture.size();
    return BtnLabel->sizeHint().expandedTo(lblMessage->sizeHint()) + QSize(16, 8);
}

void SkinControl::paintEvent(QPaintEvent*) {
    // The face and the caption are the child parts; the control itself draws nothing.
}

void SkinControl::mousePressEvent(QMouseEvent* event) {
    emit MouseDown(event);
    QAbstractButton::mousePressEvent(event);
}

void SkinControl::mouseMoveEvent(QMouseEvent* event) {
    if (!m_over)
        setOver(true);
    emit MouseMove(event);
    QAbstractButton::mouseMoveEvent(event);
}

void SkinControl::mouseDoubleClickEvent(QMouseEvent* event) {
    emit DblClick();
    QAbstractButton::mouseDoubleClickEvent(event);
}

void SkinControl::keyPressEvent(QKeyEvent* event) {
    emit KeyDown(event);
    // Enter works like Space, as users expect of a push button.
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && !event->isAutoRepeat()) {
        animateClick();
        return;
    }
    QAbstractButton::keyPressEvent(event);
}

void SkinControl::keyReleaseEvent(QKeyEvent* event) {
    emit KeyUp(event);
    QAbstractButton::keyReleaseEvent(event);
}

void SkinControl::focusInEvent(QFocusEvent* event) {
    // The focus shows as an underlined caption: the face bitmap has no room for a focus frame.
    QFont f = BtnLabel->font();
    f.setUnderline(true);
    BtnLabel->setFont(f);
    placeLabel();
    QAbstractButton::focusInEvent(event);
}

void SkinControl::focusOutEvent(QFocusEvent* event) {
    QFont f = BtnLabel->font();
    f.setUnderline(false);
    BtnLabel->setFont(f);
    placeLabel();
    QAbstractButton::focusOutEvent(event);
}

void SkinControl::changeEvent(QEvent* event) {
    // The scheme paints the control's palette; the caption follows it.
    if (event->type() == QEvent::PaletteChange)
        setForeColor(palette().color(QPalette::ButtonText));
    QAbstractButton::changeEvent(event);
}
