#pragma once

#include <QObject>
#include <QString>
#include <functional>

class QMenu;
class QSystemTrayIcon;
class QWidget;

// The program's icon in the notification area: there from load until close, tip = current song.
// The icon is asked for even while the desktop has no notification area: login starts the program
// and the panel at the same time, and the icon appears as soon as a panel offers a place for it.
class TrayModule : public QObject {
    Q_OBJECT
public:
    static constexpr int kTipField = 63; // the classic tip field shows at most this many characters
    static QString idleTip() { return QStringLiteral("Tavo MP3 Player!"); }
    static QString songTip(const QString& songName);

    explicit TrayModule(QWidget* window, QMenu* menu, QObject* parent = nullptr);
    ~TrayModule() override;

    void add(const QString& tip);
    void modify(const QString& tip);
    void remove();

    bool isAdded() const { return m_added; }
    // Whether hiding the window leaves the user a way back: the icon sits in a notification area.
    // Without one the window must stay reachable (minimised, in the task bar).
    bool canHideWindow() const { return m_added && trayAvailable(); }
    // Where the desktop offers a notification area now; tests replace it.
    std::function<bool()> trayAvailable;
    const QString& tip() const { return m_tip; }
    QSystemTrayIcon* icon() const { return m_icon; }

signals:
    // Left click or double click on the icon.
    void restoreRequested();

private:
    QSystemTrayIcon* m_icon = nullptr;
    QString m_tip;
    bool m_added = false;
};
