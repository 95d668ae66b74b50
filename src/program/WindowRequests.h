#pragma once

#include <QObject>

// What parts of the program that know no window ask of it: come to the front (from the notification
// area too) or close as "Beenden" does. main connects them to the window.
class WindowRequests : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

signals:
    void raiseRequested();
    void closeRequested();
};
