#pragma once

#include <QObject>
#include <QPointer>

// The keys the main playlist list reacts to: Delete, Ctrl+A, F3, and a letter or digit that opens
// the quick search. Installed as an event filter on the list; other keys pass through.
class PlaylistKeyFilter : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    // The text field of the quick search that is open. Typing goes on faster than the new window
    // takes the focus: while it is open, what is typed in the list goes on into its field, so that
    // one search gets every letter instead of one window per letter.
    void setQuickSearchField(QWidget* field) { m_quickSearchField = field; }

signals:
    void deletePressed();
    void selectAllPressed();
    void searchAgainPressed();
    // The key as a character: letters arrive in upper case.
    void quickSearchTyped(const QString& character);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPointer<QWidget> m_quickSearchField;
};
