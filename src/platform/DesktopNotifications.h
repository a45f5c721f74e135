#pragma once

#include <QObject>
#include <QString>
#include <memory>

namespace ostrel {

// The desktop's notifications, as the reminder uses them: one with up to two buttons, the
// answer by button title, and all of them taken away once the reminder was answered. Where the
// desktop shows none, or is told not to disturb, nothing fails: the in-app alert carries the
// reminder alone.
class DesktopNotifications : public QObject {
    Q_OBJECT
public:
    struct Request {
        QString title;
        QString body;
        QString actionTitle;
        QString cancelTitle; // no button when empty
        bool sound = false;
    };

    using QObject::QObject;

    // The notification server on the session bus.
    static std::unique_ptr<DesktopNotifications> forDesktop();

    virtual void notify(const Request& request) = 0;
    // Takes every notification this application showed off the desktop.
    virtual void removeAllDelivered() = 0;

signals:
    // A button or the notification itself was clicked: the title of that button (the action
    // button's for a click on the notification).
    void answered(const QString& buttonTitle);
};

} // namespace ostrel
