#pragma once

#include "base/Dialogs.h"

#include <QString>
#include <functional>

// The handler at the top of an event: runs the body, and when a RuntimeError (or any other
// exception) escapes, shows "Fehler in <place> in Zeile <line>: <description>" and returns false.
// The body advances `line` as it passes its numbered steps, so the message names the last step reached.
class ErrorReport {
public:
    static QString text(const QString& place, int line, const QString& description);
    // The description of a failure that carries none of its own.
    static QString unknownError() { return QStringLiteral("Anwendungs- oder objektdefinierter Fehler"); }
    static bool guard(Dialogs& dialogs, const QString& place, const std::function<void(int& line)>& body);
};
