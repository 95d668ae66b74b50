#pragma once

class QWidget;

// Scripts that drive the desktop find controls by their design names (BPlay, FStatus, FPrio(2)).
// With TAVOMP3_AUTOMATION_IDS=1 every named control of a window gets that name as its accessible
// description; without it nothing changes for screen-reader users.
namespace AutomationIds {

constexpr const char* kVariable = "TAVOMP3_AUTOMATION_IDS";

bool enabled();
// Call when a window's controls are built; safe to call again after controls were added.
void apply(QWidget* window);

} // namespace AutomationIds
