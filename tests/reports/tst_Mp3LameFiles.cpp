// The frame reader on files of a real encoder. LAME's own Xing/Info frame states how many audio
// frames it wrote; that count is the oracle. Skipped when lame is not installed.
#include "reports/Mp3FrameScanner.h"
#include "reports/Mp3Info.h"
#include "support/Mp3Synth.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>
#include <cmath>

namespace {

// Six seconds of 44.1 kHz stereo: silence, a tone and noise in turns, so that a VBR encoder
// really varies its frames.
QByteArray testWave() {
    const int rate = 44100;
    const int seconds = 6;
    QByteArray pcm;
    pcm.reserve(rate * seconds * 4);
    quint32 noise = 12345;
    for (int i = 0; i < rate * seconds; ++i) {
        const int part = (i / (rate / 2)) % 3;
        double v = 0.0;
        if (part == 1)
            v = 0.6 * std::sin(2.0 * M_PI * 440.0 * i / rate);
        else if (part == 2) {
            noise = noise * 1103515245u + 12345u;
            v = (double((noise >> 8) & 0xFFFF) / 32768.0 - 1.0) * 0.8;
        }
        const qint16 s = qint16(v * 32000);
        for (int c = 0; c < 2; ++c) {
            pcm.append(char(s & 0xFF));
            pcm.append(char((s >> 8) & 0xFF));
        }
    }
    QByteArray wav("RIFF", 4);
    auto le32 = [&wav](quint32 v) {
        for (int i = 0; i < 4; ++i)
            wav.append(char((v >> (8 * i)) & 0xFF));
    };
    auto le16 = [&wav](quint16 v) {
        wav.append(char(v & 0xFF));
        wav.append(char(v >> 8));
    };
    le32(quint32(36 + pcm.size()));
    wav.append("WAVEfmt ", 8);
    le32(16);
    le16(1);
    le16(2);
    le32(rate);
    le32(rate * 4);
    le16(4);
    le16(16);
    wav.append("data", 4);
    le32(quint32(pcm.size()));
    return wav + pcm;
}

// A "JPEG" for the cover picture whose data is full of valid-looking MPEG frames.
QByteArray trapPicture() {
    QByteArray jpeg("\xFF\xD8\xFF\xE0\x00\x10JFIF\x00", 11);
    jpeg.append(Mp3Synth::cbrFrames(Mp3Synth::Frame{}, 40));
    jpeg.append("\xFF\xD9", 2);
    return jpeg;
}

} // namespace

class TestMp3LameFiles : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    QString m_lame;

    QString encode(const QString& name, const QStringList& options) {
        const QString out = m_dir.filePath(name);
        QProcess lame;
        lame.start(m_lame, QStringList{QStringLiteral("--quiet")} + options +
                               QStringList{m_dir.filePath(QStringLiteral("in.wav")), out});
        if (!lame.waitForFinished(60000) || lame.exitCode() != 0)
            qWarning() << "lame failed:" << lame.readAllStandardError();
        return out;
    }

    static Mp3ScanResult scan(const QString& path) {
        bool opened = false;
        const Mp3ScanResult r = Mp3Info::scanFile(path, opened);
        Q_ASSERT(opened);
        return r;
    }

private slots:
    void initTestCase() {
        m_lame = QStandardPaths::findExecutable(QStringLiteral("lame"));
        if (m_lame.isEmpty())
            QSKIP("lame is not installed");
        QFile wav(m_dir.filePath(QStringLiteral("in.wav")));
        QVERIFY(wav.open(QIODevice::WriteOnly));
        wav.write(testWave());
        QFile picture(m_dir.filePath(QStringLiteral("cover.jpg")));
        QVERIFY(picture.open(QIODevice::WriteOnly));
        picture.write(trapPicture());
    }

    void taggedFiles_data() {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<int>("tag");
        QTest::addColumn<int>("sampleRate");
        QTest::addColumn<int>("samplesPerFrame");
        QTest::addColumn<int>("vbr");
        const int xing = int(Mp3ScanResult::InfoTag::Xing);
        const int info = int(Mp3ScanResult::InfoTag::Info);
        QTest::newRow("CBR 128") << QStringList{QStringLiteral("-b"), QStringLiteral("128")} << info << 44100
                                 << 1152 << 0;
        QTest::newRow("VBR -V 2") << QStringList{QStringLiteral("-V"), QStringLiteral("2")} << xing << 44100
                                  << 1152 << 1;
        QTest::newRow("ABR 96") << QStringList{QStringLiteral("--abr"), QStringLiteral("96"),
                                               QStringLiteral("--resample"), QStringLiteral("44.1")}
                                << xing << 44100 << 1152 << 1;
        QTest::newRow("MPEG-2 22.05 kHz mono")
            << QStringList{QStringLiteral("-m"),    QStringLiteral("m"),  QStringLiteral("--resample"),
                           QStringLiteral("22.05"), QStringLiteral("-b"), QStringLiteral("64")}
            << info << 22050 << 576 << 0;
        QTest::newRow("MPEG-2.5 11.025 kHz VBR")
            << QStringList{QStringLiteral("-m"),     QStringLiteral("m"),  QStringLiteral("--resample"),
                           QStringLiteral("11.025"), QStringLiteral("-V"), QStringLiteral("6")}
            << xing << 11025 << 576 << 1;
    }
    void taggedFiles() {
        QFETCH(QStringList, options);
        QFETCH(int, tag);
        QFETCH(int, sampleRate);
        QFETCH(int, samplesPerFrame);
        QFETCH(int, vbr);
        const QString file = encode(QStringLiteral("tagged.mp3"), options);
        const Mp3ScanResult r = scan(file);
        QCOMPARE(int(r.infoTag), tag);
        QVERIFY(r.tagFrames > 0);
        QCOMPARE(r.frames, quint64(r.tagFrames));
        QCOMPARE(r.firstHeader.sampleRate, sampleRate);
        quint64 sum = 0;
        for (quint64 n : r.histogram)
            sum += n;
        QCOMPARE(sum, r.frames);

        qint32 bitrate = 0, vbrFlag = -1, playtime = -1;
        Mp3Info::Histogram histogram{};
        QCOMPARE(Mp3Info::GetMP3Info(file, bitrate, vbrFlag, playtime, histogram), qint32(Mp3Info::Ok));
        QCOMPARE(vbrFlag, vbr);
        QCOMPARE(playtime, qint32(r.frames * quint64(samplesPerFrame) / quint64(sampleRate)));
        // The whole file but the tag frame is audio here (no ID3 tags were asked for).
        QFile mp3(file);
        QVERIFY(mp3.open(QIODevice::ReadOnly));
        const int tagFrameBytes = Mp3Synth::Frame::fromHeader(mp3.read(4)).length();
        const double duration = double(r.frames) * samplesPerFrame / sampleRate;
        const double expected = double(mp3.size() - tagFrameBytes) * 8.0 / duration;
        QVERIFY2(std::abs(bitrate - expected) <= expected * 0.01,
                 qPrintable(QStringLiteral("%1 vs %2").arg(bitrate).arg(expected)));
    }

    void withoutTagFrameSameAudio_data() {
        QTest::addColumn<QStringList>("options");
        QTest::newRow("VBR -V 2") << QStringList{QStringLiteral("-V"), QStringLiteral("2")};
        QTest::newRow("CBR 192") << QStringList{QStringLiteral("-b"), QStringLiteral("192")};
    }
    void withoutTagFrameSameAudio() {
        // "-t" leaves the Xing/Info frame out; the audio frames are the same.
        QFETCH(QStringList, options);
        const Mp3ScanResult tagged = scan(encode(QStringLiteral("with.mp3"), options));
        const Mp3ScanResult bare =
            scan(encode(QStringLiteral("without.mp3"), options + QStringList{QStringLiteral("-t")}));
        QCOMPARE(bare.infoTag, Mp3ScanResult::InfoTag::None);
        QCOMPARE(bare.frames, quint64(tagged.tagFrames));
        QCOMPARE(bare.histogram, tagged.histogram);
        QCOMPARE(bare.audioBytes, tagged.audioBytes);
        QCOMPARE(bare.wholeSeconds, tagged.wholeSeconds);
    }

    void id3TagsChangeNothing_data() {
        QTest::addColumn<QStringList>("tags");
        QTest::newRow("ID3v2 with a cover full of sync-like bytes")
            << QStringList{QStringLiteral("--add-id3v2"), QStringLiteral("--tt"), QStringLiteral("Titel"),
                           QStringLiteral("--ti"), m_dir.filePath(QStringLiteral("cover.jpg"))};
        QTest::newRow("ID3v1 and ID3v2") << QStringList{QStringLiteral("--add-id3v2"), QStringLiteral("--ta"),
                                                        QStringLiteral("Interpret")};
        QTest::newRow("ID3v2 only, padded")
            << QStringList{QStringLiteral("--id3v2-only"), QStringLiteral("--pad-id3v2-size"),
                           QStringLiteral("3000"), QStringLiteral("--tl"), QStringLiteral("Album")};
    }
    void id3TagsChangeNothing() {
        QFETCH(QStringList, tags);
        const QStringList options{QStringLiteral("-V"), QStringLiteral("4")};
        const QString plainFile = encode(QStringLiteral("plain.mp3"), options);
        const QString taggedFile = encode(QStringLiteral("id3.mp3"), options + tags);
        QVERIFY(QFileInfo(taggedFile).size() > QFileInfo(plainFile).size());
        const Mp3ScanResult plain = scan(plainFile);
        const Mp3ScanResult tagged = scan(taggedFile);
        QVERIFY(tagged.audioBegin > 0);
        QCOMPARE(tagged.firstFrameOffset, tagged.audioBegin);
        QCOMPARE(tagged.frames, plain.frames);
        QCOMPARE(tagged.frames, quint64(plain.tagFrames));
        QCOMPARE(tagged.histogram, plain.histogram);
        QCOMPARE(tagged.audioBytes, plain.audioBytes);
        QCOMPARE(tagged.resyncs, 0);
    }
};

QTEST_GUILESS_MAIN(TestMp3LameFiles)
#include "tst_Mp3LameFiles.moc"
