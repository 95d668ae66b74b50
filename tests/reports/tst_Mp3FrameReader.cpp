// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

// The built-in MP3 frame reader on synthesized files whose frame counts are known by
// construction.
#include "reports/Mp3ByteSource.h"
#include "reports/Mp3FrameScanner.h"
#include "reports/Mp3Info.h"
#include "support/Mp3Synth.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Mp3Synth;

namespace {

Mp3ScanResult scanBytes(const QByteArray& bytes) {
    MemoryByteSource source(reinterpret_cast<const unsigned char*>(bytes.constData()), size_t(bytes.size()));
    return Mp3FrameScanner(source).scan();
}

const Frame kMono{.version = Mpeg2, .kbps = 64, .sampleRate = 22050, .channels = Mono};

using Counts = QMap<int, int>; // bit-rate class -> frames
using Tag = Mp3ScanResult::InfoTag;

} // namespace

class TestMp3FrameReader : public QObject {
    Q_OBJECT
private slots:
    void readsSynthesizedStreams_data() {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<int>("frames");
        QTest::addColumn<int>("samplesPerFrame");
        QTest::addColumn<int>("sampleRate");
        QTest::addColumn<Counts>("histogram");
        QTest::addColumn<int>("vbr");

        const Frame cbr;
        const QByteArray cbr1000 = cbrFrames(cbr, 1000);
        const Counts c1000{{9, 1000}};
        auto plain = [&](const char* name, const QByteArray& file) {
            QTest::newRow(name) << file << 1000 << 1152 << 44100 << c1000 << 0;
        };
        plain("CBR 128 kbps 44.1 kHz", cbr1000);
        plain("two ID3v2 tags", id3v2(300) + id3v2(900, 4) + cbr1000);
        plain("junk before the first frame", junk(3001, 7) + cbr1000);
        plain("truncated last frame", cbr1000 + cbr.bytes().left(300));
        plain("broken bytes inside the stream", cbrFrames(cbr, 500) + junk(777, 5) + cbrFrames(cbr, 500));
        plain("CBR with Info frame", xingFrame(cbr, "Info", 1000, quint32(cbr1000.size())) + cbr1000);
        QTest::newRow("Xing frame of another bit rate than the audio")
            << xingFrame(Frame{.kbps = 32}, "Xing", 1000, 0) + cbr1000 << 1000 << 1152 << 44100 << c1000 << 1;

        const QList<int> pattern = vbrPattern(700);
        Counts vbrCounts;
        for (int kbps : pattern)
            ++vbrCounts[Frame{.kbps = kbps}.bitrateClass()];
        const QByteArray vbrAudio = vbrFrames(cbr, pattern);
        const quint32 vbrSize = quint32(vbrAudio.size());
        QTest::newRow("VBR with Xing frame")
            << xingFrame(cbr, "Xing", 700, vbrSize) + vbrAudio << 700 << 1152 << 44100 << vbrCounts << 1;
        QTest::newRow("VBR with VBRI frame")
            << vbriFrame(cbr, 700, vbrSize) + vbrAudio << 700 << 1152 << 44100 << vbrCounts << 1;
        QTest::newRow("VBR without header") << vbrAudio << 700 << 1152 << 44100 << vbrCounts << 1;

        QTest::newRow("MPEG-2 22.05 kHz mono")
            << cbrFrames(kMono, 900) << 900 << 576 << 22050 << Counts{{8, 900}} << 0;
        const Frame m25{.version = Mpeg25, .kbps = 32, .sampleRate = 11025, .channels = Mono};
        QTest::newRow("MPEG-2.5 11.025 kHz")
            << cbrFrames(m25, 333) << 333 << 576 << 11025 << Counts{{4, 333}} << 0;
        QTest::newRow("Layer II 192 kbps 48 kHz")
            << cbrFrames(Frame{.layer = 2, .kbps = 192, .sampleRate = 48000}, 250) << 250 << 1152 << 48000
            << Counts{{10, 250}} << 0;
        QTest::newRow("Layer I 384 kbps 44.1 kHz") << cbrFrames(Frame{.layer = 1, .kbps = 384}, 500) << 500
                                                   << 384 << 44100 << Counts{{12, 500}} << 0;

        Frame free{.kbps = 0, .freeBytes = 600};
        QByteArray freeStream;
        for (int i = 0; i < 400; ++i) {
            free.padding = i % 3 == 0;
            freeStream.append(free.bytes());
        }
        QTest::newRow("free format") << freeStream << 400 << 1152 << 44100 << Counts{{0, 400}} << 0;
        QTest::newRow("free format behind junk")
            << junk(1500, 11) + freeStream << 400 << 1152 << 44100 << Counts{{0, 400}} << 0;
        QTest::newRow("one frame that ends the file")
            << cbr.bytes() << 1 << 1152 << 44100 << Counts{{9, 1}} << 0;
    }
    void readsSynthesizedStreams() {
        QFETCH(QByteArray, file);
        QFETCH(int, frames);
        QFETCH(int, samplesPerFrame);
        QFETCH(int, sampleRate);
        QFETCH(Counts, histogram);
        QFETCH(int, vbr);
        const Mp3ScanResult scan = scanBytes(file);
        QCOMPARE(scan.frames, quint64(frames));
        for (int i = 0; i < 16; ++i)
            QCOMPARE(scan.histogram[size_t(i)], quint64(histogram.value(i)));
        QCOMPARE(Mp3Info::vbrFlag(scan), vbr);
        QCOMPARE(scan.firstHeader.sampleRate, sampleRate);
        const quint64 samples = quint64(frames) * quint64(samplesPerFrame);
        QCOMPARE(scan.wholeSeconds, samples / quint64(sampleRate));
        QVERIFY(qAbs(scan.seconds - double(samples) / sampleRate) < 1e-9);
    }

    void tagBounds_data() {
        QTest::addColumn<QByteArray>("front");
        QTest::addColumn<QByteArray>("back");
        QTest::addColumn<int>("tagInFront");
        QTest::addColumn<int>("tagBehind");
        const QByteArray none;
        QTest::newRow("none") << none << none << 0 << 0;
        QTest::newRow("ID3v2.3") << id3v2(1234) << none << 1244 << 0;
        QTest::newRow("ID3v2.4 footer adds ten bytes") << id3v2(1234, 4, true) << none << 1254 << 0;
        QTest::newRow("ID3v1") << none << id3v1() << 0 << 128;
        QTest::newRow("APE with header") << none << apeTag(100, true) << 0 << 164;
        QTest::newRow("APE without header") << none << apeTag(100, false) << 0 << 132;
        QTest::newRow("APE then ID3v1") << none << apeTag(50, true) + id3v1() << 0 << 114 + 128;
        QTest::newRow("appended ID3v2.4") << none << id3v2(500, 4, true) << 0 << 520;
        QByteArray badSize = id3v2(100);
        badSize[6] = char(0x80); // not syncsafe: no tag
        QTest::newRow("ID3 with a size that is not syncsafe") << badSize << none << 0 << 0;
    }
    void tagBounds() {
        QFETCH(QByteArray, front);
        QFETCH(QByteArray, back);
        QFETCH(int, tagInFront);
        QFETCH(int, tagBehind);
        const QByteArray file = front + cbrFrames(Frame{}, 20) + back;
        const Mp3ScanResult scan = scanBytes(file);
        QCOMPARE(scan.audioBegin, quint64(tagInFront));
        QCOMPARE(scan.audioEnd, quint64(file.size() - tagBehind));
        QCOMPARE(scan.frames, quint64(20));
        QCOMPARE(scan.firstFrameOffset, quint64(front.size()));
    }

    void infoTagFields_data() {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<Tag>("tag");
        QTest::addColumn<quint32>("tagFrames");
        QTest::addColumn<quint32>("tagBytes");
        const Frame f;
        const QByteArray audio = cbrFrames(f, 10);
        QTest::newRow("Xing") << xingFrame(f, "Xing", 10, 4321) + audio << Tag::Xing << 10u << 4321u;
        QTest::newRow("Info") << xingFrame(f, "Info", 10, 99) + audio << Tag::Info << 10u << 99u;
        QTest::newRow("VBRI") << vbriFrame(f, 10, 777) + audio << Tag::Vbri << 10u << 777u;
        QTest::newRow("Xing behind the short side info of MPEG-2 mono")
            << xingFrame(kMono, "Xing", 5, 1) + cbrFrames(kMono, 5) << Tag::Xing << 5u << 1u;
        // A "Xing" text inside a later frame is audio data, not a tag.
        QTest::newRow("not the first frame") << audio + xingFrame(f, "Xing", 10, 1) << Tag::None << 0u << 0u;
    }
    void infoTagFields() {
        QFETCH(QByteArray, file);
        QFETCH(Tag, tag);
        QFETCH(quint32, tagFrames);
        QFETCH(quint32, tagBytes);
        const Mp3ScanResult scan = scanBytes(file);
        QCOMPARE(scan.infoTag, tag);
        QCOMPARE(scan.tagFrames, tagFrames);
        QCOMPARE(scan.tagBytes, tagBytes);
        QCOMPARE(scan.frames, quint64(tag == Tag::None ? 11 : tagFrames));
    }

    void getMp3InfoStatus_data() {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<int>("status");
        const Frame f;
        QTest::newRow("empty") << QByteArray() << int(Mp3Info::NoFrames);
        QTest::newRow("a header alone") << f.header() << int(Mp3Info::NoFrames);
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
        if (file == "/") {
            QVERIFY(QDir(dir.path()).mkdir("lied.mp3"));
        } else if (file != "-") {
            QFile out(path);
            QVERIFY(out.open(QIODevice::WriteOnly) && out.write(file) == file.size());
        }
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
