#include "power/SleepMode.h"

#include "base/ErrorReport.h"

namespace {
QString countdownText(int minutes) {
    return QStringLiteral("Herunterfahren in ") + QString::number(minutes) + QStringLiteral(" min");
}
} // namespace

SleepMode::SleepMode(Dialogs& dialogs, QObject* parent) : QObject(parent), m_dialogs(dialogs) {
    TimerSleepmode.setObjectName(QStringLiteral("TimerSleepmode"));
    TimerSleepmode.setInterval(60000);
    connect(&TimerSleepmode, &QTimer::timeout, this, [this] {
        ErrorReport::guard(m_dialogs, QStringLiteral("TimerSleepmode_Timer"), [this](int& line) {
            line = 1;
            TimerSleepmodeTimer();
        });
    });
    connect(&wakeUp, &WakeUpWatch::wokeUp, this, [this] {
        FSleepmodeClick(false, SleepTimeChoice);
        emit switchedOff();
    });
}

const QStringList& SleepMode::timeItems() {
    static const QStringList items{
        QStringLiteral("1 min"),  QStringLiteral("2 min"),  QStringLiteral("5 min"),
        QStringLiteral("10 min"), QStringLiteral("20 min"), QStringLiteral("30 min"),
        QStringLiteral("40 min"), QStringLiteral("50 min"), QStringLiteral("60 min")};
    return items;
}

void SleepMode::FSleepmodeClick(bool checked, const QString& choice) {
    if (!checked) {
        wakeUp.disarm();
        SleepMinutesElapsed = 0;
        setLabel(QString());
        TimerSleepmode.stop();
        return;
    }
    static const int minutes[] = {1, 2, 5, 10, 20, 30, 40, 50, 60};
    const qsizetype at = timeItems().indexOf(choice); // exact and case-sensitive
    if (at < 0)
        return;      // an unknown text leaves the mode as it was
    wakeUp.disarm(); // armed anew by the user
    SleepMinutesTotal = static_cast<quint8>(minutes[at]);
    SleepTimeChoice = choice;
    SleepMinutesElapsed = 0;
    setLabel(countdownText(SleepMinutesTotal));
    TimerSleepmode.start(); // re-arming always counts from the full time
}

void SleepMode::FSleepmodeTimeClick(bool checked, const QString& choice) {
    if (choice != SleepTimeChoice)
        FSleepmodeClick(checked, choice);
    SleepTimeChoice = choice;
}

void SleepMode::TimerSleepmodeTimer() {
    ++SleepMinutesElapsed;
    if (SleepMinutesElapsed < SleepMinutesTotal) {
        setLabel(countdownText(SleepMinutesTotal - SleepMinutesElapsed));
        return;
    }
    // The box stays checked and the label keeps "1 min": nothing is left to show once the
    // computer goes down. One that only sleeps switches the mode off when it wakes up.
    SleepMinutesElapsed = 0;
    TimerSleepmode.stop();
    wakeUp.arm();
    emit shutdownRequested();
}

void SleepMode::setLabel(const QString& text) {
    if (text == m_label)
        return;
    m_label = text;
    emit labelChanged(m_label);
}
