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

    // Encodes three seconds of raw 44.1 kHz stereo (see initTestCase) with the options given.
    Mp3ScanResult encodeAndScan(const QString& name, const QString& options) {
        const QString out = m_dir.filePath(name);
        QProcess lame;
        lame.start(m_lame, QStringList{"--quiet", "-r", "-s", "44.1", "--signed", "--little-endian"} +
                               options.split(' ', Qt::SkipEmptyParts) +
                               QStringList{m_dir.filePath("in.raw"), out});
        if (!lame.waitForFinished(60000) || lame.exitCode() != 0)
            qWarning() << "lame failed:" << lame.readAllStandardError();
        bool opened = false;
        return Mp3Info::scanFile(out, opened);
    }

private slots:
    void initTestCase() {
        m_lame = QStandardPaths::findExecutable("lame");
        if (m_lame.isEmpty())
            QSKIP("lame is not installed");
        // A tone, then noise, so that a VBR encoder really varies its frames.
        QByteArray pcm;
        quint32 noise = 12345;
        for (int i = 0; i < 44100 * 3; ++i) {
            noise = noise * 1103515245u + 12345u;
            const double v = i < 66150 ? 0.6 * std::sin(2.0 * M_PI * 440.0 * i / 44100)
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

    // The plain file's frames are those its tag frame counts; the same audio frames without LAME's
    // tag frame ("-t") or behind an ID3v2 tag give exactly the plain file's result.
    void encodedFiles_data() {
        QTest::addColumn<QString>("options"); // the plain file's | the other wrapping's
        QTest::addColumn<Mp3ScanResult::InfoTag>("tag");
        QTest::addColumn<int>("sampleRate");
        using T = Mp3ScanResult::InfoTag;
        QTest::newRow("VBR -V 2, no tag frame") << "-V 2|-t" << T::Xing << 44100;
        QTest::newRow("CBR 128, ID3v2 with a cover full of sync-like bytes")
            << "-b 128|--add-id3v2 --tt Titel --ti " + m_dir.filePath("cover.jpg") << T::Info << 44100;
        QTest::newRow("MPEG-2.5 11.025 kHz mono VBR, ID3v2 only")
            << "-m m --resample 11.025 -V 6|--id3v2-only --tl Album" << T::Xing << 11025;
    }
    void encodedFiles() {
        QFETCH(QString, options);
        QFETCH(Mp3ScanResult::InfoTag, tag);
        QFETCH(int, sampleRate);
        const QString wrapping = options.section('|', 1);
        options = options.section('|', 0, 0);
        const Mp3ScanResult plain = encodeAndScan("plain.mp3", options);
        QCOMPARE(plain.infoTag, tag);
        QVERIFY(plain.tagFrames > 0);
        QCOMPARE(plain.frames, quint64(plain.tagFrames));
        QCOMPARE(plain.firstHeader.sampleRate, sampleRate);
        const Mp3ScanResult other = encodeAndScan("other.mp3", options + ' ' + wrapping);
        QCOMPARE(other.infoTag, wrapping == "-t" ? Mp3ScanResult::InfoTag::None : tag);
        QCOMPARE(other.audioBegin > 0, wrapping.contains("id3v2"));
        QCOMPARE(other.firstFrameOffset, other.audioBegin);
        QCOMPARE(other.frames, plain.frames);
        QCOMPARE(other.histogram, plain.histogram);
        QCOMPARE(other.audioBytes, plain.audioBytes);
        QCOMPARE(other.wholeSeconds, plain.wholeSeconds);
        QCOMPARE(other.resyncs, 0);
    }
};

QTEST_GUILESS_MAIN(TestMp3LameFiles)
#include "tst_Mp3LameFiles.moc"
