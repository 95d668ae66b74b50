#pragma once

// The player link of the Windows program: a Winamp-2-compatible player driven by window messages.
// Built only on Windows; the message arguments and the title parsing it relies on are portable
// (WinampMessages, WinampTitle) and tested everywhere.
#ifdef _WIN32

#include "player/PlayerLink.h"
#include "player/WinampTitle.h"

class Dialogs;

class WinampLink : public PlayerLink {
    Q_OBJECT
public:
    WinampLink(StatusLine& status, Dialogs& dialogs, QObject* parent = nullptr);

    void StartWinamp(const QString& path) override;
    qint32 WinampSetVolume(quint8 volume) override;
    qint32 WinampJumpToTime(qint32 seconds, qint32 milliseconds) override;
    void WinampPlayFile(const QString& path) override;
    void WinampCommand(qint32 commandId) override;
    QVariant WinampGetInfo(quint8 code) override;

private:
    qint64 send(quint32 msg, qint64 wParam, qint64 lParam);
    QString windowTitle() const;

    Dialogs& m_dialogs;
    void* hWinamp = nullptr;
    WinampTitle m_title;
};

#endif
