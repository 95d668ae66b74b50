#include "app/TrayModule.h"

#include <QMenu>
#include <QSystemTrayIcon>
#include <QWidget>

QString TrayModule::songTip(const QString& songName) {
    return (idleTip() + QStringLiteral(": ") + songName).left(kTipField);
}

TrayModule::TrayModule(QWidget* window, QMenu* menu, QObject* parent)
    : QObject(parent), trayAvailable([] { return QSystemTrayIcon::isSystemTrayAvailable(); }) {
    m_icon = new QSystemTrayIcon(window->windowIcon(), this);
    m_icon->setObjectName(QStringLiteral("TrayIcon"));
    m_icon->setContextMenu(menu);
    connect(m_icon, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick)
            emit restoreRequested();
    });
}

TrayModule::~TrayModule() = default;

void TrayModule::add(const QString& tip) {
    m_tip = tip.left(kTipField);
    m_icon->setToolTip(m_tip);
    m_added = true;
    m_icon->show();
}

void TrayModule::modify(const QString& tip) {
    m_tip = tip.left(kTipField);
    m_icon->setToolTip(m_tip);
}

void TrayModule::remove() {
    m_added = false;
    m_icon->hide();
}
