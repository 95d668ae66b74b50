// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

// The built-in MP3 frame reader on synthesized files whose frame counts are known by
// construction.
#include "mp3/Mp3ByteSource.h"
#include "reports/Mp3FrameScanner.h"
#include "reports/Mp3Info.h"
#include "support/FileBytes.h"
#include "support/Mp3Synth.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Mp3Synth;

namespace {

Mp3ScanResult scanBytes(const QByteArray& bytes) {
    MemoryByteSource source(reinterpret_cast<const unsigned char*>(bytes.constData()), size_t(bytes.size()));
    return Mp3FrameScanner(source).scan();
}

// What the reader made of a file, as "frames, whole seconds, VBR flag, sample rate, frames per
// bit-rate class, tag bytes in front + behind, first frame's offset, tag frame and its counts".
QStringList described(const QByteArray& file) {
    const Mp3ScanResult scan = scanBytes(file);
    QStringList classes;
    for (int i = 0; i < 16; ++i)
        if (scan.histogram[size_t(i)])
            classes << QString("%1:%2").arg(i).arg(scan.histogram[size_t(i)]);
    const char* tags[] = {"None", "Xing", "Info", "VBRI"};
    return {QString("%1 frames").arg(scan.frames),
            QString("%1 s").arg(scan.wholeSeconds),
            QString("vbr %1").arg(Mp3Info::vbrFlag(scan)),
            QString("%1 Hz").arg(scan.firstHeader.sampleRate),
            "classes " + classes.join(' '),
            QString("tags %1+%2").arg(scan.audioBegin).arg(file.size() - scan.audioEnd),
            QString("first %1").arg(scan.firstFrameOffset),
            QString("%1 %2/%3").arg(tags[int(scan.infoTag)]).arg(scan.tagFrames).arg(scan.tagBytes)};
}

const Frame kMono{.version = Mpeg2, .kbps = 64, .sampleRate = 22050, .channels = Mono};

} // namespace

class TestMp3FrameReader : public QObject {
    Q_OBJECT
private slots:
    // Each row names the parts of the description it is about, joined by ", ".
    void reads_data() {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("expected");
        const Frame cbr;
        const QByteArray cbr1000 = cbrFrames(cbr, 1000);
        const QString plain = "1000 frames, 26 s, vbr 0, 44100 Hz, classes 9:1000";
        QTest::newRow("CBR 128 kbps 44.1 kHz") << cbr1000 << plain + ", None 0/0";
        QTest::newRow("two ID3v2 tags") << id3v2(300) + id3v2(900, 4) + cbr1000 << plain + ", tags 1220+0";
        QTest::newRow("junk before the first frame") << junk(3001, 7) + cbr1000 << plain + ", first 3001";
        QTest::newRow("truncated last frame") << cbr1000 + cbr.bytes().left(300) << plain;
        QTest::newRow("broken bytes inside the stream")
            << cbrFrames(cbr, 500) + junk(777, 5) + cbrFrames(cbr, 500) << plain;
        QByteArray badRate = cbr.bytes(); // bit rate index 15, which no stream may use
        badRate[2] = char((uchar(badRate[2]) & 0x0F) | 0xF0);
        QTest::newRow("a frame of a forbidden bit rate inside the stream")
            << cbrFrames(cbr, 500) + badRate + cbrFrames(cbr, 500) << plain;
        QTest::newRow("CBR with Info frame")
            << xingFrame(cbr, "Info", 1000, quint32(cbr1000.size())) + cbr1000
            << plain + ", Info 1000/417959";
        QTest::newRow("Xing frame of another bit rate than the audio")
            << xingFrame(Frame{.kbps = 32}, "Xing", 1000, 0) + cbr1000
            << "1000 frames, vbr 1, classes 9:1000, Xing 1000/0";

        const QList<int> pattern = vbrPattern(700);
        QMap<int, int> counts;
        for (int kbps : pattern)
            ++counts[Frame{.kbps = kbps}.bitrateClass()];
        QStringList classes;
        for (auto [rate, n] : counts.asKeyValueRange())
            classes << QString("%1:%2").arg(rate).arg(n);
        QTest::newRow("VBR without header")
            << vbrFrames(cbr, pattern) << "700 frames, 18 s, vbr 1, classes " + classes.join(' ');

        QTest::newRow("MPEG-2.5 11.025 kHz")
            << cbrFrames(Frame{.version = Mpeg25, .kbps = 32, .sampleRate = 11025, .channels = Mono}, 333)
            << "333 frames, 17 s, vbr 0, 11025 Hz, classes 4:333";
        QTest::newRow("Layer II 192 kbps 48 kHz")
            << cbrFrames(Frame{.layer = 2, .kbps = 192, .sampleRate = 48000}, 250)
            << "250 frames, 6 s, 48000 Hz, classes 10:250";
        QTest::newRow("Layer I 384 kbps 44.1 kHz")
            << cbrFrames(Frame{.layer = 1, .kbps = 384}, 500) << "500 frames, 4 s, classes 12:500";
        Frame free{.kbps = 0, .freeBytes = 600};
        QByteArray freeStream;
        for (int i = 0; i < 400; ++i) {
            free.padding = i % 3 == 0;
            freeStream.append(free.bytes());
        }
        QTest::newRow("free format behind junk")
            << junk(1500, 11) + freeStream << "400 frames, 10 s, vbr 0, classes 0:400, first 1500";
        QTest::newRow("one frame that ends the file") << cbr.bytes() << "1 frames, 0 s, classes 9:1";

        // Tags around 20 frames.
        const QByteArray audio = cbrFrames(cbr, 20);
        QTest::newRow("ID3v2.4 footer adds ten bytes")
            << id3v2(1234, 4, true) + audio << "20 frames, tags 1254+0, first 1254";
        QTest::newRow("ID3v1") << audio + id3v1() << "20 frames, tags 0+128";
        QTest::newRow("APE with header") << audio + apeTag(100, true) << "20 frames, tags 0+164";
        QTest::newRow("APE without header") << audio + apeTag(100, false) << "20 frames, tags 0+132";
        QTest::newRow("APE then ID3v1") << audio + apeTag(50, true) + id3v1() << "20 frames, tags 0+242";
        QTest::newRow("appended ID3v2.4") << audio + id3v2(500, 4, true) << "20 frames, tags 0+520";
        QByteArray badSize = id3v2(100);
        badSize[6] = char(0x80); // not syncsafe: no tag
        QTest::newRow("ID3 with a size that is not syncsafe")
            << badSize + audio << "20 frames, tags 0+0, first 110";

        // Tag frames in front of 10 or 5 frames.
        const QByteArray ten = cbrFrames(cbr, 10);
        QTest::newRow("VBRI") << vbriFrame(cbr, 10, 777) + ten << "10 frames, vbr 1, VBRI 10/777";
        QTest::newRow("Xing behind the short side info of MPEG-2 mono")
            << xingFrame(kMono, "Xing", 5, 1) + cbrFrames(kMono, 5)
            << "5 frames, 22050 Hz, classes 8:5, Xing 5/1";
        // A "Xing" text inside a later frame is audio data, not a tag.
        QTest::newRow("not the first frame")
            << ten + xingFrame(cbr, "Xing", 10, 1) << "11 frames, vbr 0, None 0/0";
    }
    void reads() {
        QFETCH(QByteArray, file);
        QFETCH(QString, expected);
        const QStringList got = described(file);
        for (const QString& part : expected.split(", "))
            QVERIFY2(got.contains(part), qPrintable(part + " not in: " + got.join(", ")));
    }

    void getMp3InfoStatus_data() {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<int>("status");
        const Frame f;
        QTest::newRow("empty") << QByteArray() << int(Mp3Info::NoFrames);
        QTest::newRow("first frame cut short") << f.bytes().left(300) << int(Mp3Info::NoFrames);
        QTest::newRow("one header in junk is no stream")
            << junk(500, 2) + f.header() + junk(2000, 3) << int(Mp3Info::NoFrames);
        QTest::newRow("ID3 tag only") << id3v2(3000) << int(Mp3Info::NoFrames);
        QTest::newRow("all 0xFF") << QByteArray(50000, '\xFF') << int(Mp3Info::NoFrames);
        QTest::newRow("missing file") << QByteArray("-") << int(Mp3Info::Unreadable);
        QTest::newRow("folder") << QByteArray("/") << int(Mp3Info::Unreadable);
        QTest::newRow("good") << cbrFrames(f, 3) << int(Mp3Info::Ok);
    }
    void getMp3InfoStatus() {
        QFETCH(QByteArray, file);
        QFETCH(int, status);
        QTemporaryDir dir;
        const QString path = dir.filePath("lied.mp3");
        if (file == "/")
            QVERIFY(QDir(dir.path()).mkdir("lied.mp3"));
        else if (file != "-")
            QVERIFY(FileBytes::write(path, file));
        qint32 bitrate = 7, vbr = 7, playtime = 7;
        Mp3Info::Histogram histogram;
        histogram.fill(7);
        QCOMPARE(Mp3Info::GetMP3Info(path, bitrate, vbr, playtime, histogram), status);
        // Errors leave the caller's values alone (the report relies on it).
        const bool ok = status == Mp3Info::Ok;
        QCOMPARE((QList<qint32>{bitrate, vbr, playtime, histogram[9], histogram[0]}),
                 ok ? (QList<qint32>{128000, 0, 0, 3, 0}) : (QList<qint32>{7, 7, 7, 7, 7}));
    }

    void largeFileCrossesReadBlocks() {
        // Frames straddle the 64 KiB read blocks many times; a tag frame and junk sit at odd places.
        const Frame f;
        const QList<int> pattern = vbrPattern(20000);
        const QByteArray audio = vbrFrames(f, pattern);
        const QByteArray file = id3v2(70001) + xingFrame(f, "Xing", 20000, 0) + audio;
        const Mp3ScanResult scan = scanBytes(file);
        QCOMPARE(scan.frames, quint64(20000));
        // The tag frame's bytes are no audio, and the average bit rate rests on that.
        QCOMPARE(scan.audioBytes, quint64(audio.size()));
        QCOMPARE(Mp3Info::averageBitrate(scan), qRound(double(scan.audioBytes) * 8.0 / scan.seconds));
        QCOMPARE(scan.resyncs, 0);
    }
};

QTEST_GUILESS_MAIN(TestMp3FrameReader)
#include "tst_Mp3FrameReader.moc"
