#include "appearance/ColorScheme.h"

#include "base/Checked.h"
#include "base/NumberText.h"
#include "base/RuntimeError.h"

int ColorScheme::componentOf(const QString& name) {
    for (int c = Red; c <= Blue; ++c)
        if (name == componentName(Component(c)))
            return c;
    return -1;
}

QString ColorScheme::componentName(Component c) {
    switch (c) {
    case Red:
        return QStringLiteral("Red");
    case Green:
        return QStringLiteral("Green");
    case Blue:
        return QStringLiteral("Blue");
    }
    return {};
}

std::array<QString, 3> ColorScheme::splitColourText(const QString& text) {
    // QString::mid gives an empty or shortened piece past the end, as the classic Mid does.
    return {text.mid(0, 3), text.mid(4, 3), text.mid(8, 3)};
}

QString ColorScheme::formatComponent(const QString& text) {
    double value = 0;
    try {
        value = Checked::toNumber(text);
    } catch (const RuntimeError&) {
        return text;
    }
    const double whole = NumberText::roundHalfEven(value, 0);
    const QString digits = QString::number(qAbs(qint64(whole))).rightJustified(3, QLatin1Char('0'));
    return whole < 0 ? QLatin1Char('-') + digits : digits;
}

ColorScheme ColorScheme::builtIn() {
    ColorScheme scheme;
    for (const ColorRoles::Role& r : ColorRoles::all())
        scheme.setColourText(r.id, r.builtIn);
    return scheme;
}

void ColorScheme::setColourText(ColorRoles::Id role, const QString& text) {
    m_components[role] = splitColourText(text);
}

QString ColorScheme::colourText(ColorRoles::Id role) const {
    const auto& c = m_components[role];
    return formatComponent(c[Red]) + QLatin1Char(' ') + formatComponent(c[Green]) + QLatin1Char(' ') +
           formatComponent(c[Blue]);
}

Rgb ColorScheme::rgb(ColorRoles::Id role) const {
    const auto& c = m_components[role];
    return Rgb::fromComponentTexts(c[Red], c[Green], c[Blue]);
}

QStringList ColorScheme::valueLines() const {
    QStringList lines;
    for (const ColorRoles::Role& r : ColorRoles::all())
        for (int c = Red; c <= Blue; ++c)
            lines.append(r.key + componentName(Component(c)) + QStringLiteral(" = ") + m_components[r.id][c]);
    return lines;
}
