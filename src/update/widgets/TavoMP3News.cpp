#include "update/widgets/TavoMP3News.h"

#include "update/VersionHistory.h"

#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QVBoxLayout>

TavoMP3News::TavoMP3News(QWidget* parent) : ColoredWindow(parent, Qt::Window) {
    setObjectName(QStringLiteral("TavoMP3News"));
    setWindowTitle(QStringLiteral("Tavo MP3 Player! News"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    FHistory = new QPlainTextEdit(this);
    FHistory->setObjectName(QStringLiteral("FHistory"));
    FHistory->setAccessibleName(QStringLiteral("News"));
    FHistory->setReadOnly(true);
    FHistory->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    FHistory->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    layout->addWidget(FHistory);
    addFieldControl(FHistory);

    m_text = VersionHistory::text();
    QString shown = m_text;
    shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    FHistory->setPlainText(shown);
    resize(620, 480);
}
