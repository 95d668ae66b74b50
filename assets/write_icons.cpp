// Build tool: writes the program's icon into an icon theme folder (<size>x<size>/apps/<name>.png), drawn
// by the same code as the window's icon. Usage: write_icons <folder> <name>
#include "ui/AppIcon.h"

#include <QDir>
#include <QGuiApplication>
#include <cstdio>

int main(int argc, char* argv[]) {
    QGuiApplication app(argc, argv);
    if (argc != 3) {
        std::fputs("usage: write_icons <folder> <name>\n", stderr);
        return 2;
    }
    const QString folder = QString::fromLocal8Bit(argv[1]);
    const QString name = QString::fromLocal8Bit(argv[2]);
    for (int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        const QString apps = QStringLiteral("%1/%2x%2/apps").arg(folder).arg(size);
        if (!QDir().mkpath(apps) ||
            !AppIcon::draw(size).save(apps + QLatin1Char('/') + name + QStringLiteral(".png"))) {
            std::fprintf(stderr, "write_icons: cannot write into %s\n", qPrintable(apps));
            return 1;
        }
    }
    return 0;
}
