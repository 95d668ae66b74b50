#pragma once

#include "app/Binding.h"
#include "appearance/ColorRoles.h"
#include "appearance/ColorSchemeTarget.h"

class SecondaryWindows;

// The main window's side of the colour scheme: the nine role operations on its controls and on the
// secondary windows that share the scheme, and the mode indicators in their fixed greens.
class MainWindowColours : public Binding, public ColorSchemeTarget {
    Q_OBJECT
public:
    MainWindowColours(ProgramCore& core, MainWindowUi& ui, QMainWindow& window, SecondaryWindows& windows);

    void SetColorText(const Rgb& colour) override;
    void SetColorBackground(const Rgb& colour) override;
    void SetColorFieldText(const Rgb& colour) override;
    void SetColorFieldBackground(const Rgb& colour) override;
    void SetColorButtonText(const Rgb& colour) override;
    void SetColorButtonBackground(const Rgb& colour) override;
    void SetColorDisplayTextBright(const Rgb& colour) override;
    void SetColorDisplayTextDark(const Rgb& colour) override;
    void SetColorDisplayBackground(const Rgb& colour) override;
    // The indicators in the built-in greens, until the next full repaint of the scheme.
    void UpdateColors();
    // The playback's mode flags on the indicators and the tray menu's check mark.
    void showModeIndicators();

private:
    void paintSchemeWindows(ColorRoles::Id role, const Rgb& colour);

    SecondaryWindows& m_windows;
    // Mode indicators (16-bit flags of the transport): bright when on, dark when off. REPEAT is never on.
    bool m_shuffleOn = false;
    bool m_autoCueOn = false;
};
