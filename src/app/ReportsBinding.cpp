#include "app/ReportsBinding.h"

#include "app/MainWindowUi.h"
#include "playlist/PlaylistLine.h"
#include "playlist/SongIdentities.h"
#include "program/ProgramCore.h"
#include "reports/BitrateReport.h"
#include "reports/Mp3Info.h"
#include "reports/PriorityReport.h"
#include "ui/EscapeKeyWatch.h"
#include "ui/SkinControl.h"
#include "ui/TavoxMiniDiagram.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QListView>
#include <QMainWindow>

ReportsBinding::ReportsBinding(ProgramCore& core, MainWindowUi& ui, QMainWindow& window)
    : Binding(core, ui, window) {
    setObjectName(QStringLiteral("ReportsBinding"));
    connect(m_ui.BReportBitrate, &SkinControl::clicked, this, &ReportsBinding::BReportBitrate_Click);
    connect(m_ui.BReportPrio, &SkinControl::clicked, this, &ReportsBinding::BReportPrio_Click);
    connect(m_ui.FPlaylist, &QAbstractItemView::clicked, this, [this](const QModelIndex& index) {
        handle(QStringLiteral("FPlaylist_Click"), [this, index](int& line) {
            line = 1;
            showSongHistogram(index.row());
        });
    });
}

void ReportsBinding::showSongHistogram(int row) {
    const QStringList& paths = m_core.playlists().PlaylistPaths;
    if (row < 0 || row >= paths.size())
        return;
    Mp3Info::Histogram histogram{};
    qint32 bitRate = 0, vbr = 0, playtime = 0;
    Mp3Info::GetMP3Info(PlaylistLine::path(paths.at(row)), bitRate, vbr, playtime, histogram);
    m_ui.TavoxMiniDiagram1->SetMiniDiagram(histogram);
}

void ReportsBinding::BReportBitrate_Click() {
    handle(QStringLiteral("BReportBitrate_Click"), [this](int& line) {
        EscapeKeyWatch escape(&m_window);
        BitrateReport report(m_core.services(), m_core.BitrateReportPath);
        BitrateReport::Hooks hooks;
        hooks.showProgress = [this](const QString& text) {
            m_ui.FTest->setText(text);
            m_ui.FTest->repaint();
        };
        hooks.escapePressed = [&escape] { return escape.poll(); };
        rememberSongs();
        report.Run(m_core.playlists().PlaylistPaths, hooks, line);
    });
}

void ReportsBinding::rememberSongs() {
    // The songs a report reads are songs seen: their identities let them keep their priorities.
    if (SongIdentities* identities = m_core.services().songIdentities)
        identities->rememberLines(m_core.playlists().PlaylistPaths);
}

void ReportsBinding::BReportPrio_Click() {
    handle(QStringLiteral("BReportPrio_Click"), [this](int& line) {
        PriorityReport report(m_core.services(), m_core.PriorityReportPath);
        rememberSongs();
        // The counter is repainted while the loop runs; a 300 000-entry list must not spend its
        // time on texts and paints nobody sees, so the label is set and painted at most every 40 ms
        // and at the last entry.
        QElapsedTimer sincePaint;
        sincePaint.start();
        report.Run(
            m_core.playlists().PlaylistPaths,
            [this, &sincePaint](qint32 done, qint32 last) {
                if (done == last || sincePaint.elapsed() >= 40) {
                    m_ui.FTest->setText(PriorityReport::progressText(done, last));
                    m_ui.FTest->repaint();
                    sincePaint.restart();
                }
            },
            line);
    });
}
