#include "ui/SkinControlAccessible.h"

#include "ui/SkinControl.h"

SkinControlAccessible::SkinControlAccessible(SkinControl* button)
    : QAccessibleWidget(button, QAccessible::Button) {
}

QStringList SkinControlAccessible::actionNames() const {
    if (!widget()->isEnabled())
        return QAccessibleWidget::actionNames();
    return QStringList{pressAction()} + QAccessibleWidget::actionNames();
}

void SkinControlAccessible::doAction(const QString& actionName) {
    if (actionName != pressAction()) {
        QAccessibleWidget::doAction(actionName);
        return;
    }
    if (!widget()->isEnabled())
        return;
    // Queued: a click that opens a dialog must not hold the caller on the accessibility bus.
    QMetaObject::invokeMethod(static_cast<SkinControl*>(widget()), &QAbstractButton::click,
                              Qt::QueuedConnection);
}
