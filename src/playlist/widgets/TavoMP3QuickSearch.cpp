#include "playlist/widgets/TavoMP3QuickSearch.h"

#include "playlist/QuickSearch.h"
#include "ui/SkinControl.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

TavoMP3QuickSearch::TavoMP3QuickSearch(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("TavoMP3QuickSearch"));
    setWindowTitle(QStringLiteral("Schnellsuche"));

    auto* layout = new QVBoxLayout(this);
    FSearchtext = new QLineEdit(this);
    FSearchtext->setObjectName(QStringLiteral("FSearchtext"));
    FSearchtext->setAccessibleName(QStringLiteral("Suchtext"));
    FSearchtext->setMinimumWidth(260);
    FSearchtext->installEventFilter(this);
    layout->addWidget(FSearchtext);

    const QStringList captions = QuickSearch::modeCaptions();
    for (int i = 0; i < captions.size(); ++i) {
        auto* option = new QRadioButton(captions.at(i), this);
        option->setObjectName(QStringLiteral("RSearchMode(%1)").arg(i));
        option->installEventFilter(this);
        RSearchMode.append(option);
        layout->addWidget(option);
    }
    RSearchMode.first()->setChecked(true);

    auto* buttons = new QHBoxLayout;
    OKButton = new SkinControl(QStringLiteral("OK"), this);
    OKButton->setObjectName(QStringLiteral("OKButton"));
    CancelButton = new SkinControl(QStringLiteral("Abbrechen"), this);
    CancelButton->setObjectName(QStringLiteral("CancelButton"));
    // Enter and Escape are handled below, on the text field and the options only.
    buttons->addStretch(1);
    buttons->addWidget(OKButton);
    buttons->addWidget(CancelButton);
    layout->addLayout(buttons);

    connect(OKButton, &QPushButton::clicked, this, &TavoMP3QuickSearch::OKButtonClick);
    connect(CancelButton, &QPushButton::clicked, this, &TavoMP3QuickSearch::CancelButtonClick);
}

QString TavoMP3QuickSearch::selectedMode() const {
    const QStringList words = QuickSearch::modeWords();
    for (int i = 0; i < RSearchMode.size(); ++i)
        if (RSearchMode.at(i)->isChecked())
            return words.at(i);
    return QString();
}

void TavoMP3QuickSearch::startWith(const QString& typed) {
    FSearchtext->setText(typed);
    FSearchtext->setCursorPosition(int(typed.size()));
    FSearchtext->setFocus();
}

void TavoMP3QuickSearch::OKButtonClick() {
    emit searchRequested(FSearchtext->text(), selectedMode());
    close();
}

void TavoMP3QuickSearch::CancelButtonClick() {
    close();
}

bool TavoMP3QuickSearch::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            OKButtonClick();
            return true;
        }
        if (key == Qt::Key_Escape) {
            CancelButtonClick();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}
