#include "ui/TavoMP3Settings.h"

#include "ui/AutomationIds.h"

#include "appearance/ColorSchemeController.h"
#include "appearance/SettingsWindowHost.h"
#include "appearance/UpdateOptionTexts.h"
#include "base/Checked.h"
#include "base/ErrorReport.h"
#include "base/SettingsStore.h"
#include "base/StatusLine.h"
#include "ui/TavoMp3Tree.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStandardPaths>

namespace {
const QString kSettings = QStringLiteral("Settings");

// The store keeps the directories one per line with CR LF, as the playlist builder reads them.
QString storedLines(const QString& fieldText) {
    QString t = fieldText;
    t.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    return t.split(QLatin1Char('\n')).join(QStringLiteral("\r\n"));
}

QString fieldLines(const QString& stored) {
    QString t = stored;
    return t.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}
} // namespace

TavoMP3Settings::TavoMP3Settings(Services& services, SettingsWindowHost& host, ColorSchemeController& colours,
                                 QWidget* parent)
    : QWidget(parent, Qt::Window), m_services(services), m_host(host), m_colours(colours) {
    setObjectName(QStringLiteral("TavoMP3Settings"));
    setWindowTitle(QStringLiteral("Tavo MP3 Player! - Einstellungen"));
    buildLayout();
    connectHandlers();
    connectPresetHandlers();
    loadWindow();
}

TavoMP3Settings::~TavoMP3Settings() = default;

bool TavoMP3Settings::handle(const QString& place, const std::function<void(int& line)>& body) {
    return ErrorReport::guard(m_services.dialogs, place, body);
}

QString TavoMP3Settings::firstTimeMessage() {
    return QStringLiteral(
        "Einstellungen werden zu ersten Mal aufgerufen. Es werden Default Werte vorgeschlagen!");
}

QString TavoMP3Settings::proposedPlayerPath() {
    const QString found = QStandardPaths::findExecutable(QStringLiteral("mpv"));
    return found.isEmpty() ? QStringLiteral("/usr/bin/mpv") : found;
}

QString TavoMP3Settings::proposedMusicFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::MusicLocation);
}

QString TavoMP3Settings::listText(const QComboBox* list) {
    return list->currentIndex() < 0 ? list->placeholderText() : list->currentText();
}

void TavoMP3Settings::showInList(QComboBox* list, const QString& text) {
    const int i = list->findText(text);
    list->setCurrentIndex(i);
    // A number the list does not have is shown as text without being an item.
    list->setPlaceholderText(i < 0 ? text : QString());
}

void TavoMP3Settings::connectHandlers() {
    connect(BBrowseWinamp, &QPushButton::clicked, this, [this] { BBrowseWinamp_Click(); });
    connect(BBrowseBGImage, &QPushButton::clicked, this, [this] { BBrowseBGImage_Click(); });
    connect(BAddDir, &QPushButton::clicked, this, [this] { BAddDir_Click(); });
    connect(BSaveAndClose, &QPushButton::clicked, this, [this] { BSaveAndClose_Click(); });
    connect(BCancel, &QPushButton::clicked, this, &QWidget::close);
}

void TavoMP3Settings::open() {
    // Closing unloads what the window shows of the store, not the window: the working colour
    // scheme and the active preset live on, as the main window still shows them; deleting them
    // made "Preset speichern" overwrite the preset with an empty name and the built-in colours.
    if (m_unloaded)
        handle(QStringLiteral("Settings Form Load"), [this](int& line) {
            readStoredValues(line);
            line = 9;
            FillPresetList();
        });
    m_unloaded = false;
    show();
    raise();
    activateWindow();
}

void TavoMP3Settings::closeEvent(QCloseEvent* event) {
    m_unloaded = true;
    QWidget::closeEvent(event);
}

void TavoMP3Settings::loadWindow() {
    handle(QStringLiteral("Settings Form Load"), [this](int& line) {
        readStoredValues(line);
        line = 9;
        m_colours.setActivePreset(
            m_services.settings.GetSetting(kSettings, QStringLiteral("ActivePreset"), QStringLiteral("0")));
        FillPresetList();
    });
}

void TavoMP3Settings::readStoredValues(int& line) {
    SettingsStore& s = m_services.settings;
    line = 1;
    const QString playerPath = s.GetSetting(kSettings, QStringLiteral("WinampPath"), QStringLiteral("0"));
    if (playerPath == QLatin1String("0")) {
        FWinampPath->setText(proposedPlayerPath());
        FStatus->setText(firstTimeMessage());
    } else {
        FWinampPath->setText(playerPath);
    }
    line = 2;
    FBGImagePath->setText(s.GetSetting(kSettings, QStringLiteral("BGImagePath"), QString()));
    line = 3;
    const QString dirs = s.GetSetting(kSettings, QStringLiteral("UserMP3Directory"), QStringLiteral("0"));
    if (dirs == QLatin1String("0")) {
        FUserMP3Directory->setPlainText(proposedMusicFolder());
        FStatus->setText(firstTimeMessage());
    } else {
        FUserMP3Directory->setPlainText(fieldLines(dirs));
    }
    line = 4;
    const QString lastCheck =
        s.GetSetting(kSettings, QStringLiteral("LastUpdateCheck"), QStringLiteral("---"));
    FLastUpdateCheck->setText(
        lastCheck == QLatin1String("---") ? lastCheck : UpdateOptionTexts::checkTimeText(lastCheck));
    line = 5;
    FLastUpdateCheckStatus->setText(
        s.GetSetting(kSettings, QStringLiteral("LastUpdateCheckStatus"), QStringLiteral("---")));
    line = 6;
    const QString nextCheck =
        s.GetSetting(kSettings, QStringLiteral("NextUpdateCheck"), QStringLiteral("---"));
    FNextUpdateCheck->setText(
        nextCheck == QLatin1String("---") ? nextCheck : UpdateOptionTexts::checkTimeText(nextCheck));
    line = 7;
    const quint8 mode = Checked::textToByte(s.GetSetting(kSettings, QStringLiteral("UpdateMode"), 0));
    const qint16 interval =
        Checked::textToInt16(s.GetSetting(kSettings, QStringLiteral("UpdateInterval"), 0));
    const qint16 remind =
        Checked::textToInt16(s.GetSetting(kSettings, QStringLiteral("UpdateIntervalRemind"), 0));
    RUpdateMode[mode == 1 || mode == 2 ? mode : 3]->setChecked(true);
    line = 8;
    showInList(FUpdateInterval, UpdateOptionTexts::intervalItemFor(interval));
    showInList(FUpdateIntervalRemind, UpdateOptionTexts::remindItemFor(remind));
}

void TavoMP3Settings::BBrowseWinamp_Click() {
    handle(QStringLiteral("BBrowseWinamp_Click"), [this](int& line) {
        line = 1;
        Dialogs::FileRequest request;
        request.fileName = FWinampPath->text();
        if (const auto chosen = m_services.dialogs.openFile(request))
            FWinampPath->setText(*chosen);
    });
}

void TavoMP3Settings::BBrowseBGImage_Click() {
    handle(QStringLiteral("BBrowseBGImage_Click"), [this](int& line) {
        line = 1;
        Dialogs::FileRequest request;
        request.fileName = FBGImagePath->text();
        if (const auto chosen = m_services.dialogs.openFile(request))
            FBGImagePath->setText(*chosen);
        line = 2;
        // A preview before saving; cancelling the dialog shows the current field again.
        m_host.LoadBGImage(FBGImagePath->text());
    });
}

void TavoMP3Settings::BAddDir_Click() {
    if (!m_tree) {
        m_tree = new TavoMp3Tree(this);
        AutomationIds::apply(m_tree);
    }
    m_tree->show();
    m_tree->raise();
}

void TavoMP3Settings::BSaveAndClose_Click() {
    handle(QStringLiteral("BSaveAndClose_Click"), [this](int& line) {
        line = 1;
        if (!QFileInfo(FWinampPath->text()).isFile()) {
            m_services.dialogs.message(QStringLiteral("Winamp.exe konnte nicht gefunden werden!!!"),
                                       QString(), Dialogs::Buttons::Ok, Dialogs::Icon::Information);
            return;
        }
        line = 2;
        const QString picture = FBGImagePath->text();
        if (!picture.isEmpty()) {
            if (!QFileInfo(picture).isFile()) {
                m_services.dialogs.message(QStringLiteral("Hintergrundbild konnte nicht gefunden werden!"),
                                           QString(), Dialogs::Buttons::Ok, Dialogs::Icon::Information);
                return;
            }
        }
        m_host.LoadBGImage(picture); // "" removes the picture
        line = 3;
        int mode = 0;
        for (int i = 1; i <= 3 && mode == 0; ++i)
            if (RUpdateMode[i]->isChecked())
                mode = i;
        line = 4;
        const int minutes = UpdateOptionTexts::minutesFor(listText(FUpdateInterval));
        const int days = UpdateOptionTexts::daysFor(listText(FUpdateIntervalRemind));
        line = 5;
        const QString dirs = storedLines(FUserMP3Directory->toPlainText());
        SettingsStore& s = m_services.settings;
        s.SaveSetting(kSettings, QStringLiteral("WinampPath"), FWinampPath->text());
        s.SaveSetting(kSettings, QStringLiteral("BGImagePath"), picture);
        s.SaveSetting(kSettings, QStringLiteral("UserMP3Directory"), dirs);
        s.SaveSetting(kSettings, QStringLiteral("UpdateMode"), mode);
        s.SaveSetting(kSettings, QStringLiteral("UpdateInterval"), minutes);
        s.SaveSetting(kSettings, QStringLiteral("UpdateIntervalRemind"), days);
        line = 6;
        m_host.setBrowsePath(dirs);
        m_services.status.setText(QStringLiteral("Einstellungen gespeichert!"));
        m_host.FuncSetEnv();
        m_host.startPlayer(FWinampPath->text());
        line = 7;
        close();
    });
}

const QString& TavoMP3Settings::activePreset() const {
    return m_colours.activePreset();
}
