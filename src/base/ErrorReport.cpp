#include "base/ErrorReport.h"

#include "base/RuntimeError.h"

QString ErrorReport::text(const QString& place, int line, const QString& description) {
    return QStringLiteral("Fehler in ") + place + QStringLiteral(" in Zeile ") + QString::number(line) +
           QStringLiteral(": ") + description;
}

bool ErrorReport::guard(Dialogs& dialogs, const QString& place, const std::function<void(int& line)>& body) {
    int line = 0;
    QString description;
    try {
        body(line);
        return true;
    } catch (const RuntimeError& e) {
        description = e.description();
    } catch (const std::exception& e) {
        description = QString::fromLocal8Bit(e.what());
    } catch (...) {
        description = unknownError();
    }
    dialogs.message(text(place, line, description));
    return false;
}
