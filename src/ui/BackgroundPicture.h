#pragma once

#include <QObject>
#include <QPixmap>

class QWidget;

// The background picture of a window: drawn at the top-left corner of the target widget,
// beneath its child controls, at its natural size (the picture is not stretched).
class BackgroundPicture : public QObject {
    Q_OBJECT
public:
    explicit BackgroundPicture(QWidget* target);

    // Loads the picture; "" removes it. A missing or unreadable file leaves the old picture.
    void load(const QString& path);
    const QPixmap& picture() const { return m_picture; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* m_target;
    QPixmap m_picture;
};
