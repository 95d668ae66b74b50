#pragma once

#include <QString>
#include <QStringList>

// The program's version history as the news window shows it, newest first.
namespace VersionHistory {

// One item: its first line (beginning "- ") and the lines that continue it.
struct Item {
    QString text;
    QStringList continuation;
};

struct Block {
    QString heading; // "Version 0.152 / 07.01.2005"
    QList<Item> items;
};

QList<Block> blocks();

// "---- <heading> ----------------", an empty line, the items one empty line apart (continuation
// lines directly below their item), two empty lines before the next heading; CR LF line ends.
QString text();

} // namespace VersionHistory
