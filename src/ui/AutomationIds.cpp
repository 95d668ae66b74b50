#include "ui/AutomationIds.h"

#include <QWidget>

namespace AutomationIds {

bool enabled() {
    return qEnvironmentVariable(kVariable) == QLatin1String("1");
}

void apply(QWidget* window) {
    if (!enabled() || !window)
        return;
    auto describe = [](QWidget* w) {
        const QString name = w->objectName();
        // Qt's own helper widgets (qt_scrollarea_viewport, …) are no design controls.
        if (!name.isEmpty() && !name.startsWith(QLatin1String("qt_")))
            w->setAccessibleDescription(name);
    };
    describe(window);
    for (QWidget* child : window->findChildren<QWidget*>())
        describe(child);
}

} // namespace AutomationIds
