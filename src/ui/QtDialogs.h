#pragma once

#include "base/Dialogs.h"

class QWidget;

// The Dialogs seam with real Qt message boxes and file dialogs (German through Qt's translations).
class QtDialogs : public Dialogs {
public:
    explicit QtDialogs(QWidget* parent = nullptr) : m_parent(parent) {}
    void setParent(QWidget* parent) { m_parent = parent; }

    Answer message(const QString& text, const QString& title = QString(), Buttons buttons = Buttons::Ok,
                   Icon icon = Icon::None, int defaultButton = 1) override;
    std::optional<QString> openFile(const FileRequest& request) override;
    std::optional<QString> saveFile(const FileRequest& request) override;

    // "Playlisten (*.txt)| *.txt" -> "Playlisten (*.txt)"; pairs are joined with ";;".
    static QString qtFilter(const QString& classicFilter);

private:
    QWidget* m_parent;
};
