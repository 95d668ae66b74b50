#pragma once

#include <QString>
#include <QStringList>

// The texts of the update options on the settings window: the two interval lists and the way the
// stored check times are shown.
namespace UpdateOptionTexts {

QStringList intervalItems(); // "1 Minute" ... "5 Stunden"
QStringList remindItems();   // "2 Tage" ... "8 Wochen"

// The item for a stored number; "Fehler" for a number the list does not have.
QString intervalItemFor(qint64 minutes);
QString remindItemFor(qint64 days);
// The number for a shown item; 0 for a text that is no item (such as "Fehler").
int minutesFor(const QString& item);
int daysFor(const QString& item);

QString errorItem();

// "<first p chars> / <last p chars> Uhr", p = position of the first blank (counting from 1).
// The same p cuts both ends, so a time longer than the date is cut short; that is how it is shown.
QString checkTimeText(const QString& stored);

} // namespace UpdateOptionTexts
