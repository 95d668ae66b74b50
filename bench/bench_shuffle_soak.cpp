// A long shuffle session: the whole program (main window, playback core, the mpv link) plays 2000 very
// short silent songs in shuffle on a real headless mpv. What a day of shuffle must not do is grow: the
// resident memory after the first 200 songs against after the last, and the CPU time the program spends
// per song change over the first 200 against the last 200 songs. Targets: memory within 5 MB, CPU per
// song of the last 200 at most 1.5 times that of the first 200.
#include "app/TavoMP3PlayerMain.h"
#include "base/AppGlobals.h"
#include "base/Clock.h"
#include "playback/SongSelection.h"
#include "player/MpvLink.h"
#include "playlist/PlaylistFile.h"
#include "program/ProgramCore.h"
#include "support/MpvTestPlayer.h"
#include "support/SilentMp3.h"
#include "support/TestServices.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QFile>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <ctime>
#include <unistd.h>

namespace {

constexpr int kSongs = 2000;
constexpr int kWindow = 200;
constexpr int kFiles = 40;
constexpr double kSongSeconds = 0.05;

double residentMb() {
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> fields = statm.readAll().split(' ');
    return fields.value(1).toDouble() * double(::sysconf(_SC_PAGESIZE)) / (1024.0 * 1024.0);
}

double cpuMs() {
    timespec t{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
    return double(t.tv_sec) * 1000.0 + double(t.tv_nsec) / 1e6;
}

struct Sample {
    double rss = 0;
    double cpu = 0;
};

void BM_ShuffleSoak(benchmark::State& state) {
    for (auto _ : state) {
        MpvTestPlayer env;
        QStringList lines;
        for (int i = 0; i < kFiles; ++i) {
            const QString song = env.filePath(QStringLiteral("Lied %1.mp3").arg(i, 2, 10, QLatin1Char('0')));
            SilentMp3::write(song, kSongSeconds);
            lines << song + QStringLiteral(":5");
        }
        TestServices t;
        SystemClock clock; // the time each pick appends to the status line is a real one
        MpvLink link(t.status, t.dialogs, env.socketPath());
        Services services{t.settings, t.dialogs, clock, t.random, t.status, PathStyle::Posix, nullptr, &link};
        const QString list = env.filePath(QStringLiteral("liste.txt"));
        PlaylistFile::writeLines(list, lines);
        t.settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("WinampPath"),
                               MpvTestPlayer::mpvPath());
        t.settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("UserMP3Directory"),
                               env.filePath({}));
        t.settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("PlaylistFile"), list);
        t.settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("ShuffleStatus"),
                               QStringLiteral("True"));
        AppGlobals::PlayOnStart = true;
        ProgramCore core(services);
        TavoMP3PlayerMain w(core);
        int started = 0;
        Sample first, afterFirst, beforeLast, last;
        QObject::connect(&core.playback().selection(), &SongSelection::songStarted, [&] {
            ++started;
            if (started == 1)
                first = {residentMb(), cpuMs()};
            if (started == kWindow + 1)
                afterFirst = {residentMb(), cpuMs()};
            if (started == kSongs - kWindow)
                beforeLast = {residentMb(), cpuMs()};
            if (started == kSongs)
                last = {residentMb(), cpuMs()};
        });
        w.load();
        const QDeadlineTimer deadline(30 * 60 * 1000);
        while (started < kSongs && !deadline.hasExpired())
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 50);
        w.close();
        const double firstCpu = (afterFirst.cpu - first.cpu) / kWindow;
        const double lastCpu = (last.cpu - beforeLast.cpu) / kWindow;
        state.counters["songs"] = started;
        state.counters["rss_mb_at_200"] = afterFirst.rss;
        state.counters["rss_mb_at_2000"] = last.rss;
        state.counters["cpu_ms_per_song_first_200"] = firstCpu;
        state.counters["cpu_ms_per_song_last_200"] = lastCpu;
        state.counters["status_chars"] = double(t.status.text().size());
        std::printf(
            "shuffle soak: %d songs; resident %.1f MB after %d songs, %.1f MB after %d (target: +-5 MB); "
            "CPU per song %.2f ms over the first %d, %.2f ms over the last %d (ratio %.2f, target <= 1.5); "
            "window %d px wide\n",
            started, afterFirst.rss, kWindow, last.rss, kSongs, firstCpu, kWindow, lastCpu, kWindow,
            firstCpu > 0 ? lastCpu / firstCpu : 0.0, w.width());
    }
}

} // namespace

BENCHMARK(BM_ShuffleSoak)->Iterations(1)->Unit(benchmark::kSecond);

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    if (MpvTestPlayer::mpvPath().isEmpty()) {
        std::fprintf(stderr, "mpv is not installed\n");
        return 0;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
