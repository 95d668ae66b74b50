#pragma once

#include "ui/ColoredWindow.h"

class QLabel;

// "About": title, dates, web address and the version of this build.
class TavoMP3About : public ColoredWindow {
    Q_OBJECT
public:
    explicit TavoMP3About(QWidget* parent = nullptr);

    QLabel* Title = nullptr;
    QLabel* Date = nullptr;
    QLabel* BeginDate = nullptr;
    QLabel* Website = nullptr;
    QLabel* Version = nullptr;

    static QString versionText();
};
