#include "ui/SchemePainter.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTextEdit>
#include <QWidget>

namespace SchemePainter {

namespace {

bool isField(const QWidget* w) {
    return qobject_cast<const QAbstractItemView*>(w) || qobject_cast<const QLineEdit*>(w) ||
           qobject_cast<const QTextEdit*>(w) || qobject_cast<const QPlainTextEdit*>(w) ||
           qobject_cast<const QComboBox*>(w) || qobject_cast<const QAbstractSpinBox*>(w);
}

bool isCaption(const QWidget* w) {
    return qobject_cast<const QLabel*>(w) || qobject_cast<const QRadioButton*>(w) ||
           qobject_cast<const QCheckBox*>(w) || qobject_cast<const QGroupBox*>(w);
}

bool isPushButton(const QWidget* w) {
    if (qobject_cast<const QRadioButton*>(w) || qobject_cast<const QCheckBox*>(w))
        return false;
    return qobject_cast<const QAbstractButton*>(w) || w->inherits("SkinControl");
}

} // namespace

QColor toColor(const Rgb& rgb) {
    return QColor(rgb.red, rgb.green, rgb.blue);
}

void setTextColour(QWidget* widget, const QColor& colour) {
    QPalette p = widget->palette();
    for (QPalette::ColorGroup g : {QPalette::Active, QPalette::Inactive}) {
        p.setColor(g, QPalette::WindowText, colour);
        p.setColor(g, QPalette::Text, colour);
        p.setColor(g, QPalette::ButtonText, colour);
    }
    // Disabled text keeps a hint of the colour so that a greyed control still belongs to the scheme.
    QColor dim = colour;
    dim.setAlpha(128);
    p.setColor(QPalette::Disabled, QPalette::WindowText, dim);
    p.setColor(QPalette::Disabled, QPalette::Text, dim);
    p.setColor(QPalette::Disabled, QPalette::ButtonText, dim);
    widget->setPalette(p);
}

void setBackColour(QWidget* widget, const QColor& colour) {
    QPalette p = widget->palette();
    if (isField(widget)) {
        p.setColor(QPalette::Base, colour);
        p.setColor(QPalette::Button, colour);
        p.setColor(QPalette::Window, colour);
        p.setColor(QPalette::AlternateBase, colour.darker(108));
    } else {
        p.setColor(QPalette::Window, colour);
        // Buttons (option and check boxes too) fill their face from the Button role.
        p.setColor(widget->backgroundRole(), colour);
        widget->setAutoFillBackground(true);
    }
    widget->setPalette(p);
}

QList<QWidget*> named(QWidget* root, const QStringList& names) {
    QList<QWidget*> found;
    // Only the controls of root's own window: secondary windows owned by it have their own rule.
    auto consider = [&found, root](QWidget* w) {
        if (w->window() == root->window() && !found.contains(w))
            found.append(w);
    };
    for (const QString& name : names) {
        if (name.endsWith(QStringLiteral("()"))) {
            const QString base = QRegularExpression::escape(name.chopped(2));
            const QRegularExpression re(QStringLiteral("^") + base + QStringLiteral("(\\(\\d+\\)|_?\\d+)?$"));
            if (re.match(root->objectName()).hasMatch())
                consider(root);
            for (QWidget* w : root->findChildren<QWidget*>(re))
                consider(w);
        } else {
            if (root->objectName() == name)
                consider(root);
            for (QWidget* w : root->findChildren<QWidget*>(name))
                consider(w);
        }
    }
    return found;
}

void paintWindowRole(QWidget* window, ColorRoles::Id role, const QColor& colour) {
    const QList<QWidget*> children = window->findChildren<QWidget*>();
    switch (role) {
    case ColorRoles::Text:
        for (QWidget* w : children)
            if (isCaption(w))
                setTextColour(w, colour);
        break;
    case ColorRoles::Background:
        setBackColour(window, colour);
        break;
    case ColorRoles::FieldText:
        for (QWidget* w : children)
            if (isField(w))
                setTextColour(w, colour);
        break;
    case ColorRoles::FieldBackground:
        for (QWidget* w : children)
            if (isField(w))
                setBackColour(w, colour);
        break;
    case ColorRoles::ButtonText:
        for (QWidget* w : children)
            if (isPushButton(w))
                setTextColour(w, colour);
        break;
    default:
        break;
    }
}

} // namespace SchemePainter
