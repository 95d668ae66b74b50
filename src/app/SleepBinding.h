#pragma once

#include "app/Binding.h"

// The sleep-mode controls of the main window and the power-off they end in.
class SleepBinding : public Binding {
    Q_OBJECT
public:
    SleepBinding(ProgramCore& core, MainWindowUi& ui, QMainWindow& window);
};
