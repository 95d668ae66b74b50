#pragma once

#include "ui/ColoredWindow.h"

class QPushButton;
class QTreeView;
class QFileSystemModel;

// The folder-tree window of the settings window's "hinzufügen...". It lets the user look through the
// folders; its OK button does nothing: directories are typed into the settings window.
class TavoMp3Tree : public ColoredWindow {
    Q_OBJECT
public:
    explicit TavoMp3Tree(QWidget* parent = nullptr);

    QTreeView* FTree = nullptr;
    QPushButton* BOK = nullptr;

private:
    QFileSystemModel* m_model = nullptr;
};
