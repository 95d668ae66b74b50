#pragma once

#include <QtGlobal>

// What the position slider does to the window that owns it while the user drags the knob.
class SliderHost {
public:
    virtual ~SliderHost() = default;
    // The playback monitor tmrTime: off while the knob is held, so that it does not move it.
    virtual void setMonitorEnabled(bool enabled) = 0;
    virtual void setHideScroll(bool on) = 0;
    virtual void setAllowTimeChange(bool on) = 0;
    // WinampJumpToTime(seconds, 0) on the player link; errors go to the caller.
    virtual void jumpToTime(qint32 seconds) = 0;
    virtual void focusPlaylist() = 0;
    // The shown title name becomes "", so that the next monitor tick sets the title up again.
    virtual void clearShownTitle() = 0;
};
