#pragma once

#include "base/Dialogs.h"

#include <QList>
#include <QStringList>

// Dialogs with answers scripted in advance and every question recorded.
// Message boxes without a scripted answer get Ok (or Cancel when there is no Ok button);
// file dialogs without a scripted answer are cancelled.
class ScriptedDialogs : public Dialogs {
public:
    struct Question {
        QString text;
        QString title;
        Buttons buttons;
        Icon icon;
        int defaultButton;
    };

    QList<Answer> answers;
    QList<std::optional<QString>> openAnswers;
    QList<std::optional<QString>> saveAnswers;

    QList<Question> questions;
    QList<FileRequest> openRequests;
    QList<FileRequest> saveRequests;

    QStringList messageTexts() const {
        QStringList texts;
        for (const Question& q : questions)
            texts.append(q.text);
        return texts;
    }

    Answer message(const QString& text, const QString& title = QString(), Buttons buttons = Buttons::Ok,
                   Icon icon = Icon::None, int defaultButton = 1) override {
        questions.append({text, title, buttons, icon, defaultButton});
        if (!answers.isEmpty())
            return answers.takeFirst();
        return (buttons == Buttons::Ok || buttons == Buttons::OkCancel) ? Answer::Ok : Answer::Cancel;
    }
    std::optional<QString> openFile(const FileRequest& request) override {
        openRequests.append(request);
        return openAnswers.isEmpty() ? std::nullopt : openAnswers.takeFirst();
    }
    std::optional<QString> saveFile(const FileRequest& request) override {
        saveRequests.append(request);
        return saveAnswers.isEmpty() ? std::nullopt : saveAnswers.takeFirst();
    }
};
