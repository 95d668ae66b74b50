#pragma once

#include "base/RecurringReport.h"

#include <QObject>
#include <QString>
#include <memory>

class Dialogs;
class QTimer;
class SettingsStore;

// The main window's minute counter for automatic update checks. In update mode 1 with a
// non-zero interval it counts minutes and asks for a check each time the interval is reached.
class UpdateCheckSchedule : public QObject {
    Q_OBJECT
public:
    explicit UpdateCheckSchedule(SettingsStore& settings, QObject* parent = nullptr);

    QTimer* TimerCheck = nullptr;

    // The minute's tick reports its failures (a garbage value in the store) here and goes on.
    void setErrorReport(Dialogs& dialogs);
    // Reads the update settings, as the main window does while loading.
    void load();
    // One minute passed.
    void TimerCheckTimer();
    // After a compared version list no further automatic check runs in this session.
    void disable();

    quint8 UpdateMode = 0;
    qint16 UpdateInterval = 0;
    qint16 UpdateIntervalRemind = 0;
    qint16 minuteCount() const { return m_count; }
    const QString& FCheck() const { return m_label; }

signals:
    void FCheckChanged(const QString& text);
    void checkDue();

private:
    void setLabel();

    SettingsStore& m_settings;
    qint16 m_count = 0;
    QString m_label;
    std::unique_ptr<RecurringReport> m_report;
};
