#pragma once

#include <QAccessibleWidget>

class TavoSlider;

// The position slider as screen readers and desktop scripts see it: a slider whose value is the
// song position in seconds, from 0 to the song length; setting the value seeks.
class TavoSliderAccessible : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit TavoSliderAccessible(TavoSlider* slider);

    void* interface_cast(QAccessible::InterfaceType type) override;

    QVariant currentValue() const override;
    void setCurrentValue(const QVariant& value) override;
    QVariant maximumValue() const override;
    QVariant minimumValue() const override;
    QVariant minimumStepSize() const override;

private:
    TavoSlider* slider() const;
};
