#include "ui/MenuItemAccessible.h"
#include "ui/Mnemonic.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

MenuItemAccessible::MenuItemAccessible(QAction* action, QWidget* owner) : m_action(action), m_owner(owner) {
}

bool MenuItemAccessible::isValid() const {
    return m_action && m_owner;
}

QObject* MenuItemAccessible::object() const {
    return m_action;
}

QWindow* MenuItemAccessible::window() const {
    return m_owner ? m_owner->windowHandle() : nullptr;
}

QAccessibleInterface* MenuItemAccessible::parent() const {
    return QAccessible::queryAccessibleInterface(m_owner.data());
}

QAccessibleInterface* MenuItemAccessible::child(int) const {
    return nullptr;
}

int MenuItemAccessible::childCount() const {
    return 0;
}

int MenuItemAccessible::indexOfChild(const QAccessibleInterface*) const {
    return -1;
}

QAccessibleInterface* MenuItemAccessible::childAt(int, int) const {
    return nullptr;
}

QString MenuItemAccessible::text(QAccessible::Text t) const {
    if (!m_action)
        return QString();
    switch (t) {
    case QAccessible::Name:
        return Mnemonic::spoken(m_action->text());
    case QAccessible::Description:
        return m_action->objectName();
    case QAccessible::Accelerator:
        return m_action->shortcut().toString(QKeySequence::NativeText);
    default:
        return QString();
    }
}

void MenuItemAccessible::setText(QAccessible::Text, const QString&) {
}

QRect MenuItemAccessible::rect() const {
    QRect local;
    if (auto* menu = qobject_cast<QMenu*>(m_owner.data()))
        local = menu->actionGeometry(m_action);
    else if (auto* bar = qobject_cast<QMenuBar*>(m_owner.data()))
        local = bar->actionGeometry(m_action);
    if (!local.isValid() || !m_owner)
        return QRect();
    return QRect(m_owner->mapToGlobal(local.topLeft()), local.size());
}

QAccessible::Role MenuItemAccessible::role() const {
    return m_action && m_action->isSeparator() ? QAccessible::Separator : QAccessible::MenuItem;
}

QAccessible::State MenuItemAccessible::state() const {
    QAccessible::State s;
    if (!m_action || !m_owner) {
        s.invalid = true;
        return s;
    }
    s.focusable = true;
    s.disabled = !m_action->isEnabled();
    s.invisible = !m_action->isVisible() || !m_owner->isVisible();
    s.offscreen = s.invisible;
    s.checkable = m_action->isCheckable();
    s.checked = m_action->isChecked();
    if (auto* menu = qobject_cast<QMenu*>(m_owner.data()))
        s.focused = menu->activeAction() == m_action;
    return s;
}

void* MenuItemAccessible::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
}

QStringList MenuItemAccessible::actionNames() const {
    if (!m_action || !m_action->isEnabled())
        return {};
    return {m_action->isCheckable() ? toggleAction() : pressAction()};
}

void MenuItemAccessible::doAction(const QString& actionName) {
    if (!m_action || !m_action->isEnabled())
        return;
    if (actionName == pressAction() || actionName == toggleAction()) {
        // Like a click on the entry: the menu closes, then the entry's command runs.
        if (auto* menu = qobject_cast<QMenu*>(m_owner.data()))
            menu->hide();
        m_action->trigger();
    }
}

QStringList MenuItemAccessible::keyBindingsForAction(const QString&) const {
    return {};
}
