#pragma once

#include <QString>
#include <functional>

class Dialogs;

// The error report of a handler that runs again and again: a timer's tick, a socket's data. It
// reports like every other handler ("Fehler in <place> in Zeile <line>: …") and the program goes
// on, but a failure that comes back unchanged on every tick is shown once, not once per tick, and
// while its box is open on screen (a tick runs inside the box's own event loop) nothing is stacked
// on top of it. A tick that runs clean makes the next failure show again.
class RecurringReport {
public:
    RecurringReport(Dialogs& dialogs, QString place);

    // True when the body ran clean.
    bool run(const std::function<void(int& line)>& body);

    const QString& place() const { return m_place; }

private:
    Dialogs& m_dialogs;
    QString m_place;
    QString m_lastShown;
    bool m_boxOpen = false;
};
