#include "playlist/MovedSongs.h"

#include "playlist/SongIdentities.h"

#include <QHash>
#include <QSet>

namespace {

QStringView keyOf(const QString& line) {
    return QStringView(line).left(qMax<qsizetype>(0, line.size() - 2));
}

QSet<QStringView> keysOf(const QStringList& lines, qsizetype upper) {
    QSet<QStringView> keys;
    keys.reserve(upper + 1);
    for (qsizetype i = 0; i <= upper; ++i)
        keys.insert(keyOf(lines.at(i)));
    return keys;
}

} // namespace

namespace MovedSongs {

int carryPriorities(const QStringList& old, qint16 oldUpper, QStringList& fresh, SongIdentities& identities) {
    const QSet<QStringView> freshKeys = keysOf(fresh, fresh.size() - 1);
    QList<qsizetype> gone;
    for (qsizetype i = 0; i <= oldUpper; ++i)
        if (!old.at(i).isEmpty() && !freshKeys.contains(keyOf(old.at(i))))
            gone.append(i);
    if (gone.isEmpty())
        return 0; // an unchanged collection costs no more than this look

    // Gone files are known by what was remembered of them.
    QStringList gonePaths;
    QHash<AudioFingerprint, QList<qsizetype>> goneByAudio;
    QSet<quint64> audioLengths;
    for (qsizetype i : gone) {
        gonePaths.append(keyOf(old.at(i)).toString());
        if (const std::optional<AudioFingerprint> f = identities.remembered(gonePaths.last())) {
            goneByAudio[*f].append(i);
            audioLengths.insert(f->audioBytes);
        }
    }

    int moved = 0;
    const QSet<QStringView> oldKeys = goneByAudio.isEmpty() ? QSet<QStringView>() : keysOf(old, oldUpper);
    QList<qsizetype> newcomers;
    QStringList newPaths;
    for (qsizetype j = 0; j < fresh.size() && !goneByAudio.isEmpty(); ++j)
        if (!fresh.at(j).isEmpty() && !oldKeys.contains(keyOf(fresh.at(j)))) {
            newcomers.append(j);
            newPaths.append(keyOf(fresh.at(j)).toString());
        }
    if (!newcomers.isEmpty()) {
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
    // go too and are read again when it comes back.
    identities.forgetMissing(gonePaths);
    return moved;
}

} // namespace MovedSongs
