#include "appearance/UpdateOptionTexts.h"

#include <array>
#include <utility>

namespace UpdateOptionTexts {

namespace {

using Entry = std::pair<const char*, int>;

const std::array<Entry, 12> kIntervals{{{"1 Minute", 1},
                                        {"5 Minuten", 5},
                                        {"10 Minuten", 10},
                                        {"20 Minuten", 20},
                                        {"30 Minuten", 30},
                                        {"40 Minuten", 40},
                                        {"50 Minuten", 50},
                                        {"1 Stunde", 60},
                                        {"2 Stunden", 120},
                                        {"3 Stunden", 180},
                                        {"4 Stunden", 240},
                                        {"5 Stunden", 300}}};

const std::array<Entry, 9> kReminders{{{"2 Tage", 2},
                                       {"4 Tage", 4},
                                       {"7 Tage", 7},
                                       {"10 Tage", 10},
                                       {"2 Wochen", 14},
                                       {"3 Wochen", 21},
                                       {"4 Wochen", 28},
                                       {"6 Wochen", 42},
                                       {"8 Wochen", 56}}};

template <std::size_t N> QStringList items(const std::array<Entry, N>& table) {
    QStringList list;
    for (const Entry& e : table)
        list.append(QString::fromUtf8(e.first));
    return list;
}

template <std::size_t N> QString itemFor(const std::array<Entry, N>& table, qint64 number) {
    for (const Entry& e : table)
        if (e.second == number)
            return QString::fromUtf8(e.first);
    return errorItem();
}

template <std::size_t N> int numberFor(const std::array<Entry, N>& table, const QString& item) {
    for (const Entry& e : table)
        if (item == QLatin1String(e.first))
            return e.second;
    return 0;
}

} // namespace

QStringList intervalItems() {
    return items(kIntervals);
}
QStringList remindItems() {
    return items(kReminders);
}
QString intervalItemFor(qint64 minutes) {
    return itemFor(kIntervals, minutes);
}
QString remindItemFor(qint64 days) {
    return itemFor(kReminders, days);
}
int minutesFor(const QString& item) {
    return numberFor(kIntervals, item);
}
int daysFor(const QString& item) {
    return numberFor(kReminders, item);
}

QString errorItem() {
    return QStringLiteral("Fehler");
}

QString checkTimeText(const QString& stored) {
    const qsizetype p = stored.indexOf(QLatin1Char(' ')) + 1; // 0 when there is no blank
    return stored.left(p) + QStringLiteral(" / ") + stored.right(p) + QStringLiteral(" Uhr");
}

} // namespace UpdateOptionTexts
