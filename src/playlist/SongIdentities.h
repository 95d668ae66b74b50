#pragma once

#include "playlist/SongIdentityFile.h"

#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QSet>
#include <QStringList>
#include <QTimer>
#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <thread>

class StatusLine;

// What the program remembers of every song it has seen on disk, so that a song that was moved or
// renamed is recognised at its new path. Files are read on a thread of their own: songs seen in a
// list are read in the background when the cache does not know them yet; only the update waits,
// for the files it needs at once, while the window keeps painting. The records live in the file
// given (SongIdentityFile), which is loaded on first use and saved after every run; without it
// nothing is known and nothing is recognised, which changes nothing else.
// Only MP3 files are read (by their names); the others are never recognised. Its operations are
// called from the thread that made it (the window's).
class SongIdentities : public QObject {
    Q_OBJECT
public:
    // Progress of long runs goes to `status` when given.
    explicit SongIdentities(QString cacheFile, StatusLine* status = nullptr, QObject* parent = nullptr);
    // Stops reading (a file half read is left), saves what was learnt and ends the thread.
    ~SongIdentities() override;

    // $XDG_CACHE_HOME/TavoMP3Player/SongIdentities.txt (~/.cache/...).
    static QString defaultCacheFile();
    static bool isMp3Name(const QString& path);

    // Songs seen on disk, as playlist lines ("path:digit"): those the cache does not know are read in
    // the background. With `recheck`, known ones are looked at too and read again when their size
    // or modification time changed.
    void rememberLines(const QStringList& lines, bool recheck = false);
    // Songs seen on disk, by path: those the cache does not know are read in the background.
    void rememberPaths(const QStringList& paths);
    // One song seen on its own (played, reported): read again when it changed.
    void remember(const QString& path);

    // What was last remembered for a path, without looking at the disk: how a song that is gone is
    // known.
    std::optional<AudioFingerprint> remembered(const QString& path);
    // The same for many paths, looked up at once (the update's 300 000 gone songs).
    QList<std::optional<AudioFingerprint>> remembered(const QStringList& paths);
    // The fingerprints of files on disk now: from the cache where the file is unchanged or the same
    // file under another name, else read. Only audio of one of the lengths in `audioBytes` is
    // hashed; the other files come back without a fingerprint (the caller has them learnt later).
    // The caller waits; the window keeps painting meanwhile (user input waits for the end), and a
    // run of more than half a second shows its progress in the status line.
    QList<std::optional<AudioFingerprint>> identifyNow(const QStringList& paths,
                                                       const QSet<quint64>& audioBytes);
    // Drops, in the background, the records of these paths whose files no longer exist.
    void forgetMissing(const QStringList& paths);

    // Until everything asked for is done and saved.
    void waitUntilIdle();

private:
    enum class Kind : quint8 { LearnLine, RecheckLine, Learn, Recheck, Forget };
    struct Batch {
        QStringList items;
        Kind kind;
        qsizetype next = 0;
    };
    struct Request {
        QStringList paths;
        QSet<quint64> audioBytes;
        QList<std::optional<AudioFingerprint>> results;
        qsizetype next = 0;
        qsizetype done = 0;
    };

    void enqueue(QStringList items, Kind kind);
    void startWorker();
    void waitLoaded(std::unique_lock<std::mutex>& lock);
    void work();
    void workOn(std::unique_lock<std::mutex>& lock);
    void process(const QString& item, Kind kind);
    std::optional<AudioFingerprint> identify(const QString& path, const QSet<quint64>* wanted);
    std::optional<AudioFingerprint> sameFile(const FileStamp& stamp) const;
    void store(const QString& path, const SongRecord& record);
    void save();
    void showProgress();

    const QString m_file;
    StatusLine* m_status;

    std::mutex m_mutex;
    std::condition_variable m_wake;    // work arrived, or stop
    std::condition_variable m_changed; // loaded, a request item done, idle
    std::thread m_thread;
    std::atomic<bool> m_stop{false};
    bool m_loaded = false;
    bool m_failed = false;
    bool m_idle = true;
    bool m_dirty = false;
    SongRecords m_records;
    QHash<std::pair<quint64, quint64>, QString> m_byInode;
    std::deque<Batch> m_batches;
    Request* m_request = nullptr;
    QElapsedTimer m_sinceSave;

    // Progress of the background run, for the status line.
    qsizetype m_runTotal = 0;
    qsizetype m_runDone = 0;
    QElapsedTimer m_runClock;
    QTimer m_progressTimer;
    bool m_progressShown = false;
    QString m_shownText;
    QElapsedTimer m_otherTextSince;
};
