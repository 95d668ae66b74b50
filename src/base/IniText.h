#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

// The text of an INI file exactly as QSettings writes it (escaped keys, quoted and escaped values,
// UTF-8), so that the store can write its file itself, with checked writes, and any Qt program or
// an older version of this one reads it back unchanged.
namespace IniText {

using Section = QMap<QString, QString>;
using Sections = QMap<QString, Section>;

QByteArray write(const Sections& sections);

} // namespace IniText
