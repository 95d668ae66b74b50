#include "reports/Id3TagReader.h"
#include "support/Id3FileWriter.h"

#include <QTemporaryDir>
#include <QTest>

using W = Id3FileWriter;

class tst_Id3TagReader : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;

    QString file(const QString& name, const QByteArray& bytes) {
        const QString path = m_dir.filePath(name);
        if (!W::write(path, bytes))
            qFatal("cannot write the test file");
        return path;
    }

private slots:
    void readsEachTagLayout_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("artist");
        QTest::addColumn<QString>("album");
        QTest::addColumn<QString>("year");
        QTest::addColumn<QString>("category");
        QTest::addColumn<QString>("track");
        QTest::addColumn<QString>("comment");

        const W::Tag german{QStringLiteral("Über den Wolken"),
                            QStringLiteral("Reinhard Mey"),
                            QStringLiteral("Mädchen in den Schänken"),
                            QStringLiteral("1974"),
                            QStringLiteral("Chanson"),
                            QStringLiteral("7/12"),
                            QStringLiteral("schön")};
        QTest::newRow("ID3v2.3 Latin-1") << W::id3v2(3, german, W::Latin1) + W::audio() << "ID3v2.3"
                                         << german.title << german.artist << german.album << "1974"
                                         << "Chanson"
                                         << "7/12" << german.comment;
        QTest::newRow("ID3v2.3 UTF-16") << W::id3v2(3, german, W::Utf16) + W::audio() << "ID3v2.3"
                                        << german.title << german.artist << german.album << "1974"
                                        << "Chanson"
                                        << "7/12" << german.comment;
        const W::Tag wide{QStringLiteral("Ωmega — ☂"), QStringLiteral("Σ Artist"), QStringLiteral("日本"),
                          QStringLiteral("2004"),      QStringLiteral("Rock"),     QStringLiteral("3"),
                          QStringLiteral("€ und ß")};
        QTest::newRow("ID3v2.4 UTF-8") << W::id3v2(4, wide, W::Utf8) + W::audio() << "ID3v2.4" << wide.title
                                       << wide.artist << wide.album << "2004"
                                       << "Rock"
                                       << "3" << wide.comment;
        QTest::newRow("ID3v2.4 UTF-16") << W::id3v2(4, wide, W::Utf16) + W::audio() << "ID3v2.4" << wide.title
                                        << wide.artist << wide.album << "2004"
                                        << "Rock"
                                        << "3" << wide.comment;
        const W::Tag v1{QStringLiteral("Old Song"),
                        QStringLiteral("Old Band"),
                        QStringLiteral("Old Album"),
                        QStringLiteral("1999"),
                        QString(),
                        QStringLiteral("5"),
                        QStringLiteral("v1 comment")};
        QTest::newRow("ID3v1 only") << W::audio() + W::id3v1(v1, 17) << "ID3v1"
                                    << "Old Song"
                                    << "Old Band"
                                    << "Old Album"
                                    << "1999"
                                    << "Rock"
                                    << "5"
                                    << "v1 comment";
        QTest::newRow("v2 wins over v1")
            << W::id3v2(3, german, W::Latin1) + W::audio() + W::id3v1(v1, 17) << "ID3v2.3" << german.title
            << german.artist << german.album << "1974"
            << "Chanson"
            << "7/12" << german.comment;
        QTest::newRow("no tag") << W::audio() << QString() << QString() << QString() << QString() << QString()
                                << QString() << QString() << QString();
    }
    void readsEachTagLayout() {
        QFETCH(QByteArray, bytes);
        const Id3TagReader::Fields f = Id3TagReader::read(file(QStringLiteral("song.mp3"), bytes));
        QTEST(f.source, "source");
        QTEST(f.title, "title");
        QTEST(f.artist, "artist");
        QTEST(f.album, "album");
        QTEST(f.year, "year");
        QTEST(f.category, "category");
        QTEST(f.track, "track");
        QTEST(f.comment, "comment");
    }

    void brokenTagsNeverCrash_data() {
        QTest::addColumn<QByteArray>("bytes");
        const W::Tag t{QStringLiteral("T"),    QStringLiteral("A"),   QStringLiteral("B"),
                       QStringLiteral("2000"), QStringLiteral("Pop"), QStringLiteral("1"),
                       QStringLiteral("c")};
        QByteArray hugeFrame = W::id3v2(3, t, W::Latin1);
        hugeFrame.replace(14, 4, W::bigEndian(0x7FFFFFF0)); // first frame claims 2 GB
        QTest::newRow("frame larger than the tag") << hugeFrame + W::audio();
        QByteArray hugeTag = W::id3v2(4, t, W::Utf8);
        hugeTag.replace(6, 4, W::syncSafe(0x0FFFFFFF)); // tag claims 256 MB in a tiny file
        QTest::newRow("tag larger than the file") << hugeTag;
        QByteArray garbage("ID3\x03\0\0", 6);
        garbage += W::syncSafe(200) + QByteArray(200, '\xFF');
        QTest::newRow("garbage frames") << garbage + W::audio(2);
        QTest::newRow("header only") << QByteArray("ID3\x04\0\0\0\0\0\x10", 10);
        QByteArray badUtf16 = W::id3v2(3, t, W::Latin1);
        badUtf16 += W::textFrame(3, "TIT3", QStringLiteral("x"), W::Utf16).left(13); // cut in the middle
        QTest::newRow("cut frame") << badUtf16;
        QTest::newRow("empty file") << QByteArray();
        QTest::newRow("random bytes") << QByteArray(5000, '\xAB');
    }
    void brokenTagsNeverCrash() {
        QFETCH(QByteArray, bytes);
        const Id3TagReader::Fields f = Id3TagReader::read(file(QStringLiteral("broken.mp3"), bytes));
        // Whatever a broken tag yields, it is plain text and the call returns.
        QVERIFY(f.title.size() < 1000);
        QVERIFY(f.comment.size() < 1000);
    }

    void missingFileGivesEmptyFields() {
        const Id3TagReader::Fields f = Id3TagReader::read(m_dir.filePath(QStringLiteral("nope.mp3")));
        QVERIFY(f.isEmpty());
        QCOMPARE(f.title, QString());
        QVERIFY(Id3TagReader::read(QString()).isEmpty());
        QVERIFY(Id3TagReader::read(m_dir.path()).isEmpty()); // a folder
    }
};

QTEST_GUILESS_MAIN(tst_Id3TagReader)
#include "tst_Id3TagReader.moc"
