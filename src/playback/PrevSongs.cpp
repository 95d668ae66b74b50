#include "playback/PrevSongs.h"

#include "base/Checked.h"
#include "base/SettingsStore.h"

namespace {
const QString kSection = QStringLiteral("PreviousSongs");
const QString kEmpty = QStringLiteral("...");
} // namespace

bool PrevSongs::AddToPrevSongs(qint32 index) {
    if (m_slots[1] == index)
        return false;
    for (int i = kSlots; i >= 2; --i)
        m_slots[i] = m_slots[i - 1];
    m_slots[1] = index;
    return true;
}

void PrevSongs::ResetPrevSongs() {
    m_slots.fill(0);
}

QList<PrevSongs::MenuEntry> PrevSongs::menuEntries(const QStringList& playlistNames) const {
    QList<MenuEntry> entries;
    for (int i = 1; i <= kSlots; ++i) {
        const qint32 index = m_slots[i];
        if (index != 0) {
            const bool beyond = index < 0 || index >= playlistNames.size();
            entries.append(
                {QString::number(i) + QStringLiteral(". ") + (beyond ? kEmpty : playlistNames.at(index)),
                 true});
        } else {
            // Slot 1 stays as "..." so that the menu is never empty.
            entries.append({kEmpty, i == 1});
        }
    }
    return entries;
}

QString PrevSongs::key(int i) {
    return QStringLiteral("Prev%1").arg(i, 2, 10, QLatin1Char('0'));
}

void PrevSongs::read(const SettingsStore& store) {
    for (int i = 1; i <= kSlots; ++i)
        m_slots[i] = Checked::textToInt32(store.GetSetting(kSection, key(i), 0));
}

QList<SettingsStore::Entry> PrevSongs::entries() const {
    QList<SettingsStore::Entry> out;
    for (int i = 1; i <= kSlots; ++i)
        out.append({kSection, key(i), QString::number(m_slots[i])});
    return out;
}
