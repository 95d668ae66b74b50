#include "playlist/PlaylistManager.h"

#include "base/Checked.h"
#include "base/Clock.h"
#include "base/Dialogs.h"
#include "base/NumberText.h"
#include "base/RuntimeError.h"
#include "base/SettingsStore.h"
#include "base/StatusLine.h"
#include "playlist/M3uPlaylist.h"
#include "playlist/PlaylistFile.h"
#include "playlist/PlaylistLine.h"
#include "playlist/SongIdentities.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace {
const QString kFilter = QStringLiteral("Playlisten (*.txt)| *.txt");
// Our own format stays the first filter and the default; the others are for lists of other players.
const QString kOpenFilter = kFilter + QStringLiteral("|M3U-Playlisten (*.m3u *.m3u8)| *.m3u;*.m3u8");
const QString kSaveFilter = kFilter + QStringLiteral("|M3U8-Playliste (*.m3u8)| *.m3u8");
const QString kTitle = QStringLiteral("Tavo MP3Player");

// A list line for a message: its row text with line breaks made visible.
QString shownEntry(qsizetype index, const QString& line) {
    return PlaylistLine::listItemText(index, QString(line)
                                                 .replace(QLatin1String("\r\n"), QStringLiteral("\u21b5"))
                                                 .replace(QLatin1Char('\r'), QChar(0x21b5))
                                                 .replace(QLatin1Char('\n'), QChar(0x21b5)));
}
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
    if (clear)
        list(n).clear();
    LoadRecord record{file, {}, {}, {}, {}, {}};
    const QString text = readPlaylist(file, n, record);
    m_loaded[n] = record;
    return text;
}

QString PlaylistManager::readPlaylist(const QString& file, int n, LoadRecord& record) {
    const double started = m_services.clock.secondsOfDay();
    PlaylistListModel& box = list(n);
    const QString check = PlaylistFile::FuncCheckFile(file, 1);
    if (check != QLatin1String("OK")) {
        record.problem = check;
        return check;
    }

    QStringList lines = PlaylistFile::readLines(file, &record.format);
    if (M3uPlaylist::isM3u(file, lines)) {
        const M3uPlaylist::Import m3u =
            M3uPlaylist::read(lines, QDir::toNativeSeparators(QFileInfo(file).absolutePath()));
        lines = m3u.lines;
        record.seconds = m3u.seconds;
        record.titles = m3u.titles;
        record.notes = m3u.notes();
        if (!m3u.addresses.isEmpty())
            record.problem = record.notes; // a save over the file would drop those entries
    }
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
            record.problem = QStringLiteral("Fehler beim Laden der Playliste ") + QString::number(n) +
                             QStringLiteral(" \"") + file + QStringLiteral("\" - ") + name +
                             QStringLiteral(" in Zeile ") + QString::number(i);
            return record.problem;
        }
        newPaths.append(lines.at(i));
        names.append(name);
        rows.append(PlaylistLine::listItemText(i, name));
    }
    paths(n) = newPaths.isEmpty() ? QStringList{QString()} : newPaths;
    if (n == 1)
        PlaylistNames = names.isEmpty() ? QStringList{QString()} : names;
    box.addItems(rows);
    if (m_services.songIdentities)
        m_services.songIdentities->rememberLines(paths(n));

    const double seconds = NumberText::roundHalfEven(m_services.clock.secondsOfDay() - started, 2);
    QString text = QStringLiteral("Playliste ") + QString::number(n) +
                   QStringLiteral(" aus Datei geladen in ") + NumberText::localeText(seconds) +
                   QStringLiteral(" s  ----->>>  ") + QString::number(lines.size()) +
                   QStringLiteral(" Songs");
    if (!record.notes.isEmpty())
        text += QStringLiteral(" - ") + QString(record.notes).replace(QLatin1Char('\n'), QLatin1Char(' '));
    return text;
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
    makeNames(source, names, rows);
    if (n == 1)
        PlaylistNames = names;
    box.addItems(rows);
}

void PlaylistManager::makeNames(const QStringList& source, QStringList& names, QStringList& rows,
                                const std::function<void()>& between) const {
    names.reserve(source.size());
    rows.reserve(source.size());
    for (qsizetype i = 0; i < source.size(); ++i) {
        if (between && i % 1024 == 0)
            between();
        const QString name = PlaylistLine::FuncGetSongName(source.at(i), m_services.pathStyle);
        names.append(name);
        rows.append(PlaylistLine::listItemText(i, name));
    }
}

void PlaylistManager::replacePlaylist(int n, QStringList lines, const std::function<void()>& between) {
    if (lines.isEmpty())
        lines.append(QString());
    QStringList names;
    QStringList rows;
    if (!isEmptyPlaylist(lines))
        makeNames(lines, names, rows, between);
    list(n).clear();
    paths(n) = std::move(lines);
    if (n == 1)
        PlaylistNames = names.isEmpty() ? QStringList{QString()} : std::move(names);
    list(n).addItems(rows);
}

Dialogs::FileRequest PlaylistManager::fileRequest(const QString& title, const QString& filter,
                                                  int flags) const {
    Dialogs::FileRequest r;
    r.title = title;
    r.filter = filter;
    r.filterIndex = 1;
    r.initialDir = DialogLastpath;
    r.defaultExt = QStringLiteral("txt");
    r.flags = flags;
    return r;
}

void PlaylistManager::OpenPlaylist(int n) {
    const auto chosen =
        m_services.dialogs.openFile(fileRequest(QStringLiteral("Playliste öffnen"), kOpenFilter, kOpenFlags));
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
    if (!m_loaded[n].notes.isEmpty())
        m_services.dialogs.message(QStringLiteral("Playliste \"") + *chosen + QStringLiteral("\":\n") +
                                       m_loaded[n].notes,
                                   kTitle, Dialogs::Buttons::Ok, Dialogs::Icon::Information);
}

QString PlaylistManager::FuncSavePlaylist(const QString& file, int n) {
    const QStringList& source = paths(n);
    m_saveDeclined = !confirmOverwrite(file, n);
    if (m_saveDeclined)
        return QStringLiteral("Playliste ") + QString::number(n) + QStringLiteral(" nicht gespeichert - \"") +
               file + QStringLiteral("\" bleibt unverändert.");
    // A line break inside a name would split its line and the file could no longer be read.
    QStringList lines;
    QStringList refused;
    lines.reserve(source.size());
    for (qsizetype i = 0; i < source.size(); ++i) {
        const QString& line = source.at(i);
        if (line.contains(QLatin1Char('\r')) || line.contains(QLatin1Char('\n')))
            refused << shownEntry(i, line);
        else
            lines << line;
    }
    if (lines.isEmpty())
        lines << QString();
    writePlaylist(file, lines, n);
    QString text = QStringLiteral("Playliste ") + QString::number(n) +
                   QStringLiteral(" erfolgreich unter \"") + file + QStringLiteral("\" gespeichert!");
    if (!refused.isEmpty()) {
        const QString count = QString::number(refused.size());
        m_services.dialogs.message(
            count + QStringLiteral(" Einträge mit einem Zeilenumbruch im Dateinamen wurden nicht in \"") +
                file + QStringLiteral("\" gespeichert, weil sie die Zeile teilen würden:\n") +
                refused.mid(0, 5).join(QLatin1Char('\n')) +
                (refused.size() > 5 ? QStringLiteral("\n...") : QString()) +
                QStringLiteral("\nDie übrigen Einträge sind gespeichert."),
            kTitle, Dialogs::Buttons::Ok, Dialogs::Icon::Exclamation);
        text += QStringLiteral(" (") + count + QStringLiteral(" Einträge mit Zeilenumbruch ausgelassen)");
    }
    return text;
}

bool PlaylistManager::confirmOverwrite(const QString& file, int n) {
    const LoadRecord& loaded = m_loaded[n];
    if (loaded.problem.isEmpty() || loaded.file != file || !QFileInfo::exists(file))
        return true;
    const qsizetype count = isEmptyPlaylist(paths(n)) ? 0 : paths(n).size();
    return m_services.dialogs.message(
               QStringLiteral("Die Playliste \"") + file +
                   QStringLiteral("\" wurde nicht vollständig geladen:\n") + loaded.problem +
                   QStringLiteral("\n\nSoll die Datei trotzdem mit der aktuellen Playliste (") +
                   QString::number(count) +
                   QStringLiteral(
                       " Einträge) überschrieben werden? Was beim Laden fehlte, geht dabei verloren."),
               kTitle, Dialogs::Buttons::YesNo, Dialogs::Icon::Exclamation, 2) == Dialogs::Answer::Yes;
}

void PlaylistManager::writePlaylist(const QString& file, const QStringList& lines, int n) {
    LoadRecord& loaded = m_loaded[n];
    if (M3uPlaylist::isM3uName(file)) {
        const QString folder = QDir::toNativeSeparators(QFileInfo(file).absolutePath());
        QHash<QString, qint32> seconds = loaded.seconds;
        seconds.insert(SongSeconds); // what the player measured beats what a file said
        PlaylistFile::writeBytes(
            file, M3uPlaylist::write(lines, folder, seconds, loaded.titles, m_services.pathStyle).toUtf8());
        loaded = {file, {}, {}, {}, loaded.seconds, loaded.titles};
        return;
    }
    // Written back in the encoding it was read in; a file not read is UTF-8.
    const PlaylistFile::TextFormat format = loaded.file == file ? loaded.format : PlaylistFile::TextFormat{};
    loaded = {file, PlaylistFile::writeLines(file, lines, format), {}, {}, loaded.seconds, loaded.titles};
}

void PlaylistManager::FuncSavePlaylistAs(int n) {
    std::optional<QString> chosen;
    for (;;) {
        chosen = m_services.dialogs.saveFile(
            fileRequest(QStringLiteral("Playliste speichern unter"), kSaveFilter, kSaveFlags));
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
    if (m_saveDeclined) {
        m_services.status.setText(text);
        return;
    }
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
        m_saveDeclined = false;
        if (!m_act1.isEmpty())
            m_services.status.setText(FuncSavePlaylist(m_act1, 1));
        else
            FuncSavePlaylistAs(1);
        // The user kept a file that had not loaded: the window stays open with the list.
        if (m_saveDeclined)
            return false;
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
