#pragma once

#include <QByteArray>
#include <QFile>
#include <QList>
#include <QPair>
#include <QString>

// Builds small MP3 files with hand-made ID3 tags, byte by byte, so that tag reading is tested on
// exactly the layouts the versions define: ID3v2.3 (plain frame sizes), ID3v2.4 (sync-safe frame
// sizes, UTF-8), UTF-16 text with a byte-order mark, and the 128-byte ID3v1 trailer.
class Id3FileWriter {
public:
    enum Encoding : char { Latin1 = 0, Utf16 = 1, Utf8 = 3 };

    // Silent MPEG-1 Layer III frames (128 kbps, 44.1 kHz), enough for a reader to accept the file.
    static QByteArray audio(int frames = 8) {
        QByteArray frame(417, '\0');
        frame[0] = char(0xFF);
        frame[1] = char(0xFB);
        frame[2] = char(0x90);
        frame[3] = char(0x04);
        return frame.repeated(frames);
    }

    static QByteArray syncSafe(quint32 n) {
        QByteArray b(4, '\0');
        for (int i = 3; i >= 0; --i) {
            b[i] = char(n & 0x7F);
            n >>= 7;
        }
        return b;
    }
    static QByteArray bigEndian(quint32 n) {
        QByteArray b(4, '\0');
        for (int i = 3; i >= 0; --i) {
            b[i] = char(n & 0xFF);
            n >>= 8;
        }
        return b;
    }

    static QByteArray encode(const QString& text, Encoding e) {
        switch (e) {
        case Utf16: {
            QByteArray b("\xFF\xFE", 2);
            for (QChar c : text) {
                b += char(c.unicode() & 0xFF);
                b += char(c.unicode() >> 8);
            }
            return b;
        }
        case Utf8:
            return text.toUtf8();
        default:
            return text.toLatin1();
        }
    }

    static QByteArray frame(int version, const char* id, const QByteArray& content) {
        const QByteArray size =
            version == 4 ? syncSafe(quint32(content.size())) : bigEndian(quint32(content.size()));
        return QByteArray(id, 4) + size + QByteArray(2, '\0') + content;
    }
    static QByteArray textFrame(int version, const char* id, const QString& text, Encoding e) {
        return frame(version, id, QByteArray(1, char(e)) + encode(text, e));
    }
    static QByteArray commentFrame(int version, const QString& text, Encoding e) {
        const QByteArray terminator = e == Utf16 ? QByteArray("\xFF\xFE\0\0", 4) : QByteArray(1, '\0');
        return frame(version, "COMM", QByteArray(1, char(e)) + "deu" + terminator + encode(text, e));
    }

    struct Tag {
        QString title, artist, album, year, genre, track, comment;
    };

    static QByteArray id3v2(int version, const Tag& t, Encoding e) {
        QByteArray frames;
        frames += textFrame(version, "TIT2", t.title, e);
        frames += textFrame(version, "TPE1", t.artist, e);
        frames += textFrame(version, "TALB", t.album, e);
        frames += textFrame(version, version == 4 ? "TDRC" : "TYER", t.year, e);
        frames += textFrame(version, "TCON", t.genre, e);
        frames += textFrame(version, "TRCK", t.track, e);
        frames += commentFrame(version, t.comment, e);
        frames += QByteArray(64, '\0'); // padding
        return QByteArray("ID3") + char(version) + '\0' + '\0' + syncSafe(quint32(frames.size())) + frames;
    }

    static QByteArray id3v1(const Tag& t, quint8 genreByte) {
        auto fixed = [](const QString& s, int n) {
            QByteArray b = s.toLatin1().left(n);
            b.append(QByteArray(n - b.size(), '\0'));
            return b;
        };
        return QByteArray("TAG") + fixed(t.title, 30) + fixed(t.artist, 30) + fixed(t.album, 30) +
               fixed(t.year, 4) + fixed(t.comment, 28) + '\0' + char(t.track.toInt()) + char(genreByte);
    }

    static bool write(const QString& fileName, const QByteArray& bytes) {
        QFile f(fileName);
        return f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(bytes) == bytes.size();
    }
};
