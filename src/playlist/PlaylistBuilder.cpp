#include "playlist/PlaylistBuilder.h"

#include "base/Checked.h"
#include "base/Clock.h"
#include "base/EventSlices.h"
#include "base/NumberText.h"
#include "base/StatusLine.h"
#include "playlist/MovedSongs.h"
#include "playlist/MusicFolderWalk.h"
#include "playlist/PlaylistLine.h"
#include "playlist/PlaylistManager.h"
#include "playlist/PlaylistSort.h"
#include "playlist/SongIdentities.h"

#include <QHash>
#include <vector>

namespace {

// The path of a line: everything but ":" and the digit.
QStringView keyOf(const QString& line) {
    return QStringView(line).left(qMax<qsizetype>(0, line.size() - 2));
}

QString elapsedText(const Clock& clock, double started) {
    return NumberText::localeText(NumberText::roundHalfEven(clock.secondsOfDay() - started, 2));
}

} // namespace

PlaylistBuilder::PlaylistBuilder(Services& services, PlaylistManager& playlists, const FolderLister& lister,
                                 QObject* parent)
    : QObject(parent), m_services(services), m_playlists(playlists), m_lister(lister) {
}

QStringList PlaylistBuilder::splitMusicDirectories(const QString& browsePathText) {
    QString text = browsePathText;
    text.replace(QStringLiteral("\r\n"), QStringLiteral(", "));
    return text.split(QStringLiteral(", "));
}

QString PlaylistBuilder::collect(QStringList& lines, EventSlices& slices) {
    MusicFolderWalk walk(m_lister, m_services.status);
    walk.between = [&slices] { slices.breathe(); };
    walk.run(MusicDirectories, lines);
    return walk.skippedNote();
}

// While a build or update runs, the window paints between slices of it; a second run is refused.
struct PlaylistBuilder::Running {
    explicit Running(PlaylistBuilder& builder) : m_builder(builder) { m_builder.m_running = true; }
    ~Running() {
        m_builder.m_running = false;
        emit m_builder.finished();
    }
    PlaylistBuilder& m_builder;
};

void PlaylistBuilder::BCreateList() {
    if (m_running)
        return;
    const Running running(*this);
    EventSlices slices;
    const auto between = [&slices] { slices.breathe(); };
    const double started = m_services.clock.secondsOfDay();
    emit m_playlists.historyResetRequested();

    // Collected and sorted aside: until the new list is shown whole, the old one plays on.
    QStringList lines{QString()};
    const QString skipped = collect(lines, slices);
    const qsizetype count = PlaylistManager::isEmptyPlaylist(lines) ? 0 : lines.size();
    PlaylistSort::QuickSort(lines, between);
    m_playlists.replacePlaylist(1, std::move(lines), between);
    m_playlists.PlaylistChanged = true;
    emit m_playlists.historyResetRequested();
    if (SongIdentities* identities = m_services.songIdentities)
        identities->rememberLines(m_playlists.PlaylistPaths, true);

    m_services.status.setText(elapsedText(m_services.clock, started) + QStringLiteral("s  -  Einträge: ") +
                              QString::number(count) + skipped);
}

qint64 PlaylistBuilder::mergePriorities(const QStringList& old, qint32 oldUpper, QStringList& fresh,
                                        const std::function<void()>& between) {
    // What the merge does, as it always did: the old lines are taken in order, and each one's digit
    // goes to the first new line at or after the last match (j0) with the same path; that line
    // becomes the new j0. So an old path found before j0 is lost, and when paths repeat, one new
    // line can take the digit of several old lines: the last of them wins. Each search counts its
    // failed comparisons: j - j0 when found, everything from j0 to the end when not.
    // The search itself looks at the last match and the line after it (a list in the same order)
    // and otherwise goes through a hash of the new paths instead of along the list, so that a list
    // whose entries are all gone costs no more than an unchanged one.
    const qsizetype freshSize = Checked::toInt32(fresh.size());
    QHash<QStringView, qsizetype> firstAt; // the first line of a path not passed by j0 yet
    std::vector<qsizetype> nextSame;       // the next line with the same path
    auto hashFresh = [&] {
        firstAt.reserve(freshSize);
        nextSame.assign(size_t(freshSize), -1);
        for (qsizetype j = freshSize - 1; j >= 0; --j) {
            if (between && j % 4096 == 0)
                between();
            const QStringView key = keyOf(fresh.at(j));
            const auto it = firstAt.find(key);
            if (it == firstAt.end()) {
                firstAt.insert(key, j);
            } else {
                nextSame[size_t(j)] = *it;
                *it = j;
            }
        }
    };
    auto searchHash = [&](QStringView key, qsizetype j0) {
        if (nextSame.empty())
            hashFresh();
        const auto at = firstAt.find(key);
        if (at == firstAt.end())
            return qsizetype(-1);
        qsizetype j = *at;
        while (j >= 0 && j < j0)
            j = nextSame[size_t(j)];
        *at = j; // lines before j0 can never match again
        return j;
    };

    std::vector<qsizetype> winner(size_t(freshSize), -1); // the old line whose digit a new line takes
    qint64 loops = 0;
    qsizetype j0 = 0;
    for (qsizetype i = 0; i <= oldUpper; ++i) {
        if (between && i % 4096 == 0)
            between();
        const QStringView key = keyOf(old.at(i));
        qsizetype j = -1;
        if (j0 < freshSize && keyOf(fresh.at(j0)) == key)
            j = j0;
        else if (j0 + 1 < freshSize && keyOf(fresh.at(j0 + 1)) == key)
            j = j0 + 1;
        else
            j = searchHash(key, j0);
        if (j < 0) {
            loops += freshSize - j0;
            continue;
        }
        loops += j - j0;
        winner[size_t(j)] = i;
        j0 = j;
    }
    // The new line with the old digit is the old line itself (same path, same ":" and digit): it is
    // shared rather than made again. Only now, since the hash's keys point into the new lines.
    for (qsizetype j = 0; j < freshSize; ++j)
        if (winner[size_t(j)] >= 0)
            fresh[j] = old.at(winner[size_t(j)]);
    return loops;
}

void PlaylistBuilder::BUpdateList() {
    if (m_running)
        return;
    const Running running(*this);
    EventSlices slices;
    const auto between = [&slices] { slices.breathe(); };
    const double started = m_services.clock.secondsOfDay();
    emit m_playlists.historyResetRequested();
    const QStringList old = m_playlists.PlaylistPaths;
    const qint32 oldUpper = Checked::toInt32(old.size() - 1);

    QStringList fresh{QString()};
    const QString skipped = collect(fresh, slices);
    PlaylistSort::QuickSort(fresh, between);

    // A playlist of one entry is not merged: that entry's priority is lost.
    qint64 loops = 0;
    int moved = 0;
    SongIdentities* identities = m_services.songIdentities;
    if (oldUpper != 0) {
        loops = mergePriorities(old, oldUpper, fresh, between);
        if (identities)
            moved = MovedSongs::carryPriorities(old, oldUpper, fresh, *identities, between);
    } else if (identities) {
        identities->rememberLines(fresh); // nothing to compare with: every file is new
    }

    // The new list replaces the old one in one step, up to a line without a name (which is kept in
    // the paths but not shown, and ends the update).
    QStringList paths;
    QStringList names;
    QStringList rows;
    paths.reserve(fresh.size());
    names.reserve(fresh.size());
    rows.reserve(fresh.size());
    QString failed;
    for (qsizetype j = 0; j < fresh.size(); ++j) {
        if (j % 1024 == 0)
            slices.breathe();
        paths.append(fresh.at(j));
        const QString name = PlaylistLine::FuncGetSongName(fresh.at(j), m_services.pathStyle);
        if (PlaylistLine::isErrorName(name)) {
            failed = name;
            break;
        }
        names.append(name);
        rows.append(PlaylistLine::listItemText(j, name));
    }
    PlaylistListModel& box = m_playlists.list(1);
    box.clear();
    m_playlists.PlaylistPaths = paths.isEmpty() ? QStringList{QString()} : std::move(paths);
    m_playlists.PlaylistNames = names.isEmpty() ? QStringList{QString()} : std::move(names);
    box.addItems(rows);
    if (!failed.isEmpty()) {
        m_services.status.setText(QStringLiteral("FuncGetSongName - ") + failed);
        return;
    }
    m_playlists.PlaylistChanged = true;
    emit m_playlists.historyResetRequested();

    const QString movedText =
        identities ? QStringLiteral("   Verschoben: ") + QString::number(moved) : QString();
    m_services.status.setText(elapsedText(m_services.clock, started) + QStringLiteral("s   Schleifen: ") +
                              QString::number(loops) + QStringLiteral("   Liste neu: ") +
                              QString::number(fresh.size() - 1) + QStringLiteral("  Liste vorher: ") +
                              QString::number(oldUpper) + movedText + skipped);
}
