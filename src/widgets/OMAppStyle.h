#pragma once

#include <QProxyStyle>

class QAbstractButton;
class QKeyEvent;
class QPainter;

namespace ostrel {

// The application's style: the desktop's, with one focus ring that every control draws, the
// standard ones and the picture buttons and rows alike, so keyboard users see where they are,
// and scroll bars whose handle stands out from their groove. Installed once when the application
// starts.
class OMAppStyle : public QProxyStyle {
    Q_OBJECT
public:
    // Makes this the application's style; harmless when it already is.
    static void install();
    // A custom-drawn widget's ring round `rect`, drawn only while it has the focus.
    static void drawFocusRing(QPainter& painter, const QWidget* widget, const QRect& rect,
                              qreal radius);

    // Enter and Return click a focused custom button as Space does; true when `event` was one.
    static bool clickOnEnter(QAbstractButton* button, QKeyEvent* event);

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget = nullptr) const override;
};

} // namespace ostrel
