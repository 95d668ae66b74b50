#pragma once

#include <QListView>

// The list of the second playlist: it takes rows dragged from the main list as plain text and
// draws its rows at the classic fixed height, so that the row computed from the drop position
// is the row the user sees (counted from the first visible one).
class PlaylistDropView : public QListView {
    Q_OBJECT
public:
    // The fixed row height of the classic list box, in twips (1/1440 inch).
    static constexpr double kRowTwips = 195.5;

    explicit PlaylistDropView(QWidget* parent = nullptr);

    // Vertical pixels of this screen to twips and the row height in whole pixels.
    double toTwips(double pixels) const;
    int rowPixels() const;

signals:
    // Drag data in text form let go at `pos` (viewport pixels) with the proposed action.
    void textDropped(const QString& text, const QPoint& pos, Qt::DropAction action);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
};
