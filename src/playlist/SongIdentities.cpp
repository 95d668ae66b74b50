#include "playlist/SongIdentities.h"

#include "base/StatusLine.h"

#include <QCoreApplication>
#include <QStandardPaths>
#include <chrono>
#ifdef Q_OS_LINUX
#include <sys/resource.h>
#include <unistd.h>
#endif

namespace {

// A long run saves what it has learnt this often, so that a crash loses at most this much work.
constexpr qint64 kSaveEveryMs = 30000;
// Progress texts only for runs that last: a short one would just flicker in the status line.
constexpr qint64 kShowBackgroundAfterMs = 2000;
constexpr qint64 kShowWaitAfterMs = 500;
constexpr qint64 kLeaveOtherTextMs = 10000;

QString pathOfLine(const QString& line) {
    return line.size() > 2 ? line.chopped(2) : QString();
}

} // namespace

SongIdentities::SongIdentities(QString cacheFile, StatusLine* status, QObject* parent)
    : QObject(parent), m_file(std::move(cacheFile)), m_status(status) {
    m_progressTimer.setInterval(500);
    connect(&m_progressTimer, &QTimer::timeout, this, &SongIdentities::showProgress);
}

SongIdentities::~SongIdentities() {
    {
        std::lock_guard lock(m_mutex);
        m_stop = true;
    }
    m_wake.notify_all();
    if (m_thread.joinable())
        m_thread.join();
    if (m_dirty)
        save();
}

QString SongIdentities::defaultCacheFile() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
           QStringLiteral("/TavoMP3Player/SongIdentities.txt");
}

bool SongIdentities::isMp3Name(const QString& path) {
    return path.endsWith(QLatin1String(".mp3"), Qt::CaseInsensitive);
}

void SongIdentities::rememberLines(const QStringList& lines, bool recheck) {
    if (lines.isEmpty() || (lines.size() == 1 && lines.first().isEmpty()))
        return;
    enqueue(lines, recheck ? Kind::RecheckLine : Kind::LearnLine);
}

void SongIdentities::rememberPaths(const QStringList& paths) {
    enqueue(paths, Kind::Learn);
}

void SongIdentities::remember(const QString& path) {
    enqueue(QStringList{path}, Kind::Recheck);
}

void SongIdentities::forgetMissing(const QStringList& paths) {
    enqueue(paths, Kind::Forget);
}

void SongIdentities::enqueue(QStringList items, Kind kind) {
    if (items.isEmpty())
        return;
    startWorker();
    {
        std::lock_guard lock(m_mutex);
        if (m_idle && m_batches.empty()) {
            m_runTotal = 0;
            m_runDone = 0;
            m_runClock.start();
        }
        m_idle = false;
        m_runTotal += items.size();
        m_batches.push_back({std::move(items), kind});
    }
    m_wake.notify_one();
    if (m_status && QCoreApplication::instance() && !m_progressTimer.isActive())
        m_progressTimer.start();
}

std::optional<AudioFingerprint> SongIdentities::remembered(const QString& path) {
    return remembered(QStringList{path}).first();
}

QList<std::optional<AudioFingerprint>> SongIdentities::remembered(const QStringList& paths) {
    QList<std::optional<AudioFingerprint>> found(paths.size());
    if (paths.isEmpty())
        return found;
    startWorker();
    std::unique_lock lock(m_mutex);
    waitLoaded(lock);
    for (qsizetype i = 0; i < paths.size(); ++i)
        if (const auto it = m_records.constFind(paths.at(i)); it != m_records.cend())
            found[i] = it->fingerprint;
    return found;
}

QList<std::optional<AudioFingerprint>> SongIdentities::identifyNow(const QStringList& paths,
                                                                   const QSet<quint64>& audioBytes) {
    const QList<std::optional<AudioFingerprint>> none(paths.size());
    if (paths.isEmpty())
        return none;
    startWorker();
    Request request{paths, audioBytes, none};
    {
        std::lock_guard lock(m_mutex);
        if (m_request || m_failed)
            return none; // one caller at a time; the update is the only one
        m_request = &request;
        m_idle = false;
    }
    m_wake.notify_one();

    QElapsedTimer clock;
    clock.start();
    qint64 nextText = kShowWaitAfterMs;
    for (;;) {
        qsizetype done = 0;
        {
            std::unique_lock lock(m_mutex);
            const bool finished = m_changed.wait_for(lock, std::chrono::milliseconds(20), [&] {
                return request.done == request.paths.size() || m_failed;
            });
            if (finished) {
                m_request = nullptr;
                break;
            }
            done = request.done;
        }
        // Painting and timers go on (the player keeps playing); clicks and keys wait for the end, so
        // nothing can change the list while the update works on it.
        if (QCoreApplication::instance())
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        if (m_status && clock.elapsed() >= nextText) {
            m_status->setText(QStringLiteral("Verschobene Songs suchen: ") + QString::number(done) +
                              QStringLiteral(" von ") + QString::number(request.paths.size()));
            nextText = clock.elapsed() + 250;
        }
    }
    return request.results;
}

void SongIdentities::waitUntilIdle() {
    if (!m_thread.joinable())
        return;
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return (m_idle && m_batches.empty() && !m_request) || m_failed; });
}

void SongIdentities::startWorker() {
    if (!m_thread.joinable())
        m_thread = std::thread([this] { work(); });
}

void SongIdentities::waitLoaded(std::unique_lock<std::mutex>& lock) {
    m_changed.wait(lock, [this] { return m_loaded || m_failed; });
}

void SongIdentities::work() {
#ifdef Q_OS_LINUX
    // Reading 300 000 songs in the background must not take the processor from the window (a list
    // being loaded or updated): the thread runs ten steps below the program's priority. Linux gives
    // each thread its own.
    const id_t thread = id_t(gettid());
    setpriority(PRIO_PROCESS, thread, qMin(getpriority(PRIO_PROCESS, thread) + 10, 19));
#endif
    try {
        SongRecords loaded = SongIdentityFile::read(m_file);
        std::unique_lock lock(m_mutex);
        m_records = std::move(loaded);
        for (auto it = m_records.cbegin(); it != m_records.cend(); ++it)
            if (it->stamp.hasInode())
                m_byInode.insert({it->stamp.device, it->stamp.inode}, it.key());
        m_loaded = true;
        m_changed.notify_all();
        workOn(lock);
    } catch (...) {
        // Remembering songs is a help, never required: when it fails (no memory left) it stops, and
        // every update goes on as if nothing were known.
        std::lock_guard lock(m_mutex);
        m_failed = true;
        m_batches.clear();
        m_changed.notify_all();
    }
}

void SongIdentities::workOn(std::unique_lock<std::mutex>& lock) {
    m_sinceSave.start();
    while (!m_stop) {
        if (m_request && m_request->next < m_request->paths.size()) {
            Request* request = m_request;
            const qsizetype i = request->next++;
            const QString path = request->paths.at(i);
            lock.unlock();
            const std::optional<AudioFingerprint> fingerprint = identify(path, &request->audioBytes);
            lock.lock();
            request->results[i] = fingerprint;
            if (++request->done == request->paths.size())
                m_changed.notify_all();
            continue;
        }
        if (!m_batches.empty()) {
            Batch& batch = m_batches.front();
            if (batch.next == batch.items.size()) {
                m_batches.pop_front();
                continue;
            }
            const QString item = batch.items.at(batch.next++);
            const Kind kind = batch.kind;
            ++m_runDone;
            // A song that is known already costs no look at the disk.
            if ((kind == Kind::LearnLine && m_records.contains(pathOfLine(item))) ||
                (kind == Kind::Learn && m_records.contains(item)))
                continue;
            lock.unlock();
            process(item, kind);
            lock.lock();
            if (m_dirty && m_sinceSave.elapsed() > kSaveEveryMs) {
                lock.unlock();
                save();
                lock.lock();
            }
            continue;
        }
        if (m_dirty) {
            lock.unlock();
            save();
            lock.lock();
            continue;
        }
        m_idle = true;
        m_changed.notify_all();
        m_wake.wait(lock, [this] {
            return m_stop || !m_batches.empty() || (m_request && m_request->next < m_request->paths.size());
        });
    }
}

void SongIdentities::process(const QString& item, Kind kind) {
    switch (kind) {
    case Kind::LearnLine:
    case Kind::RecheckLine:
        if (const QString path = pathOfLine(item); !path.isEmpty())
            identify(path, nullptr);
        break;
    case Kind::Learn:
    case Kind::Recheck:
        identify(item, nullptr);
        break;
    case Kind::Forget:
        if (!FileStamp::of(item).isFile()) {
            std::lock_guard lock(m_mutex);
            const auto it = m_records.constFind(item);
            if (it == m_records.cend())
                break;
            const std::pair key{it->stamp.device, it->stamp.inode};
            if (m_byInode.value(key) == item)
                m_byInode.remove(key);
            m_records.erase(it);
            m_dirty = true;
        }
        break;
    }
}

std::optional<AudioFingerprint> SongIdentities::identify(const QString& path, const QSet<quint64>* wanted) {
    if (!isMp3Name(path))
        return std::nullopt;
    std::optional<SongRecord> known;
    {
        std::lock_guard lock(m_mutex);
        const auto it = m_records.constFind(path);
        if (it != m_records.cend())
            known = *it;
    }
    if (known) {
        // A known path: one look at its stamp tells whether it changed.
        const FileStamp stamp = FileStamp::of(path);
        if (!stamp.isFile())
            return std::nullopt;
        if (stamp == known->stamp)
            return known->fingerprint;
    }
    // Otherwise the file is opened at once: its stamp comes with the open file, and the same file
    // under another name is known from it without reading.
    const AudioFingerprint::KnownStamp sameFileAs = [this](const FileStamp& stamp) {
        std::lock_guard lock(m_mutex);
        return stamp.hasInode() ? sameFile(stamp) : std::nullopt;
    };
    std::function<bool(std::uint64_t)> accept;
    if (wanted)
        accept = [wanted](std::uint64_t audioBytes) { return wanted->contains(audioBytes); };
    const AudioFingerprint::Reading reading = AudioFingerprint::read(path, sameFileAs, accept, &m_stop);
    if (reading.fingerprint) {
        std::lock_guard lock(m_mutex);
        store(path, {reading.stamp, *reading.fingerprint});
    }
    return reading.fingerprint;
}

std::optional<AudioFingerprint> SongIdentities::sameFile(const FileStamp& stamp) const {
    // Same device and inode, size and modification time: the file itself under another name (a
    // rename keeps all four, a write moves the time), so its content is known without reading it.
    const auto path = m_byInode.constFind({stamp.device, stamp.inode});
    if (path == m_byInode.cend())
        return std::nullopt;
    const auto record = m_records.constFind(*path);
    if (record == m_records.cend() || !(record->stamp == stamp))
        return std::nullopt;
    return record->fingerprint;
}

void SongIdentities::store(const QString& path, const SongRecord& record) {
    const auto old = m_records.constFind(path);
    if (old != m_records.cend()) {
        const std::pair key{old->stamp.device, old->stamp.inode};
        if (m_byInode.value(key) == path)
            m_byInode.remove(key);
    }
    m_records.insert(path, record);
    if (record.stamp.hasInode())
        m_byInode.insert({record.stamp.device, record.stamp.inode}, path);
    m_dirty = true;
}

void SongIdentities::save() {
    SongRecords records;
    {
        std::lock_guard lock(m_mutex);
        records = m_records; // shared until the worker changes its own
        m_dirty = false;
    }
    // A failed write (a full disk) keeps the old file; the records stay in memory and go with the
    // next save.
    SongIdentityFile::write(m_file, SongIdentityFile::format(records));
    std::lock_guard lock(m_mutex);
    m_sinceSave.restart();
}

void SongIdentities::showProgress() {
    qsizetype done = 0;
    qsizetype total = 0;
    bool idle = false;
    bool waiting = false;
    {
        std::lock_guard lock(m_mutex);
        done = m_runDone;
        total = m_runTotal;
        idle = (m_idle && m_batches.empty()) || m_failed;
        waiting = m_request != nullptr;
    }
    if (idle) {
        m_progressTimer.stop();
        // The end is told only when the status line still shows this run's progress.
        if (m_progressShown && m_status->text() == m_shownText)
            m_status->setText(QStringLiteral("Songerkennung fertig: ") + QString::number(total) +
                              QStringLiteral(" Songs"));
        m_progressShown = false;
        return;
    }
    if (waiting || m_runClock.elapsed() < kShowBackgroundAfterMs)
        return;
    if (m_progressShown && m_status->text() != m_shownText) {
        // Another message came meanwhile (a first run can last hours): it is left to be read for a
        // while before the progress comes back.
        if (!m_otherTextSince.isValid())
            m_otherTextSince.start();
        if (m_otherTextSince.elapsed() < kLeaveOtherTextMs)
            return;
    }
    m_otherTextSince.invalidate();
    m_shownText = QStringLiteral("Songerkennung: ") + QString::number(done) + QStringLiteral(" von ") +
                  QString::number(total) + QStringLiteral(" Songs");
    m_status->setText(m_shownText);
    m_progressShown = true;
}
