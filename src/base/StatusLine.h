#pragma once

#include <QObject>
#include <QString>

// The text of the main window's status line FStatus. Core code writes here; the window shows it.
// Texts are appended to (every shuffle pick adds its time), so only the newest kMaxLength characters
// are kept: a day of shuffle must not grow memory and the time every change takes.
class StatusLine : public QObject {
    Q_OBJECT
public:
    static constexpr qsizetype kMaxLength = 4000;
    using QObject::QObject;
    const QString& text() const { return m_text; }
    void setText(const QString& text);
    void append(const QString& more) { setText(m_text + more); }

signals:
    void textChanged(const QString& text);

private:
    QString m_text;
};
