#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

#include "power/WakeUpWatch.h"

class Dialogs;

// The sleep countdown: armed with a number of minutes, it counts whole minutes on its own timer
// and asks for the computer to be shut down when the time is up. Playback is never touched.
// A computer that only slept and wakes up again finds the mode switched off, not a countdown
// that claims a minute is left.
class SleepMode : public QObject {
    Q_OBJECT
public:
    // Failures of the timer's tick are reported through dialogs.
    explicit SleepMode(Dialogs& dialogs, QObject* parent = nullptr);

    // The drop-down items in their order, and the one shown at start.
    static const QStringList& timeItems();
    static QString defaultItem() { return QStringLiteral("20 min"); }

    // FSleepmode click: arm with the chosen text when checked, otherwise switch off.
    void FSleepmodeClick(bool checked, const QString& choice);
    // FSleepmodeTime click: a different choice re-runs arm/disarm; the same one does nothing.
    void FSleepmodeTimeClick(bool checked, const QString& choice);
    // TimerSleepmode tick.
    void TimerSleepmodeTimer();

    const QString& LSleepmode() const { return m_label; }
    void clearLabel() { setLabel(QString()); }

    QTimer TimerSleepmode;
    WakeUpWatch wakeUp;
    quint8 SleepMinutesTotal = 0;
    quint8 SleepMinutesElapsed = 0;
    QString SleepTimeChoice;

signals:
    void labelChanged(const QString& text);
    void shutdownRequested();
    // The computer woke up after the power-off: the mode is off and its check box is to be cleared.
    void switchedOff();

private:
    void setLabel(const QString& text);
    Dialogs& m_dialogs;
    QString m_label;
};
