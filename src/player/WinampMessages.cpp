#include "player/WinampMessages.h"

#include "base/Checked.h"

namespace WinampMessages {

Message statusQuery() {
    return {WmUser, 0, IpcIsPlaying};
}

std::optional<Message> infoQuery(quint8 code) {
    switch (code) {
    case 0:
        return Message{WmUser, 0, IpcGetVersion};
    case 1:
        return Message{WmUser, 0, IpcDelete};
    case 2:
        return Message{WmUser, 0, IpcIsPlaying};
    case 3:
        return Message{WmUser, 1, IpcGetOutputTime};
    case 4:
        return Message{WmUser, 0, IpcGetOutputTime};
    case 6:
        return Message{WmUser, 3, IpcWritePlaylist};
    case 8:
        return Message{WmUser, 0, IpcGetListLength};
    case 9:
        return Message{WmUser, 0, IpcGetListPos};
    case 10:
        return Message{WmUser, 0, IpcGetInfo};
    case 11:
        return Message{WmUser, 1, IpcGetInfo};
    case 12:
        return Message{WmUser, 3, IpcGetInfo};
    default:
        return std::nullopt;
    }
}

Message setVolume(quint8 volume) {
    return {WmUser, volume, IpcSetVolume};
}

Message jumpToTime(qint32 seconds, qint32 milliseconds) {
    const qint32 ms = Checked::toInt32(qint64(Checked::toInt32(qint64(seconds) * 1000)) + milliseconds);
    return {WmUser, ms, IpcJumpToTime};
}

Message command(qint32 commandId) {
    return {WmCommand, commandId, 0};
}

QString playFileName(const QString& path) {
    return path.endsWith(QLatin1Char('\\')) ? path.chopped(1) : path;
}

QByteArray playFileData(const QString& fileName) {
    QByteArray data = fileName.toLocal8Bit();
    data.append('\0');
    return data;
}

} // namespace WinampMessages
