#include "ui/MiniDiagramAccessible.h"

#include "ui/TavoxMiniDiagram.h"

MiniDiagramAccessible::MiniDiagramAccessible(QWidget* diagram)
    : QAccessibleWidget(diagram, QAccessible::Graphic) {
}

QString MiniDiagramAccessible::text(QAccessible::Text t) const {
    // A design name given for desktop scripts wins; otherwise the description is the diagram itself.
    if (t == QAccessible::Description && widget()->accessibleDescription().isEmpty()) {
        const QString shown = static_cast<const TavoxMiniDiagram*>(widget())->describe();
        return shown.isEmpty() ? QStringLiteral("Noch kein Song gewählt") : shown;
    }
    return QAccessibleWidget::text(t);
}
