#pragma once

#include "ui/ColoredWindow.h"

class QPlainTextEdit;

// "Tavo MP3 Player! News": the version history in one read-only text box.
class TavoMP3News : public ColoredWindow {
    Q_OBJECT
public:
    explicit TavoMP3News(QWidget* parent = nullptr);

    QPlainTextEdit* FHistory = nullptr;
    // The text exactly as filled in, CR LF line ends included (the box shows plain line breaks).
    const QString& historyText() const { return m_text; }

private:
    QString m_text;
};
