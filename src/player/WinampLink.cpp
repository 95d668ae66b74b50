#ifdef _WIN32

#include "player/WinampLink.h"

#include "base/Dialogs.h"
#include "base/RuntimeError.h"
#include "base/StatusLine.h"
#include "player/WinampMessages.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QThread>

#include <windows.h>

namespace {
constexpr wchar_t kWindowClass[] = L"Winamp v1.x";
constexpr int kPlayerIoError = 57;

HWND findPlayer() {
    return FindWindowW(kWindowClass, nullptr);
}

QString answerKey(quint32 msg, qint64 wParam, qint64 lParam) {
    return QString::number(msg) + QLatin1Char(':') + QString::number(wParam) + QLatin1Char(':') +
           QString::number(lParam);
}
} // namespace

WinampLink::WinampLink(StatusLine& status, Dialogs& dialogs, QObject* parent)
    : PlayerLink(status, parent), m_dialogs(dialogs) {
}

bool WinampLink::isConnected() const {
    return hWinamp != nullptr && IsWindow(HWND(hWinamp));
}

qint64 WinampLink::send(quint32 msg, qint64 wParam, qint64 lParam) {
    if (hWinamp == nullptr)
        return 0;
    DWORD_PTR result = 0;
    // A player that Windows already knows to hang is not waited for at all.
    const UINT flags = SMTO_NORMAL | SMTO_ABORTIFHUNG;
    if (SendMessageTimeoutW(HWND(hWinamp), msg, WPARAM(wParam), LPARAM(lParam), flags, UINT(answerWaitMs),
                            &result) != 0) {
        if (m_stalled) {
            m_stalled = false;
            if (m_status.text() == m_stallText)
                m_status.setText(QString());
        }
        if (msg != WinampMessages::WmCopyData)
            m_answers.insert(answerKey(msg, wParam, lParam), qint64(LRESULT(result)));
        return qint64(LRESULT(result));
    }
    // A window that is gone swallows the message: the query answers 0, as for a stopped player.
    if (!IsWindow(HWND(hWinamp)))
        return 0;
    stall();
    return m_answers.value(answerKey(msg, wParam, lParam), 0);
}

void WinampLink::stall() {
    if (m_stalled)
        return;
    m_stalled = true;
    ReportWinampError(QStringLiteral("Der Player antwortet nicht"), kPlayerIoError);
    m_stallText = m_status.text();
}

QString WinampLink::windowTitle() const {
    // The wide title: a song name the ANSI code page cannot show still arrives whole.
    const int length = GetWindowTextLengthW(HWND(hWinamp));
    std::wstring buffer(size_t(length) + 1, L'\0');
    const int got = GetWindowTextW(HWND(hWinamp), buffer.data(), length + 1);
    return QString::fromWCharArray(buffer.data(), got);
}

void WinampLink::StartWinamp(const QString& path) {
    try {
        hWinamp = findPlayer();
        m_stalled = false;
        m_answers.clear();
        const bool exists = path.isEmpty() || QFileInfo::exists(path);
        if (exists && !path.isEmpty() && hWinamp == nullptr) {
            // Minimized, taking the focus, as the player is started by hand from the tray.
            QProcess process;
            process.setProgram(path);
            process.setCreateProcessArgumentsModifier([](QProcess::CreateProcessArguments* args) {
                args->startupInfo->dwFlags |= STARTF_USESHOWWINDOW;
                args->startupInfo->wShowWindow = SW_SHOWMINIMIZED;
            });
            process.startDetached();
            // The classic wait counted find attempts in a 16-bit counter until it overflowed; here the
            // wait ends by time, with the same overflow report.
            QElapsedTimer waited;
            waited.start();
            while (hWinamp == nullptr) {
                if (waited.elapsed() > startWaitMs)
                    throw RuntimeError::overflow();
                hWinamp = findPlayer();
                for (int i = 0; i < 4; ++i)
                    QCoreApplication::processEvents();
                if (hWinamp == nullptr)
                    QThread::msleep(10);
            }
        } else if (!exists) {
            m_dialogs.message(
                QStringLiteral("The winamp path provided is incorrect.  Please specify a correct path"));
        }
    } catch (const RuntimeError& e) {
        ReportWinampError(e.description(), e.number());
    }
}

qint32 WinampLink::WinampSetVolume(quint8 volume) {
    const auto m = WinampMessages::setVolume(volume);
    return qint32(send(m.msg, m.wParam, m.lParam));
}

qint32 WinampLink::WinampJumpToTime(qint32 seconds, qint32 milliseconds) {
    const auto m = WinampMessages::jumpToTime(seconds, milliseconds);
    return qint32(send(m.msg, m.wParam, m.lParam));
}

void WinampLink::WinampPlayFile(const QString& path) {
    QByteArray data = WinampMessages::playFileData(WinampMessages::playFileName(path));
    COPYDATASTRUCT record;
    record.dwData = WinampMessages::IpcPlayFile;
    record.cbData = DWORD(data.size());
    record.lpData = data.data();
    send(WinampMessages::WmCopyData, 0, qint64(reinterpret_cast<LPARAM>(&record)));
}

void WinampLink::WinampCommand(qint32 commandId) {
    const auto m = WinampMessages::command(commandId);
    PostMessageW(HWND(hWinamp), m.msg, WPARAM(m.wParam), LPARAM(m.lParam));
}

QVariant WinampLink::WinampGetInfo(quint8 code) {
    try {
        const auto status = WinampMessages::statusQuery();
        send(status.msg, status.wParam, status.lParam);
        if (code == InfoTitle)
            return m_title.parse(windowTitle());
        const auto m = WinampMessages::infoQuery(code);
        if (!m)
            return QVariant();
        return qint32(send(m->msg, m->wParam, m->lParam));
    } catch (const RuntimeError& e) {
        ReportWinampError(e.description(), e.number());
        return QVariant();
    }
}

#endif
