#include "ui/AccessibleFactory.h"

#include "ui/AutomationIds.h"
#include "ui/MenuItemAccessible.h"
#include "ui/MiniDiagramAccessible.h"
#include "ui/OptionButtonAccessible.h"
#include "ui/SkinControl.h"
#include "ui/SkinControlAccessible.h"
#include "ui/TavoSlider.h"
#include "ui/TavoSliderAccessible.h"
#include "ui/TavoxMiniDiagram.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QRadioButton>

namespace AccessibleFactory {

QAccessibleInterface* create(const QString& className, QObject* object) {
    if (className == QLatin1String("SkinControl"))
        return new SkinControlAccessible(static_cast<SkinControl*>(object));
    if (className == QLatin1String("TavoSlider"))
        return new TavoSliderAccessible(static_cast<TavoSlider*>(object));
    if (className == QLatin1String("TavoxMiniDiagram"))
        return new MiniDiagramAccessible(static_cast<TavoxMiniDiagram*>(object));
    if (className == QLatin1String("QRadioButton"))
        return new OptionButtonAccessible(static_cast<QRadioButton*>(object));
    if (className == QLatin1String("QAction") && AutomationIds::enabled()) {
        auto* action = static_cast<QAction*>(object);
        // Entries that open a submenu and unnamed ones stay Qt's own.
        if (action->menu<QMenu*>() || action->objectName().isEmpty())
            return nullptr;
        for (QObject* owner : action->associatedObjects())
            if (qobject_cast<QMenu*>(owner) || qobject_cast<QMenuBar*>(owner))
                return new MenuItemAccessible(action, static_cast<QWidget*>(owner));
    }
    return nullptr;
}

void install() {
    static bool installed = false;
    if (installed)
        return;
    installed = true;
    QAccessible::installFactory(&create);
}

} // namespace AccessibleFactory
