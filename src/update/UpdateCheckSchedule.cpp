#include "update/UpdateCheckSchedule.h"

#include "base/Checked.h"
#include "base/SettingsStore.h"

#include <QTimer>

namespace {
const QString kSettings = QStringLiteral("Settings");
}

UpdateCheckSchedule::UpdateCheckSchedule(SettingsStore& settings, QObject* parent)
    : QObject(parent), m_settings(settings) {
    TimerCheck = new QTimer(this);
    TimerCheck->setObjectName(QStringLiteral("TimerCheck"));
    TimerCheck->setInterval(60000);
    connect(TimerCheck, &QTimer::timeout, this, [this] {
        if (!m_report)
            return TimerCheckTimer();
        m_report->run([this](int& line) {
            line = 1;
            TimerCheckTimer();
        });
    });
}

void UpdateCheckSchedule::setErrorReport(Dialogs& dialogs) {
    m_report = std::make_unique<RecurringReport>(dialogs, QStringLiteral("TimerCheck_Timer"));
}

void UpdateCheckSchedule::load() {
    UpdateMode = Checked::textToByte(m_settings.GetSetting(kSettings, QStringLiteral("UpdateMode"), 0));
    UpdateInterval =
        Checked::textToInt16(m_settings.GetSetting(kSettings, QStringLiteral("UpdateInterval"), 0));
    UpdateIntervalRemind =
        Checked::textToInt16(m_settings.GetSetting(kSettings, QStringLiteral("UpdateIntervalRemind"), 0));
    if (UpdateMode == 1 && UpdateInterval != 0) {
        setLabel();
        TimerCheck->start();
    }
}

void UpdateCheckSchedule::TimerCheckTimer() {
    // The settings window may have changed the mode or the interval since the window loaded.
    UpdateMode = Checked::textToByte(m_settings.GetSetting(kSettings, QStringLiteral("UpdateMode"), 0));
    if (UpdateMode != 1) {
        TimerCheck->stop();
        return;
    }
    UpdateInterval =
        Checked::textToInt16(m_settings.GetSetting(kSettings, QStringLiteral("UpdateInterval"), 0));
    m_count = Checked::toInt16(qint64(m_count) + 1);
    if (m_count >= UpdateInterval) {
        m_count = 0;
        emit checkDue();
    }
    setLabel();
}

void UpdateCheckSchedule::disable() {
    TimerCheck->stop();
}

void UpdateCheckSchedule::setLabel() {
    m_label = QString::number(m_count) + QLatin1Char('/') + QString::number(UpdateInterval);
    emit FCheckChanged(m_label);
}
