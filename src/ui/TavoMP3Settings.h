#pragma once

#include <QDialog>

class QLabel;

// The settings window. The main window opens it from its menu, and at start-up with a hint when
// the player path or the music folders were never set.
class TavoMP3Settings : public QDialog {
    Q_OBJECT
public:
    explicit TavoMP3Settings(QWidget* parent = nullptr);

    QLabel* FStatus = nullptr;
};
