#pragma once

#include <QApplication>

class Dialogs;

// The application object with a last line of defence: every handler of the program runs under its
// own error report, but should a failure still slip out of one, it is reported here like any other
// ("Fehler in <control> in Zeile 0: …") instead of ending the process and the user's session with it.
class GuardedApplication : public QApplication {
public:
    GuardedApplication(int& argc, char** argv);

    // Where the reports go; until it is set they go to standard error.
    void setDialogs(Dialogs* dialogs) { m_dialogs = dialogs; }

    bool notify(QObject* receiver, QEvent* event) override;

private:
    void report(QObject* receiver, const QString& description);

    Dialogs* m_dialogs = nullptr;
};
