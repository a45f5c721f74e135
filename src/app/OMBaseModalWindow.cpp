#include "OMBaseModalWindow.h"

#include "widgets/OMImage.h"
#include "widgets/OMWindowIdentifier.h"

#include <QGuiApplication>
#include <QScreen>
#include <QVBoxLayout>

namespace ostrel {

OMBaseModalWindow::OMBaseModalWindow(QSize size, QWidget* parent)
    : QWidget(parent, Qt::Window), m_layout(new QVBoxLayout(this)) {
    m_layout->setContentsMargins(0, 0, 0, 0);
    // The home window keeps one size for every screen, so it does not jump as they change.
    if (size.isEmpty())
        m_layout->setSizeConstraint(QLayout::SetFixedSize);
    else
        setFixedSize(size);
    setWindowTitle(QStringLiteral("Ostrel Motion"));
    setWindowIcon(OMImage::icon(QStringLiteral("common_toolbarlogo")));
}

void OMBaseModalWindow::setContent(QWidget* screen) {
    if (m_content) {
        m_layout->removeWidget(m_content);
        m_content->hide();
        m_content->deleteLater();
    }
    m_content = screen;
    if (screen) {
        m_layout->addWidget(screen);
        screen->show();
    }
}

void OMBaseModalWindow::centerOnScreen() {
    const QScreen* target = screen() ? screen() : QGuiApplication::primaryScreen();
    if (!target)
        return;
    adjustSize();
    QRect frame = frameGeometry();
    frame.moveCenter(target->availableGeometry().center());
    move(frame.topLeft());
}

void OMBaseModalWindow::bringToFront() {
    OMWindowIdentifier::bringToFront(this);
}

} // namespace ostrel
