#pragma once

#include "base/FileStamp.h"

#include <QHashFunctions>
#include <QString>
#include <atomic>
#include <cstdint>
#include <functional>
#include <optional>

// What tells one song from another whatever its path: the length of its audio, that is the bytes
// between the tags in front (ID3v2) and behind (ID3v1, APE, Lyrics3, appended ID3v2), and a 128-bit
// hash of those bytes. Editing the tags leaves it as it is; another encoding, a cut or another song
// changes it. Two files with equal fingerprints hold the same audio.
struct AudioFingerprint {
    std::uint64_t audioBytes = 0;
    std::uint64_t high = 0;
    std::uint64_t low = 0;

    friend bool operator==(const AudioFingerprint&, const AudioFingerprint&) = default;

    struct Reading;
    using KnownStamp = std::function<std::optional<AudioFingerprint>(const FileStamp&)>;
    // Reads one file. `known`, when given, is asked with the stamp of the file once it is open: a
    // fingerprint it has for that stamp is taken and nothing is read. `wanted`, when given, is asked
    // with the audio length before the audio is hashed; false leaves the hashing out. `cancel` is
    // looked at between blocks of a large file.
    static Reading read(const QString& path, const KnownStamp& known = {},
                        const std::function<bool(std::uint64_t)>& wanted = {},
                        const std::atomic<bool>* cancel = nullptr);
};

struct AudioFingerprint::Reading {
    // The file as it was read (from the open file, so that it belongs to these bytes); no plain
    // file there: !stamp.isFile().
    FileStamp stamp;
    // Known once the tags were found, also when the bytes were not hashed.
    std::optional<std::uint64_t> audioBytes;
    // None when the file cannot be read, holds no audio, changed while it was read, was not
    // wanted or the reading was cancelled.
    std::optional<AudioFingerprint> fingerprint;
};

inline size_t qHash(const AudioFingerprint& f, size_t seed = 0) {
    return qHashMulti(seed, f.audioBytes, f.high, f.low);
}
