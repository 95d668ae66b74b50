// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "reports/Id3TagReader.h"
#include "support/Id3FileWriter.h"

#include <QTemporaryDir>
#include <QTest>

using W = Id3FileWriter;

// The reader on its own; the tag layouts are read through the ID3 window in ui/tst_Id3TreeWindows.
class tst_Id3TagReader : public QObject {
    Q_OBJECT
private slots:
    void readsEveryFieldAndNothingFromWhatIsNoFile() {
        QTemporaryDir dir;
        const QString path = dir.filePath("song.mp3");
        const W::Tag tag{"Über den Wolken", "Reinhard Mey", "Mädchen", "1974", "Chanson", "7/12", "schön"};
        QVERIFY(W::write(path, W::id3v2(4, tag, W::Utf8) + W::audio() +
                                   W::id3v1({"v1", "", "", "", "", "", ""}, 17)));
        const Id3TagReader::Fields f = Id3TagReader::read(path);
        QCOMPARE((QStringList{f.source, f.title, f.artist, f.album, f.year, f.category, f.track, f.comment}),
                 (QStringList{"ID3v2.4", "Über den Wolken", "Reinhard Mey", "Mädchen", "1974", "Chanson",
                              "7/12", "schön"}));
        QVERIFY(Id3TagReader::read(dir.filePath("nope.mp3")).isEmpty());
        QVERIFY(Id3TagReader::read(QString()).isEmpty());
        QVERIFY(Id3TagReader::read(dir.path()).isEmpty()); // a folder
    }
};

QTEST_GUILESS_MAIN(tst_Id3TagReader)
#include "tst_Id3TagReader.moc"
