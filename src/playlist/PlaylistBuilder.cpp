#include "playlist/PlaylistBuilder.h"

#include "base/Checked.h"
#include "base/Clock.h"
#include "base/NumberText.h"
#include "base/StatusLine.h"
#include "playlist/MovedSongs.h"
#include "playlist/MusicFolderWalk.h"
#include "playlist/PlaylistLine.h"
#include "playlist/PlaylistManager.h"
#include "playlist/PlaylistSort.h"
#include "playlist/SongIdentities.h"

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

QString PlaylistBuilder::collect(QStringList& lines) {
    MusicFolderWalk walk(m_lister, m_services.status);
    walk.paintStatus = [this] { emit statusPaintRequested(); };
    walk.run(MusicDirectories, lines);
    return walk.skippedNote();
}

void PlaylistBuilder::BCreateList() {
    const double started = m_services.clock.secondsOfDay();
    emit m_playlists.historyResetRequested();
    m_playlists.PlaylistPaths = QStringList{QString()};
    m_playlists.PlaylistNames = QStringList{QString()};

    // The lines are collected straight into the playlist, so an overflow leaves what was found.
    const QString skipped = collect(m_playlists.PlaylistPaths);
    const qsizetype count =
        PlaylistManager::isEmptyPlaylist(m_playlists.PlaylistPaths) ? 0 : m_playlists.PlaylistPaths.size();
    PlaylistSort::QuickSort(m_playlists.PlaylistPaths);
    m_playlists.FuncDisplayPlaylist(true, 1);
    m_playlists.PlaylistChanged = true;
    emit m_playlists.historyResetRequested();
    if (SongIdentities* identities = m_services.songIdentities)
        identities->rememberLines(m_playlists.PlaylistPaths, true);

    m_services.status.setText(elapsedText(m_services.clock, started) + QStringLiteral("s  -  Einträge: ") +
                              QString::number(count) + skipped);
}

qint32 PlaylistBuilder::mergePriorities(const QStringList& old, qint16 oldUpper, QStringList& fresh) {
    qint32 loops = 0;
    const qint16 freshUpper = Checked::toInt16(fresh.size() - 1);
    int j0 = 0;
    for (int i = 0; i <= oldUpper; ++i) {
        const QString& line = old.at(i);
        const QStringView key = keyOf(line);
        for (int j = j0; j <= freshUpper; ++j) {
            if (keyOf(fresh.at(j)) == key) {
                QString carried = keyOf(fresh.at(j)).toString();
                carried.append(QStringView(line).right(2));
                fresh[j] = std::move(carried);
                j0 = j;
                break;
            }
            ++loops;
        }
    }
    return loops;
}

void PlaylistBuilder::BUpdateList() {
    const double started = m_services.clock.secondsOfDay();
    emit m_playlists.historyResetRequested();
    const qint16 oldUpper = Checked::toInt16(m_playlists.PlaylistPaths.size() - 1);

    QStringList fresh{QString()};
    const QString skipped = collect(fresh);
    PlaylistSort::QuickSort(fresh);

    // A playlist of one entry is not merged: that entry's priority is lost.
    qint32 loops = 0;
    int moved = 0;
    SongIdentities* identities = m_services.songIdentities;
    if (oldUpper != 0) {
        loops = mergePriorities(m_playlists.PlaylistPaths, oldUpper, fresh);
        if (identities)
            moved = MovedSongs::carryPriorities(m_playlists.PlaylistPaths, oldUpper, fresh, *identities);
    } else if (identities) {
        identities->rememberLines(fresh); // nothing to compare with: every file is new
    }

    PlaylistListModel& box = m_playlists.list(1);
    box.clear();
    m_playlists.PlaylistPaths = QStringList{QString()};
    m_playlists.PlaylistNames = QStringList{QString()};
    QStringList& paths = m_playlists.PlaylistPaths;
    QStringList& names = m_playlists.PlaylistNames;
    QStringList rows;
    rows.reserve(fresh.size());
    paths.reserve(fresh.size());
    names.reserve(fresh.size());
    for (qsizetype j = 0; j < fresh.size(); ++j) {
        if (j == 0)
            paths.first() = fresh.at(0);
        else
            paths.append(fresh.at(j));
        const QString name = PlaylistLine::FuncGetSongName(fresh.at(j), m_services.pathStyle);
        if (PlaylistLine::isErrorName(name)) {
            box.addItems(rows);
            m_services.status.setText(QStringLiteral("FuncGetSongName - ") + name);
            return;
        }
        if (j == 0)
            names.first() = name;
        else
            names.append(name);
        rows.append(PlaylistLine::listItemText(j, name));
    }
    box.addItems(rows);
    m_playlists.PlaylistChanged = true;
    emit m_playlists.historyResetRequested();

    const QString movedText =
        identities ? QStringLiteral("   Verschoben: ") + QString::number(moved) : QString();
    m_services.status.setText(elapsedText(m_services.clock, started) + QStringLiteral("s   Schleifen: ") +
                              QString::number(loops) + QStringLiteral("   Liste neu: ") +
                              QString::number(fresh.size() - 1) + QStringLiteral("  Liste vorher: ") +
                              QString::number(oldUpper) + movedText + skipped);
}
