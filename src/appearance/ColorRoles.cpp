#include "appearance/ColorRoles.h"

namespace ColorRoles {

const std::array<Role, Count>& all() {
    // The two default columns differ on purpose: a numbered preset that lacks a key gets the
    // grey classic look, while the built-in preset is the dark display look.
    static const std::array<Role, Count> roles{{
        {Text, QStringLiteral("Text"), QStringLiteral("Text"), QStringLiteral("200 200 000"),
         QStringLiteral("000 000 000")},
        {Background, QStringLiteral("Hintergrund"), QStringLiteral("Background"),
         QStringLiteral("038 038 038"), QStringLiteral("128 128 128")},
        {FieldText, QStringLiteral("Feld Text"), QStringLiteral("FieldText"), QStringLiteral("000 000 000"),
         QStringLiteral("000 000 000")},
        {FieldBackground, QStringLiteral("Feld Hintergrund"), QStringLiteral("FieldBackground"),
         QStringLiteral("106 125 192"), QStringLiteral("192 192 192")},
        {ButtonText, QStringLiteral("Button Text"), QStringLiteral("ButtonText"),
         QStringLiteral("138 142 034"), QStringLiteral("138 142 034")},
        {ButtonBackground, QStringLiteral("Button Hintergrund"), QStringLiteral("ButtonBackground"),
         QStringLiteral("192 192 192"), QStringLiteral("192 192 192")},
        {DisplayTextBright, QStringLiteral("Display Text hell"), QStringLiteral("DisplayTextBright"),
         QStringLiteral("000 160 000"), QStringLiteral("000 192 000")},
        {DisplayTextDark, QStringLiteral("Display Text dunkel"), QStringLiteral("DisplayTextDark"),
         QStringLiteral("000 064 000"), QStringLiteral("000 064 000")},
        {DisplayBackground, QStringLiteral("Display Hintergrund"), QStringLiteral("DisplayBackground"),
         QStringLiteral("000 000 000"), QStringLiteral("000 000 000")},
    }};
    return roles;
}

const Role& role(Id id) {
    return all()[id];
}

int indexOfCaption(const QString& caption) {
    for (const Role& r : all())
        if (r.caption == caption)
            return r.id;
    return -1;
}

QString builtInPresetName() {
    return QStringLiteral("- Default Preset -");
}

QString absentPresetName() {
    return QStringLiteral("-");
}

} // namespace ColorRoles
