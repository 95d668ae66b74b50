#include "update/ReleaseList.h"

#include "update/ReleaseSignature.h"

#include <QFile>
#include <QList>
#include <QRegularExpression>

namespace {

QList<QByteArray> linesOf(const QByteArray& bytes) {
    QList<QByteArray> lines = bytes.split('\n');
    for (QByteArray& line : lines)
        if (line.endsWith('\r'))
            line.chop(1);
    return lines;
}

QString quoted(const QString& text) {
    return QStringLiteral("\"") + text + QStringLiteral("\"");
}

} // namespace

std::optional<ReleaseList> ReleaseList::parse(const QByteArray& bytes, const QString& publicKey,
                                              QString& why) {
    static const QRegularExpression player(QStringLiteral("^TavoMP3Player: (\\d+\\.\\d+)$"));
    static const QRegularExpression updater(QStringLiteral("^TavoMP3Update: (\\d+)$"));
    const QList<QByteArray> lines = linesOf(bytes);
    const auto first = player.match(QString::fromLatin1(lines.value(0)));
    const auto second = updater.match(QString::fromLatin1(lines.value(1)));
    if (!first.hasMatch() || !second.hasMatch()) {
        why =
            QStringLiteral("Die Versionsliste beginnt nicht mit den Zeilen \"TavoMP3Player: <Version>\" und "
                           "\"TavoMP3Update: <Version>\".");
        return std::nullopt;
    }

    const QByteArray mark = "\nSignature: ";
    const qsizetype at = bytes.lastIndexOf(mark);
    if (at < 0) {
        why = QStringLiteral("Die Versionsliste ist nicht signiert.");
        return std::nullopt;
    }
    const QByteArray signedPart = bytes.left(at + 1);
    const QString signature = QString::fromLatin1(bytes.mid(at + mark.size()).trimmed());
    if (!ReleaseSignature::verify(signedPart, signature, publicKey)) {
        why = QStringLiteral(
            "Die Signatur der Versionsliste ist ungültig oder stammt nicht vom Herausgeber des "
            "Programms.");
        return std::nullopt;
    }

    ReleaseList list;
    list.playerVersion = first.captured(1);
    list.updaterVersion = second.captured(1);
    for (const QByteArray& line : linesOf(signedPart)) {
        if (!line.startsWith("File: "))
            continue;
        const QList<QByteArray> words = line.mid(6).split(' ');
        bool ok = false;
        const qint64 size = words.size() == 3 ? words.at(1).toLongLong(&ok) : -1;
        if (!ok || size < 0) {
            why = QStringLiteral("Die Zeile ") + quoted(QString::fromLatin1(line)) +
                  QStringLiteral(" der Versionsliste ist ungültig.");
            return std::nullopt;
        }
        list.files.insert(QString::fromLatin1(words.at(0)), File{size, QString::fromLatin1(words.at(2))});
    }
    return list;
}

std::optional<ReleaseList> ReleaseList::read(const QString& fileName, const QString& publicKey, QString& why,
                                             qint64 maxBytes) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        why = QStringLiteral("Die Datei ") + quoted(fileName) + QStringLiteral(" fehlt.");
        return std::nullopt;
    }
    if (file.size() > maxBytes) {
        why = QStringLiteral("Die Versionsliste ist zu groß.");
        return std::nullopt;
    }
    return parse(file.readAll(), publicKey, why);
}

bool ReleaseList::verifyFile(const QString& name, const QString& fileName, const QString& publicKey,
                             QString& why) const {
    const auto entry = files.constFind(name);
    if (entry == files.constEnd()) {
        why = QStringLiteral("Die Versionsliste nennt für ") + name +
              QStringLiteral(" keine Größe und keine Signatur.");
        return false;
    }
    QFile file(fileName);
    if (!file.exists()) {
        why = QStringLiteral("Die Datei ") + quoted(fileName) + QStringLiteral(" fehlt.");
        return false;
    }
    if (file.size() != entry->size) {
        why = name + QStringLiteral(" ist ") + QString::number(file.size()) + QStringLiteral(" statt ") +
              QString::number(entry->size) + QStringLiteral(" Bytes groß.");
        return false;
    }
    if (!ReleaseSignature::verifyFile(fileName, entry->signature, publicKey)) {
        why = QStringLiteral("Die Signatur von ") + name + QStringLiteral(" ist ungültig.");
        return false;
    }
    return true;
}
