#include "app/GuardedApplication.h"

#include "base/Dialogs.h"
#include "base/ErrorReport.h"
#include "base/RuntimeError.h"

#include <cstdio>

GuardedApplication::GuardedApplication(int& argc, char** argv) : QApplication(argc, argv) {
}

bool GuardedApplication::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const RuntimeError& e) {
        report(receiver, e.description());
    } catch (const std::exception& e) {
        report(receiver, QString::fromLocal8Bit(e.what()));
    } catch (...) {
        report(receiver, ErrorReport::unknownError());
    }
    return true;
}

void GuardedApplication::report(QObject* receiver, const QString& description) {
    QString place = receiver ? receiver->objectName() : QString();
    if (place.isEmpty() && receiver)
        place = QString::fromLatin1(receiver->metaObject()->className());
    const QString text = ErrorReport::text(place, 0, description);
    if (m_dialogs)
        m_dialogs->message(text);
    else
        std::fprintf(stderr, "%s\n", qPrintable(text));
}
