#pragma once

#include <QWidget>

class ClickLabel;
class PlaylistDropView;
class QCheckBox;
class QLabel;
class SkinControl;

// The window "Playliste 2": the second playlist's list, its file and status, open and save, and
// the box that makes the end of the list switch the computer off. The entries live in the main
// window's PlaylistManager; this window only reports what the user does.
class TavoMP3Playlist2 : public QWidget {
    Q_OBJECT
public:
    explicit TavoMP3Playlist2(QWidget* parent = nullptr);

    PlaylistDropView* FPlaylist = nullptr;
    QLabel* FActPlaylist = nullptr;
    QLabel* FStatus = nullptr;
    SkinControl* BPLOpen = nullptr;
    SkinControl* BPLSave = nullptr;
    QCheckBox* ShutdownOnPL2End = nullptr;
    ClickLabel* Label1 = nullptr;
    // Meant to be shown: set by the main window's BPlaylist2, read when the main window is activated.
    bool PL2Visible = false;

    // Drop position in twips -> row, counted from the first visible row: the fixed row height,
    // halves rounded to even. The scroll position is not added.
    static qint32 dropRow(double yTwips);
    // A drop action as the classic effect number: 1 copy, 2 move, 4 link, 0 none.
    static int effectCode(Qt::DropAction action);
    // The status text of a drop.
    static QString dropStatus(double xTwips, double yTwips, qint32 row, int effect);

signals:
    void openClicked();
    void saveClicked();
    void rowClicked(int row);
    void enterPressed(int row);
    void deletePressed();
    void spacePressed();
    // A dragged text let go on the list: the computed row and the classic effect number.
    void textDropped(const QString& text, qint32 row, int effect);

protected:
    void closeEvent(QCloseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void onDrop(const QString& text, const QPoint& pos, Qt::DropAction action);
};
