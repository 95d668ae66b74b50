#pragma once

#include <QAbstractButton>
#include <QColor>
#include <QRegion>

class QLabel;
class StatusLine;

// The bitmap push button of the main window and several secondary windows: a face bitmap with
// the caption on top, a second bitmap while the mouse is over it, and a window shape cut from
// the bitmap by a mask colour. It is a real button for keyboard and screen-reader users: it takes
// the focus, Space clicks it, and its accessible name is the caption.
class SkinControl : public QAbstractButton {
    Q_OBJECT
public:
    explicit SkinControl(const QString& label = QString(), QWidget* parent = nullptr);

    QLabel* picSkin = nullptr;    // shows the face bitmap
    QLabel* BtnLabel = nullptr;   // the caption
    QLabel* lblMessage = nullptr; // "(Select Picture)" while no face is set

    void setLabel(const QString& label);
    QString label() const;
    // Paths of the normal and the hover face; setting Image loads and shows it.
    void setImage(const QString& path);
    void setImageOver(const QString& path);
    const QString& image() const { return m_image; }
    const QString& imageOver() const { return m_imageOver; }

    bool Over() const { return m_over; }
    // Off shows the normal face again; the owner does this when the mouse moves over its own area.
    void setOver(bool over);

    void setForeColor(const QColor& colour);
    QColor foreColor() const;
    QColor MaskColor() const { return m_maskColor; }
    void setMaskColor(const QColor& colour);
    bool ChangeMask() const { return m_changeMask; }
    void setChangeMask(bool on);
    const QPixmap& Picture() const { return m_picture; }
    void setPicture(const QPixmap& picture);
    void setMousePointer(const QCursor& cursor) { setCursor(cursor); }

    // Where loading errors are reported ("Fehler beim Laden von Button Bild ...").
    void setStatusLine(StatusLine* status) { m_status = status; }

    // The union of the horizontal runs of pixels that differ from the mask colour.
    static QRegion shapeRegion(const QImage& image, QRgb maskColour);
    // The shape the control applies: empty when every pixel is the mask colour.
    const QRegion& shape() const { return m_shape; }

    QSize sizeHint() const override;

signals:
    void DblClick();
    void MouseDown(QMouseEvent* event);
    void MouseMove(QMouseEvent* event);
    void KeyDown(QKeyEvent* event);
    void KeyUp(QKeyEvent* event);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    bool loadFace(const QString& path);
    void refresh();
    void placeLabel();

    QString m_image;
    QString m_imageOver;
    QPixmap m_picture;
    bool m_over = false;
    QColor m_maskColor = QColor(255, 0, 255);
    bool m_changeMask = true;
    QRegion m_shape;
    StatusLine* m_status = nullptr;
};
