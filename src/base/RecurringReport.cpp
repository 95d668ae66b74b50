#include "base/RecurringReport.h"

#include "base/Dialogs.h"
#include "base/ErrorReport.h"
#include "base/RuntimeError.h"

RecurringReport::RecurringReport(Dialogs& dialogs, QString place)
    : m_dialogs(dialogs), m_place(std::move(place)) {
}

bool RecurringReport::run(const std::function<void(int& line)>& body) {
    int line = 0;
    QString description;
    try {
        body(line);
        m_lastShown.clear();
        return true;
    } catch (const RuntimeError& e) {
        description = e.description();
    } catch (const std::exception& e) {
        description = QString::fromLocal8Bit(e.what());
    } catch (...) {
        description = ErrorReport::unknownError();
    }
    const QString text = ErrorReport::text(m_place, line, description);
    if (m_boxOpen || text == m_lastShown)
        return false;
    m_lastShown = text;
    m_boxOpen = true;
    m_dialogs.message(text);
    m_boxOpen = false;
    return false;
}
