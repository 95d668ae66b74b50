#pragma once

#include <QString>

class MainWindowUi;
class QMainWindow;
class SkinControl;
class StatusLine;
class TavoMP3QuickSearch;

// The skin buttons' faces: the four bitmaps beside the program, given to every skin button of the
// main window at the end of its load, and to the windows it opens.
class WindowSkins {
public:
    WindowSkins(MainWindowUi& ui, QMainWindow& window, StatusLine& status);

    QString SkinWide, SkinWideOver, SkinNarrow, SkinNarrowOver;
    void SetupSkins();
    // The buttons do not notice the mouse leaving; moves over the window's own area reset them.
    void ResetSkinHover();
    // The narrow face and the captions of a freshly opened quick search.
    void dress(TavoMP3QuickSearch* window);

private:
    void narrowFace(SkinControl* button, const QString& caption);

    MainWindowUi& m_ui;
    QMainWindow& m_window;
    StatusLine& m_status;
};
