// Building and updating a playlist from a large collection. Targets:
// - building a playlist takes at most twice a plain sorted listing of the same tree, measured in the
//   same run and reported as the counter x_listing: a flat folder of songs and as many other files
//   (BM_BuildFlat, 10 000 and 20 000 songs, whose times grow linearly) and an album tree with covers,
//   lyrics and album playlists (BM_BuildMixed);
// - sorting 30 000 lines stays well under a second;
// - updating a 30 000-entry playlist against an unchanged tree is linear in the merge
//   (BM_MergeUnchanged reports its complexity).
#include "BenchServices.h"
#include "playlist/FolderLister.h"
#include "playlist/PlaylistBuilder.h"
#include "playlist/PlaylistManager.h"
#include "playlist/PlaylistSort.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <dirent.h>
#include <map>
#include <memory>
#include <vector>

namespace {

void touch(const QString& path) {
    QFile(path).open(QIODevice::WriteOnly);
}

// artists x albums folders with `songs` empty files each, plus a cover picture per album.
std::unique_ptr<QTemporaryDir> makeTree(int artists, int albums, int songs) {
    auto dir = std::make_unique<QTemporaryDir>();
    for (int a = 0; a < artists; ++a)
        for (int b = 0; b < albums; ++b) {
            const QString folder = dir->filePath(QStringLiteral("Interpret %1/Album %2").arg(a).arg(b));
            QDir().mkpath(folder);
            touch(folder + QStringLiteral("/cover.jpg"));
            for (int s = 0; s < songs; ++s)
                touch(folder +
                      QStringLiteral("/%1 - Titel %2.mp3").arg(s + 1, 2, 10, QLatin1Char('0')).arg(s));
        }
    return dir;
}

// One folder with `songs` songs and as many files that are not music.
std::unique_ptr<QTemporaryDir> makeFlatFolder(int songs) {
    auto dir = std::make_unique<QTemporaryDir>();
    for (int s = 0; s < songs; ++s) {
        const QString title = dir->filePath(QStringLiteral("Titel %1").arg(s, 5, 10, QLatin1Char('0')));
        touch(title + QStringLiteral(".mp3"));
        touch(title + QStringLiteral(".txt"));
    }
    return dir;
}

// 100 artists x 10 albums as collections keep them: 12 songs with their lyrics, two covers and the
// album's own playlist in every album (12 000 songs among 27 000 files).
std::unique_ptr<QTemporaryDir> makeMixedTree() {
    auto dir = std::make_unique<QTemporaryDir>();
    for (int a = 0; a < 100; ++a)
        for (int b = 0; b < 10; ++b) {
            const QString folder = dir->filePath(QStringLiteral("Interpret %1/Album %2").arg(a).arg(b));
            QDir().mkpath(folder);
            for (const char* extra : {"/cover.jpg", "/back.jpg", "/Album.m3u"})
                touch(folder + QLatin1String(extra));
            for (int s = 0; s < 12; ++s) {
                const QString song =
                    folder + QStringLiteral("/%1 - Titel").arg(s + 1, 2, 10, QLatin1Char('0'));
                touch(song + QStringLiteral(".mp3"));
                touch(song + QStringLiteral(".lrc"));
            }
        }
    return dir;
}

QTemporaryDir& tree30000() {
    static std::unique_ptr<QTemporaryDir> dir = makeTree(75, 20, 20);
    return *dir;
}

// The reference a walk is measured against: every file below the root with its full path, found
// by reading each folder once, then sorted (what `find | sort` does).
void listRecursively(const QByteArray& folder, QStringList& out) {
    DIR* dir = opendir(folder.constData());
    if (!dir)
        return;
    while (const dirent* e = readdir(dir)) {
        if (e->d_name[0] == '.')
            continue;
        const QByteArray path = folder + '/' + e->d_name;
        if (e->d_type == DT_DIR)
            listRecursively(path, out);
        else
            out.append(QFile::decodeName(path));
    }
    closedir(dir);
}

double plainSortedListingSeconds(const QString& root) {
    std::vector<double> runs;
    for (int i = 0; i < 7; ++i) {
        const auto started = std::chrono::steady_clock::now();
        QStringList files;
        listRecursively(QFile::encodeName(root), files);
        std::sort(files.begin(), files.end());
        benchmark::DoNotOptimize(files);
        runs.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count());
    }
    return median(runs);
}

// Builds playlist 1 from `root` as the button does and reports the median build against the median
// plain sorted listing of the same tree, so that other load on the machine falls out of the ratio.
void buildAgainstListing(benchmark::State& state, const QString& root, int songs) {
    BenchServices s;
    DiskFolderLister disk;
    PlaylistManager playlists(s.services);
    PlaylistBuilder builder(s.services, playlists, disk);
    builder.MusicDirectories = QStringList{root};
    std::vector<double> runs;
    for (auto _ : state) {
        const auto started = std::chrono::steady_clock::now();
        builder.BCreateList();
        runs.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count());
    }
    if (playlists.list(1).count() != songs)
        state.SkipWithError("not every file was found");
    const double listing = plainSortedListingSeconds(root);
    state.counters["listing_ms"] = listing * 1000;
    state.counters["x_listing"] = median(runs) / listing;
}

void BM_BuildFlat(benchmark::State& state) {
    const int songs = int(state.range(0));
    static std::map<int, std::unique_ptr<QTemporaryDir>> folders;
    if (!folders[songs])
        folders[songs] = makeFlatFolder(songs);
    buildAgainstListing(state, folders[songs]->path(), songs);
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_BuildFlat)->Arg(10000)->Arg(20000)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);

void BM_BuildMixed(benchmark::State& state) {
    static std::unique_ptr<QTemporaryDir> dir = makeMixedTree();
    buildAgainstListing(state, dir->path(), 12000);
}
BENCHMARK(BM_BuildMixed)->Unit(benchmark::kMillisecond);

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
        benchmark::DoNotOptimize(PlaylistBuilder::mergePriorities(old, qint32(old.size() - 1), work));
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
