#pragma once

#include <QAccessibleWidget>

// The bit-rate diagram as an image whose description says in words what the bars show.
class MiniDiagramAccessible : public QAccessibleWidget {
public:
    explicit MiniDiagramAccessible(QWidget* diagram);

    QString text(QAccessible::Text t) const override;
};
