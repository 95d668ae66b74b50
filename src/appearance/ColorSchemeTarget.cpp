#include "appearance/ColorSchemeTarget.h"

#include "appearance/ColorRoles.h"

void ColorSchemeTarget::setRoleColour(int role, const Rgb& colour) {
    switch (role) {
    case ColorRoles::Text:
        SetColorText(colour);
        break;
    case ColorRoles::Background:
        SetColorBackground(colour);
        break;
    case ColorRoles::FieldText:
        SetColorFieldText(colour);
        break;
    case ColorRoles::FieldBackground:
        SetColorFieldBackground(colour);
        break;
    case ColorRoles::ButtonText:
        SetColorButtonText(colour);
        break;
    case ColorRoles::ButtonBackground:
        SetColorButtonBackground(colour);
        break;
    case ColorRoles::DisplayTextBright:
        SetColorDisplayTextBright(colour);
        break;
    case ColorRoles::DisplayTextDark:
        SetColorDisplayTextDark(colour);
        break;
    case ColorRoles::DisplayBackground:
        SetColorDisplayBackground(colour);
        break;
    default:
        break;
    }
}
