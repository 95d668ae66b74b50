#pragma once

#include "app/Binding.h"
#include "ui/SliderHost.h"

// The transport row, the tray menu's transport entries, the history menu, the indicator labels, the
// volume slider, the display labels and the position slider, connected to the playback controller.
class TransportBinding : public Binding, public SliderHost {
    Q_OBJECT
public:
    TransportBinding(ProgramCore& core, MainWindowUi& ui, QMainWindow& window);

    // The position slider's knob is held: the title does not scroll, the time may change.
    bool HideScroll = false;
    bool AllowTimeChange = false;
    void setMonitorEnabled(bool enabled) override;
    void setHideScroll(bool on) override { HideScroll = on; }
    void setAllowTimeChange(bool on) override { AllowTimeChange = on; }
    void jumpToTime(qint32 seconds) override;
    void focusPlaylist() override;
    void clearShownTitle() override;

private:
    void connectButtons();
    void connectVolume();
    void connectDisplay();
};
