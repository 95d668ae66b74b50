#include "ui/TavoMP3ID3.h"

#include "reports/Id3TagReader.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

TavoMP3ID3::TavoMP3ID3(QWidget* parent) : ColoredWindow(parent, Qt::Window) {
    setObjectName(QStringLiteral("TavoMP3ID3"));
    setWindowTitle(QStringLiteral("ID3 Tag bearbeiten"));
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(12, 12, 12, 12);
    auto* form = new QFormLayout;
    auto field = [&](const char* name, const QString& caption) {
        auto* edit = new QLineEdit(this);
        edit->setObjectName(QLatin1String(name));
        edit->setReadOnly(true);
        edit->setAccessibleName(caption);
        auto* l = new QLabel(caption, this);
        l->setBuddy(edit);
        addTextControl(l);
        addFieldControl(edit);
        form->addRow(l, edit);
        return edit;
    };
    FFile = field("FFile", QStringLiteral("Datei:"));
    FTitle = field("FTitle", QStringLiteral("Titel:"));
    FArtist = field("FArtist", QStringLiteral("Interpret:"));
    FAlbum = field("FAlbum", QStringLiteral("Album:"));
    FYear = field("FYear", QStringLiteral("Jahr:"));
    FCategory = field("FCategory", QStringLiteral("Kategorie:"));
    FTrack = field("FTrack", QStringLiteral("Track Nr.:"));
    FComment = field("FComment", QStringLiteral("Kommentar:"));
    outer->addLayout(form);

    auto* buttons = new QHBoxLayout;
    LTagVersion = new QLabel(this);
    LTagVersion->setObjectName(QStringLiteral("LTagVersion"));
    addTextControl(LTagVersion);
    BSave = new QPushButton(QStringLiteral("&Speichern"), this);
    BSave->setObjectName(QStringLiteral("BSave"));
    BClose = new QPushButton(QStringLiteral("&Abbrechen"), this);
    BClose->setObjectName(QStringLiteral("BClose"));
    addButtonControl(BSave);
    addButtonControl(BClose);
    buttons->addWidget(LTagVersion, 1);
    buttons->addWidget(BSave);
    buttons->addWidget(BClose);
    outer->addLayout(buttons);
    resize(520, 330);
}

void TavoMP3ID3::showFile(const QString& path) {
    FFile->setText(path);
    const Id3TagReader::Fields f = Id3TagReader::read(path);
    FTitle->setText(f.title);
    FArtist->setText(f.artist);
    FAlbum->setText(f.album);
    FYear->setText(f.year);
    FCategory->setText(f.category);
    FTrack->setText(f.track);
    FComment->setText(f.comment);
    LTagVersion->setText(f.isEmpty() ? QStringLiteral("kein ID3 Tag") : f.source);
    for (QLineEdit* e : {FFile, FTitle, FArtist, FAlbum, FComment})
        e->setCursorPosition(0);
}
