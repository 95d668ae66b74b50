#pragma once

#include <QObject>
#include <QString>

// The text of the main window's status line FStatus. Core code writes here; the window shows it.
class StatusLine : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    const QString& text() const { return m_text; }
    void setText(const QString& text);
    void append(const QString& more) { setText(m_text + more); }

signals:
    void textChanged(const QString& text);

private:
    QString m_text;
};
