#include "OMBaseModalWindow.h"

#include "widgets/OMImage.h"
#include "widgets/OMWindowIdentifier.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>
#include <QWindow>

namespace ostrel {

OMBaseModalWindow::OMBaseModalWindow(QSize size, QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                          Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint |
                          Qt::WindowCloseButtonHint),
      m_size(size), m_scroll(new QScrollArea(this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_scroll);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setWidgetResizable(true);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // Not a stop of its own on the way round with Tab: it scrolls to the control Tab reaches.
    m_scroll->setFocusPolicy(Qt::NoFocus);
    setWindowTitle(QStringLiteral("Ostrel Motion"));
    setWindowIcon(OMImage::icon(QStringLiteral("common_toolbarlogo")));
    fitToScreen();
}

void OMBaseModalWindow::setContent(QWidget* screen) {
    if (m_content) {
        m_scroll->takeWidget();
        m_content->hide();
        m_content->deleteLater();
    }
    m_content = screen;
    if (screen) {
        m_scroll->setWidget(screen);
        screen->show();
    }
    fitToScreen();
}

QSize OMBaseModalWindow::fittedSize() const {
    // Without a size of its own the window is as large as its screen wants to be.
    QSize wanted = m_size;
    if (wanted.isEmpty())
        wanted = m_content ? m_content->sizeHint().expandedTo(m_content->minimumSizeHint())
                           : QSize(1, 1);
    const QScreen* target = screen() ? screen() : QGuiApplication::primaryScreen();
    if (!target)
        return wanted;
    const QSize available = target->availableGeometry().size() - QSize(0, kFrameAllowance);
    return wanted.boundedTo(available);
}

void OMBaseModalWindow::fitToScreen() {
    setFixedSize(fittedSize());
}

void OMBaseModalWindow::showEvent(QShowEvent* event) {
    // The window's screen is known for sure once it shows; it may move to another later.
    if (QWindow* handle = windowHandle())
        connect(handle, &QWindow::screenChanged, this, &OMBaseModalWindow::fitToScreen,
                Qt::UniqueConnection);
    fitToScreen();
    QWidget::showEvent(event);
}

void OMBaseModalWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ActivationChange && !isActiveWindow())
        m_deactivatedAt = Scheduler::instance().now();
    QWidget::changeEvent(event);
}

bool OMBaseModalWindow::isInFront() const {
    if (!isVisible() || isMinimized())
        return false;
    return isActiveWindow() || Scheduler::instance().now() - m_deactivatedAt < kRecentlyActive;
}

void OMBaseModalWindow::toggleFromTray() {
    if (isInFront())
        hide();
    else
        bringToFront();
}

void OMBaseModalWindow::centerOnScreen() {
    const QScreen* target = screen() ? screen() : QGuiApplication::primaryScreen();
    if (!target)
        return;
    fitToScreen();
    const QRect available = target->availableGeometry();
    QRect frame = frameGeometry();
    frame.moveCenter(available.center());
    // The title bar stays on the screen, so the window can always be moved.
    frame.moveTop(qMax(frame.top(), available.top()));
    move(frame.topLeft());
}

void OMBaseModalWindow::bringToFront() {
    OMWindowIdentifier::bringToFront(this);
}

} // namespace ostrel
