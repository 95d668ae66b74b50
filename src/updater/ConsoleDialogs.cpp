#include "updater/ConsoleDialogs.h"

#include <cstdio>

Dialogs::Answer ConsoleDialogs::message(const QString& text, const QString& title, Buttons buttons, Icon,
                                        int) {
    const QString shown = (title.isEmpty() ? defaultTitle() : title) + QStringLiteral(": ") + text;
    std::fprintf(stderr, "%s\n", shown.toLocal8Bit().constData());
    return buttons == Buttons::YesNo || buttons == Buttons::YesNoCancel ? Answer::No : Answer::Ok;
}
