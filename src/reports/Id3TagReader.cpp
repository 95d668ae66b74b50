#include "reports/Id3TagReader.h"

#include <QFile>
#include <QFileInfo>

#include <taglib/id3v1tag.h>
#include <taglib/id3v2frame.h>
#include <taglib/id3v2header.h>
#include <taglib/id3v2tag.h>
#include <taglib/mpegfile.h>
#include <taglib/tag.h>

namespace {

QString qt(const TagLib::String& s) {
    return QString::fromStdWString(s.toWString()).trimmed();
}

QString number(unsigned int n) {
    return n == 0 ? QString() : QString::number(n);
}

// The track frame as written ("7/12"); TagLib's number alone would drop the total.
QString trackText(TagLib::ID3v2::Tag* tag) {
    const TagLib::ID3v2::FrameList frames = tag->frameListMap()["TRCK"];
    return frames.isEmpty() ? number(tag->track()) : qt(frames.front()->toString());
}

void fill(Id3TagReader::Fields& f, TagLib::Tag* tag) {
    f.title = qt(tag->title());
    f.artist = qt(tag->artist());
    f.album = qt(tag->album());
    f.year = number(tag->year());
    f.category = qt(tag->genre());
    f.track = number(tag->track());
    f.comment = qt(tag->comment());
}

} // namespace

Id3TagReader::Fields Id3TagReader::read(const QString& fileName) {
    Fields f;
    if (!QFileInfo(fileName).isFile())
        return f;
    try {
        const QByteArray encoded = QFile::encodeName(fileName);
        TagLib::MPEG::File file(encoded.constData(), false);
        if (!file.isValid())
            return f;
        if (file.hasID3v2Tag() && !file.ID3v2Tag()->isEmpty()) {
            TagLib::ID3v2::Tag* tag = file.ID3v2Tag();
            fill(f, tag);
            f.track = trackText(tag);
            f.source = QStringLiteral("ID3v2.") + QString::number(tag->header()->majorVersion());
        } else if (file.hasID3v1Tag() && !file.ID3v1Tag()->isEmpty()) {
            fill(f, file.ID3v1Tag());
            f.source = QStringLiteral("ID3v1");
        }
    } catch (...) {
        return Fields(); // a tag TagLib cannot take apart shows as no tag
    }
    return f;
}
