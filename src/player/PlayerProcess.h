#pragma once

#include <QString>
#include <QStringList>

// The player program as a process of the operating system: started detached so that it outlives
// this program, asked to end, and watched without a handle on it (the link may have found a player
// that somebody else started).
namespace PlayerProcess {

// Starts the program detached, its standard streams on the null device; 0 when it could not start.
qint64 startDetached(const QString& program, const QStringList& arguments);
// Whether a process still runs (an exited one that was not reaped yet does not); true if unknown.
bool running(qint64 pid);
// Asks the process to end (SIGTERM); nothing for pid <= 0.
void terminate(qint64 pid);
// This program's user id, or -1 where the system has none.
qint64 ownUid();

} // namespace PlayerProcess
