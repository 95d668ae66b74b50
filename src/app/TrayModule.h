#pragma once

#include <QObject>
#include <QString>

class QMenu;
class QSystemTrayIcon;
class QWidget;

// The program's icon in the notification area: there from load until close, tip = current song.
// Where the desktop has no notification area the calls do nothing and the program runs on.
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
