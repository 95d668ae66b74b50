// Writes the seed corpus of the frame reader's fuzz target: small synthesized files of every
// kind the reader knows (tags, tag frames, MPEG versions, layers, free format, junk).
#include "support/Mp3Synth.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

using namespace Mp3Synth;

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    if (argc < 2)
        return 2;
    const QDir dir(QString::fromLocal8Bit(argv[1]));
    QDir().mkpath(dir.path());
    const Frame f;
    const Frame mono{.version = Mpeg2, .kbps = 32, .sampleRate = 22050, .channels = Mono};
    const Frame m25{.version = Mpeg25, .kbps = 8, .sampleRate = 11025, .channels = Mono};
    const Frame layer1{.layer = 1, .kbps = 32};
    const Frame layer2{.layer = 2, .kbps = 32};
    const Frame free{.kbps = 0, .freeBytes = 100};
    const QList<QPair<const char*, QByteArray>> seeds = {
        {"cbr", cbrFrames(f, 3)},
        {"id3v2", id3v2(40) + cbrFrames(f, 2)},
        {"id3v24_footer", id3v2(30, 4, true) + cbrFrames(f, 2) + id3v1()},
        {"xing", xingFrame(f, "Xing", 2, 900) + vbrFrames(f, {32, 320})},
        {"info_ape", xingFrame(f, "Info", 2, 900) + cbrFrames(f, 2) + apeTag(20, true)},
        {"vbri", vbriFrame(f, 1, 1) + cbrFrames(f, 1)},
        {"mpeg2_mono", xingFrame(mono, "Xing", 3, 0) + cbrFrames(mono, 3)},
        {"mpeg25", cbrFrames(m25, 4)},
        {"layer1", cbrFrames(layer1, 3)},
        {"layer2", cbrFrames(layer2, 3)},
        {"free_format", free.bytes() + free.bytes() + free.bytes()},
        {"junk_then_frames", junk(200, 9) + cbrFrames(f, 2)},
        {"truncated", cbrFrames(f, 2) + f.bytes().left(50)},
    };
    for (const auto& [name, bytes] : seeds) {
        QFile out(dir.filePath(QLatin1String(name) + QStringLiteral(".mp3")));
        if (!out.open(QIODevice::WriteOnly) || out.write(bytes) != bytes.size())
            return 1;
    }
    return 0;
}
