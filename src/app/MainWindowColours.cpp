#include "app/MainWindowColours.h"

#include "app/MainWindowUi.h"
#include "app/SecondaryWindows.h"
#include "appearance/ColorSchemeController.h"
#include "program/ProgramCore.h"
#include "ui/ColoredWindow.h"
#include "ui/SchemePainter.h"
#include "ui/TavoSlider.h"
#include "ui/TavoxMiniDiagram.h"

#include <QAction>
#include <QLabel>
#include <QMainWindow>

using SchemePainter::setBackColour;
using SchemePainter::setTextColour;
using SchemePainter::toColor;

namespace {

QStringList names(std::initializer_list<const char*> list) {
    QStringList out;
    for (const char* n : list)
        out.append(QLatin1String(n));
    return out;
}

// The two fixed greens of the indicators after a mode change (&HC000 and &H4000).
const Rgb kIndicatorOn = Rgb::fromPacked(0xC000);
const Rgb kIndicatorOff = Rgb::fromPacked(0x4000);

} // namespace

MainWindowColours::MainWindowColours(ProgramCore& core, MainWindowUi& ui, QMainWindow& window,
                                     SecondaryWindows& windows)
    : Binding(core, ui, window), m_windows(windows) {
    setObjectName(QStringLiteral("MainWindowColours"));
    connect(&core.colours(), &ColorSchemeController::roleColourChanged, this,
            [this](int role, const Rgb& colour) { setRoleColour(role, colour); });
    connect(&core.playback(), &PlaybackController::indicatorsChanged, this,
            &MainWindowColours::showModeIndicators);
}

void MainWindowColours::paintSchemeWindows(ColorRoles::Id role, const Rgb& colour) {
    for (QWidget* w : m_windows.schemeWindows()) {
        auto* colored = qobject_cast<ColoredWindow*>(w);
        if (!colored) {
            if (w)
                SchemePainter::paintWindowRole(w, role, toColor(colour));
            continue;
        }
        // Windows that list their controls by role paint themselves.
        switch (role) {
        case ColorRoles::Text:
            colored->SetColorText(toColor(colour));
            break;
        case ColorRoles::Background:
            colored->SetColorBackground(toColor(colour));
            break;
        case ColorRoles::FieldText:
            colored->SetColorFieldText(toColor(colour));
            break;
        case ColorRoles::FieldBackground:
            colored->SetColorFieldBackground(toColor(colour));
            break;
        case ColorRoles::ButtonText:
            colored->SetColorButtonText(toColor(colour));
            break;
        default:
            break;
        }
    }
}

void MainWindowColours::SetColorText(const Rgb& colour) {
    // Label1 has no role of its own; it sits on the window face beside Label2 and takes Text so
    // that it stays readable on a dark face.
    for (QWidget* w :
         SchemePainter::named(&m_window, names({"Label1", "Label2", "Label3", "Label13", "LabelSleep",
                                                "Label5", "Label12", "FPrio()", "Version", "FSleepmode"})))
        setTextColour(w, toColor(colour));
    // The PL captions sit on the window face like Label13 beside them; in the classic button-text
    // black they would vanish on a dark face.
    for (QWidget* w : SchemePainter::named(&m_window, names({"PL()"})))
        setTextColour(w, toColor(colour));
    paintSchemeWindows(ColorRoles::Text, colour);
}

void MainWindowColours::SetColorBackground(const Rgb& colour) {
    // The window face is the central area; the menu bar keeps the desktop's look.
    setBackColour(m_window.centralWidget(), toColor(colour));
    for (QWidget* w : SchemePainter::named(&m_window, names({"Version", "PL()"})))
        setBackColour(w, toColor(colour));
    paintSchemeWindows(ColorRoles::Background, colour);
}

void MainWindowColours::SetColorFieldText(const Rgb& colour) {
    for (QWidget* w : SchemePainter::named(
             &m_window, names({"Label6", "Label7", "Label8", "Label9", "Label10", "Label11", "Frame1",
                               "FTest2", "FTest", "FStatus", "FSleepmodeTime", "FPlaylist", "FActPlaylist"})))
        setTextColour(w, toColor(colour));
    paintSchemeWindows(ColorRoles::FieldText, colour);
}

void MainWindowColours::SetColorFieldBackground(const Rgb& colour) {
    for (QWidget* w :
         SchemePainter::named(&m_window, names({"FPrio()", "Frame1", "FTest2", "FTest", "FStatus",
                                                "FSleepmodeTime", "FPlaylist", "FActPlaylist"})))
        setBackColour(w, toColor(colour));
    paintSchemeWindows(ColorRoles::FieldBackground, colour);
}

void MainWindowColours::SetColorButtonText(const Rgb& colour) {
    for (QWidget* w : SchemePainter::named(
             &m_window, names({"BUpdateList", "BStop", "BReportPrio", "BReportBitrate", "BPlaylist2", "BPlay",
                               "BPause", "BPLSave", "BPLOpen", "BNext", "BLast", "BCreateList"})))
        setTextColour(w, toColor(colour));
    paintSchemeWindows(ColorRoles::ButtonText, colour);
}

void MainWindowColours::SetColorButtonBackground(const Rgb& colour) {
    // Button faces come from the skin bitmaps; the role is kept for the scheme's sake only.
    Q_UNUSED(colour)
}

void MainWindowColours::SetColorDisplayTextBright(const Rgb& colour) {
    // lblTime shows the song time beside the name and is painted like it; it has no role of its
    // own and would otherwise keep the default black on the display's face.
    for (QWidget* w : SchemePainter::named(
             &m_window, names({"lblTrackName", "lblTime", "LSleepmode", "LMP3Bitrate", "LMP3Samplerate"})))
        setTextColour(w, toColor(colour));
    m_ui.TavoxMiniDiagram1->SetTextColor(float(colour.packed()));
    m_ui.TavoSlider1->SetValue(QStringLiteral("Shape1FillColor"), colour.packed());
    if (m_shuffleOn)
        setTextColour(m_ui.lblShuffle, toColor(colour));
    if (m_autoCueOn)
        setTextColour(m_ui.LAutoCue, toColor(colour));
}

void MainWindowColours::SetColorDisplayTextDark(const Rgb& colour) {
    if (!m_shuffleOn)
        setTextColour(m_ui.lblShuffle, toColor(colour));
    setTextColour(m_ui.lblRepeat, toColor(colour));
    if (!m_autoCueOn)
        setTextColour(m_ui.LAutoCue, toColor(colour));
    m_ui.TavoSlider1->SetValue(QStringLiteral("LineBorderColor"), colour.packed());
}

void MainWindowColours::SetColorDisplayBackground(const Rgb& colour) {
    // Picture1 is the panel behind the display labels; it takes their face so that the display
    // reads as one surface.
    for (QWidget* w : SchemePainter::named(
             &m_window, names({"Picture1", "lblTime", "lblTrackName", "lblShuffle", "lblRepeat", "LAutoCue",
                               "LSleepmode", "LMP3Bitrate", "LMP3Samplerate"})))
        setBackColour(w, toColor(colour));
    m_ui.TavoxMiniDiagram1->SetBackgroundColor(float(colour.packed()));
    m_ui.TavoSlider1->SetValue(QStringLiteral("ShapeBackFillColor"), colour.packed());
}

void MainWindowColours::UpdateColors() {
    setTextColour(m_ui.lblShuffle, toColor(m_shuffleOn ? kIndicatorOn : kIndicatorOff));
    setTextColour(m_ui.LAutoCue, toColor(m_autoCueOn ? kIndicatorOn : kIndicatorOff));
}

void MainWindowColours::showModeIndicators() {
    const PlaybackState& state = m_core.playback().state();
    m_shuffleOn = state.ShuffleStatus;
    m_autoCueOn = state.AutoCue;
    m_ui.MenuShuffleStatus->setChecked(state.ShuffleStatus);
    UpdateColors();
}
