#include "playlist/widgets/PriorityFrame.h"

#include "playlist/PlaylistEntryEditor.h"

#include <QGridLayout>
#include <QLabel>
#include <QRadioButton>

PriorityFrame::PriorityFrame(QWidget* parent) : QGroupBox(QStringLiteral("Liedpriorität"), parent) {
    setObjectName(QStringLiteral("Frame1"));
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(8, 4, 8, 4);
    grid->setVerticalSpacing(0);
    for (int p = 0; p <= 5; ++p) {
        auto* option = new QRadioButton(this);
        option->setObjectName(QStringLiteral("FPrio(%1)").arg(p));
        FPrio.append(option);
        connect(option, &QRadioButton::clicked, this, [this, p] { emit prioClicked(p); });
    }
    const QStringList captions = PlaylistEntryEditor::priorityCaptions(); // 5 down to 0
    for (int row = 0; row < captions.size(); ++row) {
        const int p = 5 - row;
        auto* label = new QLabel(captions.at(row), this);
        label->setObjectName(QStringLiteral("Label%1").arg(6 + row));
        label->setBuddy(FPrio.at(p));
        FPrio.at(p)->setAccessibleName(captions.at(row));
        legend.append(label);
        grid->addWidget(FPrio.at(p), row, 0);
        grid->addWidget(label, row, 1);
    }
    grid->setColumnStretch(1, 1);
}

void PriorityFrame::clearChoice() {
    // Exclusive options cannot all be off; the exclusivity is lifted for the moment.
    for (QRadioButton* option : FPrio) {
        option->setAutoExclusive(false);
        option->setChecked(false);
        option->setAutoExclusive(true);
    }
}
