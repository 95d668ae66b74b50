#include "playlist/PlaylistListModel.h"

#include <QMimeData>

#include <algorithm>

PlaylistListModel::PlaylistListModel(QObject* parent) : QAbstractListModel(parent), m_selection(this) {
}

int PlaylistListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant PlaylistListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= count())
        return {};
    if (role == Qt::DisplayRole || role == Qt::AccessibleTextRole)
        return m_items.at(index.row());
    return {};
}

Qt::ItemFlags PlaylistListModel::flags(const QModelIndex& index) const {
    return QAbstractListModel::flags(index) | Qt::ItemIsDragEnabled;
}

QStringList PlaylistListModel::mimeTypes() const {
    return {QStringLiteral("text/plain")};
}

QMimeData* PlaylistListModel::mimeData(const QModelIndexList& indexes) const {
    // Only one row is dragged: the one under the mouse, which the press made current.
    int row = m_selection.currentIndex().row();
    const bool currentDragged =
        std::any_of(indexes.cbegin(), indexes.cend(), [row](const QModelIndex& i) { return i.row() == row; });
    if (!currentDragged)
        row = indexes.isEmpty() ? -1 : indexes.first().row();
    if (row < 0 || row >= count())
        return nullptr;
    auto* data = new QMimeData;
    data->setText(m_items.at(row));
    return data;
}

void PlaylistListModel::clear() {
    if (m_items.isEmpty())
        return;
    beginResetModel();
    m_items.clear();
    endResetModel();
}

void PlaylistListModel::addItem(const QString& text) {
    addItems(QStringList{text});
}

void PlaylistListModel::addItems(const QStringList& texts) {
    if (texts.isEmpty())
        return;
    if (m_items.isEmpty()) {
        beginResetModel(); // one reset is far cheaper for a 30 000-row list than row inserts
        m_items = texts;
        endResetModel();
        return;
    }
    beginInsertRows(QModelIndex(), count(), count() + int(texts.size()) - 1);
    m_items.append(texts);
    endInsertRows();
}

void PlaylistListModel::setItemText(int row, const QString& text) {
    m_items[row] = text;
    emit dataChanged(index(row), index(row));
}

void PlaylistListModel::removeItem(int row) {
    beginRemoveRows(QModelIndex(), row, row);
    m_items.removeAt(row);
    endRemoveRows();
}

QList<int> PlaylistListModel::selectedRows() const {
    QList<int> rows;
    for (const QModelIndex& i : m_selection.selectedRows())
        rows.append(i.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

bool PlaylistListModel::isSelected(int row) const {
    return m_selection.isRowSelected(row, QModelIndex());
}

void PlaylistListModel::setSelected(int row, bool selected) {
    m_selection.select(index(row), selected ? QItemSelectionModel::Select : QItemSelectionModel::Deselect);
}

void PlaylistListModel::selectOnly(int row) {
    m_selection.setCurrentIndex(index(row), QItemSelectionModel::ClearAndSelect);
}

void PlaylistListModel::selectAll() {
    if (count() == 0)
        return;
    m_selection.select(QItemSelection(index(0), index(count() - 1)), QItemSelectionModel::Select);
}

int PlaylistListModel::currentRow() const {
    const QModelIndex i = m_selection.currentIndex();
    return i.isValid() ? i.row() : -1;
}
