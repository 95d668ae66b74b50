#pragma once

#include <QIcon>

#include <QPixmap>

// The program's icon (window, task bar, notification area), drawn at run time so that no image
// file has to travel with the executable. The installed icon theme files are drawn by the same code.
namespace AppIcon {
QIcon make();
// The icon at size x size pixels.
QPixmap draw(int size);
} // namespace AppIcon
