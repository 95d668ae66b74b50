#pragma once

#include <QString>
#include <array>

// The nine colour roles of the scheme in their fixed order: the order of the role list on the
// settings window, of the keys in a preset section and of every loop over roles.
namespace ColorRoles {

enum Id {
    Text,
    Background,
    FieldText,
    FieldBackground,
    ButtonText,
    ButtonBackground,
    DisplayTextBright,
    DisplayTextDark,
    DisplayBackground,
};
constexpr int Count = 9;

struct Role {
    Id id;
    QString caption;       // item of the role list LColorType
    QString key;           // key in a preset section
    QString builtIn;       // value in the built-in preset 0
    QString absentDefault; // value for a numbered preset that lacks the key
};

const std::array<Role, Count>& all();
const Role& role(Id id);
// Position of the role with this caption, -1 when no role has it.
int indexOfCaption(const QString& caption);

// Name of the built-in preset 0, which is never stored.
QString builtInPresetName();
// Name a numbered preset loads with when its PresetName key is absent.
QString absentPresetName();

} // namespace ColorRoles
