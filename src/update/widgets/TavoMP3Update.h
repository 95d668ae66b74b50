#pragma once

#include "ui/ColoredWindow.h"
#include "update/UpdateCheck.h"

class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
struct Services;

// The update window: welcome text, the log FLog, the download's progress and time-out counter,
// "&Start" and "&Abbrechen". The work is done by UpdateCheck.
class TavoMP3Update : public ColoredWindow {
    Q_OBJECT
public:
    TavoMP3Update(Services& services, UpdateConfig config, QWidget* parent = nullptr);

    UpdateCheck& check() { return m_check; }

    QLabel* LWelcome = nullptr;
    QPlainTextEdit* FLog = nullptr;
    QProgressBar* ProgressBar = nullptr;
    QLabel* ProgressInfo = nullptr;
    QLabel* ProgressPercent = nullptr;
    QLabel* LTimeoutCaption = nullptr;
    QLabel* LTimeout = nullptr;
    QPushButton* BStart = nullptr;
    QPushButton* BCancel = nullptr;

    static QString welcomeText();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildLayout();
    void showLog(const QString& text);

    UpdateCheck m_check;
};
