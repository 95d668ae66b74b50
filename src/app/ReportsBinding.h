#pragma once

#include "app/Binding.h"

// The report buttons and the bit-rate histogram of the clicked song.
class ReportsBinding : public Binding {
    Q_OBJECT
public:
    ReportsBinding(ProgramCore& core, MainWindowUi& ui, QMainWindow& window);

    void BReportBitrate_Click();
    void BReportPrio_Click();

private:
    void showSongHistogram(int row);
    void rememberSongs();
};
