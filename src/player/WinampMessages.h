#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>
#include <optional>

// The arguments of the player's window-message interface, worked out apart from the window calls so
// that they are the same on every platform and can be checked without the player.
namespace WinampMessages {

constexpr quint32 WmUser = 1024;
constexpr quint32 WmCommand = 273;
constexpr quint32 WmCopyData = 74;

enum Ipc : qint32 {
    IpcGetVersion = 0,
    IpcPlayFile = 100,
    IpcDelete = 101,
    IpcIsPlaying = 104,
    IpcGetOutputTime = 105,
    IpcJumpToTime = 106,
    IpcWritePlaylist = 120,
    IpcSetVolume = 122,
    IpcGetListLength = 124,
    IpcGetListPos = 125,
    IpcGetInfo = 126,
};

struct Message {
    quint32 msg;
    qint64 wParam;
    qint64 lParam;
    bool operator==(const Message&) const = default;
};

// Sent before every information query; its answer is thrown away.
Message statusQuery();
// The message behind a WinampGetInfo code. Nothing for 5, 7 and 14..255, and nothing for 13,
// which reads the window title instead.
std::optional<Message> infoQuery(quint8 code);
Message setVolume(quint8 volume);
// seconds × 1000 + milliseconds, raising the overflow error outside 32 bits.
Message jumpToTime(qint32 seconds, qint32 milliseconds);
Message command(qint32 commandId);
// The file name as handed over: one trailing backslash dropped.
QString playFileName(const QString& path);
// The hand-over record's data: the name in the 8-bit code page the player reads, ended by a zero.
// cbData is its size in bytes, which for a name with non-ASCII characters in a multi-byte code page
// is more than its characters.
QByteArray playFileData(const QString& fileName);

} // namespace WinampMessages
