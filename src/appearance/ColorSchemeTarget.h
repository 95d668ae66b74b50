#pragma once

#include "appearance/Rgb.h"

// The window that shows the colour scheme: one operation per role. The scheme logic calls them
// all in this order for a full repaint, or a single one while a colour slider moves.
class ColorSchemeTarget {
public:
    virtual ~ColorSchemeTarget() = default;
    virtual void SetColorText(const Rgb& colour) = 0;
    virtual void SetColorBackground(const Rgb& colour) = 0;
    virtual void SetColorFieldText(const Rgb& colour) = 0;
    virtual void SetColorFieldBackground(const Rgb& colour) = 0;
    virtual void SetColorButtonText(const Rgb& colour) = 0;
    virtual void SetColorButtonBackground(const Rgb& colour) = 0;
    virtual void SetColorDisplayTextBright(const Rgb& colour) = 0;
    virtual void SetColorDisplayTextDark(const Rgb& colour) = 0;
    virtual void SetColorDisplayBackground(const Rgb& colour) = 0;

    // The operation of one role, by its position in the role order.
    void setRoleColour(int role, const Rgb& colour);
};
