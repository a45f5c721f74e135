#include "session/OMSheetWindow.h"

#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>
#include <algorithm>

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

void OMSheetWindow::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Escape:
        cancelSheet();
        return;
    case Qt::Key_Enter:
    case Qt::Key_Return: {
        auto* button = qobject_cast<QPushButton*>(focusWidget());
        if (!button) {
            const auto buttons = findChildren<QPushButton*>();
            const auto found = std::find_if(buttons.begin(), buttons.end(), [](QPushButton* b) {
                return b->isDefault() && b->isVisible() && b->isEnabled();
            });
            button = found == buttons.end() ? nullptr : *found;
        }
        if (button && !event->isAutoRepeat())
            button->animateClick();
        return;
    }
    default:
        QWidget::keyPressEvent(event);
    }
}

void OMSheetWindow::cancelSheet() {
    hide();
}

QWidget* OMSheetWindow::buttonRow(QPushButton* accept, QPushButton* reject) {
    auto* box = new QDialogButtonBox(this);
    box->setCenterButtons(true);
    if (accept) {
        accept->setDefault(true);
        box->addButton(accept, QDialogButtonBox::AcceptRole);
    }
    if (reject)
        box->addButton(reject, QDialogButtonBox::RejectRole);
    return box;
}

// Without a platform frame the sheet draws its own edge, so it stands out from the screen below.
// Square: rounded corners would need a compositor to be transparent.
void OMSheetWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

} // namespace ostrel
