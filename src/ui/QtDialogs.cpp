#include "ui/QtDialogs.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>

Dialogs::Answer QtDialogs::message(const QString& text, const QString& title, Buttons buttons, Icon icon,
                                   int defaultButton) {
    QMessageBox box(m_parent);
    box.setWindowTitle(title.isEmpty() ? defaultTitle() : title);
    box.setText(text);
    switch (icon) {
    case Icon::None:
        box.setIcon(QMessageBox::NoIcon);
        break;
    case Icon::Question:
        box.setIcon(QMessageBox::Question);
        break;
    case Icon::Exclamation:
        box.setIcon(QMessageBox::Warning);
        break;
    case Icon::Information:
        box.setIcon(QMessageBox::Information);
        break;
    case Icon::Critical:
        box.setIcon(QMessageBox::Critical);
        break;
    }
    switch (buttons) {
    case Buttons::Ok:
        box.setStandardButtons(QMessageBox::Ok);
        break;
    case Buttons::OkCancel:
        box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
        break;
    case Buttons::YesNo:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        break;
    case Buttons::YesNoCancel:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        break;
    }
    // Qt would choose by its own rules; the caller's choice (first button unless said otherwise) holds.
    QList<QPushButton*> ordered;
    for (QMessageBox::StandardButton b :
         {QMessageBox::Ok, QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel})
        if (auto* button = qobject_cast<QPushButton*>(box.button(b)))
            ordered.append(button);
    if (defaultButton >= 1 && defaultButton <= ordered.size())
        box.setDefaultButton(ordered.at(defaultButton - 1));
    switch (box.exec()) {
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    case QMessageBox::Ok:
        return Answer::Ok;
    case QMessageBox::Cancel:
        return Answer::Cancel;
    default: // closed by the window manager: Escape's answer
        return buttons == Buttons::Ok ? Answer::Ok : Answer::Cancel;
    }
}

QString QtDialogs::qtFilter(const QString& classicFilter) {
    const QStringList parts = classicFilter.split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString description = parts.at(i).trimmed();
        const QString pattern = parts.at(i + 1).trimmed();
        filters.append(description.contains(QLatin1Char('('))
                           ? description
                           : description + QStringLiteral(" (") + pattern + QLatin1Char(')'));
    }
    return filters.join(QStringLiteral(";;"));
}

static QFileDialog* makeDialog(QWidget* parent, const Dialogs::FileRequest& request) {
    auto* dialog =
        new QFileDialog(parent, request.title, request.initialDir, QtDialogs::qtFilter(request.filter));
    dialog->setDefaultSuffix(request.defaultExt);
    if (!request.fileName.isEmpty())
        dialog->selectFile(request.fileName);
    const QStringList filters = dialog->nameFilters();
    if (request.filterIndex >= 1 && request.filterIndex <= filters.size())
        dialog->selectNameFilter(filters.at(request.filterIndex - 1));
    // A name typed without extension gets the one of the filter the user chose ("Liste" with the M3U8
    // filter becomes "Liste.m3u8").
    QObject::connect(dialog, &QFileDialog::filterSelected, dialog, [dialog](const QString& filter) {
        static const QRegularExpression firstPattern(QStringLiteral("\\*\\.([A-Za-z0-9]+)"));
        if (const QRegularExpressionMatch m = firstPattern.match(filter); m.hasMatch())
            dialog->setDefaultSuffix(m.captured(1));
    });
    return dialog;
}

std::optional<QString> QtDialogs::openFile(const FileRequest& request) {
    std::unique_ptr<QFileDialog> dialog(makeDialog(m_parent, request));
    dialog->setAcceptMode(QFileDialog::AcceptOpen);
    dialog->setFileMode(QFileDialog::ExistingFile);
    if (dialog->exec() != QDialog::Accepted || dialog->selectedFiles().isEmpty())
        return std::nullopt;
    return QDir::toNativeSeparators(dialog->selectedFiles().first());
}

std::optional<QString> QtDialogs::saveFile(const FileRequest& request) {
    std::unique_ptr<QFileDialog> dialog(makeDialog(m_parent, request));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    if (dialog->exec() != QDialog::Accepted || dialog->selectedFiles().isEmpty())
        return std::nullopt;
    return QDir::toNativeSeparators(dialog->selectedFiles().first());
}
