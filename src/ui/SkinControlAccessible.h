#pragma once

#include <QAccessibleWidget>

class SkinControl;

// A skin button is one push button to assistive technology: its caption is its name, Press clicks
// it. The face picture and the caption label inside it are how it is drawn, not parts to visit.
class SkinControlAccessible : public QAccessibleWidget {
public:
    explicit SkinControlAccessible(SkinControl* button);

    int childCount() const override { return 0; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }

    QStringList actionNames() const override;
    void doAction(const QString& actionName) override;
};
