// What recognising moved songs costs the update. Targets:
// - updating an unchanged collection whose songs are all remembered costs at most 1.2 times the
//   update without song identities; both are run alternately in the same benchmark and the counter
//   x_today is the ratio of their medians (BM_UpdateUnchangedWarm). The time includes the
//   background work the update leaves behind, until it is done and saved;
// - the first update that has to read the songs (the whole list found under new paths as copies, as
//   after moving the collection to another disk) takes at most twice as long as reading the same
//   files once, as `cat` does (BM_FirstUpdateReads): tiny songs, where opening files costs most, and
//   4 MB songs, where reading and hashing the bytes does. The time is the update as the user waits
//   for it, x_cat that divided by the reading. update_today_ms is the same update without song
//   identities: when every entry is gone, its merge searches the whole new list for each of them,
//   which makes it quadratic and, for many small files, far slower than the reading.
//   x_cat_identify is the part that recognising adds, reading and hashing the new files through the
//   song identities, divided by the reading. background_ms is what the update leaves to the thread
//   afterwards (dropping the gone songs, saving the cache).
// The number of tiny songs is TAVO_BENCH_SONGS (default 20 000); more than 32 767 need the playlist
// counters of 32 bits.
#include "BenchServices.h"
#include "playlist/FolderLister.h"
#include "playlist/PlaylistBuilder.h"
#include "playlist/PlaylistManager.h"
#include "playlist/SongIdentities.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtEndian>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <fcntl.h>
#include <memory>
#include <unistd.h>
#include <vector>

namespace {

int tinySongs() {
    bool ok = false;
    const int n = qEnvironmentVariableIntValue("TAVO_BENCH_SONGS", &ok);
    return ok && n > 0 ? n : 20000;
}

// Songs of `frames` silent frames behind a small ID3v2 tag, each with its number in its first frame
// so that no two hold the same audio; 20 to an album.
QStringList writeSongs(const QString& root, int songs, int frames) {
    QStringList paths;
    const QByteArray tag = QByteArray("ID3\x03\x00\x00\x00\x00\x00\x20", 10) + QByteArray(32, '\0');
    const QByteArray frame = QByteArray("\xFF\xFB\x90\x04", 4) + QByteArray(413, '\0');
    const QByteArray audio = frame.repeated(frames);
    for (int i = 0; i < songs; ++i) {
        const QString folder = root + QStringLiteral("/Interpret %1/Album %2").arg(i / 400).arg(i / 20 % 20);
        if (i % 20 == 0)
            QDir().mkpath(folder);
        paths << folder + QStringLiteral("/%1 - Titel.mp3").arg(i % 20 + 1, 2, 10, QLatin1Char('0'));
        QByteArray bytes = tag + audio;
        qToBigEndian(quint32(i), bytes.data() + tag.size() + 4);
        QFile f(paths.last());
        if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size())
            return {};
    }
    // Written out before anything is measured: a sync of the cache file would otherwise wait for
    // all of them.
    ::sync();
    return paths;
}

// What `cat` does with the files: each read once, block by block.
double catSeconds(const QStringList& paths) {
    const auto started = std::chrono::steady_clock::now();
    std::vector<char> block(128 * 1024);
    for (const QString& path : paths) {
        const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY);
        if (fd < 0)
            return 0;
        while (::read(fd, block.data(), block.size()) > 0) {
        }
        ::close(fd);
    }
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
}

template <typename F> double seconds(F&& f) {
    const auto started = std::chrono::steady_clock::now();
    f();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
}

void BM_UpdateUnchangedWarm(benchmark::State& state) {
    BenchServices s;
    const QString root = s.dir.filePath(QStringLiteral("Musik"));
    const int songs = tinySongs();
    if (writeSongs(root, songs, 8).size() != songs)
        return state.SkipWithError("the songs could not be written");
    SongIdentities identities(s.dir.filePath(QStringLiteral("ids.txt")));
    PlaylistManager playlists(s.services);
    DiskFolderLister disk;
    PlaylistBuilder builder(s.services, playlists, disk);
    builder.MusicDirectories = QStringList{root};
    s.services.songIdentities = &identities;
    builder.BCreateList();
    identities.waitUntilIdle(); // every song read once: the cache is warm

    std::vector<double> today, warm;
    for (auto _ : state) {
        s.services.songIdentities = nullptr;
        today.push_back(seconds([&] { builder.BUpdateList(); }));
        s.services.songIdentities = &identities;
        warm.push_back(seconds([&] {
            builder.BUpdateList();
            identities.waitUntilIdle();
        }));
        state.SetIterationTime(warm.back());
    }
    if (playlists.list(1).count() != songs || !s.status.text().endsWith(QLatin1String("Verschoben: 0")))
        state.SkipWithError("the update changed the list");
    state.counters["today_ms"] = median(today) * 1000;
    state.counters["x_today"] = median(warm) / median(today);
}
BENCHMARK(BM_UpdateUnchangedWarm)->UseManualTime()->Unit(benchmark::kMillisecond)->MinTime(2);

// The list and the remembered songs are those of folder "Alt"; the files are now in "Neu", copies
// under the same names (other inodes), so every song has to be read to be recognised.
void BM_FirstUpdateReads(benchmark::State& state) {
    const int songs = int(state.range(0));
    const int frames = int(state.range(1));
    BenchServices s;
    const QString warmCache = s.dir.filePath(QStringLiteral("warm.txt"));
    PlaylistManager playlists(s.services);
    DiskFolderLister disk;
    PlaylistBuilder builder(s.services, playlists, disk);
    builder.MusicDirectories = QStringList{s.dir.filePath(QStringLiteral("Musik"))};
    QStringList old;
    {
        SongIdentities identities(warmCache);
        if (writeSongs(s.dir.filePath(QStringLiteral("Musik/Alt")), songs, frames).size() != songs)
            return state.SkipWithError("the songs could not be written");
        s.services.songIdentities = &identities;
        builder.BCreateList();
        identities.waitUntilIdle();
        old = playlists.PlaylistPaths;
        s.services.songIdentities = nullptr;
    }
    QDir(s.dir.filePath(QStringLiteral("Musik/Alt"))).removeRecursively();
    const QStringList fresh = writeSongs(s.dir.filePath(QStringLiteral("Musik/Neu")), songs, frames);

    QSet<quint64> lengths;
    for (const QString& path : fresh)
        if (const auto f = AudioFingerprint::read(path).fingerprint)
            lengths.insert(f->audioBytes);
    std::vector<double> update, background, today, cat, identify;
    for (auto _ : state) {
        playlists.PlaylistPaths = old;
        today.push_back(seconds([&] { builder.BUpdateList(); }));
        cat.push_back(catSeconds(fresh));

        {
            SongIdentities empty(s.dir.filePath(QStringLiteral("empty.txt")));
            empty.remembered(QString());
            identify.push_back(seconds([&] { empty.identifyNow(fresh, lengths); }));
        }
        QFile::remove(s.dir.filePath(QStringLiteral("empty.txt")));

        const QString cache = s.dir.filePath(QStringLiteral("ids.txt"));
        QFile::remove(cache);
        QFile::copy(warmCache, cache);
        SongIdentities identities(cache);
        identities.remembered(QString()); // loaded before the clock runs, as after a start
        s.services.songIdentities = &identities;
        playlists.PlaylistPaths = old;
        update.push_back(seconds([&] { builder.BUpdateList(); }));
        background.push_back(seconds([&] { identities.waitUntilIdle(); }));
        s.services.songIdentities = nullptr;
        state.SetIterationTime(update.back());
        if (!s.status.text().endsWith(QStringLiteral("Verschoben: %1").arg(songs)))
            return state.SkipWithError("not every song was recognised");
    }
    state.counters["update_today_ms"] = median(today) * 1000;
    state.counters["cat_ms"] = median(cat) * 1000;
    state.counters["x_cat"] = median(update) / median(cat);
    state.counters["x_cat_identify"] = median(identify) / median(cat);
    state.counters["background_ms"] = median(background) * 1000;
    state.counters["MB"] = double(QFileInfo(fresh.first()).size()) * songs / 1e6;
}
BENCHMARK(BM_FirstUpdateReads)
    ->Args({tinySongs(), 8})
    ->Args({100, 10000})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->MinTime(2);

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
