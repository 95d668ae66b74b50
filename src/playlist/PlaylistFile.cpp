#include "playlist/PlaylistFile.h"

#include "base/AtomicFileWriter.h"
#include "base/RuntimeError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace PlaylistFile {

namespace {

// The 8-bit code page of files that are not UTF-8. Latin-1 maps every byte to one character and
// back, so such a file is written back byte for byte.
constexpr QStringConverter::Encoding kEightBit =
#ifdef Q_OS_WIN
    QStringConverter::System;
#else
    QStringConverter::Latin1;
#endif

bool encodes(const QString& text, const TextFormat& format) {
    if (format.encoding == QStringConverter::Latin1)
        return std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() <= 0xFF; });
    QStringEncoder probe(format.encoding);
    const QByteArray encoded = probe.encode(text); // the conversion runs only when its result is taken
    return !probe.hasError();
}

} // namespace

QString FuncCheckFile(const QString& file, int mode) {
    Q_UNUSED(mode); // only ever opened for reading
    QFile f(file);
    if (!QFileInfo(file).isDir() && f.open(QIODevice::ReadOnly))
        return QStringLiteral("OK");
    const RuntimeError e = RuntimeError::fileOpen(file, false);
    return QStringLiteral("Fehler beim Laden von \"") + file + QStringLiteral("\" -> #") +
           QString::number(e.number()) + QLatin1Char(' ') + e.description();
}

TextFormat detectFormat(const QByteArray& data) {
    if (const auto marked = QStringConverter::encodingForData(data))
        return {*marked, true};
    QStringDecoder utf8(QStringConverter::Utf8);
    const QString decoded = utf8.decode(data); // the conversion runs only when its result is taken
    return {utf8.hasError() ? kEightBit : QStringConverter::Utf8, false};
}

QString decode(const QByteArray& data, const TextFormat& format) {
    QStringDecoder decoder(format.encoding); // skips a byte-order mark
    return decoder.decode(data);
}

QStringList readLines(const QString& file, TextFormat* format) {
    QFile f(file);
    if (QFileInfo(file).isDir() || !f.open(QIODevice::ReadOnly))
        throw RuntimeError::fileOpen(file, false);
    const QByteArray data = f.readAll();
    // The format detectFormat gives, but a file without byte-order mark is decoded only once where
    // it is UTF-8: a list of 300 000 lines is 25 MB of text.
    TextFormat found{QStringConverter::Utf8, false};
    QString text;
    if (const auto marked = QStringConverter::encodingForData(data)) {
        found = {*marked, true};
        text = decode(data, found);
    } else {
        QStringDecoder utf8(QStringConverter::Utf8);
        text = utf8.decode(data);
        if (utf8.hasError()) {
            found = {kEightBit, false};
            text = decode(data, found);
        }
    }
    if (format)
        *format = found;
    QStringList lines;
    qsizetype start = 0;
    const qsizetype n = text.size();
    for (qsizetype i = 0; i < n; ++i) {
        const QChar c = text.at(i);
        if (c == QLatin1Char('\r') || c == QLatin1Char('\n')) {
            lines.append(text.mid(start, i - start));
            if (c == QLatin1Char('\r') && i + 1 < n && text.at(i + 1) == QLatin1Char('\n'))
                ++i;
            start = i + 1;
        }
    }
    if (start < n)
        lines.append(text.mid(start));
    return lines;
}

TextFormat writeLines(const QString& file, const QStringList& lines, const TextFormat& format) {
    QString text;
    qsizetype size = 0;
    for (const QString& l : lines)
        size += l.size() + 2;
    text.reserve(size);
    for (const QString& l : lines) {
        text.append(l);
        text.append(QLatin1String("\r\n"));
    }
    // A name the code page cannot hold would come back as "?": such a list is written as UTF-8.
    const TextFormat used = encodes(text, format) ? format : TextFormat{};
    QStringEncoder encoder(used.encoding, used.byteOrderMark ? QStringConverter::Flag::WriteBom
                                                             : QStringConverter::Flag::Default);
    writeBytes(file, encoder.encode(text));
    return used;
}

void writeBytes(const QString& file, const QByteArray& data) {
    AtomicFileWriter::writeFile(file, data);
}

} // namespace PlaylistFile
