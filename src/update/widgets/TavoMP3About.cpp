#include "update/widgets/TavoMP3About.h"

#include <QLabel>
#include <QVBoxLayout>

namespace {
QLabel* label(QWidget* parent, const char* name, const QString& text) {
    auto* l = new QLabel(text, parent);
    l->setObjectName(QLatin1String(name));
    l->setAlignment(Qt::AlignHCenter);
    return l;
}
} // namespace

QString TavoMP3About::versionText() {
    return QStringLiteral("Version ") + QString::number(TAVO_VERSION_MAJOR) + QLatin1Char('.') +
           QString::number(TAVO_VERSION_MINOR);
}

TavoMP3About::TavoMP3About(QWidget* parent) : ColoredWindow(parent, Qt::Window) {
    setObjectName(QStringLiteral("TavoMP3About"));
    setWindowTitle(QStringLiteral("About"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 18, 24, 18);
    layout->setSpacing(6);

    Title = label(this, "Title", QStringLiteral("Tavo MP3 Player!"));
    QFont big = Title->font();
    big.setPointSizeF(big.pointSizeF() * 1.8);
    big.setBold(true);
    Title->setFont(big);
    Version = label(this, "Version", QStringLiteral("Version x"));
    Date = label(this, "Date", QStringLiteral("27.11.2004"));
    BeginDate = label(this, "BeginDate", QStringLiteral("Begonnen am 09.03.2002"));
    Website = label(this, "Website", QStringLiteral("www.tavomp3.example"));
    Website->setTextInteractionFlags(Qt::TextSelectableByMouse);

    layout->addWidget(Title);
    layout->addWidget(Version);
    layout->addSpacing(8);
    layout->addWidget(Date);
    layout->addWidget(BeginDate);
    layout->addSpacing(8);
    layout->addWidget(Website);
    for (QLabel* l : {Title, Version, Date, BeginDate, Website})
        addTextControl(l);

    // Filled when the window loads, as the layout's placeholder says.
    Version->setText(versionText());
    setFixedSize(sizeHint().expandedTo(QSize(300, 0)));
}
