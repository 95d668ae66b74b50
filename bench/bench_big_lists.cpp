// A collection of 300 000 songs through the main window (program core, window, list views on the
// offscreen platform), each operation against a command-line reference timed in the same run:
// - "Playliste erstellen" and "Playliste aktualisieren" (unchanged tree, and every entry gone) within
//   2x `find | sort` of the same tree;
// - closing with "Ja" to the save question within 4x `cp` + `sync` of the list file;
// - "Liedprio Report" within 4x `grep -v` of the list file;
// - the window never frozen for more than 250 ms while a build or an update runs (a 10 ms timer on
//   the window's thread, largest gap between its ticks);
// - at most 500 bytes of resident memory per loaded entry.
// The tree (TAVO_BENCH_SONGS files, 300 000 unless set) is made once under TAVO_BENCH_TREE
// (/tmp/tavo-bench-<songs>) and reused by later runs; its list files list-<n>.txt (100 000,
// 200 000 and all songs) serve bench/cold_start.sh for the start to a visible list.
#include "BenchServices.h"
#include "playlist/PlaylistFile.h"
#include "playlist/SongIdentities.h"
#include "support/MainWindowRig.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTimer>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <optional>
#include <unistd.h>

namespace {

int songCount() {
    const int n = qEnvironmentVariableIntValue("TAVO_BENCH_SONGS");
    return n > 0 ? n : 300000;
}

QString benchFolder() {
    const QString set = qEnvironmentVariable("TAVO_BENCH_TREE");
    return set.isEmpty() ? QStringLiteral("/tmp/tavo-bench-%1").arg(songCount()) : set;
}

QString musicRoot() {
    return benchFolder() + QStringLiteral("/Musik");
}

QString listFile(int entries) {
    return benchFolder() + QStringLiteral("/list-%1.txt").arg(entries);
}

// 30 songs an album, 10 albums an artist; a few bytes of MPEG frame header each. Made once: a
// marker written last tells a complete tree from one a stopped run left behind.
void ensureTree() {
    const int songs = songCount();
    const QString marker = benchFolder() + QStringLiteral("/complete");
    if (QFile::exists(marker))
        return;
    QDir(benchFolder()).removeRecursively();
    QStringList lines;
    lines.reserve(songs);
    for (int i = 0; i < songs; ++i) {
        const QString folder =
            musicRoot() +
            QStringLiteral("/Interpret %1/Album %2").arg(i / 300, 4, 10, QLatin1Char('0')).arg(i / 30 % 10);
        if (i % 30 == 0)
            QDir().mkpath(folder);
        const QString path =
            folder + QStringLiteral("/%1 - Titel %2.mp3").arg(i % 30 + 1, 2, 10, QLatin1Char('0')).arg(i);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write("\xff\xfb\x90\x04", 4) != 4)
            qFatal("cannot write %s", qPrintable(path));
        // A third of the songs rarely played, so the priority report has lines to write.
        lines << path + QLatin1Char(':') + QChar(u'0' + i % 6);
    }
    std::sort(lines.begin() + 1, lines.end());
    for (int entries : {100000, 200000, songs})
        if (entries <= songs)
            PlaylistFile::writeLines(listFile(entries), lines.mid(0, entries));
    QFile(marker).open(QIODevice::WriteOnly);
}

double secondsOf(const std::function<void()>& work) {
    const auto started = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
}

double shellSeconds(const QString& command) {
    return secondsOf([&] {
        if (std::system(command.toLocal8Bit().constData()) != 0)
            qFatal("failed: %s", qPrintable(command));
    });
}

QString quoted(const QString& path) {
    return QLatin1Char('\'') + path + QLatin1Char('\'');
}

// The longest time the window's thread ran no timer while the work ran: a 10 ms timer's ticks.
class FreezeWatch {
public:
    FreezeWatch() {
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.setInterval(10);
        QObject::connect(&m_timer, &QTimer::timeout, [this] { tick(); });
    }
    // Runs the work and returns its seconds; the longest gap is worstMs() afterwards.
    double run(const std::function<void()>& work) {
        m_clock.start();
        m_last = 0;
        m_worst = 0;
        m_timer.start();
        const double seconds = secondsOf(work);
        // What the work left to the event loop (the list view laying out and painting its new rows)
        // freezes the window as much.
        QEventLoop settle;
        QTimer::singleShot(500, &settle, &QEventLoop::quit);
        settle.exec();
        tick();
        m_timer.stop();
        m_worsts.push_back(double(m_worst));
        return seconds;
    }
    double worstMs() const { return *std::max_element(m_worsts.begin(), m_worsts.end()); }

private:
    void tick() {
        const qint64 now = m_clock.elapsed();
        m_worst = qMax(m_worst, now - m_last);
        m_last = now;
    }
    QTimer m_timer;
    QElapsedTimer m_clock;
    qint64 m_last = 0;
    qint64 m_worst = 0;
    std::vector<double> m_worsts;
};

qint64 residentBytes() {
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly))
        return 0;
    return statm.readAll().split(' ').value(1).toLongLong() * sysconf(_SC_PAGESIZE);
}

// A window on the test doubles whose music folder is the tree, loaded with `list` (none: empty).
struct BigRig : MainWindowRig {
    explicit BigRig(const QString& list = QString()) {
        setting("WinampPath", QStringLiteral("/usr/bin/mpv"));
        setting("UserMP3Directory", musicRoot());
        if (!list.isEmpty())
            setting("PlaylistFile", list);
        w.load();
        w.show();
    }
};

void report(benchmark::State& state, const std::vector<double>& program, const std::vector<double>& reference,
            const char* referenceName) {
    state.counters["ms"] = median(program) * 1000;
    state.counters[std::string(referenceName) + "_ms"] = median(reference) * 1000;
    state.counters["x_" + std::string(referenceName)] = median(program) / median(reference);
}

constexpr int kRuns = 3;

// First, in a process that has loaded nothing else yet.
void BM_MemoryPerEntry(benchmark::State& state) {
    ensureTree();
    for (auto _ : state) {
        BigRig rig;
        const qint64 before = residentBytes();
        rig.core.playlists().FuncReadPlaylistAndDisplay(listFile(songCount()), true, 1);
        QCoreApplication::processEvents();
        const qint64 after = residentBytes();
        if (rig.core.playlists().list(1).count() != songCount())
            state.SkipWithError("not every entry was loaded");
        state.counters["bytes_per_entry"] = double(after - before) / songCount();
        state.counters["rss_mb"] = double(after) / 1e6;
    }
}
BENCHMARK(BM_MemoryPerEntry)->Iterations(1)->Unit(benchmark::kMillisecond);

// The program's start inside the process: core and window made, the list loaded and shown. The
// whole start, from the command line to the window on the screen, is bench/cold_start.sh's.
void BM_LoadAndShow(benchmark::State& state) {
    ensureTree();
    const int entries = int(state.range(0));
    std::vector<double> runs;
    for (auto _ : state) {
        for (int run = 0; run < kRuns; ++run) {
            std::unique_ptr<BigRig> rig;
            runs.push_back(secondsOf([&] {
                rig = std::make_unique<BigRig>(listFile(entries));
                QCoreApplication::processEvents(); // laid out and painted
            }));
            if (rig->core.playlists().list(1).count() != entries)
                state.SkipWithError("not every entry was shown");
        }
    }
    state.counters["ms"] = median(runs) * 1000;
    state.counters["us_per_entry"] = median(runs) * 1e6 / entries;
}
BENCHMARK(BM_LoadAndShow)
    ->Arg(100000)
    ->Arg(200000)
    ->Arg(300000)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

void BM_BuildAgainstFindSort(benchmark::State& state) {
    ensureTree();
    const QString findSort =
        QStringLiteral("find %1 -type f | LC_ALL=C sort > /dev/null").arg(quoted(musicRoot()));
    for (auto _ : state) {
        BigRig rig;
        FreezeWatch watch;
        std::vector<double> program, reference;
        shellSeconds(findSort); // warm
        for (int run = 0; run < kRuns; ++run) {
            reference.push_back(shellSeconds(findSort));
            program.push_back(watch.run([&] { rig.ui().BCreateList->click(); }));
        }
        if (rig.core.playlists().list(1).count() != songCount())
            state.SkipWithError("not every file was found");
        report(state, program, reference, "find_sort");
        state.counters["longest_freeze_ms"] = watch.worstMs();
    }
}
BENCHMARK(BM_BuildAgainstFindSort)->Iterations(1)->Unit(benchmark::kMillisecond);

// First arg 0: the list is the tree's; 1: every entry is gone (the list names another folder).
// Second arg 1: with the song identities the program keeps (moved songs), learning in the background.
void BM_UpdateAgainstFindSort(benchmark::State& state) {
    ensureTree();
    const bool allGone = state.range(0) == 1;
    QTemporaryDir cache;
    std::optional<SongIdentities> identities;
    if (state.range(1) == 1)
        identities.emplace(cache.filePath(QStringLiteral("SongIdentities.txt")));
    const QString findSort =
        QStringLiteral("find %1 -type f | LC_ALL=C sort > /dev/null").arg(quoted(musicRoot()));
    QStringList old = PlaylistFile::readLines(listFile(songCount()));
    if (allGone)
        old.replaceInStrings(musicRoot(), musicRoot() + QStringLiteral("-vorher"));
    for (auto _ : state) {
        BigRig rig;
        rig.services.songIdentities = identities ? &*identities : nullptr;
        FreezeWatch watch;
        std::vector<double> program, reference;
        for (int run = 0; run < kRuns; ++run) {
            rig.core.playlists().replacePlaylist(1, old, {});
            reference.push_back(shellSeconds(findSort));
            program.push_back(watch.run([&] { rig.ui().BUpdateList->click(); }));
        }
        const QStringList& now = rig.core.playlists().PlaylistPaths;
        const bool carried = allGone ? now.filter(QStringLiteral(":5")).size() == songCount() : now == old;
        if (now.size() != songCount() || !carried)
            state.SkipWithError("the priorities were not carried over as they should");
        report(state, program, reference, "find_sort");
        state.counters["longest_freeze_ms"] = watch.worstMs();
    }
}
BENCHMARK(BM_UpdateAgainstFindSort)
    ->Args({0, 0})
    ->Args({1, 0})
    ->Args({0, 1})
    ->Args({1, 1})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

void BM_CloseWithSaveAgainstCpSync(benchmark::State& state) {
    ensureTree();
    for (auto _ : state) {
        std::vector<double> program, reference;
        QTemporaryDir dir;
        const QString copy = dir.filePath(QStringLiteral("kopie.txt"));
        const QString mine = dir.filePath(QStringLiteral("liste.txt"));
        for (int run = 0; run < kRuns; ++run) {
            reference.push_back(shellSeconds(
                QStringLiteral("cp %1 %2 && sync").arg(quoted(listFile(songCount())), quoted(copy))));
            QFile::remove(mine);
            QFile::copy(listFile(songCount()), mine);
            BigRig rig(mine);
            rig.core.playlists().PlaylistChanged = true;
            rig.t.dialogs.answers = {Dialogs::Answer::Yes};
            program.push_back(secondsOf([&] { rig.w.close(); }));
            if (!rig.t.status.text().contains(QLatin1String("erfolgreich")))
                state.SkipWithError("the list was not saved");
        }
        report(state, program, reference, "cp_sync");
    }
}
BENCHMARK(BM_CloseWithSaveAgainstCpSync)->Iterations(1)->Unit(benchmark::kMillisecond);

void BM_PriorityReportAgainstGrep(benchmark::State& state) {
    ensureTree();
    for (auto _ : state) {
        QTemporaryDir dir;
        BigRig rig(listFile(songCount()));
        rig.core.PriorityReportPath = dir.filePath(QStringLiteral("MP3Prio.txt"));
        const QString grep =
            QStringLiteral("grep -v -E ':[45].?$' %1 > %2")
                .arg(quoted(listFile(songCount())), quoted(dir.filePath(QStringLiteral("grep.txt"))));
        std::vector<double> program, reference;
        for (int run = 0; run < kRuns; ++run) {
            reference.push_back(shellSeconds(grep));
            rig.t.dialogs.answers = {Dialogs::Answer::Yes};
            program.push_back(secondsOf([&] { rig.ui().BReportPrio->click(); }));
        }
        if (PlaylistFile::readLines(rig.core.PriorityReportPath).size() !=
            PlaylistFile::readLines(dir.filePath(QStringLiteral("grep.txt"))).size())
            state.SkipWithError("the report does not list what grep finds");
        report(state, program, reference, "grep");
    }
}
BENCHMARK(BM_PriorityReportAgainstGrep)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
