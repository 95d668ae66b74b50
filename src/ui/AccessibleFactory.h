#pragma once

#include <QString>

class QAccessibleInterface;
class QObject;

// Tells Qt's accessibility how to present our own controls: skin buttons as plain push buttons,
// the position slider as a slider with
// a value, the mini diagram as an image with a description, and (with design names switched on)
// menu entries with their design names.
namespace AccessibleFactory {

// Once per process, before the first window is shown.
void install();
QAccessibleInterface* create(const QString& className, QObject* object);

} // namespace AccessibleFactory
