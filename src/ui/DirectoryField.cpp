#include "ui/DirectoryField.h"

#include <QFontMetrics>

DirectoryField::DirectoryField(QWidget* parent) : QPlainTextEdit(parent) {
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setTabChangesFocus(true);
    const int line = QFontMetrics(font()).lineSpacing();
    setFixedHeight(line * 3 + 2 * frameWidth() + 8);
}

QString DirectoryField::text() const {
    QString t = toPlainText();
    t.replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
    return t;
}

void DirectoryField::setText(const QString& text) {
    QString t = text;
    t.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    setPlainText(t);
}
