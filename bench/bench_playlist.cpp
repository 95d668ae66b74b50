// A large collection's playlist: loading and showing 30 000 lines must feel instant (target
// under 100 ms), and saving must be one buffered write.
#include "BenchServices.h"
#include "playlist/PlaylistFile.h"
#include "playlist/PlaylistManager.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

constexpr int kLines = 30000;

QString writeBigPlaylist(const QTemporaryDir& dir) {
    QStringList lines;
    lines.reserve(kLines);
    for (int i = 0; i < kLines; ++i)
        lines << QStringLiteral("/home/musik/Interpret %1/Album %2/%3 - Titel Nummer %4.mp3:%5")
                     .arg(i / 200)
                     .arg(i / 12)
                     .arg(i % 12 + 1, 2, 10, QLatin1Char('0'))
                     .arg(i)
                     .arg(i % 6);
    const QString path = dir.filePath(QStringLiteral("gross.txt"));
    PlaylistFile::writeLines(path, lines);
    return path;
}

void BM_LoadAndShow30000(benchmark::State& state) {
    BenchServices s;
    const QString file = writeBigPlaylist(s.dir);
    PlaylistManager manager(s.services);
    for (auto _ : state) {
        const QString result = manager.FuncReadPlaylistAndDisplay(file, true, 1);
        benchmark::DoNotOptimize(result);
    }
    if (manager.list(1).rowCount() != kLines)
        state.SkipWithError("playlist not shown completely");
}
BENCHMARK(BM_LoadAndShow30000)->Unit(benchmark::kMillisecond);

void BM_Save30000(benchmark::State& state) {
    BenchServices s;
    const QString file = writeBigPlaylist(s.dir);
    PlaylistManager manager(s.services);
    manager.FuncReadPlaylistAndDisplay(file, true, 1);
    const QString target = s.dir.filePath(QStringLiteral("kopie.txt"));
    for (auto _ : state) {
        const QString result = manager.FuncSavePlaylist(target, 1);
        benchmark::DoNotOptimize(result);
    }
}
BENCHMARK(BM_Save30000)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
