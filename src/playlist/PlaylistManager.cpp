#include "playlist/PlaylistManager.h"

#include "base/Checked.h"
#include "base/Clock.h"
#include "base/Dialogs.h"
#include "base/NumberText.h"
#include "base/RuntimeError.h"
#include "base/SettingsStore.h"
#include "base/StatusLine.h"
#include "playlist/PlaylistFile.h"
#include "playlist/PlaylistLine.h"

#include <algorithm>

namespace {
const QString kFilter = QStringLiteral("Playlisten (*.txt)| *.txt");
constexpr int kOpenFlags = 6148; // file and path must exist, hide read-only
constexpr int kSaveFlags = 3078; // overwrite prompt, hide read-only, extension different, path must exist
} // namespace

PlaylistManager::PlaylistManager(Services& services, QObject* parent)
    : QObject(parent), m_services(services), m_list1(this), m_list2(this) {
}

void PlaylistManager::setActPlaylist(int n, const QString& file) {
    (n == 1 ? m_act1 : m_act2) = file;
    emit actPlaylistChanged(n, file);
}

QString PlaylistManager::FuncReadPlaylistAndDisplay(const QString& file, bool clear, int n) {
    const double started = m_services.clock.secondsOfDay();
    PlaylistListModel& box = list(n);
    if (clear)
        box.clear();
    const QString check = PlaylistFile::FuncCheckFile(file, 1);
    if (check != QLatin1String("OK"))
        return check;

    const QStringList lines = PlaylistFile::readLines(file);
    QStringList newPaths;
    QStringList names;
    QStringList rows;
    newPaths.reserve(lines.size());
    names.reserve(lines.size());
    rows.reserve(lines.size());
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QString name = PlaylistLine::FuncGetSongName(lines.at(i), m_services.pathStyle);
        if (PlaylistLine::isErrorName(name)) {
            // The path array is emptied, the names read so far stay: kept as the program always did.
            paths(n) = QStringList{QString()};
            if (n == 1)
                PlaylistNames = names.isEmpty() ? QStringList{QString()} : names;
            box.clear();
            return QStringLiteral("Fehler beim Laden der Playliste ") + QString::number(n) +
                   QStringLiteral(" \"") + file + QStringLiteral("\" - ") + name +
                   QStringLiteral(" in Zeile ") + QString::number(i);
        }
        newPaths.append(lines.at(i));
        names.append(name);
        rows.append(PlaylistLine::listItemText(i, name));
    }
    paths(n) = newPaths.isEmpty() ? QStringList{QString()} : newPaths;
    if (n == 1)
        PlaylistNames = names.isEmpty() ? QStringList{QString()} : names;
    box.addItems(rows);

    const double seconds = NumberText::roundHalfEven(m_services.clock.secondsOfDay() - started, 2);
    return QStringLiteral("Playliste ") + QString::number(n) + QStringLiteral(" aus Datei geladen in ") +
           NumberText::localeText(seconds) + QStringLiteral(" s  ----->>>  ") +
           QString::number(lines.size()) + QStringLiteral(" Songs");
}

void PlaylistManager::FuncDisplayPlaylist(bool clear, int n) {
    PlaylistListModel& box = list(n);
    if (clear)
        box.clear();
    if (n == 1)
        PlaylistNames = QStringList{QString()};
    const QStringList& source = paths(n);
    if (isEmptyPlaylist(source))
        return;
    QStringList names;
    QStringList rows;
    names.reserve(source.size());
    rows.reserve(source.size());
    for (qsizetype i = 0; i < source.size(); ++i) {
        const QString name = PlaylistLine::FuncGetSongName(source.at(i), m_services.pathStyle);
        names.append(name);
        rows.append(PlaylistLine::listItemText(i, name));
    }
    if (n == 1)
        PlaylistNames = names;
    box.addItems(rows);
}

Dialogs::FileRequest PlaylistManager::fileRequest(const QString& title, int flags) const {
    Dialogs::FileRequest r;
    r.title = title;
    r.filter = kFilter;
    r.filterIndex = 1;
    r.initialDir = DialogLastpath;
    r.defaultExt = QStringLiteral("txt");
    r.flags = flags;
    return r;
}

void PlaylistManager::OpenPlaylist(int n) {
    const auto chosen =
        m_services.dialogs.openFile(fileRequest(QStringLiteral("Playliste öffnen"), kOpenFlags));
    if (!chosen) {
        m_services.status.setText(QStringLiteral("Abbruch durch User!"));
        return;
    }
    DialogLastpath = Paths::folderWithSeparator(*chosen, m_services.pathStyle);
    const QString text = FuncReadPlaylistAndDisplay(*chosen, true, n);
    emit historyResetRequested();
    setActPlaylist(n, *chosen);
    m_services.settings.SaveSetting(QStringLiteral("Settings"),
                                    n == 1 ? QStringLiteral("PlaylistFile") : QStringLiteral("PlaylistFile2"),
                                    *chosen);
    m_services.status.setText(text);
}

QString PlaylistManager::FuncSavePlaylist(const QString& file, int n) {
    const QStringList& source = paths(n);
    // The classic loop counter is a 16-bit integer: it overflows after index 32767.
    if (source.size() > 32767)
        throw RuntimeError::overflow();
    PlaylistFile::writeLines(file, source);
    return QStringLiteral("Playliste ") + QString::number(n) + QStringLiteral(" erfolgreich unter \"") +
           file + QStringLiteral("\" gespeichert!");
}

void PlaylistManager::FuncSavePlaylistAs(int n) {
    std::optional<QString> chosen;
    for (;;) {
        chosen =
            m_services.dialogs.saveFile(fileRequest(QStringLiteral("Playliste speichern unter"), kSaveFlags));
        if (!chosen) {
            m_services.status.setText(QStringLiteral("Abbruch durch User!"));
            return;
        }
        DialogLastpath = Paths::folderWithSeparator(*chosen, m_services.pathStyle);
        if (n == 1) {
            if (*chosen == m_act2) {
                m_services.dialogs.message(QStringLiteral("Playliste 2 darf nicht überschrieben werden!"));
                continue;
            }
        } else {
            m_services.dialogs.message(m_act1);
            if (*chosen == m_act1) {
                m_services.dialogs.message(QStringLiteral("Playliste 1 darf nicht überschrieben werden!"));
                continue;
            }
        }
        break;
    }
    const QString text = FuncSavePlaylist(*chosen, n);
    setActPlaylist(n, *chosen);
    // Both playlists store their new file under the key of playlist 1; existing set-ups rely on it.
    m_services.settings.SaveSetting(QStringLiteral("Settings"), QStringLiteral("PlaylistFile"), *chosen);
    m_services.status.setText(text);
}

void PlaylistManager::SavePlaylistCommand(int n) {
    if (!actPlaylist(n).isEmpty())
        m_services.status.setText(FuncSavePlaylist(actPlaylist(n), n));
    else
        FuncSavePlaylistAs(n);
    if (n == 1)
        PlaylistChanged = false;
}

bool PlaylistManager::AskSaveBeforeClose() {
    if (!PlaylistChanged)
        return true;
    const Dialogs::Answer answer =
        m_services.dialogs.message(QStringLiteral("Möchten Sie die Änderungen in der Playliste \"") + m_act1 +
                                       QStringLiteral("\" speichern?"),
                                   QStringLiteral("Tavo MP3Player"), Dialogs::Buttons::YesNoCancel);
    if (answer == Dialogs::Answer::Cancel)
        return false;
    if (answer == Dialogs::Answer::Yes) {
        if (!m_act1.isEmpty())
            m_services.status.setText(FuncSavePlaylist(m_act1, 1));
        else
            FuncSavePlaylistAs(1);
    }
    return true;
}

qint32 PlaylistManager::AddDragDropToPL2(const QString& text, qint32 position, int effect) {
    if (effect != 1) {
        m_services.dialogs.message(QStringLiteral("Geht noch ned... :-("));
        return -1;
    }
    const int dot = text.indexOf(QLatin1Char('.'));
    bool isNumber = false;
    const qint64 number = text.left(dot).trimmed().toLongLong(&isNumber);
    if (dot < 0 || !isNumber)
        throw RuntimeError::typeMismatch();
    if (number < 1 || number > PlaylistPaths.size())
        throw RuntimeError::subscriptOutOfRange();
    const QString line = PlaylistPaths.at(number - 1);

    QStringList& target = Playlist2Paths;
    if (target.isEmpty())
        target.append(QString());
    const qint32 last = qint32(target.size() - 1);
    position = std::clamp(position, 0, last + 1);
    qint32 slot;
    if (target.first().isEmpty()) {
        // An empty playlist is filled in place, wherever in the empty box the row was let go.
        slot = 0;
        position = 0;
    } else {
        target.append(QString());
        slot = last + 1;
    }
    for (qint32 k = slot; k > 0 && k >= position; --k)
        target[k] = target[k - 1];
    target[position] = line;
    return position;
}
