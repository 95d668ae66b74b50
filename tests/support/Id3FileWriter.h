#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

// Builds small MP3 files with hand-made ID3 tags, byte by byte, so that tag reading is tested on
// exactly the layouts the versions define: ID3v2.3 (plain frame sizes), ID3v2.4 (sync-safe frame
// sizes, UTF-8), UTF-16 text with a byte-order mark, and the 128-byte ID3v1 trailer.
class Id3FileWriter {
public:
    enum Encoding : char { Latin1 = 0, Utf16 = 1, Utf8 = 3 };

    // Silent MPEG-1 Layer III frames (128 kbps, 44.1 kHz), enough for a reader to accept the file.
    static QByteArray audio(int frames = 8) {
        return (QByteArray("\xFF\xFB\x90\x04", 4) + QByteArray(413, '\0')).repeated(frames);
    }

    // Seven bits a byte for sync-safe sizes, eight for plain ones; big-endian either way.
    static QByteArray size(quint32 n, int bits) {
        QByteArray b(4, '\0');
        for (int i = 3; i >= 0; --i, n >>= bits)
            b[i] = char(n & ((1u << bits) - 1));
        return b;
    }

    static QByteArray encode(const QString& text, Encoding e) {
        if (e == Utf16) // little-endian with its byte-order mark
            return QByteArray("\xFF\xFE", 2) +
                   QByteArray(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
        return e == Utf8 ? text.toUtf8() : text.toLatin1();
    }

    static QByteArray frame(int version, const char* id, const QByteArray& content) {
        const quint32 n = quint32(content.size());
        return QByteArray(id, 4) + size(n, version == 4 ? 7 : 8) + QByteArray(2, '\0') + content;
    }
    static QByteArray textFrame(int version, const char* id, const QString& text, Encoding e) {
        return frame(version, id, QByteArray(1, char(e)) + encode(text, e));
    }

    struct Tag {
        QString title, artist, album, year, genre, track, comment;
    };

    static QByteArray id3v2(int version, const Tag& t, Encoding e) {
        QByteArray frames = textFrame(version, "TIT2", t.title, e) + textFrame(version, "TPE1", t.artist, e) +
                            textFrame(version, "TALB", t.album, e) +
                            textFrame(version, version == 4 ? "TDRC" : "TYER", t.year, e) +
                            textFrame(version, "TCON", t.genre, e) + textFrame(version, "TRCK", t.track, e);
        const QByteArray terminator = e == Utf16 ? QByteArray("\xFF\xFE\0\0", 4) : QByteArray(1, '\0');
        frames += frame(version, "COMM", QByteArray(1, char(e)) + "deu" + terminator + encode(t.comment, e));
        frames += QByteArray(64, '\0'); // padding
        return QByteArray("ID3") + char(version) + '\0' + '\0' + size(quint32(frames.size()), 7) + frames;
    }

    static QByteArray id3v1(const Tag& t, quint8 genreByte) {
        auto fixed = [](const QString& s, int n) { return s.toLatin1().left(n).leftJustified(n, '\0'); };
        return QByteArray("TAG") + fixed(t.title, 30) + fixed(t.artist, 30) + fixed(t.album, 30) +
               fixed(t.year, 4) + fixed(t.comment, 28) + '\0' + char(t.track.toInt()) + char(genreByte);
    }

    static bool write(const QString& fileName, const QByteArray& bytes) {
        QFile f(fileName);
        return f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(bytes) == bytes.size();
    }
};
