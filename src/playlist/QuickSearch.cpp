#include "playlist/QuickSearch.h"

#include "base/Checked.h"
#include "base/Dialogs.h"
#include "base/StatusLine.h"
#include "playlist/PlaylistLine.h"
#include "playlist/PlaylistManager.h"

QuickSearch::QuickSearch(Services& services, PlaylistManager& playlists)
    : m_services(services), m_playlists(playlists) {
    SelectSong = [this](qint32 position) { selectInList(position); };
}

QStringList QuickSearch::modeCaptions() {
    return {QStringLiteral("nach Liedanfang"), QStringLiteral("Volltextsuche"), QStringLiteral("Albumtitel")};
}

QStringList QuickSearch::modeWords() {
    return {QStringLiteral("index"), QStringLiteral("fulltext"), QStringLiteral("album")};
}

void QuickSearch::selectInList(qint32 position) {
    PlaylistListModel& box = m_playlists.list(1);
    if (position < 0 || position >= box.count()) {
        m_services.status.setText(QStringLiteral("Sub SelectSong: Fehler beim Lied auswählen! ToSelect = ") +
                                  QString::number(position));
        return;
    }
    box.selectOnly(position);
}

std::optional<QString> QuickSearch::albumOf(const QString& line, PathStyle style) {
    const QChar sep = Paths::separator(style);
    const qsizetype last = line.lastIndexOf(sep);
    if (last <= 0)
        return std::nullopt;
    const qsizetype before = line.lastIndexOf(sep, last - 1);
    if (before < 0)
        return std::nullopt;
    return line.mid(before + 1, last - before - 1);
}

void QuickSearch::PrcQuickSearch(const QString& text, const QString& mode, bool continueSearch) {
    LastSearchText = text;
    LastSearchMode = mode;
    const QString low = text.toLower();
    const qsizetype n = low.size();
    const qsizetype start = continueSearch ? NextSearchStart : 0;

    qsizetype hit = -1;
    if (mode == QLatin1String("index")) {
        const QStringList& names = m_playlists.PlaylistNames;
        for (qsizetype i = start; i < names.size() && hit < 0; ++i)
            if (names.at(i).left(n).toLower() == low)
                hit = i;
    } else if (mode == QLatin1String("fulltext")) {
        const QStringList& names = m_playlists.PlaylistNames;
        for (qsizetype i = start; i < names.size() && hit < 0; ++i)
            if (names.at(i).toLower().contains(low))
                hit = i;
    } else if (mode == QLatin1String("album")) {
        const QStringList& paths = m_playlists.PlaylistPaths;
        for (qsizetype i = start; i < paths.size() && hit < 0; ++i) {
            const std::optional<QString> album = albumOf(paths.at(i), m_services.pathStyle);
            if (album && album->toLower().contains(low))
                hit = i;
        }
    } else {
        m_services.dialogs.message(QStringLiteral("Fehler"));
        return;
    }

    if (hit < 0) {
        m_services.status.setText(QStringLiteral("Kein Suchergebnis für \"") + text + QStringLiteral("\"!"));
        return;
    }
    SelectSong(qint32(hit));
    NextSearchStart = Checked::toInt32(hit + 1);
    if (mode == QLatin1String("album"))
        m_services.status.setText(QLatin1Char('"') + text + QStringLiteral("\" gefunden ---> ") +
                                  PlaylistLine::path(m_playlists.PlaylistPaths.at(hit)));
    else
        m_services.status.setText(QLatin1Char('"') + text + QStringLiteral("\" gefunden!"));
}
