#pragma once

#include <QObject>
#include <QString>
#include <functional>

class MainWindowUi;
class ProgramCore;
class QMainWindow;

// What every binding of the main window shares: the program core, the controls, the window, and the
// classic error report around every handler it connects.
class Binding : public QObject {
    Q_OBJECT
public:
    Binding(ProgramCore& core, MainWindowUi& ui, QMainWindow& window);

protected:
    // Runs an event handler under "Fehler in <place> in Zeile <line>: ...".
    void handle(const QString& place, const std::function<void(int& line)>& body);
    // A slot that runs body as line 1 of place.
    std::function<void()> command(const char* place, std::function<void()> body);

    ProgramCore& m_core;
    MainWindowUi& m_ui;
    QMainWindow& m_window;
};
