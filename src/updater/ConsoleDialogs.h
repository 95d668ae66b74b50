#pragma once

#include "base/Dialogs.h"

// Dialogs for an updater run without a desktop (scripts, tests): messages go to standard error
// and are answered with Ok; file dialogs are cancelled.
class ConsoleDialogs : public Dialogs {
public:
    Answer message(const QString& text, const QString& title = QString(), Buttons buttons = Buttons::Ok,
                   Icon icon = Icon::None, int defaultButton = 1) override;
    std::optional<QString> openFile(const FileRequest&) override { return std::nullopt; }
    std::optional<QString> saveFile(const FileRequest&) override { return std::nullopt; }
};
