#include "playlist/MusicFolderWalk.h"

#include "base/Checked.h"
#include "base/RuntimeError.h"
#include "base/StatusLine.h"

MusicFolderWalk::MusicFolderWalk(const FolderLister& lister, StatusLine& status)
    : m_lister(lister), m_status(status), m_sep(Paths::separator(lister.style())) {
}

bool MusicFolderWalk::isMusicName(const QString& name) {
    const QString lower = name.toLower();
    for (const char* ext : {".mp3", ".wma", ".ogg", ".mpc"})
        if (lower.contains(QLatin1String(ext)))
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
    m_count = Checked::toInt16(qint64(m_count) + 1);
    if (m_count % 64 == 0) {
        m_status.setText(QStringLiteral("Suche Dateien: ") + QString::number(m_count));
        if (paintStatus)
            paintStatus();
    }
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
    m_open.append({folder, std::move(listing->identity), std::move(listing->names)});
    return true;
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
    bool listed = false; // whether cur's own listing is the last one in m_open
    qsizetype next = 0;  // position of the next name in that listing
    auto nextName = [&]() -> QString {
        if (!listed)
            return QString();
        const QStringList& names = m_open.last().names;
        return next < names.size() ? names.at(next++) : QString();
    };

    listed = enter(cur);
    next = 0;
    QString entry = nextName();
    for (;;) {
        if (entry == QLatin1String("."))
            entry = nextName();
        if (entry == QLatin1String(".."))
            entry = nextName();
        while (!entry.isEmpty() && isMusicName(entry)) {
            addFile(cur + m_sep + entry + QStringLiteral(":5"), lines);
            entry = nextName();
        }
        if (!entry.isEmpty()) {
            cur += m_sep + entry;
            listed = enter(cur);
            next = 0;
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
        const QString child = cur.mid(cut + 1);
        if (parent.size() < root.size())
            return;
        listed = !m_open.isEmpty() && m_open.last().folder == parent;
        if (!listed)
            listed = enter(parent); // the kept listing does not fit: read the parent again
        cur = parent;
        next = 0;
        for (entry = nextName(); !entry.isEmpty() && entry != child;)
            entry = nextName();
        entry = nextName();
    }
}
