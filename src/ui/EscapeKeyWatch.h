#pragma once

#include <QObject>
#include <QPointer>

class QWidget;

// Watches the Esc key while a long synchronous job runs on the user-interface thread. Each poll
// lets pending events through (so labels repaint and Esc is seen) but swallows mouse, key and
// close events aimed at the guarded window, so nothing there can start while the job runs.
// Message boxes the job shows are other windows and work normally.
class EscapeKeyWatch : public QObject {
    Q_OBJECT
public:
    explicit EscapeKeyWatch(QWidget* guarded);
    ~EscapeKeyWatch() override;

    // True when Esc went down since the last poll or is still held.
    bool poll();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool aimedAtGuarded(QObject* watched) const;

    QPointer<QWidget> m_guarded;
    bool m_pressed = false;
    bool m_held = false;
};
