// The report buttons of the main window and the bit-rate histogram of the clicked song.
#include "app/TavoMP3PlayerMain.h"
#include "playlist/PlaylistLine.h"
#include "reports/BitrateReport.h"
#include "reports/Mp3Info.h"
#include "reports/PriorityReport.h"
#include "ui/EscapeKeyWatch.h"
#include "ui/SkinControl.h"
#include "ui/TavoxMiniDiagram.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QListView>
#include <QVBoxLayout>

QBoxLayout* TavoMP3PlayerMain::buildReportButtons(QWidget* parent) {
    auto* column = new QVBoxLayout;
    column->setObjectName(QStringLiteral("reportColumn"));
    auto button = [parent](const char* name, const QString& caption) {
        auto* b = new SkinControl(caption, parent);
        b->setObjectName(QLatin1String(name));
        b->setMinimumSize(129, 24);
        return b;
    };
    BReportPrio = button("BReportPrio", QStringLiteral("Liedprio Report"));
    BReportBitrate = button("BReportBitrate", QStringLiteral("Bitrate Report"));
    column->addWidget(BReportPrio);
    column->addWidget(BReportBitrate);
    return column;
}

QWidget* TavoMP3PlayerMain::buildMiniDiagram(QWidget* parent) {
    TavoxMiniDiagram1 = new TavoxMiniDiagram(parent);
    TavoxMiniDiagram1->setObjectName(QStringLiteral("TavoxMiniDiagram1"));
    return TavoxMiniDiagram1;
}

void TavoMP3PlayerMain::connectReports() {
    // Without the information call the diagram and the bitrate report would have nothing to show.
    TavoxMiniDiagram1->setVisible(MP3InfoAvailable);
    BReportBitrate->setVisible(MP3InfoAvailable);
    connect(BReportBitrate, &SkinControl::clicked, this, &TavoMP3PlayerMain::BReportBitrate_Click);
    connect(BReportPrio, &SkinControl::clicked, this, &TavoMP3PlayerMain::BReportPrio_Click);
    connect(FPlaylist, &QAbstractItemView::clicked, this, [this](const QModelIndex& index) {
        handle(QStringLiteral("FPlaylist_Click"), [this, index](int& line) {
            line = 1;
            showSongHistogram(index.row());
        });
    });
}

void TavoMP3PlayerMain::showSongHistogram(int row) {
    if (!MP3InfoAvailable || row < 0 || row >= m_playlists.PlaylistPaths.size())
        return;
    Mp3Info::Histogram histogram{};
    qint32 bitRate = 0, vbr = 0, playtime = 0;
    Mp3Info::GetMP3Info(PlaylistLine::path(m_playlists.PlaylistPaths.at(row)), bitRate, vbr, playtime,
                        histogram);
    TavoxMiniDiagram1->SetMiniDiagram(histogram);
}

void TavoMP3PlayerMain::BReportBitrate_Click() {
    handle(QStringLiteral("BReportBitrate_Click"), [this](int& line) {
        EscapeKeyWatch escape(this);
        BitrateReport report(m_services, BitrateReportPath);
        BitrateReport::Hooks hooks;
        hooks.showProgress = [this](const QString& text) {
            FTest->setText(text);
            FTest->repaint();
        };
        hooks.escapePressed = [&escape] { return escape.poll(); };
        report.Run(m_playlists.PlaylistPaths, hooks, line);
    });
}

void TavoMP3PlayerMain::BReportPrio_Click() {
    handle(QStringLiteral("BReportPrio_Click"), [this](int& line) {
        PriorityReport report(m_services, PriorityReportPath);
        // The counter is repainted while the loop runs; a 30 000-entry list must not spend its
        // time painting, so the label is painted at most every 40 ms.
        QElapsedTimer sincePaint;
        sincePaint.start();
        report.Run(
            m_playlists.PlaylistPaths,
            [this, &sincePaint](const QString& text) {
                FTest->setText(text);
                if (sincePaint.elapsed() >= 40) {
                    FTest->repaint();
                    sincePaint.restart();
                }
            },
            line);
    });
}
