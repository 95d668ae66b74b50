#include "playlist/PlaylistLine.h"

#include "base/RuntimeError.h"

namespace PlaylistLine {

QString FuncGetSongName(const QString& line, PathStyle style) {
    if (line.isEmpty())
        return QStringLiteral("Fehler: Leerer String!");
    // The search for the last separator starts behind the first character, so a separator in
    // position 1 never counts and the position stays at the first character without a later one.
    const QChar sep = Paths::separator(style);
    qsizetype p = 0; // zero-based index of the last separator found, 0 = "position 1"
    for (qsizetype at = line.indexOf(sep, 1); at >= 0; at = line.indexOf(sep, at + 1))
        p = at;
    if (!Paths::isRooted(line, style))
        return QStringLiteral("Fehler: Pfad enthält nicht :\\ oder \\\\! --> ") + line;
    if (line.size() < 10)
        return QStringLiteral("Fehler: Pfad zu kurz! --> ") + line;
    const QString fileAndPriority = line.mid(p + 1);
    if (fileAndPriority.size() < 6)
        throw RuntimeError::invalidCall(); // cutting more than the name holds
    return fileAndPriority.left(fileAndPriority.size() - 6);
}

bool isErrorName(const QString& name) {
    return name.left(7) == QLatin1String("Fehler:");
}

QString listItemText(qsizetype index, const QString& name) {
    return QString::number(index + 1) + QStringLiteral(". ") + name;
}

QChar priority(const QString& line) {
    return line.isEmpty() ? QChar() : line.back();
}

QString withPriority(const QString& line, QChar digit) {
    return line.left(line.size() - 1) + digit;
}

QString path(const QString& line) {
    return line.left(qMax<qsizetype>(0, line.size() - 2));
}

} // namespace PlaylistLine
