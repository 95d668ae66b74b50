#pragma once

#include <QGroupBox>
#include <QList>

class QLabel;
class QRadioButton;

// The frame "Liedpriorität": six option buttons FPrio, Index = the priority each one sets, with
// the legend beside them from 5 at the top down to 0.
class PriorityFrame : public QGroupBox {
    Q_OBJECT
public:
    explicit PriorityFrame(QWidget* parent = nullptr);

    QList<QRadioButton*> FPrio; // by priority 0..5
    QList<QLabel*> legend;      // Label6 .. Label11, priority 5 down to 0

    // The options are commands: the one pressed last stays marked. Before a song from the history
    // plays the mark is taken away, so that it is not read as that song's priority.
    void clearChoice();

signals:
    void prioClicked(int priority);
};
