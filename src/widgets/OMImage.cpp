#include "widgets/OMImage.h"

#include <QDir>
#include <QHash>
#include <QPainter>
#include <QSvgRenderer>
#include <QtDebug>
#include <memory>

namespace ostrel {

namespace {
const QString kDirectory = QStringLiteral(":/images");
const QString kSuffix = QStringLiteral(".svg");
} // namespace

QString OMImage::path(const QString& name) {
    return kDirectory + '/' + name + kSuffix;
}

bool OMImage::exists(const QString& name) {
    return QFile::exists(path(name));
}

QStringList OMImage::names() {
    QStringList result;
    const auto files = QDir(kDirectory).entryList({'*' + kSuffix}, QDir::Files, QDir::Name);
    for (const QString& file : files)
        result << file.chopped(kSuffix.size());
    return result;
}

QSvgRenderer* OMImage::renderer(const QString& name) {
    // Renderers are parsed once; paint events ask for the same few pictures many times a second.
    static QHash<QString, std::shared_ptr<QSvgRenderer>> cache;
    if (name.isEmpty())
        return nullptr; // no picture asked for
    auto found = cache.find(name);
    if (found == cache.end()) {
        std::shared_ptr<QSvgRenderer> svg;
        if (exists(name))
            svg = std::make_shared<QSvgRenderer>(path(name));
        if (!svg || !svg->isValid()) {
            qWarning("OMImage: no picture named \"%s\"", qPrintable(name));
            svg.reset();
        }
        found = cache.insert(name, svg);
    }
    return found->get();
}

QSizeF OMImage::naturalSize(const QString& name) {
    QSvgRenderer* svg = renderer(name);
    return svg ? svg->viewBoxF().size() : QSizeF();
}

void OMImage::render(QPainter& painter, const QString& name, const QRectF& target) {
    if (QSvgRenderer* svg = renderer(name))
        svg->render(&painter, target);
}

QPixmap OMImage::pixmap(const QString& name, qreal scale, qreal devicePixelRatio) {
    const QSizeF size = naturalSize(name) * scale;
    if (size.isEmpty())
        return {};
    QPixmap result((size * devicePixelRatio).toSize());
    result.setDevicePixelRatio(devicePixelRatio);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    render(painter, name, QRectF(QPointF(), size));
    return result;
}

QIcon OMImage::icon(const QString& name) {
    if (!renderer(name))
        return {};
    // QIcon's own SVG engine renders crisply at whatever size a view asks for. Its renderings are
    // cached under the engine's serial number: a fresh QIcon for every window (each error window
    // has one) would leave a new set of window-icon images in the pixmap cache each time.
    static QHash<QString, QIcon> icons;
    auto found = icons.find(name);
    if (found == icons.end())
        found = icons.insert(name, QIcon(path(name)));
    return *found;
}

} // namespace ostrel
