#pragma once

#include "core/ManualScheduler.h"

#include <QApplication>
#include <QEnterEvent>
#include <QMouseEvent>
#include <QWidget>
#include <gtest/gtest.h>

namespace ostrel::test {

// Installs virtual time for the length of a test.
class VirtualTimeTest : public ::testing::Test {
protected:
    VirtualTimeTest() { m_previous = Scheduler::setInstance(&clock); }
    ~VirtualTimeTest() override { Scheduler::setInstance(m_previous); }

    // Advances virtual time to an absolute moment in ms since the test began.
    void at(long long ms) { clock.advance(Scheduler::Duration(ms) - clock.now()); }

    ManualScheduler clock;

private:
    Scheduler* m_previous = nullptr;
};

// Delivers a mouse press or release straight to the widget, bypassing any double-click logic.
inline void sendMouse(QWidget* widget, QEvent::Type type, Qt::MouseButton button = Qt::LeftButton) {
    const QPointF local = QRectF(widget->rect()).center();
    const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? button : Qt::NoButton;
    QMouseEvent event(type, local, widget->mapToGlobal(local), button, held, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

inline void press(QWidget* widget) {
    sendMouse(widget, QEvent::MouseButtonPress);
}

inline void release(QWidget* widget) {
    sendMouse(widget, QEvent::MouseButtonRelease);
}

inline void click(QWidget* widget) {
    press(widget);
    release(widget);
}

// The pointer entering (at the centre) or leaving the widget.
inline void hover(QWidget* widget, bool enter) {
    if (enter) {
        const QPointF local = QRectF(widget->rect()).center();
        QEnterEvent event(local, local, widget->mapToGlobal(local));
        QApplication::sendEvent(widget, &event);
    } else {
        QEvent event(QEvent::Leave);
        QApplication::sendEvent(widget, &event);
    }
}

} // namespace ostrel::test
