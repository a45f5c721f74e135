#pragma once

#include <QPointer>
#include <QWidget>

class QVBoxLayout;

namespace ostrel {

// A window whose whole content is one screen, replaced as the user moves on. Closing it only
// hides it: the application keeps running in the tray and the window comes back as it was.
class OMBaseModalWindow : public QWidget {
    Q_OBJECT
public:
    static constexpr QSize kSize{360, 640};

    // An empty size makes the window take its content's size.
    explicit OMBaseModalWindow(QSize size = kSize, QWidget* parent = nullptr);

    QWidget* content() const { return m_content; }
    // Takes ownership of `screen`; the previous screen is deleted once control returns to the
    // event loop, since it may be the caller.
    void setContent(QWidget* screen);
    void centerOnScreen();
    void bringToFront();

private:
    QVBoxLayout* m_layout;
    QPointer<QWidget> m_content;
};

} // namespace ostrel
