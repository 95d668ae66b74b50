#pragma once

#include <QString>

// The fields of a music file's ID3 tag that the ID3 window shows, read with TagLib: the ID3v2 tag
// when the file has one with content, otherwise the ID3v1 tag. Read only; a file without a tag,
// an unreadable file and a broken tag all give empty fields.
class Id3TagReader {
public:
    struct Fields {
        QString title;
        QString artist;
        QString album;
        QString year;
        QString category;
        QString track;
        QString comment;
        // Which tag the fields came from: "ID3v2.3", "ID3v2.4", "ID3v1", or empty for none.
        QString source;
        bool isEmpty() const { return source.isEmpty(); }
    };

    static Fields read(const QString& fileName);
};
