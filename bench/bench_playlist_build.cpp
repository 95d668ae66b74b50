// Building and updating a playlist from a large collection. Targets:
// - building from 20 000 files in 1 000 folders takes at most twice a plain recursive listing of
//   the same tree (compare BM_Build20000 with BM_PlainListing20000);
// - sorting 30 000 lines stays well under a second;
// - updating a 30 000-entry playlist against an unchanged tree is linear in the merge
//   (BM_MergeUnchanged reports its complexity).
#include "base/Clock.h"
#include "base/RandomSource.h"
#include "base/SettingsStore.h"
#include "base/StatusLine.h"
#include "playlist/FolderLister.h"
#include "playlist/PlaylistBuilder.h"
#include "playlist/PlaylistManager.h"
#include "playlist/PlaylistSort.h"
#include "ui/QtDialogs.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <memory>

namespace {

struct BenchServices {
    QTemporaryDir dir;
    IniSettingsStore settings{dir.filePath(QStringLiteral("bench.ini"))};
    QtDialogs dialogs;
    SystemClock clock;
    SeededRandom random{1};
    StatusLine status;
    Services services{settings, dialogs, clock, random, status};
};

// artists x albums folders with `songs` empty files each, plus a cover picture per album.
std::unique_ptr<QTemporaryDir> makeTree(int artists, int albums, int songs) {
    auto dir = std::make_unique<QTemporaryDir>();
    for (int a = 0; a < artists; ++a)
        for (int b = 0; b < albums; ++b) {
            const QString folder = dir->filePath(QStringLiteral("Interpret %1/Album %2").arg(a).arg(b));
            QDir().mkpath(folder);
            QFile(folder + QStringLiteral("/cover.jpg")).open(QIODevice::WriteOnly);
            for (int s = 0; s < songs; ++s)
                QFile(folder +
                      QStringLiteral("/%1 - Titel %2.mp3").arg(s + 1, 2, 10, QLatin1Char('0')).arg(s))
                    .open(QIODevice::WriteOnly);
        }
    return dir;
}

QTemporaryDir& tree20000() {
    static std::unique_ptr<QTemporaryDir> dir = makeTree(50, 20, 20);
    return *dir;
}

QTemporaryDir& tree30000() {
    static std::unique_ptr<QTemporaryDir> dir = makeTree(75, 20, 20);
    return *dir;
}

void BM_PlainListing20000(benchmark::State& state) {
    const QString root = tree20000().path();
    for (auto _ : state) {
        QStringList files;
        QDirIterator it(root, QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            it.next();
            if (it.fileInfo().isFile())
                files << it.filePath();
        }
        benchmark::DoNotOptimize(files);
    }
}
BENCHMARK(BM_PlainListing20000)->Unit(benchmark::kMillisecond);

void BM_Build20000(benchmark::State& state) {
    BenchServices s;
    DiskFolderLister disk;
    PlaylistManager playlists(s.services);
    PlaylistBuilder builder(s.services, playlists, disk);
    builder.MusicDirectories = QStringList{tree20000().path()};
    for (auto _ : state)
        builder.BCreateList();
    if (playlists.list(1).count() != 20000)
        state.SkipWithError("not every file was found");
}
BENCHMARK(BM_Build20000)->Unit(benchmark::kMillisecond);

void BM_Sort30000(benchmark::State& state) {
    QStringList lines;
    for (int i = 0; i < 30000; ++i)
        lines << QStringLiteral("/home/musik/Interpret %1/Album %2/Titel %3.mp3:5")
                     .arg(QRandomGenerator::global()->bounded(500))
                     .arg(i % 37)
                     .arg(i);
    for (auto _ : state) {
        state.PauseTiming();
        QStringList work = lines;
        work.detach();
        state.ResumeTiming();
        PlaylistSort::QuickSort(work);
        benchmark::DoNotOptimize(work);
    }
}
BENCHMARK(BM_Sort30000)->Unit(benchmark::kMillisecond);

void BM_Update30000Unchanged(benchmark::State& state) {
    BenchServices s;
    DiskFolderLister disk;
    PlaylistManager playlists(s.services);
    PlaylistBuilder builder(s.services, playlists, disk);
    builder.MusicDirectories = QStringList{tree30000().path()};
    builder.BCreateList();
    for (auto _ : state)
        builder.BUpdateList();
    if (playlists.list(1).count() != 30000)
        state.SkipWithError("not every file was kept");
}
BENCHMARK(BM_Update30000Unchanged)->Unit(benchmark::kMillisecond);

void BM_MergeUnchanged(benchmark::State& state) {
    QStringList old;
    for (int i = 0; i < state.range(0); ++i)
        old << QStringLiteral("/home/musik/Album %1/Titel %2.mp3:%3")
                   .arg(i / 20, 5, 10, QLatin1Char('0'))
                   .arg(i % 20)
                   .arg(i % 6);
    QStringList fresh;
    for (const QString& line : old)
        fresh << line.left(line.size() - 1) + QLatin1Char('5');
    for (auto _ : state) {
        state.PauseTiming();
        QStringList work = fresh;
        work.detach();
        state.ResumeTiming();
        benchmark::DoNotOptimize(PlaylistBuilder::mergePriorities(old, qint16(old.size() - 1), work));
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_MergeUnchanged)->RangeMultiplier(2)->Range(3750, 30000)->Complexity(benchmark::oN);

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
