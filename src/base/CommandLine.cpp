#include "base/CommandLine.h"

#include "base/Checked.h"

static QString trimBlanks(const QString& s) {
    qsizetype from = 0, to = s.size();
    while (from < to && s.at(from) == QLatin1Char(' '))
        ++from;
    while (to > from && s.at(to - 1) == QLatin1Char(' '))
        --to;
    return s.mid(from, to - from);
}

CommandLine CommandLine::parse(const QString& arguments) {
    const QString text = trimBlanks(arguments.toLower());
    CommandLine result;
    result.words = QStringList{QString()};
    quint8 counter = 0;
    bool lastWasBlank = false;
    for (const QChar c : text) {
        if (c == QLatin1Char(' ')) {
            if (!lastWasBlank) {
                counter = Checked::toByte(qint64(counter) + 1);
                result.words.append(QString());
            }
            lastWasBlank = true;
        } else {
            lastWasBlank = false;
            if (c != QLatin1Char('/') && c != QLatin1Char('-'))
                result.words[counter].append(c);
        }
    }
    for (const QString& word : std::as_const(result.words)) {
        if (word == QLatin1String("start"))
            result.showWindow = false;
        if (word == QLatin1String("play"))
            result.playOnStart = true;
    }
    return result;
}

QString CommandLine::join(const QStringList& argumentsWithoutProgram) {
    return argumentsWithoutProgram.join(QLatin1Char(' '));
}
