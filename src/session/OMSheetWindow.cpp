#include "session/OMSheetWindow.h"

#include <QPainter>

namespace ostrel {

OMSheetWindow::OMSheetWindow(QWidget* parent, const QString& identifier)
    : QWidget(parent, Qt::Sheet | Qt::FramelessWindowHint) {
    OMWindowIdentifier::assign(this, identifier);
    setAutoFillBackground(true);
}

void OMSheetWindow::presentCentred() {
    if (QWidget* window = parentWidget()) {
        setWindowModality(Qt::WindowModal);
        adjustSize();
        move(window->geometry().center() - rect().center());
    }
    show();
    raise();
    activateWindow();
}

// Without a platform frame the sheet draws its own edge, so it stands out from the screen below.
// Square: rounded corners would need a compositor to be transparent.
void OMSheetWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

} // namespace ostrel
