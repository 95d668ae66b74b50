// Silence between two songs. The program's playback core (monitor, song selection, transport and the
// mpv link, wired as the main window wires them) plays a list of short silent songs on a real mpv;
// as reference, mpv plays the same files from its own list. Both are timed from mpv's own events,
// read on a second connection in a thread of its own: from a song's "end-file" to the next
// "playback-restart". Target: median of the program <= 50 ms (the poll alone gave 466 ms).
#include "player/MpvIpc.h"
#include "player/MpvLink.h"
#include "support/MpvTestPlayer.h"
#include "support/PlaybackRig.h"
#include "support/SilentMp3.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QJsonDocument>
#include <QTimer>
#include <algorithm>
#include <atomic>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <mutex>
#include <optional>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

namespace {

constexpr int kSongs = 16;
constexpr double kSongSeconds = 0.3;

using Clock = std::chrono::steady_clock;

// Time-stamps mpv's events the moment they arrive, away from the event loop under test.
class EventClock {
public:
    explicit EventClock(const QString& socketPath) {
        m_fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const QByteArray path = socketPath.toLocal8Bit();
        std::strncpy(address.sun_path, path.constData(), sizeof address.sun_path - 1);
        if (::connect(m_fd, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0)
            return;
        m_thread = std::thread([this] { run(); });
    }
    ~EventClock() {
        ::shutdown(m_fd, SHUT_RDWR);
        if (m_thread.joinable())
            m_thread.join();
        ::close(m_fd);
    }
    // Milliseconds from each natural end of a song to the start of the next one.
    std::vector<double> gaps() {
        std::lock_guard lock(m_mutex);
        std::vector<double> out;
        std::optional<Clock::time_point> ended;
        for (const auto& [name, at] : m_events) {
            if (name == "end-file-eof")
                ended = at;
            else if (name == "playback-restart" && ended) {
                out.push_back(std::chrono::duration<double, std::milli>(at - *ended).count());
                ended.reset();
            }
        }
        return out;
    }

private:
    void run() {
        QByteArray buffer;
        char chunk[4096];
        for (ssize_t n; (n = ::read(m_fd, chunk, sizeof chunk)) > 0;) {
            const Clock::time_point now = Clock::now();
            buffer.append(chunk, n);
            for (qsizetype end; (end = buffer.indexOf('\n')) >= 0;) {
                const QJsonObject o = QJsonDocument::fromJson(buffer.left(end)).object();
                buffer.remove(0, end + 1);
                std::string name = o.value(QStringLiteral("event")).toString().toStdString();
                if (name == "end-file" &&
                    o.value(QStringLiteral("reason")).toString() == QLatin1String("eof"))
                    name = "end-file-eof";
                if (!name.empty()) {
                    std::lock_guard lock(m_mutex);
                    m_events.emplace_back(name, now);
                }
            }
        }
    }

    int m_fd = -1;
    std::thread m_thread;
    std::mutex m_mutex;
    std::vector<std::pair<std::string, Clock::time_point>> m_events;
};

QStringList makeSongs(const MpvTestPlayer& env) {
    QStringList songs;
    for (int i = 0; i < kSongs; ++i) {
        songs << env.filePath(QStringLiteral("song%1.mp3").arg(i));
        SilentMp3::write(songs.last(), kSongSeconds);
    }
    return songs;
}

// Runs the event loop until the clock has seen every song change.
// The link connects to a player it started in the background; the clock needs its socket.
void startPlayer(MpvLink& link) {
    link.StartWinamp(MpvTestPlayer::mpvPath());
    const QDeadlineTimer deadline(10000);
    while (!link.isConnected() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
}

std::vector<double> waitForGaps(EventClock& clock) {
    const QDeadlineTimer deadline(60000);
    while (int(clock.gaps().size()) < kSongs - 1 && !deadline.hasExpired()) {
        QEventLoop loop;
        QTimer::singleShot(20, &loop, &QEventLoop::quit);
        loop.exec();
    }
    return clock.gaps();
}

double median(std::vector<double> v) {
    if (v.empty())
        return 0;
    std::sort(v.begin(), v.end());
    return v.size() % 2 ? v[v.size() / 2] : (v[v.size() / 2 - 1] + v[v.size() / 2]) / 2;
}

std::vector<double> g_reference;
std::vector<double> g_program;

void report(benchmark::State& state, const std::vector<double>& gaps) {
    const double m = median(gaps);
    state.SetIterationTime(m / 1000.0);
    state.counters["median_ms"] = m;
    state.counters["min_ms"] = gaps.empty() ? 0 : *std::min_element(gaps.begin(), gaps.end());
    state.counters["max_ms"] = gaps.empty() ? 0 : *std::max_element(gaps.begin(), gaps.end());
    state.counters["changes"] = double(gaps.size());
}

// mpv plays the files from its own list.
void BM_MpvOwnList(benchmark::State& state) {
    for (auto _ : state) {
        MpvTestPlayer env;
        const QStringList songs = makeSongs(env);
        PlaybackCore<MpvLink> starter(env.socketPath()); // only starts the player
        startPlayer(starter.player);
        EventClock clock(env.socketPath());
        MpvIpc ipc;
        ipc.connectTo(env.socketPath(), 1000);
        for (const QString& s : songs)
            ipc.request(QJsonArray{QStringLiteral("loadfile"), s, QStringLiteral("append")});
        ipc.request(QJsonArray{QStringLiteral("playlist-play-index"), 0});
        g_reference = waitForGaps(clock);
        report(state, g_reference);
        starter.player.WinampCommand(PlayerLink::CloseCommand);
    }
}

// The program's playback core hands mpv one song after another.
void BM_ProgramSongChange(benchmark::State& state) {
    for (auto _ : state) {
        MpvTestPlayer env;
        const QStringList songs = makeSongs(env);
        PlaybackCore<MpvLink> r(env.socketPath());
        startPlayer(r.player);
        EventClock clock(env.socketPath());
        r.setFiles(1, songs);
        r.monitor.tmrTime.start();
        r.transport.Play(0);
        g_program = waitForGaps(clock);
        report(state, g_program);
        r.player.WinampCommand(PlayerLink::CloseCommand);
    }
}

} // namespace

BENCHMARK(BM_MpvOwnList)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ProgramSongChange)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    if (MpvTestPlayer::mpvPath().isEmpty()) {
        std::fprintf(stderr, "mpv is not installed\n");
        return 0;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    if (!g_reference.empty() && !g_program.empty())
        std::printf("song change: program median %.1f ms, mpv's own list median %.1f ms, difference %.1f ms "
                    "(%zu and %zu changes; target: program median <= 50 ms)\n",
                    median(g_program), median(g_reference), median(g_program) - median(g_reference),
                    g_program.size(), g_reference.size());
    return 0;
}
