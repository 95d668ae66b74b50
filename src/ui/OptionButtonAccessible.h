#pragma once

#include <QAccessibleWidget>

class QRadioButton;

// An option button as assistive technology sees it, with one difference to Qt's own: Press and
// Toggle click it. Qt's Toggle only moves the mark, so a priority chosen through a screen reader
// was shown as chosen but never set.
class OptionButtonAccessible : public QAccessibleWidget {
public:
    explicit OptionButtonAccessible(QRadioButton* button);

    QString text(QAccessible::Text t) const override;
    QAccessible::State state() const override;
    QStringList actionNames() const override;
    void doAction(const QString& actionName) override;
};
