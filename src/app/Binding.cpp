#include "app/Binding.h"

#include "base/ErrorReport.h"
#include "program/ProgramCore.h"

#include <QMainWindow>

Binding::Binding(ProgramCore& core, MainWindowUi& ui, QMainWindow& window)
    : QObject(&window), m_core(core), m_ui(ui), m_window(window) {
}

void Binding::handle(const QString& place, const std::function<void(int& line)>& body) {
    ErrorReport::guard(m_core.services().dialogs, place, body);
}

std::function<void()> Binding::command(const char* place, std::function<void()> body) {
    return [this, place, body = std::move(body)] {
        handle(QLatin1String(place), [&body](int& line) {
            line = 1;
            body();
        });
    };
}
