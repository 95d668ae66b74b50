#include "support/FakePlayer.h"

#include "base/Checked.h"

#include <QFileInfo>
#include <QRegularExpression>

QList<qint32> FakePlayer::commands() const {
    QList<qint32> ids;
    for (const QString& c : calls.filter(QRegularExpression(QStringLiteral("^Command "))))
        ids << c.mid(8).toInt();
    return ids;
}

QStringList FakePlayer::playedFiles() const {
    return calls.filter(QRegularExpression(QStringLiteral("^PlayFile ")))
        .replaceInStrings(QRegularExpression(QStringLiteral("^PlayFile ")), QString());
}

int FakePlayer::currentLengthSeconds() const {
    if (current < 0 || current >= list.size())
        return -1;
    return lengthSeconds.value(list.at(current), defaultLengthSeconds);
}

void FakePlayer::advance(qint64 ms) {
    while (ms > 0 && status == Playing && running) {
        const qint64 remaining = qint64(currentLengthSeconds()) * 1000 - positionMs;
        if (ms < remaining) {
            positionMs += ms;
            return;
        }
        ms -= remaining;
        positionMs = 0;
        if (!queued.isEmpty()) {
            list << queued;
            queued.clear();
            current = int(list.size()) - 1;
            emit queuedFileStarted();
        } else if (current + 1 < list.size()) {
            ++current;
        } else {
            status = Stopped;
        }
    }
}

void FakePlayer::finishSong() {
    if (status == Playing)
        advance(qint64(currentLengthSeconds()) * 1000 - positionMs);
}

bool FakePlayer::queueNext(const QString& file) {
    calls << QStringLiteral("Queue ") + file;
    queued = file;
    return true;
}

void FakePlayer::clearQueue() {
    if (queued.isEmpty())
        return;
    calls << QStringLiteral("Unqueue");
    queued.clear();
}

void FakePlayer::StartWinamp(const QString& path) {
    calls << QStringLiteral("StartWinamp ") + path;
    ++startCount;
    running = true;
}

qint32 FakePlayer::WinampSetVolume(quint8 v) {
    calls << QStringLiteral("SetVolume %1").arg(v);
    if (running)
        volume = v;
    return 0;
}

qint32 FakePlayer::WinampJumpToTime(qint32 seconds, qint32 milliseconds) {
    const qint32 ms = Checked::toInt32(qint64(Checked::toInt32(qint64(seconds) * 1000)) + milliseconds);
    calls << QStringLiteral("JumpToTime %1").arg(ms);
    if (!running)
        return 0;
    if (status == Stopped)
        return -1;
    if (qint64(ms) > qint64(currentLengthSeconds()) * 1000)
        return 1;
    positionMs = ms;
    return 0;
}

void FakePlayer::WinampPlayFile(const QString& path) {
    calls << QStringLiteral("PlayFile ") + path;
    if (running)
        list << path;
}

void FakePlayer::WinampCommand(qint32 commandId) {
    calls << QStringLiteral("Command %1").arg(commandId);
    if (!running)
        return;
    switch (commandId) {
    case CloseCommand:
        running = false;
        status = Stopped;
        break;
    case PlayCommand:
        if (current >= 0 && current < list.size()) {
            status = Playing;
            positionMs = 0;
        }
        break;
    case PauseCommand:
        if (status == Playing)
            status = Paused;
        else if (status == Paused)
            status = Playing;
        break;
    case StopCommand:
        status = Stopped;
        positionMs = 0;
        break;
    case JumpToLastCommand:
        current = int(list.size()) - 1;
        break;
    default:
        break;
    }
}

QVariant FakePlayer::WinampGetInfo(quint8 code) {
    calls << QStringLiteral("GetInfo %1").arg(code);
    if (code == 5 || code == 7 || code > InfoTitle)
        return QVariant();
    if (code == InfoTitle)
        return running && current >= 0 && current < list.size()
                   ? QFileInfo(list.at(current)).completeBaseName()
                   : QString();
    if (!running)
        return qint32(0);
    return answer(code);
}

qint32 FakePlayer::answer(quint8 code) {
    const bool loaded = status != Stopped && current >= 0 && current < list.size();
    switch (code) {
    case InfoVersion:
        return 0x2095;
    case InfoClearList:
        list.clear();
        current = -1;
        status = Stopped;
        return 1;
    case InfoStatus:
        return status;
    case InfoLength:
        return loaded ? currentLengthSeconds() : -1;
    case InfoPosition:
        return loaded ? qint32(positionMs) : -1;
    case InfoWritePlaylist:
    case InfoListPos:
        return current;
    case InfoListLength:
        return qint32(list.size());
    case InfoSampleRate:
        return loaded ? 44 : 0;
    case InfoBitrate:
        return loaded ? 128 : 0;
    case InfoCode12:
        return loaded ? 2 : 0;
    default:
        return 0;
    }
}
