#include "ui/TavoSliderAccessible.h"

#include "ui/TavoSlider.h"

TavoSliderAccessible::TavoSliderAccessible(TavoSlider* slider)
    : QAccessibleWidget(slider, QAccessible::Slider) {
}

void* TavoSliderAccessible::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::ValueInterface)
        return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

TavoSlider* TavoSliderAccessible::slider() const {
    return static_cast<TavoSlider*>(widget());
}

QVariant TavoSliderAccessible::currentValue() const {
    return slider()->value();
}

void TavoSliderAccessible::setCurrentValue(const QVariant& value) {
    slider()->seekTo(value.toInt());
}

QVariant TavoSliderAccessible::maximumValue() const {
    return int(slider()->maximum());
}

QVariant TavoSliderAccessible::minimumValue() const {
    return 0;
}

QVariant TavoSliderAccessible::minimumStepSize() const {
    return 1;
}
