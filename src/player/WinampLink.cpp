#ifdef _WIN32

#include "player/WinampLink.h"

#include "base/Dialogs.h"
#include "base/RuntimeError.h"
#include "player/WinampMessages.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QThread>

#include <windows.h>

namespace {
constexpr wchar_t kWindowClass[] = L"Winamp v1.x";
// The classic wait counted find attempts in a 16-bit counter until it overflowed; here the wait ends by time.
constexpr int kStartWaitMs = 10000;

HWND findPlayer() {
    return FindWindowW(kWindowClass, nullptr);
}
} // namespace

WinampLink::WinampLink(StatusLine& status, Dialogs& dialogs, QObject* parent)
    : PlayerLink(status, parent), m_dialogs(dialogs) {
}

qint64 WinampLink::send(quint32 msg, qint64 wParam, qint64 lParam) {
    return qint64(SendMessageA(HWND(hWinamp), msg, WPARAM(wParam), LPARAM(lParam)));
}

QString WinampLink::windowTitle() const {
    const int length = GetWindowTextLengthA(HWND(hWinamp));
    QByteArray buffer(length + 1, '\0');
    const int got = GetWindowTextA(HWND(hWinamp), buffer.data(), length + 1);
    return QString::fromLocal8Bit(buffer.constData(), got);
}

void WinampLink::StartWinamp(const QString& path) {
    try {
        hWinamp = findPlayer();
        const bool exists = path.isEmpty() || QFileInfo::exists(path);
        if (exists && !path.isEmpty() && hWinamp == nullptr) {
            QProcess::startDetached(path, {});
            QElapsedTimer waited;
            waited.start();
            while (hWinamp == nullptr) {
                if (waited.elapsed() > kStartWaitMs)
                    throw RuntimeError::overflow();
                hWinamp = findPlayer();
                for (int i = 0; i < 4; ++i)
                    QCoreApplication::processEvents();
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
    const QString name = WinampMessages::playFileName(path);
    QByteArray ansi = name.toLocal8Bit();
    COPYDATASTRUCT record;
    record.dwData = WinampMessages::IpcPlayFile;
    record.cbData = DWORD(WinampMessages::playFileDataSize(name));
    record.lpData = ansi.data();
    send(WinampMessages::WmCopyData, 0, qint64(reinterpret_cast<LPARAM>(&record)));
}

void WinampLink::WinampCommand(qint32 commandId) {
    const auto m = WinampMessages::command(commandId);
    PostMessageA(HWND(hWinamp), m.msg, WPARAM(m.wParam), LPARAM(m.lParam));
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
