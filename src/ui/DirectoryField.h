#pragma once

#include <QPlainTextEdit>

// The music-directory box: one folder per line. Its text uses CR LF between lines, the form the
// setting stores, whatever the platform's line end.
class DirectoryField : public QPlainTextEdit {
    Q_OBJECT
public:
    explicit DirectoryField(QWidget* parent = nullptr);

    QString text() const;
    void setText(const QString& text);
};
