#include "playlist/SongIdentityFile.h"

#include "base/AtomicFileWriter.h"
#include "base/RuntimeError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cstdio>

#ifndef Q_OS_WIN
#include <unistd.h>
#endif

namespace SongIdentityFile {

const QByteArray kHeader = QByteArrayLiteral("TavoMP3Player Songerkennung 1\n");

namespace {

constexpr int kFields = 7;

bool isHex32(QByteArrayView text) {
    return text.size() == 32 && std::all_of(text.begin(), text.end(), [](char c) {
               return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f');
           });
}

QByteArray escapedPath(const QString& path) {
    QByteArray utf8 = path.toUtf8();
    if (!utf8.contains('%') && !utf8.contains('\n') && !utf8.contains('\r'))
        return utf8;
    return utf8.replace("%", "%25").replace("\r", "%0D").replace("\n", "%0A");
}

bool parseLine(QByteArrayView line, QString& path, SongRecord& record) {
    QByteArrayView fields[kFields];
    for (int i = 0; i < kFields - 1; ++i) {
        const qsizetype blank = line.indexOf(' ');
        if (blank <= 0)
            return false;
        fields[i] = line.first(blank);
        line = line.sliced(blank + 1);
    }
    fields[kFields - 1] = line;
    bool ok[5] = {};
    record.fingerprint.audioBytes = fields[0].toULongLong(&ok[0]);
    if (!isHex32(fields[1]))
        return false;
    record.fingerprint.high = fields[1].first(16).toULongLong(&ok[1], 16);
    record.fingerprint.low = fields[1].sliced(16).toULongLong(&ok[1], 16);
    record.stamp.size = fields[2].toLongLong(&ok[2]);
    record.stamp.modifiedNs = fields[3].toLongLong(&ok[3]);
    record.stamp.device = fields[4].toULongLong(&ok[4]);
    bool inodeOk = false;
    record.stamp.inode = fields[5].toULongLong(&inodeOk);
    if (!std::all_of(std::begin(ok), std::end(ok), [](bool b) { return b; }) || !inodeOk ||
        record.stamp.size < 0 || record.fingerprint.audioBytes == 0 || fields[6].isEmpty())
        return false;
    path = QString::fromUtf8(QByteArray::fromPercentEncoding(fields[6].toByteArray()));
    return true;
}

} // namespace

SongRecords read(const QString& file) {
    SongRecords records;
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly))
        return records;
    const QByteArray bytes = in.readAll();
    if (!bytes.startsWith(kHeader))
        return records;
    QByteArrayView rest = QByteArrayView(bytes).sliced(kHeader.size());
    // Only whole lines: a line without its line break was cut off.
    for (qsizetype end = rest.indexOf('\n'); end >= 0; end = rest.indexOf('\n')) {
        QString path;
        SongRecord record;
        if (parseLine(rest.first(end), path, record))
            records.insert(path, record);
        rest = rest.sliced(end + 1);
    }
    return records;
}

QByteArray format(const SongRecords& records) {
    // Sorted by path, so that the same records give the same file.
    QStringList paths = records.keys();
    std::sort(paths.begin(), paths.end());
    QByteArray out = kHeader;
    out.reserve(kHeader.size() + paths.size() * 160);
    char hex[33];
    for (const QString& path : paths) {
        const SongRecord& r = records.value(path);
        std::snprintf(hex, sizeof hex, "%016llx%016llx", static_cast<unsigned long long>(r.fingerprint.high),
                      static_cast<unsigned long long>(r.fingerprint.low));
        out += QByteArray::number(quint64(r.fingerprint.audioBytes));
        out += ' ';
        out.append(hex, 32);
        for (qint64 n : {r.stamp.size, r.stamp.modifiedNs}) {
            out += ' ';
            out += QByteArray::number(n);
        }
        for (quint64 n : {r.stamp.device, r.stamp.inode}) {
            out += ' ';
            out += QByteArray::number(n);
        }
        out += ' ';
        out += escapedPath(path);
        out += '\n';
    }
    return out;
}

bool write(const QString& file, const QByteArray& bytes) {
    if (!QDir().mkpath(QFileInfo(file).absolutePath()))
        return false;
    try {
        AtomicFileWriter::writeFile(file, bytes);
        return true;
    } catch (const RuntimeError&) {
        return false; // the old cache stays whole; the next save tries again
    }
}

} // namespace SongIdentityFile
