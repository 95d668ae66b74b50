#include "playlist/widgets/PlaylistDropView.h"

#include <QDropEvent>
#include <QMimeData>
#include <QStyledItemDelegate>

#include <cmath>

namespace {

// Every row as high as the classic list box drew it.
class FixedRowDelegate : public QStyledItemDelegate {
public:
    explicit FixedRowDelegate(PlaylistDropView* view) : QStyledItemDelegate(view), m_view(view) {}
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return {QStyledItemDelegate::sizeHint(option, index).width(), m_view->rowPixels()};
    }

private:
    PlaylistDropView* m_view;
};

} // namespace

PlaylistDropView::PlaylistDropView(QWidget* parent) : QListView(parent) {
    setAcceptDrops(true);
    setDropIndicatorShown(false);
    setDragDropMode(QAbstractItemView::DropOnly);
    setUniformItemSizes(true);
    setSpacing(0);
    // The text must fit the classic row: a font a little smaller than the row.
    QFont small = font();
    small.setPixelSize(std::max(8, rowPixels() - 3));
    setFont(small);
    setItemDelegate(new FixedRowDelegate(this));
}

double PlaylistDropView::toTwips(double pixels) const {
    return pixels * 1440.0 / logicalDpiY();
}

int PlaylistDropView::rowPixels() const {
    return int(std::lround(kRowTwips * logicalDpiY() / 1440.0));
}

void PlaylistDropView::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasText())
        event->acceptProposedAction();
    else
        event->ignore();
}

void PlaylistDropView::dragMoveEvent(QDragMoveEvent* event) {
    if (event->mimeData()->hasText())
        event->acceptProposedAction();
    else
        event->ignore();
}

void PlaylistDropView::dropEvent(QDropEvent* event) {
    if (!event->mimeData()->hasText()) {
        event->ignore();
        return;
    }
    const Qt::DropAction action = event->dropAction();
    emit textDropped(event->mimeData()->text(), event->position().toPoint(), action);
    // Only a copy is carried out; a refused move must not make the source list remove anything.
    if (action == Qt::CopyAction)
        event->acceptProposedAction();
    else
        event->ignore();
}
