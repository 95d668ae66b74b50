#pragma once

#include <QAbstractListModel>
#include <QItemSelectionModel>
#include <QStringList>

// The rows a playlist list box shows ("1. Title", …). It is kept apart from the path arrays on
// purpose: after a failed load the box is empty while the names read so far survive.
class PlaylistListModel : public QAbstractListModel {
    Q_OBJECT
public:
    explicit PlaylistListModel(QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    // A dragged row travels as its plain text ("<n>. <name>"), which the second playlist reads.
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    // Copy is the drop the second playlist supports; a move (Shift) is offered so it can say so.
    Qt::DropActions supportedDragActions() const override { return Qt::CopyAction | Qt::MoveAction; }

    void clear();
    void addItem(const QString& text);
    void addItems(const QStringList& texts);
    void setItemText(int row, const QString& text);
    void removeItem(int row);
    const QString& itemText(int row) const { return m_items.at(row); }
    int count() const { return int(m_items.size()); }
    const QStringList& items() const { return m_items; }

    QItemSelectionModel& selection() { return m_selection; }
    // Marked rows, ascending.
    QList<int> selectedRows() const;
    bool isSelected(int row) const;
    void setSelected(int row, bool selected);
    void selectOnly(int row);
    void selectAll();
    int currentRow() const;

private:
    QStringList m_items;
    QItemSelectionModel m_selection;
};
