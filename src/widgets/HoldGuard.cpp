#include "widgets/HoldGuard.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>
#include <QWindow>

namespace ostrel {

HoldGuard::HoldGuard(QWidget* button) : QObject(button), m_button(button) {}

void HoldGuard::arm() {
    if (m_armed)
        return;
    m_armed = true;
    qApp->installEventFilter(this);
    m_stateWatch = connect(qApp, &QGuiApplication::applicationStateChanged, this,
                           [this](Qt::ApplicationState state) {
                               if (state != Qt::ApplicationActive)
                                   interrupt();
                           });
}

void HoldGuard::disarm() {
    if (!m_armed)
        return;
    m_armed = false;
    qApp->removeEventFilter(this);
    disconnect(m_stateWatch);
}

void HoldGuard::interrupt() {
    if (!m_armed)
        return;
    disarm();
    emit interrupted();
}

bool HoldGuard::eventFilter(QObject* watched, QEvent* event) {
    if (endsHold(watched, event))
        interrupt();
    return false;
}

bool HoldGuard::endsHold(QObject* watched, const QEvent* event) const {
    switch (event->type()) {
    case QEvent::Hide:
        return watched == m_button || watched == m_button->window();
    case QEvent::EnabledChange:
        return watched == m_button && !m_button->isEnabled();
    case QEvent::WindowBlocked:
        return watched == m_button->window() || watched == m_button->window()->windowHandle();
    case QEvent::WindowStateChange:
        return watched == m_button->window() && m_button->window()->isMinimized();
    case QEvent::Show: {
        // A popup (a context menu) takes the pointer: the release goes to it.
        const auto* widget = qobject_cast<const QWidget*>(watched);
        return widget && widget->windowType() == Qt::Popup;
    }
    default:
        return false;
    }
}

} // namespace ostrel
