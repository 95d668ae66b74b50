// The sleep-mode controls of the main window and the power-off they end in.
#include "app/TavoMP3PlayerMain.h"
#include "power/PowerOff.h"
#include "ui/ClickLabel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>

QBoxLayout* TavoMP3PlayerMain::buildSleepControls(QWidget* parent) {
    auto* row = new QHBoxLayout;
    row->setObjectName(QStringLiteral("sleepRow"));
    FSleepmode = new QCheckBox(parent);
    FSleepmode->setObjectName(QStringLiteral("FSleepmode"));
    FSleepmode->setAccessibleName(QStringLiteral("Sleepmode"));
    LabelSleep = new ClickLabel(QStringLiteral("Sleepmode"), parent);
    LabelSleep->setObjectName(QStringLiteral("LabelSleep"));
    LabelSleep->setBuddy(FSleepmode);
    FSleepmodeTime = new QComboBox(parent);
    FSleepmodeTime->setObjectName(QStringLiteral("FSleepmodeTime"));
    FSleepmodeTime->setAccessibleName(QStringLiteral("Sleepmode Zeit"));
    FSleepmodeTime->addItems(SleepMode::timeItems());
    FSleepmodeTime->setCurrentText(SleepMode::defaultItem());
    LSleepmode = new QLabel(parent);
    LSleepmode->setObjectName(QStringLiteral("LSleepmode"));
    row->addWidget(FSleepmode);
    row->addWidget(LabelSleep);
    row->addWidget(FSleepmodeTime);
    row->addWidget(LSleepmode, 1);
    return row;
}

void TavoMP3PlayerMain::connectSleepControls() {
    connect(&m_sleep, &SleepMode::labelChanged, LSleepmode, &QLabel::setText);
    // Woken up after the power-off: the box follows the mode, which is off.
    connect(&m_sleep, &SleepMode::switchedOff, FSleepmode, [this] { FSleepmode->setChecked(false); });
    connect(&m_sleep, &SleepMode::shutdownRequested, this, [this] {
        handle(QStringLiteral("TimerSleepmode"), [this](int& line) {
            line = 1;
            ShutdownComputer();
        });
    });
    // toggled, not clicked: a value set by code (the caption, assistive technology) counts as a
    // click too, as it always did for this box.
    connect(FSleepmode, &QCheckBox::toggled, this, [this](bool checked) {
        handle(QStringLiteral("FSleepmode_Click"), [this, checked](int& line) {
            line = 1;
            m_sleep.FSleepmodeClick(checked, FSleepmodeTime->currentText());
        });
    });
    connect(FSleepmodeTime, &QComboBox::activated, this, [this](int) {
        handle(QStringLiteral("FSleepmodeTime_Click"), [this](int& line) {
            line = 1;
            m_sleep.FSleepmodeTimeClick(FSleepmode->isChecked(), FSleepmodeTime->currentText());
        });
    });
    connect(LabelSleep, &ClickLabel::clicked, this, [this] {
        handle(QStringLiteral("LabelSleep_Click"), [this](int& line) {
            line = 1;
            FSleepmode->setChecked(!FSleepmode->isChecked());
            line = 2;
            m_sleep.FSleepmodeClick(FSleepmode->isChecked(), FSleepmodeTime->currentText());
        });
    });
}

void TavoMP3PlayerMain::ShutdownComputer() {
    if (m_services.power)
        m_services.power->ShutdownWindows(1);
}
