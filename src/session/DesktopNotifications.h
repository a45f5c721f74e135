#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <map>
#include <optional>

namespace ostrel {

// The reminder's notifications on the desktop, through the notification server on the session
// bus (org.freedesktop.Notifications). Every call is asynchronous, so a slow server never holds
// up the screen, and without a server nothing is shown and nothing fails: the in-app alert
// carries the reminder alone.
class DesktopNotifications : public QObject {
    Q_OBJECT
public:
    // The freedesktop sound theme's name for a short alert.
    static constexpr char kSoundName[] = "message-new-instant";

    struct Request {
        QString title;
        QString body;
        QString actionTitle;
        QString cancelTitle; // no button when empty
        bool sound = false;
    };

    explicit DesktopNotifications(const QDBusConnection& bus, QObject* parent = nullptr);

    // The instance on the session bus, unless a test installed another.
    static DesktopNotifications& instance();
    // Installs `notifications` (not owned; nullptr restores the session bus's) and returns the
    // previous one.
    static DesktopNotifications* setInstance(DesktopNotifications* notifications);

    // Asks the server whether it shows buttons (until it has answered once), then shows the
    // notification: with its buttons when the server has them, as plain text otherwise.
    void notify(const Request& request);
    // Takes every notification this application showed off the desktop.
    void removeAllDelivered();

    // Whether the server said it shows buttons; nothing until it answered.
    std::optional<bool> hasActions() const { return m_actions; }

signals:
    // A button or the notification itself was clicked: the title of that button (the action
    // button's for a click on the notification).
    void answered(const QString& buttonTitle);

private slots:
    // Named by text: the bus connects signals by signature.
    void onActionInvoked(uint id, const QString& key);
    void onNotificationClosed(uint id, uint reason);

private:
    void send(const Request& request);
    void close(uint id);

    QDBusConnection m_bus;
    std::optional<bool> m_actions;
    std::map<uint, Request> m_shown;
    // Counts removals, so that a notification still on its way when the reminder was answered
    // is taken away as soon as it shows.
    unsigned m_generation = 0;
};

} // namespace ostrel
