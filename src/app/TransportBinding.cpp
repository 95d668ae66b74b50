#include "app/TransportBinding.h"

#include "app/MainWindowUi.h"
#include "base/RuntimeError.h"
#include "playlist/widgets/PriorityFrame.h"
#include "program/ProgramCore.h"
#include "ui/SkinControl.h"
#include "ui/TavoSlider.h"

#include <QAction>
#include <QCursor>
#include <QLabel>
#include <QListView>
#include <QMenu>
#include <QMouseEvent>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSlider>

namespace {

// Mouse buttons on a control, wherever on it they go down and come up. The volume slider's own
// pressed/released signals only come for its handle; a click into the groove moves the volume too.
class MouseButtons : public QObject {
public:
    MouseButtons(QWidget* control, std::function<void()> onPress, std::function<void()> onRelease)
        : QObject(control), m_onPress(std::move(onPress)), m_onRelease(std::move(onRelease)) {
        control->installEventFilter(this);
    }
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonPress)
            m_onPress();
        else if (event->type() == QEvent::MouseButtonRelease)
            m_onRelease();
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<void()> m_onPress;
    std::function<void()> m_onRelease;
};

// Clicks on the indicator labels, which are plain labels of the display panel.
class LabelClicks : public QObject {
public:
    LabelClicks(QLabel* label, std::function<void()> onClick)
        : QObject(label), m_onClick(std::move(onClick)) {
        label->installEventFilter(this);
        label->setCursor(Qt::PointingHandCursor);
    }
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonRelease &&
            static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton)
            m_onClick();
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<void()> m_onClick;
};

} // namespace

TransportBinding::TransportBinding(ProgramCore& core, MainWindowUi& ui, QMainWindow& window)
    : Binding(core, ui, window) {
    setObjectName(QStringLiteral("TransportBinding"));
    m_ui.TavoSlider1->setHost(this);
    connectButtons();
    connectVolume();
    connectDisplay();
}

void TransportBinding::connectButtons() {
    PlaybackController& playback = m_core.playback();
    for (int i = 1; i <= PrevSongs::kSlots; ++i)
        connect(m_ui.MenuPrev[i], &QAction::triggered, this,
                command("MenuPrev_Click", [&playback, i] { playback.playHistory(i); }));
    auto play = command("BPlay_Click", [&playback] { playback.playSelected(); });
    auto pause = command("BPause_Click", [&playback] { playback.pause(); });
    auto stop = command("BStop_Click", [&playback] { playback.stop(); });
    auto next = command("BNext_Click", [&playback] { playback.next(); });
    auto shuffle = command("lblShuffle_Click", [&playback] { playback.toggleShuffle(); });
    connect(m_ui.BPlay, &SkinControl::clicked, this, play);
    connect(m_ui.BPause, &SkinControl::clicked, this, pause);
    connect(m_ui.BStop, &SkinControl::clicked, this, stop);
    connect(m_ui.BNext, &SkinControl::clicked, this, next);
    connect(m_ui.MenuPlay, &QAction::triggered, this, play);
    connect(m_ui.MenuPause, &QAction::triggered, this, pause);
    connect(m_ui.MenuStop, &QAction::triggered, this, stop);
    connect(m_ui.MenuNext, &QAction::triggered, this, next);
    connect(m_ui.MenuShuffleStatus, &QAction::triggered, this, shuffle);
    connect(m_ui.MenuPrevious, &QAction::triggered, this,
            command("MenuPrevious_Click", [&playback] { playback.previous(); }));
    connect(m_ui.BLast, &SkinControl::clicked, this,
            command("BLast_Click", [this] { m_ui.MenuPrevHead->popup(QCursor::pos()); }));
    new LabelClicks(m_ui.lblShuffle, shuffle);
    new LabelClicks(m_ui.LAutoCue, command("LAutoCue_Click", [&playback] { playback.toggleAutoCue(); }));
    // Double click or Enter on a line plays it.
    connect(m_ui.FPlaylist, &QAbstractItemView::activated, this,
            command("FPlaylist_DblClick", [this, &playback] {
                m_ui.PL[1]->setChecked(true);
                playback.transport().Play(m_core.playlists().list(1).currentRow());
            }));
    connect(m_ui.PL[1], &QRadioButton::toggled, this,
            [&playback](bool on) { playback.setMainListActive(on); });
    connect(&playback, &PlaybackController::focusPlaylistRequested, this, [this] {
        if (m_ui.FPlaylist->isVisible())
            m_ui.FPlaylist->setFocus();
    });
    connect(&playback, &PlaybackController::previousMenuChanged, this,
            [this](const QStringList& captions, const QList<bool>& visible) {
                for (int i = 1; i <= PrevSongs::kSlots; ++i) {
                    m_ui.MenuPrev[i]->setText(captions.at(i - 1));
                    m_ui.MenuPrev[i]->setVisible(visible.at(i - 1));
                }
            });
    connect(&playback, &PlaybackController::priorityDisplayRefreshRequested, m_ui.Frame1,
            &PriorityFrame::clearChoice);
}

void TransportBinding::connectVolume() {
    PlaybackController& playback = m_core.playback();
    connect(m_ui.sldVol, &QSlider::valueChanged, this,
            command("sldVol_Change", [this, &playback] { playback.moveVolume(m_ui.sldVol->value()); }));
    new MouseButtons(m_ui.sldVol, command("sldVol_MouseDown", [&playback] { playback.pressVolume(); }),
                     command("sldVol_MouseUp", [&playback] { playback.releaseVolume(); }));
    // The stored volume at start and the desktop's volume: shown, without moving the volume again.
    auto show = [this](int volume) {
        if (m_ui.sldVol->value() == volume)
            return;
        const QSignalBlocker quiet(m_ui.sldVol);
        m_ui.sldVol->setValue(volume);
    };
    connect(&playback, &PlaybackController::volumeRestored, this, show);
    connect(&playback, &PlaybackController::volumeChanged, this, show);
}

void TransportBinding::connectDisplay() {
    PlaybackController& playback = m_core.playback();
    QLabel* labels[] = {m_ui.lblTrackName, m_ui.lblTime, m_ui.LMP3Bitrate, m_ui.LMP3Samplerate, m_ui.FTest2};
    connect(&playback, &PlaybackController::labelText, this,
            [labels](PlaybackMonitor::Label label, const QString& text) { labels[label]->setText(text); });
    connect(&playback, &PlaybackController::testText, m_ui.FTest, &QLabel::setText);
    // The monitor feeds the slider every tick. A length of 0 (no player yet, or a file it cannot
    // measure) makes "SliderValue" fail; the tick skips such a failing display step silently,
    // else every tick would stack another message box.
    connect(&playback, &PlaybackController::sliderValue, this, [this](const QString& name, int value) {
        try {
            m_ui.TavoSlider1->SetValue(name, value);
        } catch (const RuntimeError&) {
        }
    });
}

void TransportBinding::setMonitorEnabled(bool enabled) {
    m_core.playback().holdPosition(!enabled);
}

void TransportBinding::jumpToTime(qint32 seconds) {
    handle(QStringLiteral("TavoSlider1_MouseUp"), [this, seconds](int& line) {
        line = 1;
        m_core.playback().jumpTo(seconds);
    });
}

void TransportBinding::focusPlaylist() {
    m_ui.FPlaylist->setFocus();
}

void TransportBinding::clearShownTitle() {
    m_core.playback().clearShownTitle();
}
