// The main window's side of the colour scheme: the nine role operations, the mode indicators,
// the background picture and the settings window behind MenuEinstellungen.
#include "app/TavoMP3PlayerMain.h"

#include "base/SettingsStore.h"
#include "player/PlayerLink.h"
#include "ui/AutomationIds.h"
#include "ui/BackgroundPicture.h"
#include "ui/ColoredWindow.h"
#include "ui/DirectoryField.h"
#include "ui/SchemePainter.h"
#include "ui/TavoMP3ID3.h"
#include "ui/TavoMP3Settings.h"
#include "ui/TavoSlider.h"
#include "ui/TavoxMiniDiagram.h"
#include "update/widgets/TavoMP3About.h"
#include "update/widgets/TavoMP3News.h"

#include <QAction>
#include <QLabel>
#include <QMenuBar>

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

void TavoMP3PlayerMain::buildAppearance() {
    m_background = new BackgroundPicture(centralWidget());
    buildPositionSlider();
    centralWidget()->setAutoFillBackground(true);
    // The secondary windows that share the scheme; each is created unshown on the first repaint.
    addSchemeWindow([this]() -> QWidget* { return &newsWindow(); });
    addSchemeWindow([this]() -> QWidget* { return &aboutWindow(); });
    addSchemeWindow([this]() -> QWidget* { return &id3Window(); });
    MenuEinstellungen = menuBar()->addAction(QStringLiteral("&Einstellungen"));
    MenuEinstellungen->setObjectName(QStringLiteral("MenuEinstellungen"));
    connect(MenuEinstellungen, &QAction::triggered, this, [this] {
        handle(QStringLiteral("MenuEinstellungen_Click"), [this](int& line) {
            line = 1;
            settingsWindow()->open();
        });
    });
}

TavoMP3Settings* TavoMP3PlayerMain::settingsWindow() {
    if (!m_settingsWindow) {
        m_settingsWindow = new TavoMP3Settings(m_services, *this, this);
        AutomationIds::apply(m_settingsWindow);
    }
    return m_settingsWindow;
}

void TavoMP3PlayerMain::addSchemeWindow(std::function<QWidget*()> ensureWindow) {
    m_schemeWindows.append(std::move(ensureWindow));
}

void TavoMP3PlayerMain::paintSchemeWindows(ColorRoles::Id role, const Rgb& colour) {
    for (const auto& ensure : m_schemeWindows) {
        QWidget* w = ensure();
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

void TavoMP3PlayerMain::SetColorText(const Rgb& colour) {
    // Label1 has no role of its own; it sits on the window face beside Label2 and takes Text so
    // that it stays readable on a dark face.
    for (QWidget* w :
         SchemePainter::named(this, names({"Label1", "Label2", "Label3", "Label13", "LabelSleep", "Label5",
                                           "Label12", "FPrio()", "Version", "FSleepmode"})))
        setTextColour(w, toColor(colour));
    // The PL captions sit on the window face like Label13 beside them; in the classic button-text
    // black they would vanish on a dark face.
    for (QWidget* w : SchemePainter::named(this, names({"PL()"})))
        setTextColour(w, toColor(colour));
    paintSchemeWindows(ColorRoles::Text, colour);
}

void TavoMP3PlayerMain::SetColorBackground(const Rgb& colour) {
    // The window face is the central area; the menu bar keeps the desktop's look.
    setBackColour(centralWidget(), toColor(colour));
    for (QWidget* w : SchemePainter::named(this, names({"Version", "PL()"})))
        setBackColour(w, toColor(colour));
    paintSchemeWindows(ColorRoles::Background, colour);
}

void TavoMP3PlayerMain::SetColorFieldText(const Rgb& colour) {
    for (QWidget* w : SchemePainter::named(
             this, names({"Label6", "Label7", "Label8", "Label9", "Label10", "Label11", "Frame1", "FTest2",
                          "FTest", "FStatus", "FSleepmodeTime", "FPlaylist", "FActPlaylist"})))
        setTextColour(w, toColor(colour));
    paintSchemeWindows(ColorRoles::FieldText, colour);
}

void TavoMP3PlayerMain::SetColorFieldBackground(const Rgb& colour) {
    for (QWidget* w : SchemePainter::named(this, names({"FPrio()", "Frame1", "FTest2", "FTest", "FStatus",
                                                        "FSleepmodeTime", "FPlaylist", "FActPlaylist"})))
        setBackColour(w, toColor(colour));
    paintSchemeWindows(ColorRoles::FieldBackground, colour);
}

void TavoMP3PlayerMain::SetColorButtonText(const Rgb& colour) {
    for (QWidget* w : SchemePainter::named(
             this, names({"BUpdateList", "BStop", "BReportPrio", "BReportBitrate", "BPlaylist2", "BPlay",
                          "BPause", "BPLSave", "BPLOpen", "BNext", "BLast", "BCreateList"})))
        setTextColour(w, toColor(colour));
    paintSchemeWindows(ColorRoles::ButtonText, colour);
}

void TavoMP3PlayerMain::SetColorButtonBackground(const Rgb& colour) {
    // Button faces come from the skin bitmaps; the role is kept for the scheme's sake only.
    Q_UNUSED(colour)
}

void TavoMP3PlayerMain::SetColorDisplayTextBright(const Rgb& colour) {
    // lblTime shows the song time beside the name and is painted like it; it has no role of its
    // own and would otherwise keep the default black on the display's face.
    for (QWidget* w : SchemePainter::named(
             this, names({"lblTrackName", "lblTime", "LSleepmode", "LMP3Bitrate", "LMP3Samplerate"})))
        setTextColour(w, toColor(colour));
    TavoxMiniDiagram1->SetTextColor(float(colour.packed()));
    TavoSlider1->SetValue(QStringLiteral("Shape1FillColor"), colour.packed());
    if (ShuffleOn)
        setTextColour(lblShuffle, toColor(colour));
    if (RepeatOn)
        setTextColour(lblRepeat, toColor(colour));
    if (AutoCueOn)
        setTextColour(LAutoCue, toColor(colour));
}

void TavoMP3PlayerMain::SetColorDisplayTextDark(const Rgb& colour) {
    if (!ShuffleOn)
        setTextColour(lblShuffle, toColor(colour));
    if (!RepeatOn)
        setTextColour(lblRepeat, toColor(colour));
    if (!AutoCueOn)
        setTextColour(LAutoCue, toColor(colour));
    TavoSlider1->SetValue(QStringLiteral("LineBorderColor"), colour.packed());
}

void TavoMP3PlayerMain::SetColorDisplayBackground(const Rgb& colour) {
    // Picture1 is the panel behind the display labels; it takes their face so that the display
    // reads as one surface.
    for (QWidget* w :
         SchemePainter::named(this, names({"Picture1", "lblTime", "lblTrackName", "lblShuffle", "lblRepeat",
                                           "LAutoCue", "LSleepmode", "LMP3Bitrate", "LMP3Samplerate"})))
        setBackColour(w, toColor(colour));
    TavoxMiniDiagram1->SetBackgroundColor(float(colour.packed()));
    TavoSlider1->SetValue(QStringLiteral("ShapeBackFillColor"), colour.packed());
}

void TavoMP3PlayerMain::UpdateColors() {
    // The built-in greens, whatever the preset says, until the next full repaint of the scheme.
    setTextColour(lblShuffle, toColor(ShuffleOn ? kIndicatorOn : kIndicatorOff));
    setTextColour(LAutoCue, toColor(AutoCueOn ? kIndicatorOn : kIndicatorOff));
}

void TavoMP3PlayerMain::LoadBGImage(const QString& path) {
    m_background->load(path);
}

void TavoMP3PlayerMain::LoadActivePreset() {
    const QString active = m_services.settings.GetSetting(
        QStringLiteral("Settings"), QStringLiteral("ActivePreset"), QStringLiteral("0"));
    settingsWindow()->LoadPreset(active, QStringLiteral("PlayerMainSetColorAll"));
}

void TavoMP3PlayerMain::setBrowsePath(const QString& directories) {
    FBrowsePath->setText(directories);
}

void TavoMP3PlayerMain::startPlayer(const QString& playerPath) {
    // Only a provided link is started (tests of other parts run without a player).
    if (m_services.player)
        m_player->StartWinamp(playerPath);
}
