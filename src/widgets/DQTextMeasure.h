#pragma once

#include <QFont>
#include <QString>

namespace ostrel {

// The size a text takes in a font, for sizing labels to their text: the width within a given
// height and unbounded width, or the height within a given width (wrapped at words). No text
// measures 0.
class DQTextMeasure {
public:
    static qreal getContentWidthWithFont(const QFont& font, qreal height, const QString& content);
    // The same with the system font of the given size.
    static qreal getContentWidthWithFontSize(qreal fontSize, qreal height, const QString& content);
    static qreal getContentHeightWithFont(const QFont& font, qreal width, const QString& content);
    static qreal getContentHeightWithFontSize(qreal fontSize, qreal width, const QString& content);
};

} // namespace ostrel
