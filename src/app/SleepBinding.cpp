#include "app/SleepBinding.h"

#include "app/MainWindowUi.h"
#include "program/ProgramCore.h"
#include "ui/ClickLabel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>

SleepBinding::SleepBinding(ProgramCore& core, MainWindowUi& ui, QMainWindow& window)
    : Binding(core, ui, window) {
    setObjectName(QStringLiteral("SleepBinding"));
    SleepMode& sleep = core.sleepMode();
    connect(&sleep, &SleepMode::labelChanged, m_ui.LSleepmode, &QLabel::setText);
    // Woken up after the power-off: the box follows the mode, which is off.
    connect(&sleep, &SleepMode::switchedOff, m_ui.FSleepmode, [this] { m_ui.FSleepmode->setChecked(false); });
    connect(&sleep, &SleepMode::shutdownRequested, this,
            command("TimerSleepmode", [this] { m_core.ShutdownComputer(); }));
    // toggled, not clicked: a value set by code (the caption, assistive technology) counts as a
    // click too, as it always did for this box.
    connect(m_ui.FSleepmode, &QCheckBox::toggled, this, [this, &sleep](bool checked) {
        handle(QStringLiteral("FSleepmode_Click"), [this, &sleep, checked](int& line) {
            line = 1;
            sleep.FSleepmodeClick(checked, m_ui.FSleepmodeTime->currentText());
        });
    });
    connect(m_ui.FSleepmodeTime, &QComboBox::activated, this, [this, &sleep](int) {
        handle(QStringLiteral("FSleepmodeTime_Click"), [this, &sleep](int& line) {
            line = 1;
            sleep.FSleepmodeTimeClick(m_ui.FSleepmode->isChecked(), m_ui.FSleepmodeTime->currentText());
        });
    });
    connect(m_ui.LabelSleep, &ClickLabel::clicked, this, [this, &sleep] {
        handle(QStringLiteral("LabelSleep_Click"), [this, &sleep](int& line) {
            line = 1;
            m_ui.FSleepmode->setChecked(!m_ui.FSleepmode->isChecked());
            line = 2;
            sleep.FSleepmodeClick(m_ui.FSleepmode->isChecked(), m_ui.FSleepmodeTime->currentText());
        });
    });
}
