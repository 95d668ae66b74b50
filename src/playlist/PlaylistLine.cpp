#include "playlist/PlaylistLine.h"

#include "base/RuntimeError.h"

namespace PlaylistLine {

QString FuncGetSongName(const QString& line, PathStyle style) {
    if (line.isEmpty())
        return QStringLiteral("Fehler: Leerer String!");
    // The search for the last separator starts behind the first character, so a separator in
    // position 1 never counts and the position stays at the first character without a later one.
    const QChar sep = Paths::separator(style);
    // Zero-based index of the last separator found, 0 = "position 1".
    const qsizetype p = qMax<qsizetype>(line.lastIndexOf(sep), 0);
    if (!Paths::isRooted(line, style))
        return QStringLiteral("Fehler: Pfad enthält nicht :\\ oder \\\\! --> ") + line;
    if (line.size() < 10)
        return QStringLiteral("Fehler: Pfad zu kurz! --> ") + line;
    const qsizetype nameSize = line.size() - (p + 1) - 6; // without extension, ":" and digit
    if (nameSize < 0)
        throw RuntimeError::invalidCall(); // cutting more than the name holds
    return line.mid(p + 1, nameSize);
}

bool isErrorName(const QString& name) {
    return name.startsWith(QLatin1String("Fehler:"));
}

QString listItemText(qsizetype index, const QString& name) {
    const QString number = QString::number(index + 1);
    QString text;
    text.reserve(number.size() + 2 + name.size());
    return text.append(number).append(QLatin1String(". ")).append(name);
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
