#include "update/widgets/TavoMP3Update.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>
#include <climits>

namespace {
template <typename W> W* named(W* widget, const char* name) {
    widget->setObjectName(QLatin1String(name));
    return widget;
}
} // namespace

QString TavoMP3Update::welcomeText() {
    return QStringLiteral(
        "Willkommen beim automatischen Update von Tavo MP3. Bitte stellen Sie, falls nicht schon "
        "vorhanden, eine Internetverbindung her und beginnen das Update");
}

TavoMP3Update::TavoMP3Update(Services& services, UpdateConfig config, QWidget* parent)
    : ColoredWindow(parent, Qt::Window), m_check(services, std::move(config)) {
    setObjectName(QStringLiteral("TavoMP3Update"));
    setWindowTitle(QStringLiteral("Tavo MP3 Player! Update"));
    buildLayout();

    connect(&m_check, &UpdateCheck::logChanged, this, &TavoMP3Update::showLog);
    connect(&m_check.ProgressBar(), &DownloadProgress::changed, this, [this](qint64 value, qint64 max) {
        // A body of unknown length shows the bar as busy.
        const auto clampInt = [](qint64 v) { return int(std::clamp<qint64>(v, 0, INT_MAX)); };
        ProgressBar->setMaximum(clampInt(max));
        ProgressBar->setValue(max > 0 ? clampInt(qMin(value, max)) : 0);
    });
    connect(&m_check.download(), &SocketDownload::progressTextChanged, this,
            [this](const QString& info, const QString& percent) {
                ProgressInfo->setText(info);
                if (!percent.isEmpty())
                    ProgressPercent->setText(percent);
            });
    connect(&m_check.download(), &SocketDownload::timeoutCountChanged, this,
            [this](int count) { LTimeout->setText(QString::number(count)); });
    connect(BStart, &QPushButton::clicked, this, [this] { m_check.BStartClick(); });
    connect(BCancel, &QPushButton::clicked, this, &QWidget::close);
}

void TavoMP3Update::buildLayout() {
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(12, 12, 12, 12);
    outer->setSpacing(8);

    LWelcome = named(new QLabel(welcomeText(), this), "LWelcome");
    LWelcome->setWordWrap(true);
    outer->addWidget(LWelcome);

    FLog = named(new QPlainTextEdit(this), "FLog");
    FLog->setReadOnly(true);
    FLog->setAccessibleName(QStringLiteral("Update Log"));
    FLog->setMinimumHeight(150);
    outer->addWidget(FLog, 1);

    ProgressBar = named(new QProgressBar(this), "ProgressBar");
    ProgressBar->setRange(0, 100);
    ProgressBar->setValue(0);
    ProgressBar->setTextVisible(false);
    outer->addWidget(ProgressBar);

    auto* info = new QHBoxLayout;
    ProgressInfo = named(new QLabel(this), "ProgressInfo");
    ProgressPercent = named(new QLabel(this), "ProgressPercent");
    LTimeoutCaption = named(new QLabel(QStringLiteral("Timeout:"), this), "LTimeoutCaption");
    LTimeout = named(new QLabel(QStringLiteral("0"), this), "LTimeout");
    LTimeout->setMinimumWidth(24);
    info->addWidget(ProgressInfo);
    info->addStretch(1);
    info->addWidget(ProgressPercent);
    info->addSpacing(24);
    info->addWidget(LTimeoutCaption);
    info->addWidget(LTimeout);
    outer->addLayout(info);

    auto* buttons = new QHBoxLayout;
    BStart = named(new QPushButton(QStringLiteral("&Start"), this), "BStart");
    BCancel = named(new QPushButton(QStringLiteral("&Abbrechen"), this), "BCancel");
    BStart->setDefault(true);
    buttons->addStretch(1);
    buttons->addWidget(BStart);
    buttons->addWidget(BCancel);
    outer->addLayout(buttons);

    for (QWidget* w : {static_cast<QWidget*>(LWelcome), static_cast<QWidget*>(ProgressInfo),
                       static_cast<QWidget*>(ProgressPercent), static_cast<QWidget*>(LTimeoutCaption),
                       static_cast<QWidget*>(LTimeout)})
        addTextControl(w);
    addFieldControl(FLog);
    addButtonControl(BStart);
    addButtonControl(BCancel);
    resize(460, 360);
}

void TavoMP3Update::showLog(const QString& text) {
    // The log keeps CR LF line ends; the text box shows them as plain line breaks.
    QString shown = text;
    shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    FLog->setPlainText(shown);
    FLog->verticalScrollBar()->setValue(FLog->verticalScrollBar()->maximum());
}

void TavoMP3Update::closeEvent(QCloseEvent* event) {
    m_check.Cancel();
    event->accept();
}
