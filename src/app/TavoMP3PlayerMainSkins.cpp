// The skin buttons of the main window and of the windows it opens.
#include "app/TavoMP3PlayerMain.h"
#include "base/AppGlobals.h"
#include "base/RuntimeError.h"
#include "playlist/widgets/TavoMP3QuickSearch.h"
#include "ui/SchemePainter.h"
#include "ui/SkinControl.h"
#include "ui/TavoMP3Settings.h"

#include <QDir>

namespace {

struct SkinButton {
    const char* name;
    bool wide; // 129 x 22 face, else 86 x 22
};

// The twelve command buttons of the window in the order of their captions' table.
constexpr SkinButton kButtons[] = {
    {"BPLOpen", true},    {"BPLSave", true}, {"BUpdateList", true}, {"BCreateList", true},
    {"BPlaylist2", true}, {"BLast", false},  {"BStop", false},      {"BPlay", false},
    {"BPause", false},    {"BNext", false},  {"BReportPrio", true}, {"BReportBitrate", true},
};

} // namespace

void TavoMP3PlayerMain::SetupSkins() {
    const QString folder = AppGlobals::programFolder() + QDir::separator();
    SkinWide = folder + QStringLiteral("Button129x22.bmp");
    SkinWideOver = folder + QStringLiteral("Button129x22over.bmp");
    SkinNarrow = folder + QStringLiteral("Button86x22.bmp");
    SkinNarrowOver = folder + QStringLiteral("Button86x22over.bmp");
    for (const SkinButton& b : kButtons) {
        // Buttons that another part of the window has not built yet are simply not there.
        auto* button = findChild<SkinControl*>(QLatin1String(b.name));
        if (!button)
            continue;
        button->setStatusLine(&m_services.status);
        button->setImageOver(b.wide ? SkinWideOver : SkinNarrowOver);
        button->setImage(b.wide ? SkinWide : SkinNarrow);
    }
}

void TavoMP3PlayerMain::ResetSkinHover() {
    for (const SkinButton& b : kButtons)
        if (auto* button = findChild<SkinControl*>(QLatin1String(b.name)); button && button->Over())
            button->setOver(false);
}

void TavoMP3PlayerMain::dressQuickSearch(TavoMP3QuickSearch* window) {
    for (SkinControl* button : {window->OKButton, window->CancelButton}) {
        button->setStatusLine(&m_services.status);
        button->setImageOver(SkinNarrowOver);
        button->setImage(SkinNarrow);
    }
    window->OKButton->setLabel(QStringLiteral("OK"));
    window->CancelButton->setLabel(QStringLiteral("Abbrechen"));
    // The window is created at each opening, so it takes the working scheme now.
    const ColorScheme& scheme = settingsWindow()->scheme();
    for (ColorRoles::Id role : {ColorRoles::Text, ColorRoles::Background, ColorRoles::FieldText,
                                ColorRoles::FieldBackground, ColorRoles::ButtonText}) {
        try {
            SchemePainter::paintWindowRole(window, role, SchemePainter::toColor(scheme.rgb(role)));
        } catch (const RuntimeError&) {
            // A malformed scheme was already reported when it was loaded.
        }
    }
}
