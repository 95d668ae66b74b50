#include "ui/TavoMP3Settings.h"

#include <QLabel>
#include <QVBoxLayout>

TavoMP3Settings::TavoMP3Settings(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("TavoMP3Settings"));
    setWindowTitle(QStringLiteral("Tavo MP3 Player! - Einstellungen"));
    auto* layout = new QVBoxLayout(this);
    FStatus = new QLabel(this);
    FStatus->setObjectName(QStringLiteral("FStatus"));
    layout->addStretch(1);
    layout->addWidget(FStatus);
    resize(560, 420);
}
