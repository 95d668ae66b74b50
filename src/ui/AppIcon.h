#pragma once

#include <QIcon>

// The program's icon (window, task bar, notification area), drawn at run time so that no image
// file has to travel with the executable.
namespace AppIcon {
QIcon make();
}
