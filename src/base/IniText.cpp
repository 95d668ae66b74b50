#include "base/IniText.h"

#include <QStringEncoder>

namespace IniText {

namespace {

constexpr char kHex[] = "0123456789ABCDEF";
// Line ends as QSettings writes them on this platform.
#ifdef Q_OS_WIN
constexpr char kEol[] = "\r\n";
#else
constexpr char kEol[] = "\n";
#endif

void appendHex(QByteArray& out, uint value, int digits) {
    for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4)
        out += kHex[(value >> shift) & 0xF];
}

// Section and key names: letters, digits, "_", "-" and "." stay, "/" becomes "\", anything else is
// written as %XX or %UXXXX.
void appendKey(QByteArray& out, const QString& key) {
    for (const QChar c : key) {
        const uint ch = c.unicode();
        if (ch == '/') {
            out += '\\';
        } else if ((ch >= 'a' && ch <= 'z') || (ch >= 'A' && ch <= 'Z') || (ch >= '0' && ch <= '9') ||
                   ch == '_' || ch == '-' || ch == '.') {
            out += char(ch);
        } else if (ch <= 0xFF) {
            out += '%';
            appendHex(out, ch, 2);
        } else {
            out += "%U";
            appendHex(out, ch, 4);
        }
    }
}

bool isHexDigit(uint ch) {
    return (ch >= '0' && ch <= '9') || (ch >= 'a' && ch <= 'f') || (ch >= 'A' && ch <= 'F');
}

// A text value: control characters escaped C-style, quotes and backslashes escaped, quoted when it
// holds ";", "," or "=" or begins or ends with a blank (QSettings would read it as a list or trim it).
// A leading "@" is doubled, since "@" introduces QSettings' typed values.
void appendValue(QByteArray& out, QString value) {
    if (value.startsWith(QLatin1Char('@')))
        value.prepend(QLatin1Char('@'));
    const qsizetype start = out.size();
    bool needsQuotes = false;
    bool escapeNextIfHexDigit = false;
    QStringEncoder utf8(QStringEncoder::Utf8);
    for (const QChar c : value) {
        const uint ch = c.unicode();
        if (ch == ';' || ch == ',' || ch == '=')
            needsQuotes = true;
        if (escapeNextIfHexDigit && isHexDigit(ch)) {
            out += "\\x" + QByteArray::number(ch, 16);
            continue;
        }
        escapeNextIfHexDigit = false;
        switch (ch) {
        case '\0':
            out += "\\0";
            escapeNextIfHexDigit = true;
            break;
        case '\a':
            out += "\\a";
            break;
        case '\b':
            out += "\\b";
            break;
        case '\f':
            out += "\\f";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\t':
            out += "\\t";
            break;
        case '\v':
            out += "\\v";
            break;
        case '"':
        case '\\':
            out += '\\';
            out += char(ch);
            break;
        default:
            if (ch <= 0x1F) {
                out += "\\x" + QByteArray::number(ch, 16);
                escapeNextIfHexDigit = true;
            } else {
                out += utf8.encode(QStringView(&c, 1));
            }
        }
    }
    if (needsQuotes || (start < out.size() && (out.at(start) == ' ' || out.back() == ' '))) {
        out.insert(start, '"');
        out += '"';
    }
}

} // namespace

QByteArray write(const Sections& sections) {
    QByteArray out;
    bool first = true;
    for (auto section = sections.cbegin(); section != sections.cend(); ++section) {
        if (section.value().isEmpty())
            continue;
        if (!first)
            out += kEol;
        first = false;
        out += '[';
        appendKey(out, section.key());
        out += ']';
        out += kEol;
        for (auto entry = section.value().cbegin(); entry != section.value().cend(); ++entry) {
            appendKey(out, entry.key());
            out += '=';
            appendValue(out, entry.value());
            out += kEol;
        }
    }
    return out;
}

} // namespace IniText
