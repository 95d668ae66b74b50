#include "support/ScriptedDialogs.h"

QStringList ScriptedDialogs::messageTexts() const {
    QStringList texts;
    for (const Question& q : questions)
        texts.append(q.text);
    return texts;
}

Dialogs::Answer ScriptedDialogs::message(const QString& text, const QString& title, Buttons buttons,
                                         Icon icon, int defaultButton) {
    questions.append({text, title, buttons, icon, defaultButton});
    if (!answers.isEmpty())
        return answers.takeFirst();
    return (buttons == Buttons::Ok || buttons == Buttons::OkCancel) ? Answer::Ok : Answer::Cancel;
}

std::optional<QString> ScriptedDialogs::openFile(const FileRequest& request) {
    openRequests.append(request);
    return openAnswers.isEmpty() ? std::nullopt : openAnswers.takeFirst();
}

std::optional<QString> ScriptedDialogs::saveFile(const FileRequest& request) {
    saveRequests.append(request);
    return saveAnswers.isEmpty() ? std::nullopt : saveAnswers.takeFirst();
}
