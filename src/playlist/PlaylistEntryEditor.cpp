#include "playlist/PlaylistEntryEditor.h"

#include "base/StatusLine.h"
#include "playlist/PlaylistLine.h"
#include "playlist/PlaylistManager.h"

PlaylistEntryEditor::PlaylistEntryEditor(Services& services, PlaylistManager& playlists)
    : m_services(services), m_playlists(playlists) {
}

QStringList PlaylistEntryEditor::priorityCaptions() {
    return {QStringLiteral("5 = normal"), QStringLiteral("4"), QStringLiteral("3"),
            QStringLiteral("2 = selten"), QStringLiteral("1"), QStringLiteral("0 = nie")};
}

QStringList PlaylistEntryEditor::priorityMenuCaptions() {
    QStringList items;
    for (const QString& caption : priorityCaptions())
        items.append(QLatin1Char('&') + caption);
    return items;
}

void PlaylistEntryEditor::FPrioClick(int p) {
    PlaylistListModel& box = m_playlists.list(1);
    if (box.count() == 0)
        return;
    const QChar digit = QChar(u'0' + p);
    int count = 0;
    for (int row : box.selectedRows()) {
        QString& line = m_playlists.PlaylistPaths[row];
        line = PlaylistLine::withPriority(line, digit);
        ++count;
    }
    if (count > 0)
        emit m_playlists.linesEdited(1);
    m_services.status.setText(QStringLiteral("Priorität ") + QString::number(p) +
                              QStringLiteral(" bei allen markierten Einträgen (") + QString::number(count) +
                              QStringLiteral(") gesetzt!"));
}

void PlaylistEntryEditor::DeleteSelectedSongs(int n) {
    const int list = n == 1 ? 1 : 2;
    PlaylistListModel& box = m_playlists.list(list);
    const QStringList& source = m_playlists.paths(list);
    const QList<int> marked = box.selectedRows(); // ascending
    qsizetype nextMarked = 0;
    QStringList keep;
    int deleted = 0;
    for (int i = 0; i < box.count(); ++i) {
        if (nextMarked < marked.size() && marked.at(nextMarked) == i) {
            ++nextMarked;
            ++deleted;
        } else if (i < source.size()) {
            keep.append(source.at(i));
        }
    }
    m_playlists.paths(list) = keep.isEmpty() ? QStringList{QString()} : keep;
    if (list == 1)
        emit m_playlists.historyResetRequested(); // the history's indices no longer fit
    m_playlists.FuncDisplayPlaylist(true, list);
    m_playlists.PlaylistChanged = true;
    m_services.status.setText(deleted == 1
                                  ? QStringLiteral("1 Eintrag gelöscht!")
                                  : QString::number(deleted) + QStringLiteral(" Einträge gelöscht!"));
}
