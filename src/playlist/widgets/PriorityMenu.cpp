#include "playlist/widgets/PriorityMenu.h"

#include "playlist/PlaylistEntryEditor.h"

#include <QAction>

PriorityMenu::PriorityMenu(QWidget* parent) : QMenu(QStringLiteral("Priorität &setzen"), parent) {
    setObjectName(QStringLiteral("MenuSetPrioHead"));
    const QStringList captions = PlaylistEntryEditor::priorityMenuCaptions();
    for (int i = 0; i < captions.size(); ++i) {
        QAction* item = addAction(captions.at(i));
        item->setObjectName(QStringLiteral("MenuSetPrio(%1)").arg(i));
        MenuSetPrio.append(item);
        connect(item, &QAction::triggered, this, [this, i] { emit prioIndexTriggered(i); });
    }
}
