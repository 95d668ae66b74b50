#pragma once

#include "ui/ColoredWindow.h"

class QLabel;
class QLineEdit;
class QPushButton;

// The ID3 tag window: the file's path and its tag fields. It shows the tag read-only; its buttons
// do nothing.
class TavoMP3ID3 : public ColoredWindow {
    Q_OBJECT
public:
    explicit TavoMP3ID3(QWidget* parent = nullptr);

    // Fills the path field and the tag fields of that file (empty when it has no tag).
    void showFile(const QString& path);

    QLineEdit* FFile = nullptr;
    QLineEdit* FTitle = nullptr;
    QLineEdit* FArtist = nullptr;
    QLineEdit* FAlbum = nullptr;
    QLineEdit* FYear = nullptr;
    QLineEdit* FCategory = nullptr;
    QLineEdit* FTrack = nullptr;
    QLineEdit* FComment = nullptr;
    QLabel* LTagVersion = nullptr;
    QPushButton* BSave = nullptr;
    QPushButton* BClose = nullptr;
};
