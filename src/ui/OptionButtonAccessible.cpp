#include "ui/OptionButtonAccessible.h"

#include "ui/Mnemonic.h"

#include <QRadioButton>

OptionButtonAccessible::OptionButtonAccessible(QRadioButton* button)
    : QAccessibleWidget(button, QAccessible::RadioButton) {
}

QString OptionButtonAccessible::text(QAccessible::Text t) const {
    const QString own = QAccessibleWidget::text(t);
    if (t != QAccessible::Name || !own.isEmpty())
        return own;
    return Mnemonic::spoken(static_cast<QRadioButton*>(widget())->text());
}

QAccessible::State OptionButtonAccessible::state() const {
    QAccessible::State s = QAccessibleWidget::state();
    s.checkable = true;
    s.checked = static_cast<QRadioButton*>(widget())->isChecked();
    return s;
}

QStringList OptionButtonAccessible::actionNames() const {
    if (!widget()->isEnabled())
        return QAccessibleWidget::actionNames();
    return QStringList{pressAction(), toggleAction()} + QAccessibleWidget::actionNames();
}

void OptionButtonAccessible::doAction(const QString& actionName) {
    if (actionName != pressAction() && actionName != toggleAction()) {
        QAccessibleWidget::doAction(actionName);
        return;
    }
    if (!widget()->isEnabled())
        return;
    // Queued: what the click starts must not hold the caller on the accessibility bus.
    QMetaObject::invokeMethod(static_cast<QRadioButton*>(widget()), &QAbstractButton::click,
                              Qt::QueuedConnection);
}
