#pragma once

#include "base/Services.h"
#include "reports/Mp3Info.h"

#include <QString>
#include <QStringList>
#include <functional>

// The "Bitrate Report": times the MP3 information call on the first songs, tells the user how
// long the run will take, then writes one line per song for a fixed 101 songs.
class BitrateReport {
public:
    using InfoCall = std::function<qint32(const QString& path, qint32& bitRate, qint32& vbr, qint32& playtime,
                                          Mp3Info::Histogram& histogram)>;
    struct Hooks {
        // Gets the FTest progress line; the window repaints the label at once.
        std::function<void(const QString& text)> showProgress;
        // Asked after every song: has the user pressed Esc?
        std::function<bool()> escapePressed;
    };

    // The fixed figure of the run: songs 0 to 100, and "/100" in every text.
    static constexpr int kLastSong = 100;

    explicit BitrateReport(Services& services, QString reportPath = QString());
    void setInfoCall(InfoCall call) { m_info = std::move(call); }

    const QString& reportPath() const { return m_path; }
    // The question before the run, with CR-only line breaks.
    QString questionText(double secondsPerSong, double estimateMinutes, qsizetype songCount) const;

    // BReportBitrate click. `line` follows the numbered steps for the error report; run-time
    // errors (fewer than 101 songs, short entries, a file that cannot be created) propagate.
    void Run(const QStringList& lines, const Hooks& hooks, int& line);

private:
    QString songPath(const QStringList& lines, int index) const;
    qint32 callInfo(const QString& path);
    float now() const;

    Services& m_services;
    QString m_path;
    InfoCall m_info;
    // The outputs of the information call: zero at the start of a run and never reset in between.
    qint32 m_bitRate = 0;
    qint32 m_vbr = 0;
    qint32 m_playtime = 0;
    Mp3Info::Histogram m_histogram{};
};
