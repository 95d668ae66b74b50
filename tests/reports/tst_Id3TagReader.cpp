// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "reports/Id3TagReader.h"
#include "support/Id3FileWriter.h"

#include <QTemporaryDir>
#include <QTest>

using W = Id3FileWriter;

class tst_Id3TagReader : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;

    Id3TagReader::Fields read(const QByteArray& bytes) {
        const QString path = m_dir.filePath("song.mp3");
        if (!W::write(path, bytes))
            qFatal("cannot write the test file");
        return Id3TagReader::read(path);
    }

private slots:
    void readsEachTagLayout_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("fields"); // source|title|artist|album|year|category|track|comment
        const W::Tag german{"Über den Wolken", "Reinhard Mey", "Mädchen", "1974", "Chanson", "7/12", "schön"};
        const QString germanFields = "|Über den Wolken|Reinhard Mey|Mädchen|1974|Chanson|7/12|schön";
        QTest::newRow("ID3v2.3 Latin-1")
            << W::id3v2(3, german, W::Latin1) + W::audio() << "ID3v2.3" + germanFields;
        const W::Tag wide{"Ωmega — ☂", "Σ Artist", "日本", "2004", "Rock", "3", "€ und ß"};
        QTest::newRow("ID3v2.4 UTF-8") << W::id3v2(4, wide, W::Utf8) + W::audio()
                                       << "ID3v2.4|Ωmega — ☂|Σ Artist|日本|2004|Rock|3|€ und ß";
        const W::Tag v1{"Old Song", "Old Band", "Old Album", "1999", "", "5", "v1 comment"};
        const QString v1Fields = "ID3v1|Old Song|Old Band|Old Album|1999|Rock|5|v1 comment";
        QTest::newRow("ID3v1 only, genre from its number") << W::audio() + W::id3v1(v1, 17) << v1Fields;
        QTest::newRow("v2 wins over v1")
            << W::id3v2(3, german, W::Latin1) + W::audio() + W::id3v1(v1, 17) << "ID3v2.3" + germanFields;
        QTest::newRow("no tag") << W::audio() << "|||||||";
    }
    void readsEachTagLayout() {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, fields);
        const Id3TagReader::Fields f = read(bytes);
        QCOMPARE((QStringList{f.source, f.title, f.artist, f.album, f.year, f.category, f.track, f.comment}),
                 fields.split('|'));
    }

    void unreadablePathsGiveEmptyFields() {
        QVERIFY(Id3TagReader::read(m_dir.filePath("nope.mp3")).isEmpty());
        QVERIFY(Id3TagReader::read(QString()).isEmpty());
        QVERIFY(Id3TagReader::read(m_dir.path()).isEmpty()); // a folder
    }
};

QTEST_GUILESS_MAIN(tst_Id3TagReader)
#include "tst_Id3TagReader.moc"
