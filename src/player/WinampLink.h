#pragma once

// The player link of the Windows program: a Winamp-2-compatible player driven by window messages.
// Built only on Windows; the message arguments and the title parsing it relies on are portable
// (WinampMessages, WinampTitle) and tested everywhere.
#ifdef _WIN32

#include "player/PlayerLink.h"
#include "player/WinampTitle.h"

#include <QHash>

class Dialogs;

// A closed player window swallows every message and answers 0 (stopped) until StartWinamp finds a
// player again. A player that hangs is not waited for: a message it does not take within a moment is
// given up, reported once in the status line, and the query keeps the answer the player last gave,
// so a hung player does not read as stopped.
class WinampLink : public PlayerLink {
    Q_OBJECT
public:
    WinampLink(StatusLine& status, Dialogs& dialogs, QObject* parent = nullptr);

    // How long StartWinamp waits for a started player's window.
    int startWaitMs = 10000;
    // How long one message waits for the player's answer.
    int answerWaitMs = 1000;

    bool isConnected() const;

    void StartWinamp(const QString& path) override;
    qint32 WinampSetVolume(quint8 volume) override;
    qint32 WinampJumpToTime(qint32 seconds, qint32 milliseconds) override;
    void WinampPlayFile(const QString& path) override;
    void WinampCommand(qint32 commandId) override;
    QVariant WinampGetInfo(quint8 code) override;

private:
    qint64 send(quint32 msg, qint64 wParam, qint64 lParam);
    QString windowTitle() const;
    void stall();

    Dialogs& m_dialogs;
    void* hWinamp = nullptr;
    WinampTitle m_title;
    bool m_stalled = false;
    QString m_stallText;
    // The player's last answer to each query, by message, wParam and lParam.
    QHash<QString, qint64> m_answers;
};

#endif
