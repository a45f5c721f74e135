// Renders an SVG to a square PNG for the icon theme's fixed sizes:
// ostrel-icon-render IN.svg SIZE OUT.png
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: %s IN.svg SIZE OUT.png\n", argv[0]);
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen"); // a build machine has no display
    QGuiApplication application(argc, argv);
    QSvgRenderer svg(QString::fromLocal8Bit(argv[1]));
    const int size = QByteArray(argv[2]).toInt();
    if (!svg.isValid() || size <= 0) {
        std::fprintf(stderr, "cannot render %s at %s\n", argv[1], argv[2]);
        return 1;
    }
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    svg.render(&painter);
    painter.end();
    return image.save(QString::fromLocal8Bit(argv[3])) ? 0 : 1;
}
