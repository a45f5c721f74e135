#pragma once

#include "core/Scheduler.h"

#include <QPointer>
#include <QWidget>

class QScrollArea;

namespace ostrel {

// A window whose whole content is one screen, replaced as the user moves on. Closing it only
// hides it: the application keeps running in the tray and the window comes back as it was.
//
// The window never grows past the screen's available area: at a large text scale the screen
// scrolls inside it instead of its header or bottom rows going out of reach. It is not resizable,
// so it offers no maximise.
class OMBaseModalWindow : public QWidget {
    Q_OBJECT
public:
    static constexpr QSize kSize{360, 640};
    // Room left for the window manager's title bar, which the available area does not count.
    static constexpr int kFrameAllowance = 32;

    // An empty size makes the window take its content's size.
    explicit OMBaseModalWindow(QSize size = kSize, QWidget* parent = nullptr);

    QWidget* content() const { return m_content; }
    // Takes ownership of `screen`; the previous screen is deleted once control returns to the
    // event loop, since it may be the caller.
    void setContent(QWidget* screen);
    void centerOnScreen();
    void bringToFront();
    // Shown and the active window, or it was until a moment ago: a click on the tray takes
    // the focus from the window on some desktops before the click is reported.
    bool isInFront() const;
    // The tray's left click: hides the window when it is in front, else brings it there.
    void toggleFromTray();
    // The size the window takes on its screen: the wanted size, cut to the available area.
    QSize fittedSize() const;

protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void fitToScreen();

    static constexpr Scheduler::Duration kRecentlyActive{400};

    QSize m_size;
    Scheduler::Duration m_deactivatedAt{-kRecentlyActive};
    QScrollArea* m_scroll;
    QPointer<QWidget> m_content;
};

} // namespace ostrel
