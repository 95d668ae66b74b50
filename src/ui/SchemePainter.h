#pragma once

#include "appearance/ColorRoles.h"
#include "appearance/Rgb.h"

#include <QColor>
#include <QStringList>

class QWidget;

// Puts scheme colours on widgets through their palettes. Each call sets only the roles it owns,
// so later calls (another role, another preset) repaint cleanly, and custom controls that draw
// from their palette follow without extra code.
namespace SchemePainter {

QColor toColor(const Rgb& rgb);

// Text of labels, option and check boxes, buttons, list and edit fields.
void setTextColour(QWidget* widget, const QColor& colour);
// Face of labels and frames (filled), or the base of list and edit fields.
void setBackColour(QWidget* widget, const QColor& colour);

// The widgets of root's window below `root` (and root itself) with one of these object names. A name ending
// in
// "()" stands for a control array: "FPrio()" finds FPrio, FPrio(0), FPrio_0, FPrio0 ...
QList<QWidget*> named(QWidget* root, const QStringList& names);

// A secondary window by the common rule: labels and option buttons take Text, the window face
// Background, lists and text fields Field Text / Field Background, push buttons Button Text.
// Roles without a rule on secondary windows are ignored.
void paintWindowRole(QWidget* window, ColorRoles::Id role, const QColor& colour);

} // namespace SchemePainter
