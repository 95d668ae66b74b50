#include "app/WindowSkins.h"

#include "app/MainWindowUi.h"
#include "base/AppGlobals.h"
#include "playlist/widgets/TavoMP3Playlist2.h"
#include "playlist/widgets/TavoMP3QuickSearch.h"
#include "ui/SkinControl.h"

#include <QDir>
#include <QMainWindow>

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

WindowSkins::WindowSkins(MainWindowUi& ui, QMainWindow& window, StatusLine& status)
    : m_ui(ui), m_window(window), m_status(status) {
}

void WindowSkins::SetupSkins() {
    const QString folder = AppGlobals::skinFolder() + QDir::separator();
    SkinWide = folder + QStringLiteral("Button129x22.bmp");
    SkinWideOver = folder + QStringLiteral("Button129x22over.bmp");
    SkinNarrow = folder + QStringLiteral("Button86x22.bmp");
    SkinNarrowOver = folder + QStringLiteral("Button86x22over.bmp");
    for (const SkinButton& b : kButtons) {
        // Searched below the window's own face: the second playlist has buttons of the same names.
        auto* button = m_window.centralWidget()->findChild<SkinControl*>(QLatin1String(b.name));
        if (!button)
            continue;
        button->setStatusLine(&m_status);
        button->setImageOver(b.wide ? SkinWideOver : SkinNarrowOver);
        button->setImage(b.wide ? SkinWide : SkinNarrow);
    }
    // The second playlist's two buttons carry short captions on the narrow face.
    narrowFace(m_ui.Playlist2->BPLOpen, QStringLiteral("Öffnen"));
    narrowFace(m_ui.Playlist2->BPLSave, QStringLiteral("Speichern"));
}

void WindowSkins::narrowFace(SkinControl* button, const QString& caption) {
    button->setStatusLine(&m_status);
    button->setImageOver(SkinNarrowOver);
    button->setImage(SkinNarrow);
    button->setLabel(caption);
}

void WindowSkins::ResetSkinHover() {
    for (const SkinButton& b : kButtons)
        if (auto* button = m_window.centralWidget()->findChild<SkinControl*>(QLatin1String(b.name));
            button && button->Over())
            button->setOver(false);
}

void WindowSkins::dress(TavoMP3QuickSearch* window) {
    narrowFace(window->OKButton, QStringLiteral("OK"));
    narrowFace(window->CancelButton, QStringLiteral("Abbrechen"));
}
