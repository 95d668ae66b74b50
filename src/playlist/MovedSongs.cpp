#include "playlist/MovedSongs.h"

#include "playlist/SongIdentities.h"

#include <QHash>
#include <QSet>

namespace {

QStringView keyOf(const QString& line) {
    return QStringView(line).left(qMax<qsizetype>(0, line.size() - 2));
}

// Every 4096 entries, the caller's pause for the window.
void pauseNow(const std::function<void()>& between, qsizetype i) {
    if (between && i % 4096 == 0)
        between();
}

QSet<QStringView> keysOf(const QStringList& lines, qsizetype upper, const std::function<void()>& between) {
    QSet<QStringView> keys;
    keys.reserve(upper + 1);
    for (qsizetype i = 0; i <= upper; ++i) {
        pauseNow(between, i);
        keys.insert(keyOf(lines.at(i)));
    }
    return keys;
}

} // namespace

namespace MovedSongs {

int carryPriorities(const QStringList& old, qint32 oldUpper, QStringList& fresh, SongIdentities& identities,
                    const std::function<void()>& between) {
    const QSet<QStringView> freshKeys = keysOf(fresh, fresh.size() - 1, between);
    QList<qsizetype> gone;
    for (qsizetype i = 0; i <= oldUpper; ++i) {
        pauseNow(between, i);
        if (!old.at(i).isEmpty() && !freshKeys.contains(keyOf(old.at(i))))
            gone.append(i);
    }
    // Every old entry still there and no more entries than before: nothing is new, and an unchanged
    // collection costs no more than this look. (Only a list that named a file twice could hide a
    // new one here; it is learnt when the list is loaded next.)
    if (gone.isEmpty() && fresh.size() == qsizetype(oldUpper) + 1)
        return 0;

    // Gone files are known by what was remembered of them.
    QStringList gonePaths;
    gonePaths.reserve(gone.size());
    for (qsizetype i : gone) {
        pauseNow(between, gonePaths.size());
        gonePaths.append(keyOf(old.at(i)).toString());
    }
    QHash<AudioFingerprint, QList<qsizetype>> goneByAudio;
    QSet<quint64> audioLengths;
    const QList<std::optional<AudioFingerprint>> known = identities.remembered(gonePaths);
    for (qsizetype k = 0; k < gone.size(); ++k)
        if (const std::optional<AudioFingerprint>& f = known.at(k)) {
            goneByAudio[*f].append(gone.at(k));
            audioLengths.insert(f->audioBytes);
        }

    const QSet<QStringView> oldKeys = keysOf(old, oldUpper, between);
    QList<qsizetype> newcomers;
    QStringList newLines; // shared with `fresh`, not copied
    for (qsizetype j = 0; j < fresh.size(); ++j) {
        pauseNow(between, j);
        if (!fresh.at(j).isEmpty() && !oldKeys.contains(keyOf(fresh.at(j)))) {
            newcomers.append(j);
            newLines.append(fresh.at(j));
        }
    }

    int moved = 0;
    if (!goneByAudio.isEmpty() && !newcomers.isEmpty()) {
        QStringList newPaths;
        newPaths.reserve(newLines.size());
        for (const QString& line : newLines)
            newPaths.append(keyOf(line).toString());
        const QList<std::optional<AudioFingerprint>> found = identities.identifyNow(newPaths, audioLengths);
        QHash<AudioFingerprint, QList<qsizetype>> newByAudio;
        for (qsizetype k = 0; k < newcomers.size(); ++k)
            if (found.at(k) && goneByAudio.contains(*found.at(k)))
                newByAudio[*found.at(k)].append(newcomers.at(k));
        for (auto it = newByAudio.cbegin(); it != newByAudio.cend(); ++it) {
            const QList<qsizetype>& from = goneByAudio.value(it.key());
            if (from.size() != 1 || it->size() != 1)
                continue;
            QString carried = keyOf(fresh.at(it->first())).toString();
            carried.append(QStringView(old.at(from.first())).right(2));
            fresh[it->first()] = std::move(carried);
            ++moved;
        }
    }
    // Records of files that are really gone are dropped; those of a disk that is only not there now
    // go too and are read again when it comes back. New files not read yet are learnt in the
    // background.
    identities.forgetMissing(gonePaths);
    identities.rememberLines(newLines);
    return moved;
}

} // namespace MovedSongs
