#pragma once

#include <QString>
#include <QStringList>

// The two start-up switches. The words are read the classic way: lower-cased, blank-separated,
// "/" and "-" dropped anywhere, no quoting; more than 256 words overflow the 8-bit word counter
// and raise the overflow error.
struct CommandLine {
    bool playOnStart = false;
    bool showWindow = true;
    QStringList words;

    static CommandLine parse(const QString& arguments);
    // The arguments after the program name as one text, as the classic runtime hands them over.
    static QString join(const QStringList& argumentsWithoutProgram);
};
