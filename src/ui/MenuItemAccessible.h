#pragma once

#include <QAccessibleInterface>
#include <QPointer>

class QAction;
class QWidget;

// A menu entry that also tells its design name (MenuPrev(3), MenuSetPrio(2)) as its description.
// Qt's own menu entries carry no description, so desktop scripts could only go by captions, which
// change (the history menu shows song names). Used only while design names are switched on.
class MenuItemAccessible : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    MenuItemAccessible(QAction* action, QWidget* owner);

    bool isValid() const override;
    QObject* object() const override;
    QWindow* window() const override;
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int index) const override;
    int childCount() const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QString text(QAccessible::Text t) const override;
    void setText(QAccessible::Text t, const QString& text) override;
    QRect rect() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    QStringList actionNames() const override;
    void doAction(const QString& actionName) override;
    QStringList keyBindingsForAction(const QString& actionName) const override;

private:
    QPointer<QAction> m_action;
    QPointer<QWidget> m_owner;
};
