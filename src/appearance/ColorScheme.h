#pragma once

#include "appearance/ColorRoles.h"
#include "appearance/Rgb.h"

#include <QStringList>
#include <array>

// The working colour scheme: for each of the nine roles the red, green and blue component as
// text, exactly as the settings window edits them. Nothing is validated here; a text that is no
// number only fails when a colour is built from it.
class ColorScheme {
public:
    enum Component { Red, Green, Blue };

    // "Red", "Green" or "Blue" -> the component; -1 for any other name.
    static int componentOf(const QString& name);
    static QString componentName(Component c);

    // Splits a stored colour by position: characters 1-3, 5-7 and 9-11. A short or unpadded text
    // yields whatever those positions hold (possibly empty pieces).
    static std::array<QString, 3> splitColourText(const QString& text);
    // A component text as three zero-padded digits; a text that is no number stays as it is.
    static QString formatComponent(const QString& text);

    static ColorScheme builtIn();

    void setColourText(ColorRoles::Id role, const QString& text);
    // The stored form: the three components formatted "000" and joined by single blanks.
    QString colourText(ColorRoles::Id role) const;

    const QString& component(ColorRoles::Id role, Component c) const { return m_components[role][c]; }
    void setComponent(ColorRoles::Id role, Component c, const QString& text) { m_components[role][c] = text; }

    // Raises the conversion error for a component that is no number.
    Rgb rgb(ColorRoles::Id role) const;

    // One line per component in role order: "TextRed = 200", "TextGreen = 200", ...
    QStringList valueLines() const;

private:
    std::array<std::array<QString, 3>, ColorRoles::Count> m_components;
};
