#pragma once

#include <QList>
#include <QMenu>

class QAction;

// The submenu "Priorität &setzen" with the items MenuSetPrio, Index 0..5 ("&5 = normal" .. "&0 = nie").
// Used by the main list's context menu and by the tray menu.
class PriorityMenu : public QMenu {
    Q_OBJECT
public:
    explicit PriorityMenu(QWidget* parent = nullptr);

    QList<QAction*> MenuSetPrio;

signals:
    // The Index of the item; the priority it stands for is 5 - index.
    void prioIndexTriggered(int index);
};
