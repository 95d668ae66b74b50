// The skin buttons of the main window and of the windows it opens.
#include "app/TavoMP3PlayerMain.h"
#include "base/AppGlobals.h"
#include "base/RuntimeError.h"
#include "playlist/widgets/TavoMP3Playlist2.h"
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
    const QString folder = AppGlobals::skinFolder() + QDir::separator();
    SkinWide = folder + QStringLiteral("Button129x22.bmp");
    SkinWideOver = folder + QStringLiteral("Button129x22over.bmp");
    SkinNarrow = folder + QStringLiteral("Button86x22.bmp");
    SkinNarrowOver = folder + QStringLiteral("Button86x22over.bmp");
    for (const SkinButton& b : kButtons) {
        // Buttons that another part of the window has not built yet are simply not there.
        // Searched below the window's own face: the second playlist has buttons of the same names.
        auto* button = centralWidget()->findChild<SkinControl*>(QLatin1String(b.name));
        if (!button)
            continue;
        button->setStatusLine(&m_services.status);
        button->setImageOver(b.wide ? SkinWideOver : SkinNarrowOver);
        button->setImage(b.wide ? SkinWide : SkinNarrow);
    }
    // The second playlist's two buttons carry short captions on the narrow face.
    const std::pair<SkinControl*, QString> playlist2Buttons[] = {
        {Playlist2->BPLOpen, QStringLiteral("Öffnen")}, {Playlist2->BPLSave, QStringLiteral("Speichern")}};
    for (const auto& [button, caption] : playlist2Buttons) {
        button->setStatusLine(&m_services.status);
        button->setImageOver(SkinNarrowOver);
        button->setImage(SkinNarrow);
        button->setLabel(caption);
    }
}

void TavoMP3PlayerMain::ResetSkinHover() {
    for (const SkinButton& b : kButtons)
        if (auto* button = centralWidget()->findChild<SkinControl*>(QLatin1String(b.name));
            button && button->Over())
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
