#include "playlist/widgets/TavoMP3Playlist2.h"

#include "base/NumberText.h"
#include "playlist/widgets/PlaylistDropView.h"
#include "ui/ClickLabel.h"
#include "ui/ElidedLabel.h"
#include "ui/SkinControl.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>

TavoMP3Playlist2::TavoMP3Playlist2(QWidget* parent) : QWidget(parent, Qt::Window) {
    setObjectName(QStringLiteral("TavoMP3Playlist2"));
    setWindowTitle(QStringLiteral("Playliste 2"));
    setMouseTracking(true);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 6);
    layout->setSpacing(6);
    FPlaylist = new PlaylistDropView(this);
    FPlaylist->setObjectName(QStringLiteral("FPlaylist"));
    FPlaylist->setAccessibleName(QStringLiteral("Playliste 2"));
    FPlaylist->setSelectionMode(QAbstractItemView::ExtendedSelection);
    FPlaylist->setMinimumSize(300, 260);
    FPlaylist->installEventFilter(this);
    layout->addWidget(FPlaylist, 1);

    auto* buttons = new QHBoxLayout;
    BPLOpen = new SkinControl(QStringLiteral("Öffnen"), this);
    BPLOpen->setObjectName(QStringLiteral("BPLOpen"));
    BPLSave = new SkinControl(QStringLiteral("Speichern"), this);
    BPLSave->setObjectName(QStringLiteral("BPLSave"));
    for (SkinControl* b : {BPLOpen, BPLSave}) {
        b->setMinimumSize(86, 24);
        buttons->addWidget(b);
    }
    buttons->addStretch(1);
    layout->addLayout(buttons);

    auto* shutdownRow = new QHBoxLayout;
    ShutdownOnPL2End = new QCheckBox(this);
    ShutdownOnPL2End->setObjectName(QStringLiteral("ShutdownOnPL2End"));
    Label1 = new ClickLabel(QStringLiteral("PC herunterfahren bei Playlist Ende"), this);
    Label1->setObjectName(QStringLiteral("Label1"));
    Label1->setBuddy(ShutdownOnPL2End);
    // The caption is a label of its own; readers and clicks treat it as the box's text.
    ShutdownOnPL2End->setAccessibleName(Label1->text());
    connect(Label1, &ClickLabel::clicked, ShutdownOnPL2End, &QCheckBox::toggle);
    shutdownRow->addWidget(ShutdownOnPL2End);
    shutdownRow->addWidget(Label1, 1);
    layout->addLayout(shutdownRow);

    FActPlaylist = new ElidedLabel(Qt::ElideMiddle, this);
    FActPlaylist->setObjectName(QStringLiteral("FActPlaylist"));
    FActPlaylist->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(FActPlaylist);
    FStatus = new ElidedLabel(Qt::ElideLeft, this);
    FStatus->setObjectName(QStringLiteral("FStatus"));
    FStatus->setFrameShape(QFrame::Panel);
    FStatus->setFrameShadow(QFrame::Sunken);
    FStatus->setMinimumHeight(22);
    layout->addWidget(FStatus);

    connect(BPLOpen, &SkinControl::clicked, this, &TavoMP3Playlist2::openClicked);
    connect(BPLSave, &SkinControl::clicked, this, &TavoMP3Playlist2::saveClicked);
    connect(FPlaylist, &QAbstractItemView::clicked, this,
            [this](const QModelIndex& index) { emit rowClicked(index.row()); });
    connect(FPlaylist, &PlaylistDropView::textDropped, this, &TavoMP3Playlist2::onDrop);
    resize(360, 420);
}

qint32 TavoMP3Playlist2::dropRow(double yTwips) {
    return qint32(NumberText::roundHalfEven(yTwips / PlaylistDropView::kRowTwips, 0));
}

int TavoMP3Playlist2::effectCode(Qt::DropAction action) {
    switch (action) {
    case Qt::CopyAction:
        return 1;
    case Qt::MoveAction:
        return 2;
    case Qt::LinkAction:
        return 4;
    default:
        return 0;
    }
}

QString TavoMP3Playlist2::dropStatus(double xTwips, double yTwips, qint32 row, int effect) {
    return QStringLiteral("x: ") + NumberText::localeText(xTwips) + QStringLiteral(" / y: ") +
           NumberText::localeText(yTwips) + QStringLiteral(" ---> ") + QString::number(row) +
           QStringLiteral(" effect: ") + QString::number(effect);
}

void TavoMP3Playlist2::onDrop(const QString& text, const QPoint& pos, Qt::DropAction action) {
    const double x = FPlaylist->toTwips(pos.x());
    const double y = FPlaylist->toTwips(pos.y());
    const qint32 row = dropRow(y);
    const int effect = effectCode(action);
    FStatus->setText(dropStatus(x, y, row, effect));
    emit textDropped(text, row, effect);
}

void TavoMP3Playlist2::closeEvent(QCloseEvent* event) {
    // The second playlist lives as long as the program: closing only hides it.
    event->ignore();
    hide();
}

void TavoMP3Playlist2::mouseMoveEvent(QMouseEvent* event) {
    // The skin buttons do not notice the mouse leaving them; a move over the window face resets them.
    for (SkinControl* b : {BPLOpen, BPLSave})
        if (b->Over())
            b->setOver(false);
    QWidget::mouseMoveEvent(event);
}

bool TavoMP3Playlist2::eventFilter(QObject* watched, QEvent* event) {
    if (watched != FPlaylist || event->type() != QEvent::KeyPress || !FPlaylist->model() ||
        FPlaylist->model()->rowCount() == 0)
        return QWidget::eventFilter(watched, event);
    auto* key = static_cast<QKeyEvent*>(event);
    switch (key->key()) {
    case Qt::Key_Space:
        emit spacePressed();
        return true;
    case Qt::Key_Delete:
        emit deletePressed();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        emit enterPressed(FPlaylist->currentIndex().row());
        return true;
    case Qt::Key_A:
        if (key->modifiers() == Qt::ControlModifier) {
            FPlaylist->selectAll();
            return true;
        }
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}
