#include "OMWindowIdentifier.h"

#include <QApplication>
#include <QWidget>

namespace ostrel {

QString OMWindowIdentifier::prefix() {
    return QStringLiteral("com.ostrel.motion");
}

void OMWindowIdentifier::assign(QWidget* window, const QString& identifier) {
    window->setObjectName(identifier);
}

QWidget* OMWindowIdentifier::find(const QString& identifier) {
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (window->objectName() == identifier)
            return window;
    }
    return nullptr;
}

void OMWindowIdentifier::bringToFront(QWidget* window) {
    if (!window)
        return;
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->show();
    window->raise();
    window->activateWindow();
}

} // namespace ostrel
