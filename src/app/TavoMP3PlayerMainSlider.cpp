// The position slider TavoSlider1 on the display panel and what it does to the main window.
#include "app/TavoMP3PlayerMain.h"
#include "base/ErrorReport.h"
#include "base/RuntimeError.h"
#include "playback/PlaybackMonitor.h"
#include "player/PlayerLink.h"
#include "ui/TavoSlider.h"

#include <QGridLayout>
#include <QListView>
#include <QTimer>

void TavoMP3PlayerMain::buildPositionSlider() {
    TavoSlider1 = new TavoSlider(Picture1);
    TavoSlider1->setHost(this);
    // Below the display texts, across the panel's text columns.
    if (auto* grid = qobject_cast<QGridLayout*>(Picture1->layout()))
        grid->addWidget(TavoSlider1, grid->rowCount(), 0, 1, 6);
}

void TavoMP3PlayerMain::connectPositionSlider() {
    // The monitor feeds the slider every tick. A length of 0 (no player yet, or a file it cannot
    // measure) makes "SliderValue" fail; the tick skips such a failing display step silently,
    // else every tick would stack another message box.
    connect(m_monitor, &PlaybackMonitor::sliderValue, this, [this](const QString& name, int value) {
        try {
            TavoSlider1->SetValue(name, value);
        } catch (const RuntimeError&) {
        }
    });
}

void TavoMP3PlayerMain::setMonitorEnabled(bool enabled) {
    enabled ? m_monitor->tmrTime.start() : m_monitor->tmrTime.stop();
}

void TavoMP3PlayerMain::setHideScroll(bool on) {
    HideScroll = on;
}

void TavoMP3PlayerMain::setAllowTimeChange(bool on) {
    AllowTimeChange = on;
}

void TavoMP3PlayerMain::jumpToTime(qint32 seconds) {
    handle(QStringLiteral("TavoSlider1_MouseUp"), [this, seconds](int& line) {
        line = 1;
        m_player->WinampJumpToTime(seconds, 0);
    });
}

void TavoMP3PlayerMain::focusPlaylist() {
    FPlaylist->setFocus();
}

void TavoMP3PlayerMain::clearShownTitle() {
    m_monitor->clearShownName();
}
