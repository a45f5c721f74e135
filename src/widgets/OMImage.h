#pragma once

#include <QIcon>
#include <QPixmap>
#include <QString>
#include <QStringList>

class QPainter;
class QRectF;
class QSvgRenderer;

namespace ostrel {

// The application's artwork, looked up by the names the screens use ("connect_refresh").
// Every picture is an SVG compiled into the binary under ":/images/<name>.svg". A missing
// name is a programming error: it warns once and draws nothing rather than failing.
class OMImage {
public:
    static QString path(const QString& name);
    static bool exists(const QString& name);
    // Every name in the resource, sorted.
    static QStringList names();

    static QIcon icon(const QString& name);
    // The picture at its natural size times `scale`, for the given device pixel ratio.
    static QPixmap pixmap(const QString& name, qreal scale = 1.0, qreal devicePixelRatio = 1.0);
    // The picture's own size in points; empty for a missing name.
    static QSizeF naturalSize(const QString& name);
    // Draws the picture stretched into `target`; nothing for a missing name.
    static void render(QPainter& painter, const QString& name, const QRectF& target);

private:
    // Cached per name; nullptr (after one warning) for a name that is not in the resource.
    static QSvgRenderer* renderer(const QString& name);
};

} // namespace ostrel
