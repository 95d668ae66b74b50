#include "playlist/MusicFolderWalk.h"

#include "base/Checked.h"
#include "base/RuntimeError.h"
#include "base/StatusLine.h"

MusicFolderWalk::MusicFolderWalk(const FolderLister& lister, StatusLine& status)
    : m_lister(lister), m_status(status), m_sep(Paths::separator(lister.style())) {
}

bool MusicFolderWalk::isMusicName(const QString& name) {
    // The test on the lower-case name, without making it: no character but A to Z lower-cases to
    // a letter of the four extensions, so folding A to Z alone finds the same names.
    auto lower = [&name](qsizetype i) {
        const char16_t c = name.at(i).unicode();
        return c >= u'A' && c <= u'Z' ? char16_t(c + (u'a' - u'A')) : c;
    };
    for (qsizetype dot = name.indexOf(u'.'); dot >= 0 && dot + 3 < name.size();
         dot = name.indexOf(u'.', dot + 1))
        for (const char* ext : {"mp3", "wma", "ogg", "mpc"})
            if (lower(dot + 1) == ext[0] && lower(dot + 2) == ext[1] && lower(dot + 3) == ext[2])
                return true;
    return false;
}

void MusicFolderWalk::run(const QStringList& roots, QStringList& lines) {
    m_count = 0;
    m_skipped = 0;
    m_firstSkipped.clear();
    const qint16 last = Checked::toInt16(roots.size() - 1);
    for (qint16 k = 0; k <= last; ++k)
        walkRoot(roots.at(k), lines);
}

void MusicFolderWalk::addFile(const QString& line, QStringList& lines) {
    if (m_count == 0 && !lines.isEmpty() && lines.first().isEmpty())
        lines.first() = line; // the empty playlist's element 0 becomes the first file
    else
        lines.append(line);
    m_count = Checked::toInt32(qint64(m_count) + 1);
    if (m_count % 64 == 0)
        m_status.setText(QStringLiteral("Suche Dateien: ") + QString::number(m_count));
}

QString MusicFolderWalk::skippedNote() const {
    if (m_skipped == 0)
        return QString();
    return QStringLiteral("  -  Übersprungen (Name nicht UTF-8): ") + QString::number(m_skipped) +
           QStringLiteral(", z. B. ") + m_firstSkipped;
}

bool MusicFolderWalk::enter(const QString& folder) {
    std::optional<FolderListing> listing;
    try {
        listing = m_lister.list(folder);
    } catch (const RuntimeError& e) {
        // A listing that breaks off is reported and treated as empty; the walk goes on.
        m_status.setText(QStringLiteral("Fehler: #") + QString::number(e.number()) + QLatin1Char(' ') +
                         e.description());
        return false;
    }
    if (!listing)
        return false;
    if (!listing->identity.isEmpty())
        for (const Listing& open : m_open)
            if (open.identity == listing->identity)
                return false;
    if (!listing->unreadableNames.isEmpty()) {
        if (m_skipped == 0)
            m_firstSkipped = folder + m_sep + listing->unreadableNames.first();
        m_skipped += int(listing->unreadableNames.size());
    }
    m_open.append(
        {folder, std::move(listing->identity), std::move(listing->names), std::move(listing->plainFiles)});
    return true;
}

bool MusicFolderWalk::tookPlainFile() const {
    const Listing& open = m_open.last();
    return open.next <= open.plainFiles.size() && open.plainFiles.at(open.next - 1);
}

void MusicFolderWalk::walkRoot(QString root, QStringList& lines) {
    if (!m_lister.folderExists(root)) {
        m_status.setText(QStringLiteral("Fehler - Verzeichnis nicht vorhanden: ") + root);
        return;
    }
    if (root.endsWith(m_sep))
        root.chop(1); // "D:\" becomes "D:", "/" becomes "": the separator is added back when joining
    m_open.clear();

    QString cur = root;
    bool listed = enter(cur); // whether cur's own listing is the last one in m_open
    auto nextName = [&]() -> QString {
        if (between)
            between();
        if (!listed)
            return QString();
        Listing& open = m_open.last();
        return open.next < open.names.size() ? open.names.at(open.next++) : QString();
    };

    QString entry = nextName();
    for (;;) {
        if (entry == QLatin1String("."))
            entry = nextName();
        if (entry == QLatin1String(".."))
            entry = nextName();
        // Opened as a folder, a file that is not music would be found empty and left again at once;
        // one the listing knows to be a plain file is passed over without the attempt.
        while (!entry.isEmpty()) {
            if (isMusicName(entry))
                addFile(cur + m_sep + entry + QStringLiteral(":5"), lines);
            else if (!tookPlainFile())
                break;
            entry = nextName();
        }
        if (!entry.isEmpty()) {
            cur += m_sep + entry;
            listed = enter(cur);
            entry = nextName();
            continue;
        }

        // cur is finished: go back to the entry after it in its parent.
        if (listed)
            m_open.removeLast();
        if (cur == root)
            return;
        const qsizetype cut = cur.lastIndexOf(m_sep);
        const QString parent = cur.left(cut);
        if (parent.size() < root.size())
            return;
        listed = !m_open.isEmpty() && m_open.last().folder == parent;
        if (!listed) {
            // The kept listing does not fit: read the parent again and find the child by name.
            const QString child = cur.mid(cut + 1);
            listed = enter(parent);
            for (entry = nextName(); !entry.isEmpty() && entry != child;)
                entry = nextName();
        }
        cur = parent;
        entry = nextName();
    }
}
