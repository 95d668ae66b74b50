#pragma once

#include <QObject>

// The keys the main playlist list reacts to: Delete, Ctrl+A, F3, and a letter or digit that opens
// the quick search. Installed as an event filter on the list; other keys pass through.
class PlaylistKeyFilter : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

signals:
    void deletePressed();
    void selectAllPressed();
    void searchAgainPressed();
    // The key as a character: letters arrive in upper case.
    void quickSearchTyped(const QString& character);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};
