#pragma once

#include <QString>
#include <optional>

// Every question the program asks goes through this seam, so that the core can be driven by
// scripted answers in tests and by real Qt dialogs in the program.
class Dialogs {
public:
    enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel };
    enum class Icon { None, Question, Exclamation, Information, Critical };
    enum class Answer { Ok, Cancel, Yes, No };

    struct FileRequest {
        QString title;
        QString filter; // classic form "Description (*.ext)| *.ext"
        int filterIndex = 1;
        QString initialDir;
        QString defaultExt;
        QString fileName; // proposed file, shown selected when the dialog opens
        int flags = 0;    // classic OFN_* flags; only informative for the Qt implementation
    };

    virtual ~Dialogs() = default;

    // Title empty = the program's name, as classic message boxes have it. defaultButton counts the
    // buttons from 1 in the order of `buttons` (Yes, No, Cancel); Enter presses it.
    virtual Answer message(const QString& text, const QString& title = QString(),
                           Buttons buttons = Buttons::Ok, Icon icon = Icon::None, int defaultButton = 1) = 0;
    // nullopt = cancelled.
    virtual std::optional<QString> openFile(const FileRequest& request) = 0;
    virtual std::optional<QString> saveFile(const FileRequest& request) = 0;

    static QString defaultTitle() { return QStringLiteral("TavoMP3Player"); }
};
