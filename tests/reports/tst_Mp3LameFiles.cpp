// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

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
#include <cmath>

class TestMp3LameFiles : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    QString m_lame;

    // Encodes six seconds of raw 44.1 kHz stereo (see initTestCase) with the options given.
    QString encode(const QString& name, const QString& options) {
        const QString out = m_dir.filePath(name);
        QProcess lame;
        lame.start(m_lame, QStringList{"--quiet", "-r", "-s", "44.1", "--signed", "--little-endian"} +
                               options.split(QLatin1Char(' '), Qt::SkipEmptyParts) +
                               QStringList{m_dir.filePath("in.raw"), out});
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
        m_lame = QStandardPaths::findExecutable("lame");
        if (m_lame.isEmpty())
            QSKIP("lame is not installed");
        // Silence, a tone and noise in turns, so that a VBR encoder really varies its frames.
        QByteArray pcm;
        quint32 noise = 12345;
        for (int i = 0; i < 44100 * 6; ++i) {
            const int part = (i / 22050) % 3;
            noise = noise * 1103515245u + 12345u;
            const double v = part == 0   ? 0.0
                             : part == 1 ? 0.6 * std::sin(2.0 * M_PI * 440.0 * i / 44100)
                                         : (double((noise >> 8) & 0xFFFF) / 32768.0 - 1.0) * 0.8;
            const qint16 s = qint16(v * 32000);
            pcm.append(QByteArray(reinterpret_cast<const char*>(&s), 2).repeated(2));
        }
        QFile raw(m_dir.filePath("in.raw"));
        QVERIFY(raw.open(QIODevice::WriteOnly) && raw.write(pcm) == pcm.size());
        // A "JPEG" for the cover picture whose data is full of valid-looking MPEG frames.
        QFile picture(m_dir.filePath("cover.jpg"));
        QVERIFY(picture.open(QIODevice::WriteOnly));
        picture.write(QByteArray("\xFF\xD8\xFF\xE0\x00\x10JFIF\x00", 11) +
                      Mp3Synth::cbrFrames(Mp3Synth::Frame{}, 40) + QByteArray("\xFF\xD9", 2));
    }

    void taggedFiles_data() {
        QTest::addColumn<QString>("options");
        QTest::addColumn<Mp3ScanResult::InfoTag>("tag");
        QTest::addColumn<int>("sampleRate");
        QTest::addColumn<int>("samplesPerFrame");
        QTest::addColumn<int>("vbr");
        using T = Mp3ScanResult::InfoTag;
        QTest::newRow("CBR 128") << "-b 128" << T::Info << 44100 << 1152 << 0;
        QTest::newRow("VBR -V 2") << "-V 2" << T::Xing << 44100 << 1152 << 1;
        QTest::newRow("ABR 96") << "--abr 96 --resample 44.1" << T::Xing << 44100 << 1152 << 1;
        QTest::newRow("MPEG-2 22.05 kHz mono")
            << "-m m --resample 22.05 -b 64" << T::Info << 22050 << 576 << 0;
        QTest::newRow("MPEG-2.5 11.025 kHz VBR")
            << "-m m --resample 11.025 -V 6" << T::Xing << 11025 << 576 << 1;
    }
    void taggedFiles() {
        QFETCH(QString, options);
        QFETCH(Mp3ScanResult::InfoTag, tag);
        QFETCH(int, sampleRate);
        QFETCH(int, samplesPerFrame);
        QFETCH(int, vbr);
        const QString file = encode("tagged.mp3", options);
        const Mp3ScanResult r = scan(file);
        QCOMPARE(r.infoTag, tag);
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
                 qPrintable(QString("%1 vs %2").arg(bitrate).arg(expected)));
    }

    // The same audio frames without LAME's tag frame ("-t") or behind and before ID3 tags: the
    // reader finds exactly the frames the tag frame of the plain file counts.
    void sameAudioAnotherWrapping_data() {
        QTest::addColumn<QString>("options"); // the plain file's | the other wrapping's
        QTest::newRow("VBR, no tag frame") << "-V 2|-t";
        QTest::newRow("CBR, no tag frame") << "-b 192|-t";
        QTest::newRow("ID3v2 with a cover full of sync-like bytes")
            << "-V 4|--add-id3v2 --tt Titel --ti " + m_dir.filePath("cover.jpg");
        QTest::newRow("ID3v1 and ID3v2") << "-V 4|--add-id3v2 --ta Interpret";
        QTest::newRow("ID3v2 only, padded") << "-V 4|--id3v2-only --pad-id3v2-size 3000 --tl Album";
    }
    void sameAudioAnotherWrapping() {
        QFETCH(QString, options);
        const QString wrapping = options.section('|', 1);
        options = options.section('|', 0, 0);
        const Mp3ScanResult plain = scan(encode("plain.mp3", options));
        const Mp3ScanResult other = scan(encode("other.mp3", options + QLatin1Char(' ') + wrapping));
        QCOMPARE(other.infoTag,
                 wrapping == QLatin1String("-t") ? Mp3ScanResult::InfoTag::None : plain.infoTag);
        QCOMPARE(other.audioBegin > 0, wrapping.contains(QLatin1String("id3v2")));
        QCOMPARE(other.firstFrameOffset, other.audioBegin);
        QCOMPARE(other.frames, quint64(plain.tagFrames));
        QCOMPARE(other.histogram, plain.histogram);
        QCOMPARE(other.audioBytes, plain.audioBytes);
        QCOMPARE(other.wholeSeconds, plain.wholeSeconds);
        QCOMPARE(other.resyncs, 0);
    }
};

QTEST_GUILESS_MAIN(TestMp3LameFiles)
#include "tst_Mp3LameFiles.moc"
