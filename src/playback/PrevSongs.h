#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <array>

#include "base/SettingsStore.h"

// The history of the last 20 songs started from the main playlist: slot 1 newest, 0 = empty slot.
class PrevSongs {
public:
    static constexpr int kSlots = 20;

    struct MenuEntry {
        QString caption;
        bool visible;
    };

    qint32 slot(int i) const { return m_slots.at(i); }
    void setSlot(int i, qint32 index) { m_slots.at(i) = index; }

    // False when the index is already the newest entry (no immediate repeats).
    bool AddToPrevSongs(qint32 index);
    void ResetPrevSongs();
    // The captions and visibility of MenuPrev(1..20) for the main playlist's display names.
    QList<MenuEntry> menuEntries(const QStringList& playlistNames) const;

    // Section PreviousSongs, keys Prev01..Prev20; a missing key reads as 0.
    void read(const SettingsStore& store);
    // The 20 values as the close sequence writes them.
    QList<SettingsStore::Entry> entries() const;
    static QString key(int i);

private:
    std::array<qint32, kSlots + 1> m_slots{}; // 0 unused, like the classic array
};
